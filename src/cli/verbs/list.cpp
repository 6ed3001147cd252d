#include "jobs/list.h"

#include <memory>

#include "cli/file_document.h"
#include "cli/price_options.h"
#include "cli/reading_options.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "platform/mapped_file.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct ListChoices {
    ListRequest request;
    std::string mnemonics;
    bool noMnemonics = false;
    int jobs = 0;
    PriceChoices price;
};

/// A single as the decimal number that it stands for.
double asDouble(float single) {
    return val(plainNumber(single));
}

Json channelAsJson(const ChannelStatistics& channel, const FileListing& listing, const ListingOptions& options) {
    Json json = Json::object({{"mnem", utf8Text(channel.field.mnem)}, {"unit", utf8Text(channel.field.unit)}});
    if (!listing.hasStatistics) return json;
    if (options.footageStats) json.add("footage", channel.footage);
    if (options.intervals) {
        Json intervals = Json::array();
        for (const DepthInterval& interval : channel.intervals)
            intervals.push(Json::object({{"top", interval.top}, {"bottom", interval.bottom}}));
        json.add("intervals", std::move(intervals));
    }
    if (!options.minMaxStats) return json;
    json.add({{"minimum", channel.minimum},
              {"maximum", channel.maximum},
              {"mean", channel.mean},
              {"standardDeviation", channel.standardDeviation},
              {"count", channel.count},
              {"minimumDepth", channel.minimumDepth},
              {"maximumDepth", channel.maximumDepth}});
    return json;
}

Json listingAsJson(const FileListing& listing, const ListingOptions& options) {
    const LasStatistics& statistics = listing.statistics;
    Json json =
        fileEntry(listing.path, {{"well", utf8Text(listing.well)}, {"depthUnit", utf8Text(statistics.depthUnit)}});
    if (options.mnemonicsList) {
        Json fields = Json::array();
        for (const ListedField& field : listing.fields)
            fields.push(Json::object(
                {{"mnem", utf8Text(field.mnem)}, {"value", utf8Text(field.value)}, {"desc", utf8Text(field.desc)}}));
        json.add("mnemonics", std::move(fields));
    }
    if (!options.topName.empty()) json.add("topFound", statistics.formationFound);
    if (listing.hasStatistics) json.add({{"top", statistics.top}, {"bottom", statistics.bottom}});
    Json channels = Json::array();
    for (std::size_t index = 1; index < statistics.channels.size(); ++index)
        channels.push(channelAsJson(statistics.channels[index], listing, options));
    json.add("channels", std::move(channels));
    if (listing.hasStatistics) json.add({{"nonNullCurve", listing.curveTotal}, {"fullCurve", listing.fullTotal}});
    if (options.includePrice) json.add("price", asDouble(listing.price));
    return json;
}

Json totalsAsJson(const ListingResult& result, const ListingOptions& options) {
    const ListingTotals& totals = result.totals;
    Json json = Json::object({{"files", result.listed}, {"depthUnit", utf8Text(totals.depthUnit)}});
    // Without statistics no length was counted.
    const bool lengths = options.needsStatistics();
    if (lengths) json.add({{"nonNullCurve", totals.nonNullCurve}, {"fullCurve", totals.fullCurve}});
    if (options.includePrice) json.add("price", asDouble(estimateTotal(options.price, totals.sumOfPrices)));
    Json unique = Json::array();
    for (const UniqueChannel& channel : totals.unique.all()) {
        Json one = Json::object(
            {{"mnem", utf8Text(channel.mnem)}, {"unit", utf8Text(channel.unit)}, {"files", channel.files}});
        if (lengths) one.add("footage", channel.footage);
        unique.push(std::move(one));
    }
    json.add("uniqueChannels", std::move(unique));
    return json;
}

/// A text file with CR LF ends as it is read on a terminal.
void printText(Console& console, const std::string& path) {
    const MappedFile file = mapFile(path);
    LineReader lines(file.bytes());
    for (std::string_view line; lines.next(line);) console.print(shownText(line) + "\n");
}

