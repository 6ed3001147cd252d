#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "las/data_access.h"
#include "las/sections.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

using Json = nlohmann::ordered_json;

struct InfoChoices {
    std::vector<std::string> files;
    bool loose = false;
};

/// Everything that is told of one file.
struct FileFacts {
    InputSlot slot;
    SlotChannels channels;
    std::vector<std::string> sections;
};

FileFacts readFacts(Workbench& bench, const std::string& file, bool loose) {
    const Input input = bench.openLas(file, loose);
    FileFacts facts;
    if (!fillInputSlot(input.path, facts.slot) && !loose) throw Refusal(file, "its header cannot be read");
    facts.slot.path = input.given;
    facts.channels = readSlotChannels(input.path);
    facts.sections = readSections(input.path);
    return facts;
}

Json factsAsJson(const FileFacts& facts) {
    const InputSlot& slot = facts.slot;
    Json json = {{"path", utf8Text(slot.path)},
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
                 {"colonColumn", slot.colonColumn}};
    json["sections"] = Json::array();
    for (const std::string& title : facts.sections) json["sections"].push_back(utf8Text(title));
    json["channels"] = Json::array();
    for (const SlotChannel& channel : facts.channels) {
        json["channels"].push_back({{"mnem", utf8Text(channel.field.mnem)},
                                    {"unit", utf8Text(channel.field.unit)},
                                    {"value", utf8Text(channel.field.value)},
                                    {"desc", utf8Text(channel.field.desc)}});
    }
    return json;
}

std::string orNone(std::string_view text) {
    return text.empty() ? std::string("none") : shownText(text);
}

std::string channelTable(const SlotChannels& channels) {
    const auto cells = [](const SlotChannel& channel) {
        return std::array<std::string, 4>{shownText(channel.field.mnem), shownText(channel.field.unit),
                                          shownText(channel.field.value), shownText(channel.field.desc)};
    };
    const std::array<std::string, 4> heads = {"Mnem", "Unit", "Value", "Description"};
    // A few long fields do not push the whole table out of the window.
    constexpr std::size_t widest = 24;
    std::array<std::size_t, 4> widths{};
    for (std::size_t cell = 0; cell < 4; ++cell) widths[cell] = heads[cell].size();
    for (const SlotChannel& channel : channels) {
        const auto texts = cells(channel);
        for (std::size_t cell = 0; cell < 4; ++cell)
            widths[cell] = std::min(widest, std::max(widths[cell], characterCount(texts[cell])));
    }
    const std::size_t number = std::max<std::size_t>(3, std::to_string(channels.size()).size());
    const auto line = [&](const std::string& first, const std::array<std::string, 4>& texts) {
        std::string text = "  " + paddedLeft(first, number);
        for (std::size_t cell = 0; cell < 4; ++cell) text += "  " + padded(texts[cell], widths[cell]);
        return std::string(trimRight(text)) + "\n";
    };
    std::string table = line("#", heads);
    for (std::size_t index = 0; index < channels.size(); ++index)
        table += line(std::to_string(index), cells(channels[index]));
    return table;
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

ExitCode performInfo(Workbench& bench, const InfoChoices& choices) {
    const std::vector<std::string> files = bench.expandLists(choices.files);
    Json all = Json::array();
    bool first = true;
    const ExitCode code = bench.forEach(files, [&](const std::string& file) {
        const FileFacts facts = readFacts(bench, file, choices.loose);
        if (bench.options().json) {
            all.push_back(factsAsJson(facts));
        } else {
            bench.print((first ? "" : "\n") + factsAsText(facts));
            first = false;
        }
        return ExitCode::Done;
    });
    if (bench.options().json && !(files.size() == 1 && all.empty()))
        bench.print((files.size() == 1 ? all.front() : all).dump(2) + "\n");
    return code;
}

}  // namespace

VerbRun declareInfo(CLI::App& command) {
    const auto choices = std::make_shared<InfoChoices>();
    command.add_option("FILE", choices->files, "LAS files; @LIST or - for a list of paths")->required()->type_name("");
    command.add_flag("--loose", choices->loose, "Accept data of no regular shape");
    return [choices](Workbench& bench) { return performInfo(bench, *choices); };
}

}  // namespace welvane
