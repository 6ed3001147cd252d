#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/price_options.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "listing/listing.h"
#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

using Json = nlohmann::ordered_json;

struct ListChoices {
    std::vector<std::string> files;
    std::string report, mnemonics, top, comment, pricingComment;
    bool curves = true, footage = true, intervals = false, statistics = true, noMnemonics = false, includePrice = false;
    bool csv = false, loose = false;
    PriceChoices price;
};

Table listingOrd(App& app, const ListChoices& choices) {
    Table ord = pricedOrd(app, choices.price);
    setOption(ord, OptionRow::CurveList, choices.curves);
    setOption(ord, OptionRow::FootageStats, choices.footage);
    setOption(ord, OptionRow::Intervals, choices.intervals);
    // The grid is made of the statistics, whether they are listed or not.
    setOption(ord, OptionRow::MinMaxStats, choices.statistics || choices.csv);
    setOption(ord, OptionRow::FirstMnemonic, !choices.noMnemonics);
    setOptionText(ord, OptionRow::TopName, choices.top);
    setOptionText(ord, OptionRow::Comment, choices.comment);
    if (!choices.mnemonics.empty()) setListedMnemonics(ord, split(choices.mnemonics, ','));
    setIncludePrice(ord, choices.includePrice || choices.price.any() || !choices.pricingComment.empty());
    setPriceValue(ord, PriceRow::Comments, choices.pricingComment);
    return ord;
}

/// A single as the decimal number that it stands for.
double asDouble(float single) {
    return val(plainNumber(single));
}

