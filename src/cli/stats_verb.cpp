#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "las/statistics.h"
#include "las/tops.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

using Json = nlohmann::ordered_json;

struct StatsChoices {
    std::vector<std::string> files;
    std::string top;
    bool loose = false;
};

std::string topsOf(std::string_view path) {
    std::string names;
    for (const Top& top : readTops(path)) names += (names.empty() ? "" : ", ") + top.name;
    return names.empty() ? "it has no [TOPS] block" : "it has " + names;
}

LasStatistics readOne(Workbench& bench, const std::string& file, const StatsChoices& choices) {
    const Input input = bench.openLas(file, choices.loose);
    bench.app().run.statusText = "Reading " + fileNameOf(file);
    bench.user().bar().setTotal(fileSize(input.path).value_or(0));
    LasStatistics statistics;
    const StepResult result = readLasStatistics(input.path, choices.top, statistics, bench.app().run, bench.user());
    bench.user().bar().clear();
    if (result == StepResult::Cancelled) throw Refusal(file, "stopped");
    if (result != StepResult::Done) throw Refusal(file, "its data cannot be read");
    if (!choices.top.empty() && !statistics.formationFound)
        throw Refusal(file, "no top is named " + choices.top + "; " + topsOf(input.path));
    // The index is no channel of its own: it has no numbers.
    if (!statistics.channels.empty()) statistics.channels.erase(statistics.channels.begin());
    return statistics;
}

Json asJson(const std::string& path, const LasStatistics& statistics) {
    Json json = {{"path", utf8Text(path)},
                 {"depthUnit", utf8Text(statistics.depthUnit)},
                 {"top", statistics.top},
                 {"bottom", statistics.bottom}};
    if (statistics.formationFound) json["formation"] = utf8Text(statistics.formation);
    json["channels"] = Json::array();
    for (const ChannelStatistics& channel : statistics.channels) {
        Json intervals = Json::array();
        for (const DepthInterval& interval : channel.intervals)
            intervals.push_back({{"top", interval.top}, {"bottom", interval.bottom}});
        json["channels"].push_back({{"mnem", utf8Text(channel.field.mnem)},
                                    {"unit", utf8Text(channel.field.unit)},
                                    {"minimum", channel.minimum},
                                    {"maximum", channel.maximum},
                                    {"mean", channel.mean},
                                    {"count", channel.count},
                                    {"minimumDepth", channel.minimumDepth},
                                    {"maximumDepth", channel.maximumDepth},
                                    {"standardDeviation", channel.standardDeviation},
                                    {"footage", channel.footage},
                                    {"intervals", std::move(intervals)}});
    }
    return json;
}

/// Six significant digits: enough for a person, and the column stays narrow.
std::string shortNumber(double value) {
    const double size = value < 0 ? -value : value;
    if (size != 0 && (size >= 1e9 || size < 1e-4)) return plainNumber(static_cast<float>(value));
    int decimals = 5;
    for (double limit = 10; decimals > 0 && size >= limit; limit *= 10) --decimals;
    return stripZeros(formatMask(value, size < 1 ? 6 : decimals));
}

/// The first intervals; a channel with hundreds of them does not flood the table.
std::string intervalsText(const ChannelStatistics& channel) {
    constexpr std::size_t shown = 3;
    std::string text;
    for (std::size_t index = 0; index < std::min(shown, channel.intervals.size()); ++index)
        text += (index == 0 ? "" : ", ") + shortNumber(channel.intervals[index].top) + " to " +
                shortNumber(channel.intervals[index].bottom);
    if (channel.intervals.size() > shown) text += ", and " + std::to_string(channel.intervals.size() - shown) + " more";
    return text;
}

constexpr std::size_t columns = 11;
using Row = std::array<std::string, columns>;

Row rowOf(const ChannelStatistics& channel) {
    Row row = {shownText(channel.field.mnem), shownText(channel.field.unit), std::to_string(channel.count)};
    if (channel.count == 0) return row;
    row[3] = shortNumber(channel.minimum);
    row[4] = shortNumber(channel.minimumDepth);
    row[5] = shortNumber(channel.maximum);
    row[6] = shortNumber(channel.maximumDepth);
    row[7] = shortNumber(channel.mean);
    row[8] = shortNumber(channel.standardDeviation);
    row[9] = shortNumber(channel.footage);
    row[10] = intervalsText(channel);
    return row;
}

std::string asText(const std::string& path, const LasStatistics& statistics) {
    std::vector<Row> rows = {
        {"Mnem", "Unit", "Count", "Minimum", "at", "Maximum", "at", "Mean", "Std dev", "Footage", "Intervals"}};
    for (const ChannelStatistics& channel : statistics.channels) rows.push_back(rowOf(channel));
    std::array<std::size_t, columns> widths{};
    for (const Row& row : rows)
        for (std::size_t cell = 0; cell < columns; ++cell)
            widths[cell] = std::max(widths[cell], characterCount(row[cell]));
    std::string text = shownText(path) + ": " + shortNumber(statistics.top) + " to " + shortNumber(statistics.bottom) +
                       " " + shownText(statistics.depthUnit);
    if (statistics.formationFound) text += ", " + shownText(statistics.formation);
    text += "\n";
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t cell = 0; cell < columns; ++cell) {
            const bool isText = cell < 2 || cell == columns - 1;
            line += "  " + (isText ? padded(row[cell], widths[cell]) : paddedLeft(row[cell], widths[cell]));
        }
        text += std::string(trimRight(line)) + "\n";
    }
    return text;
}

ExitCode performStats(Workbench& bench, const StatsChoices& choices) {
    const std::vector<std::string> files = bench.expandLists(choices.files);
    Json all = Json::array();
    bool first = true;
    const ExitCode code = bench.forEach(files, [&](const std::string& file) {
        const LasStatistics statistics = readOne(bench, file, choices);
        if (bench.options().json) {
            all.push_back(asJson(file, statistics));
        } else {
            bench.print((first ? "" : "\n") + asText(file, statistics));
            first = false;
        }
        return ExitCode::Done;
    });
    if (bench.options().json && !(files.size() == 1 && all.empty()))
        bench.print((files.size() == 1 ? all.front() : all).dump(2) + "\n");
    return code;
}

}  // namespace

VerbRun declareStats(CLI::App& command) {
    const auto choices = std::make_shared<StatsChoices>();
    command.add_option("FILE", choices->files, "LAS files; @LIST or - for a list of paths")->required()->type_name("");
    command.add_option("--top", choices->top, "Only the formation of this name in the [TOPS] block")->type_name("NAME");
    command.add_flag("--loose", choices->loose, "Accept data of no regular shape");
    return [choices](Workbench& bench) { return performStats(bench, *choices); };
}

}  // namespace welvane
