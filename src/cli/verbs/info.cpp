#include "jobs/info.h"

#include <memory>

#include "cli/file_results.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct InfoChoices {
    std::vector<std::string> files;
    bool loose = false;
};

Json factsAsJson(const FileFacts& facts) {
    const InputSlot& slot = facts.slot;
    Json json = Json::object({{"path", utf8Text(slot.path)},
                              {"lasVersion", utf8Text(slot.lasVersion)},
                              {"wrap", slot.wrap},
                              {"start", slot.start},
                              {"stop", slot.stop},
                              {"step", slot.step},
                              {"firstDepth", slot.firstDepth},
                              {"lastDepth", slot.lastDepth},
                              {"topDepth", slot.topDepth},
                              {"bottomDepth", slot.bottomDepth},
                              {"depthUnit", utf8Text(slot.depthUnit)},
                              {"nullText", utf8Text(slot.nullText)},
                              {"indexName", utf8Text(slot.indexName)},
                              {"linesPerStep", slot.linesPerStep},
                              {"bytesPerStep", slot.bytesPerStep},
                              {"wordsPerStep", slot.wordsPerStep},
                              {"dataStart", slot.dataStart},
                              {"lastLine", slot.lastLine},
                              {"firstColumnWidth", slot.firstColumnWidth},
                              {"firstColumnDecimals", slot.firstColumnDecimals},
                              {"dotColumn", slot.dotColumn},
                              {"valueColumn", slot.valueColumn},
                              {"colonColumn", slot.colonColumn}});
    Json sections = Json::array(), channels = Json::array();
    for (const std::string& title : facts.sections) sections.push(utf8Text(title));
    for (const SlotChannel& channel : facts.channels) {
        channels.push(Json::object({{"mnem", utf8Text(channel.field.mnem)},
                                    {"unit", utf8Text(channel.field.unit)},
                                    {"value", utf8Text(channel.field.value)},
                                    {"desc", utf8Text(channel.field.desc)}}));
    }
    json.add({{"sections", sections}, {"channels", channels}});
    return json;
}

std::string orNone(std::string_view text) {
    return text.empty() ? std::string("none") : shownText(text);
}

std::string channelTable(const SlotChannels& channels) {
    // A few long fields do not push the whole table out of the window.
    constexpr std::size_t widest = 24;
    const std::size_t number = std::max<std::size_t>(3, std::to_string(channels.size()).size());
    TextTable table("rllll", TextTable::Ends::Cut, widest);
    table.add({paddedLeft("#", number), "Mnem", "Unit", "Value", "Description"});
    for (std::size_t index = 0; index < channels.size(); ++index) {
        const HeaderField& field = channels[index].field;
        table.add({paddedLeft(std::to_string(index), number), shownText(field.mnem), shownText(field.unit),
                   shownText(field.value), shownText(field.desc)});
    }
    return table.text();
}

std::string factsAsText(const FileFacts& facts) {
    const InputSlot& slot = facts.slot;
    const std::string unit = slot.depthUnit.empty() ? "" : " " + shownText(slot.depthUnit);
    const std::size_t logs = facts.channels.empty() ? 0 : facts.channels.size() - 1;
    std::string text = shownText(slot.path) + "\n";
    const auto add = [&](std::string_view label, const std::string& value) {
        text += "  " + padded(label, 10) + value + "\n";
    };
    const std::string wrapping = slot.wrap.empty()            ? "shape of the data undecided"
                                 : sameText(slot.wrap, "YES") ? "wrapped"
                                                              : "not wrapped";
    add("LAS", orNone(slot.lasVersion) + ", " + wrapping);
    add("Header",
        plainNumber(slot.start) + " to " + plainNumber(slot.stop) + unit + ", step " + plainNumber(slot.step));
    add("Data", plainNumber(slot.firstDepth) + " to " + plainNumber(slot.lastDepth) + unit + ", from byte " +
                    std::to_string(slot.dataStart) + " on");
    add("Per step", std::to_string(slot.wordsPerStep) + " numbers on " + std::to_string(slot.linesPerStep) +
                        (slot.linesPerStep == 1 ? " line, " : " lines, ") + std::to_string(slot.bytesPerStep) +
                        " bytes");
    add("Null", orNone(slot.nullText));
    add("Layout", "dot at " + std::to_string(slot.dotColumn) + ", value at " + std::to_string(slot.valueColumn) +
                      ", colon at " + std::to_string(slot.colonColumn) + "; data " +
                      std::to_string(slot.firstColumnWidth) + " wide with " + std::to_string(slot.firstColumnDecimals) +
                      " decimals");
    std::string sections;
    for (const std::string& title : facts.sections)
        sections += (sections.empty() ? "" : ", ") + shownText(title.substr(0, title.find(' ')));
    add("Sections", orNone(sections));
    add("Channels", std::to_string(logs) + " and the index " + orNone(slot.indexName));
    return text + "\n" + channelTable(facts.channels);
}

ExitCode performInfo(Console& console, const InfoChoices& choices) {
    const FileWork<FileFacts> work = [&](Workbench& bench, const std::string& file, std::size_t) {
        return readFacts(bench, file, choices.loose);
    };
    FileFace<FileFacts> face;
    face.json = [](const std::string&, const FileFacts& facts) { return factsAsJson(facts); };
    face.text = [](const std::string&, const FileFacts& facts) { return factsAsText(facts); };
    face.between = "\n";
    return showEachFile(console, console.expandLists(choices.files), work, face);
}

}  // namespace

VerbSyntax declareInfo() {
    const auto choices = std::make_shared<InfoChoices>();
    return {{{"FILE", &choices->files, "", "LAS files; @LIST or - for a list of paths", {.required = true}},
             {"--loose", &choices->loose, "", "Accept data of no regular shape"}},
            [choices](Console& console) { return performInfo(console, *choices); }};
}

}  // namespace welvane