Json channelAsJson(const ChannelStatistics& channel, const FileListing& listing, const ListingOptions& options) {
    Json json = {{"mnem", utf8Text(channel.field.mnem)}, {"unit", utf8Text(channel.field.unit)}};
    if (!listing.hasStatistics) return json;
    if (options.footageStats) json["footage"] = channel.footage;
    if (options.intervals) {
        Json intervals = Json::array();
        for (const DepthInterval& interval : channel.intervals)
            intervals.push_back({{"top", interval.top}, {"bottom", interval.bottom}});
        json["intervals"] = std::move(intervals);
    }
    if (!options.minMaxStats) return json;
    json.update({{"minimum", channel.minimum},
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
    Json json = {{"path", utf8Text(listing.path)},
                 {"well", utf8Text(listing.well)},
                 {"depthUnit", utf8Text(statistics.depthUnit)}};
    if (options.mnemonicsList) {
        Json fields = Json::array();
        for (const ListedField& field : listing.fields)
            fields.push_back(
                {{"mnem", utf8Text(field.mnem)}, {"value", utf8Text(field.value)}, {"desc", utf8Text(field.desc)}});
        json["mnemonics"] = std::move(fields);
    }
    if (!options.topName.empty()) json["topFound"] = statistics.formationFound;
    if (listing.hasStatistics) json.update({{"top", statistics.top}, {"bottom", statistics.bottom}});
    Json channels = Json::array();
    for (std::size_t index = 1; index < statistics.channels.size(); ++index)
        channels.push_back(channelAsJson(statistics.channels[index], listing, options));
    json["channels"] = std::move(channels);
    if (listing.hasStatistics) json.update({{"nonNullCurve", listing.curveTotal}, {"fullCurve", listing.fullTotal}});
    if (options.includePrice) json["price"] = asDouble(listing.price);
    return json;
}

Json totalsAsJson(const ListingResult& result, const ListingOptions& options) {
    const ListingTotals& totals = result.totals;
    Json json = {{"files", result.listed},
                 {"depthUnit", utf8Text(totals.depthUnit)},
                 {"nonNullCurve", totals.nonNullCurve},
                 {"fullCurve", totals.fullCurve}};
    if (options.includePrice) json["price"] = asDouble(estimateTotal(options.price, totals.sumOfPrices));
    Json unique = Json::array();
    for (const UniqueChannel& channel : totals.unique.all())
        unique.push_back({{"mnem", utf8Text(channel.mnem)},
                          {"unit", utf8Text(channel.unit)},
                          {"files", channel.files},
                          {"footage", channel.footage}});
    json["uniqueChannels"] = std::move(unique);
    return json;
}

/// One run over the files. Each is opened when its turn comes, and a repaired copy goes as soon as it was read.
class ListRun {
  public:
    ListRun(Workbench& bench, const ListChoices& choices, std::vector<std::string> files)
        : bench_(bench), choices_(choices), options_(readListingOptions(listingOrd(bench.app(), choices))) {
        const std::string scratch = bench.platform().scratchFolder();
        request_.files = std::move(files);
        request_.listingPath = scratch + "listing.txt";
        request_.reportPath = scratch + "summary.txt";
        request_.open = [this](const std::string& file) { return open(file); };
        if (bench.options().json) request_.onFile = [this](const FileListing& listing) { printFile(listing); };
    }
    ExitCode run();

  private:
    std::string open(const std::string& file);
    void closeLast() {
        if (last_) bench_.release(*last_);
        last_.reset();
        bench_.user().setSubject("");
    }
    void printFile(const FileListing& listing) {
        bench_.print((printed_ ? ",\n" : "{\"files\": [\n") + listingAsJson(listing, options_).dump());
        printed_ = true;
    }
    void printText(const std::string& path);
    void printResults(const ListingResult& result);
    void keepReport();

    Workbench& bench_;
    const ListChoices& choices_;
    ListingOptions options_;
    ListingRequest request_;
    StatisticsGrid grid_;
    std::optional<Input> last_;
    std::size_t opened_ = 0;
    bool printed_ = false;
};

std::string ListRun::open(const std::string& file) {
    closeLast();
    const auto all = static_cast<double>(request_.files.size());
    bench_.user().setSpan("Listing", static_cast<double>(opened_) / all, static_cast<double>(opened_ + 1) / all);
    ++opened_;
    bench_.user().setSubject(file);
    try {
        last_ = bench_.openLas(file, choices_.loose);
        return last_->path;
    } catch (const std::runtime_error& refused) {
        bench_.user().say(refused.what());
        return {};
    }
}

/// A text file with CR LF ends as it is read on a terminal.
void ListRun::printText(const std::string& path) {
    const auto file = MappedFile::open(path);
    if (!file) return;
    LineReader lines(file->bytes());
    for (std::string_view line; lines.next(line);) bench_.print(shownText(line) + "\n");
}

void ListRun::printResults(const ListingResult& result) {
    if (bench_.options().json) {
        Json skipped = Json::array();
        for (const std::string& file : result.skipped) skipped.push_back(utf8Text(file));
        bench_.print("\n],\n\"skipped\": " + skipped.dump() +
                     ",\n\"totals\": " + totalsAsJson(result, options_).dump() + "}\n");
    } else if (choices_.csv) {
        bench_.print(grid_.asCsv());
    } else {
        printText(request_.listingPath);
        if (choices_.report.empty()) printText(request_.reportPath);
    }
}

void ListRun::keepReport() {
    if (choices_.report.empty()) return;
    OutputFile report(choices_.report, OutputFile::Mode::Beside);
    if (const auto summary = MappedFile::open(request_.reportPath)) report.write(summary->bytes());
    report.commit();
    bench_.user().note(choices_.report + ": the summary");
}

ExitCode ListRun::run() {
    const ListingResult result = propertyListing(bench_.app(), options_, request_, grid_);
    closeLast();
    bench_.user().bar().clear();
    if (result.cancelled) {
        // What was printed so far is a whole document all the same.
        if (printed_) bench_.print("\n]}\n");
        return ExitCode::Negative;
    }
    if (!result.why.empty()) throw Refusal("", result.why);
    if (result.listed == 0) throw Refusal("", "no file could be listed");
    printResults(result);
    keepReport();
    return result.skipped.empty() ? ExitCode::Done : ExitCode::Negative;
}

ExitCode performList(Workbench& bench, const ListChoices& choices) {
    if (choices.csv && bench.options().json) throw UsageFault("--csv and --json are two forms of one output");
    std::vector<std::string> files = bench.expandLists(choices.files);
    if (files.empty()) throw UsageFault("no input is named");
    if (!choices.report.empty()) {
        std::vector<Input> inputs;
        for (const std::string& file : files) inputs.push_back({file, file});
        bench.checkOutput(choices.report, inputs);
    }
    return ListRun(bench, choices, std::move(files)).run();
}

}  // namespace

VerbRun declareList(CLI::App& command) {
    const auto choices = std::make_shared<ListChoices>();
    command.add_option("FILE", choices->files, "LAS files; @LIST or - for a list of paths")->required()->type_name("");
    command.add_option("-o,--output", choices->report, "Write the summary to this file, not behind the listing")
        ->type_name("REPORT");
    command.add_flag("--curves,!--no-curves", choices->curves, "List the curves (on)");
    command.add_flag("--footage,!--no-footage", choices->footage, "With the length that each covers (on)");
    command.add_flag("--intervals,!--no-intervals", choices->intervals, "With the intervals that each covers (off)");
    command.add_flag("--statistics,!--no-statistics", choices->statistics,
                     "List minimum, maximum, average and standard deviation (on)");
    command.add_option("--mnemonics", choices->mnemonics, "Header lines to list (COMP,WELL,STRT,STOP,STEP)")
        ->type_name("A,B,C");
    command.add_flag("--no-mnemonics", choices->noMnemonics, "List no header lines")->excludes("--mnemonics");
    command.add_option("--top", choices->top, "Only the formation of this name in the [TOPS] block")->type_name("NAME");
    command.add_option("--comment", choices->comment, "A comment for the summary")->type_name("TEXT");
    command.add_flag("--csv", choices->csv, "Print the statistics as comma-separated values, a channel a line");
    command.add_flag("--loose", choices->loose, "Accept data of no regular shape");
    command.add_flag("--price", choices->includePrice, "Estimate the price; each detail of it does so too")
        ->group("Price");
    command.add_option("--pricing-comment", choices->pricingComment, "A comment on the price")
        ->type_name("TEXT")
        ->group("Price");
    declarePriceOptions(command, choices->price);
    return [choices](Workbench& bench) { return performList(bench, *choices); };
}

}  // namespace welvane
