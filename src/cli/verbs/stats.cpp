#include "jobs/stats.h"

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

struct StatsChoices {
    std::vector<std::string> files;
    StatsRequest request;
    int jobs = 0;
};

Json fileAsJson(const std::string& path, const TrueStatistics& statistics) {
    Json json = fileEntry(path, {{"depthUnit", utf8Text(statistics.depthUnit)},
                                 {"top", statistics.top},
                                 {"bottom", statistics.bottom},
                                 {"records", statistics.records}});
    if (statistics.formationFound) json.add("formation", utf8Text(statistics.formation));
    Json channels = Json::array();
    for (const ChannelStatistics& channel : statistics.channels) {
        Json intervals = Json::array();
        for (const DepthInterval& interval : channel.intervals)
            intervals.push(Json::object({{"top", interval.top}, {"bottom", interval.bottom}}));
        channels.push(Json::object({{"mnem", utf8Text(channel.field.mnem)},
                                    {"unit", utf8Text(channel.field.unit)},
                                    {"minimum", channel.minimum},
                                    {"maximum", channel.maximum},
                                    {"mean", channel.mean},
                                    {"count", channel.count},
                                    {"minimumDepth", channel.minimumDepth},
                                    {"maximumDepth", channel.maximumDepth},
                                    {"standardDeviation", channel.standardDeviation},
                                    {"footage", channel.footage},
                                    {"intervals", std::move(intervals)}}));
    }
    json.add("channels", std::move(channels));
    return json;
}

/// Six significant digits or all in front of the point: enough for a person, and the column stays narrow.
std::string shortNumber(double value) {
    const double size = value < 0 ? -value : value;
    // Beyond what a single holds, and in whole numbers as long as all their digits are known, nothing is rounded.
    if (size >= 1e9) return size < 1e15 ? formatMask(value, 0) : plainNumber(value);
    if (size != 0 && size < 1e-4) return size < 1e-30 ? plainNumber(value) : plainNumber(static_cast<float>(value));
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

std::vector<std::string> rowOf(const ChannelStatistics& channel) {
    std::vector<std::string> row = {shownText(channel.field.mnem), shownText(channel.field.unit),
                                    std::to_string(channel.count)};
    row.resize(11);
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

std::string fileAsText(const std::string& path, const TrueStatistics& statistics) {
    TextTable table("llrrrrrrrrl");
    table.add({"Mnem", "Unit", "Count", "Minimum", "at", "Maximum", "at", "Mean", "Std dev", "Footage", "Intervals"});
    for (const ChannelStatistics& channel : statistics.channels) table.add(rowOf(channel));
    std::string head = shownText(path) + ": " + shortNumber(statistics.top) + " to " + shortNumber(statistics.bottom) +
                       " " + shownText(statistics.depthUnit);
    if (statistics.formationFound) head += ", " + shownText(statistics.formation);
    return head + "\n" + table.text();
}

ExitCode performStats(Console& console, const StatsChoices& choices) {
    const FileWork<TrueStatistics> work = [&](Workbench& bench, const std::string& file, std::size_t) {
        return readStatistics(bench, file, choices.request);
    };
    return showEachFile(console, console.expandLists(choices.files), work,
                        FileFace<TrueStatistics>{.json = fileAsJson, .text = fileAsText, .between = "\n"},
                        choices.jobs);
}

}  // namespace

VerbSyntax declareStats() {
    const auto choices = std::make_shared<StatsChoices>();
    VerbOptions options = {
        {"FILE",
         &choices->files,
         "",
         "LAS files; folders, @LIST for a list of paths, - for standard input",
         {.required = true}},
        {"--top", &choices->request.top, "NAME", "Only the formation of this name in the [TOPS] block"}};
    addReadingOptions(options, choices->request.choices);
    addJobsOption(options, choices->jobs);
    return {options, [choices](Console& console) { return performStats(console, *choices); }};
}

}  // namespace welvane