/// Rows from files of any encoding become one text of UTF-8: each row is of one file.
void printGrid(Console& console, const StatisticsGrid& grid) {
    const std::string text = grid.asCsv();
    LineReader rows(text);
    for (std::string_view row; rows.next(row);) console.print(utf8Text(row) + "\r\n");
}

void printTexts(Console& console, const ListRequest& request, const ListReport& report) {
    if (request.grid) {
        printGrid(console, report.grid);
        return;
    }
    printText(console, report.listingPath);
    if (request.summary.empty()) printText(console, report.summaryPath);
}

ListRequest requestOf(Console& console, const ListChoices& choices) {
    ListRequest request = choices.request;
    if (request.grid && console.options().json) throw UsageFault("--csv and --json are two forms of one output");
    request.files = console.expandLists(request.files);
    if (request.files.empty()) throw UsageFault("no input is named");
    if (!choices.mnemonics.empty()) request.mnemonics = split(choices.mnemonics, ',');
    request.listMnemonics = !choices.noMnemonics;
    request.workers = choices.jobs;
    if (choices.jobs > 0) console.bench().app().run.workers.count = static_cast<std::size_t>(choices.jobs);
    request.price = priceDetails(choices.price);
    return request;
}

ExitCode showList(Console& console, const ListRequest& request, FileDocument& entries) {
    const bool json = console.options().json;
    ListWatcher watcher;
    watcher.refused = [&](const Fault& fault) {
        console.say(fault);
        entries.add(refusedEntry(fault.file, fault));
    };
    if (json)
        watcher.listed = [&](const FileListing& file, const ListingOptions& options) {
            entries.add(listingAsJson(file, options));
        };
    const ListReport report = listFiles(console.bench(), request, watcher);
    if (report.result.cancelled) return ExitCode::Negative;
    if (json)
        entries.close({{"totals", totalsAsJson(report.result, report.options)}}, report.notes);
    else
        printTexts(console, request, report);
    if (!request.summary.empty()) console.user().note(request.summary + ": the summary");
    return report.result.skipped.empty() ? ExitCode::Done : ExitCode::Negative;
}

ExitCode performList(Console& console, const ListChoices& choices) {
    const ListRequest request = requestOf(console, choices);
    return fillDocument(console, [&](FileDocument& entries) { return showList(console, request, entries); });
}

}  // namespace

VerbSyntax declareList() {
    const auto choices = std::make_shared<ListChoices>();
    VerbOptions options = {
        {"FILE",
         &choices->request.files,
         "",
         "LAS files; folders, @LIST for a list of paths, - for standard input",
         {.required = true}},
        {"-o,--output", &choices->request.summary, "REPORT", "Write the summary to this file, not behind the listing"},
        {"--curves,!--no-curves", &choices->request.curves, "", "List the curves (on)"},
        {"--footage,!--no-footage", &choices->request.footage, "", "With the length that each covers (on)"},
        {"--intervals,!--no-intervals", &choices->request.intervals, "", "With the intervals that each covers (off)"},
        {"--statistics,!--no-statistics", &choices->request.statistics, "",
         "List minimum, maximum, average and standard deviation (on)"},
        {"--mnemonics", &choices->mnemonics, "A,B,C", "Header lines to list (COMP,WELL,STRT,STOP,STEP)"},
        {"--no-mnemonics", &choices->noMnemonics, "", "List no header lines", {.excludes = "--mnemonics"}},
        {"--top", &choices->request.top, "NAME", "Only the formation of this name in the [TOPS] block"},
        {"--comment", &choices->request.comment, "TEXT", "A comment for the summary"},
        {"--csv", &choices->request.grid, "", "Print the statistics as comma-separated values, a channel a line"}};
    addReadingOptions(options, choices->request.choices);
    addJobsOption(options, choices->jobs);
    addOptions(options, priceGroup,
               {{"--price", &choices->request.includePrice, "", "Estimate the price; each detail of it does so too"},
                {"--pricing-comment", &choices->request.pricingComment, "TEXT", "A comment on the price"}});
    addPriceOptions(options, choices->price);
    return {options, [choices](Console& console) { return performList(console, *choices); }};
}

}  // namespace welvane
