#include "jobs/info.h"

#include <memory>

#include "cli/file_results.h"
#include "cli/reading_options.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct InfoChoices {
    std::vector<std::string> files;
    ReadingChoices reading;
    int jobs = 0;
};

/// A number of the header; null where there is none.
Json headerNumber(const DepthHeader::Entry& entry) {
    return isNumeric(entry.value) ? Json(val(entry.value)) : Json();
}

/// Signed as STEP is; null for data that follow none.
Json stepOfData(const FileFacts& facts) {
    const IndexSpacing& spacing = facts.spacing;
    return spacing.step > 0 ? Json(spacing.direction * spacing.step) : Json();
}

Json factsAsJson(const FileFacts& facts) {
    const InputSlot& slot = facts.slot;
    Json json = fileEntry(slot.path, {{"lasVersion", utf8Text(slot.lasVersion)},
                                      {"wrap", slot.wrap},
                                      {"start", headerNumber(facts.header.strt())},
                                      {"stop", headerNumber(facts.header.stop())},
                                      {"step", headerNumber(facts.header.step())},
                                      {"firstDepth", slot.firstDepth},
                                      {"lastDepth", slot.lastDepth},
                                      {"records", facts.records},
                                      {"dataStep", stepOfData(facts)},
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
    for (const HeaderField& field : facts.channels)
        channels.push(Json::object({{"mnem", utf8Text(field.mnem)},
                                    {"unit", utf8Text(field.unit)},
                                    {"value", utf8Text(field.value)},
                                    {"desc", utf8Text(field.desc)}}));
    json.add({{"sections", sections}, {"channels", channels}});
    return json;
}

std::string orNone(std::string_view text) {
    return text.empty() ? std::string("none") : shownText(text);
}

std::string channelTable(const std::vector<HeaderField>& channels) {
    // A few long fields do not push the whole table out of the window.
    constexpr std::size_t widest = 24;
    const std::size_t number = std::max<std::size_t>(3, std::to_string(channels.size()).size());
    TextTable table("rllll", TextTable::Ends::Cut, widest);
    table.add({paddedLeft("#", number), "Mnem", "Unit", "Value", "Description"});
    for (std::size_t index = 0; index < channels.size(); ++index) {
        const HeaderField& field = channels[index];
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
    const auto headerText = [](const DepthHeader::Entry& entry) {
        return isNumeric(entry.value) ? plainNumber(val(entry.value)) : orNone(entry.value);
    };
    add("LAS", orNone(trim(slot.lasVersion)) + ", " + (slot.wrap == "YES" ? "wrapped" : "not wrapped"));
    add("Header", headerText(facts.header.strt()) + " to " + headerText(facts.header.stop()) + unit + ", step " +
                      headerText(facts.header.step()));
    add("Data", plainNumber(slot.firstDepth) + " to " + plainNumber(slot.lastDepth) + unit +
                    (facts.spacing.step > 0 ? " by " + stripZeros(formatMask(facts.spacing.step, 9)) : "") + " in " +
                    counted(facts.records, "record") + ", from byte " + std::to_string(slot.dataStart) + " on");
    std::string perStep = std::to_string(slot.wordsPerStep) + " numbers";
    if (slot.linesPerStep > 0)
        perStep += " on " + counted(slot.linesPerStep, "line") + ", " + std::to_string(slot.bytesPerStep) + " bytes";
    add("Per step", perStep);
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
        return readFacts(bench, file, choices.reading);
    };
    FileFace<FileFacts> face;
    face.json = [](const std::string&, const FileFacts& facts) { return factsAsJson(facts); };
    face.text = [](const std::string&, const FileFacts& facts) { return factsAsText(facts); };
    face.between = "\n";
    return showEachFile(console, console.expandLists(choices.files), work, face, choices.jobs);
}

}  // namespace

VerbSyntax declareInfo() {
    const auto choices = std::make_shared<InfoChoices>();
    VerbOptions options = {{"FILE",
                            &choices->files,
                            "",
                            "LAS files; folders, @LIST for a list of paths, - for standard input",
                            {.required = true}}};
    addReadingOptions(options, choices->reading);
    addJobsOption(options, choices->jobs);
    return {options, [choices](Console& console) { return performInfo(console, *choices); }};
}

}  // namespace welvane
