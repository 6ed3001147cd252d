#include "jobs/list.h"

#include <optional>
#include <utility>

#include "jobs/each_file.h"
#include "listing/listing_options.h"
#include "platform/mapped_file.h"

namespace welvane {

namespace {

Table listingOrd(App& app, const ListRequest& request) {
    Table ord = pricedOrd(app, request.price);
    setOption(ord, OptionRow::CurveList, request.curves);
    setOption(ord, OptionRow::FootageStats, request.footage);
    setOption(ord, OptionRow::Intervals, request.intervals);
    // The grid is made of the statistics, whether they are listed or not.
    setOption(ord, OptionRow::MinMaxStats, request.statistics || request.grid);
    setOption(ord, OptionRow::FirstMnemonic, request.listMnemonics);
    setOptionText(ord, OptionRow::TopName, request.top);
    setOptionText(ord, OptionRow::Comment, request.comment);
    if (!request.mnemonics.empty()) setListedMnemonics(ord, request.mnemonics);
    setIncludePrice(ord, request.includePrice || request.price.any() || !request.pricingComment.empty());
    setPriceValue(ord, PriceRow::Comments, request.pricingComment);
    return ord;
}

/// Opens the files one after another, each when its turn comes.
class ListInputs {
  public:
    ListInputs(Workbench& bench, std::size_t files) : bench_(bench), files_(static_cast<double>(files)) {}
    ListInputs(const ListInputs&) = delete;
    ListInputs& operator=(const ListInputs&) = delete;
    ~ListInputs() { bench_.user().endWork(); }

    void begin(const std::string& file) {
        bench_.user().startWork(
            {.label = "Listing", .file = file, .begin = opened_ / files_, .end = (opened_ + 1) / files_});
        opened_ += 1;
    }
    LasFilePointer open(const std::string& file) {
        begin(file);
        return openTrue(file);
    }

  private:
    Workbench& bench_;
    double files_, opened_ = 0;
};

/// Reads the files by workers ahead of their turns.
class ListAhead {
  public:
    ListAhead(Workbench& bench, const ListRequest& request, const ListingOptions& options, std::size_t workers)
        : read_(request.files.size()),
          crew_(bench, read_.size(), workers, [&, this](Workbench& own, std::size_t number) {
              readOne(own, request.files[number], options, read_[number]);
          }) {}

    /// Waits for the file whose turn has come. Refusal for one that could not be read.
    StepResult take(FileListing& listing) {
        if (!crew_.wait()) return StepResult::Cancelled;
        FileRead& file = read_[taken_++];
        if (file.fault) throw Refusal(*file.fault);
        listing = std::move(file.listing);
        return file.result;
    }

  private:
    struct FileRead {
        FileListing listing;
        StepResult result = StepResult::Failed;
        std::optional<Fault> fault;
    };
    static void readOne(Workbench& bench, const std::string& path, const ListingOptions& options, FileRead& file) {
        try {
            file.result = readFileListing(bench.app(), *openTrue(path), path, options, file.listing);
        } catch (...) {
            file.fault = faultOf(path);
        }
    }

    std::vector<FileRead> read_;
    std::size_t taken_ = 0;
    Crew crew_;
};

/// Tells what is to be told of a file; false refuses it.
bool acceptFile(Workbench& bench, const ListWatcher& watcher, const FileListing& listing) {
    if (bench.rules().strict)
        if (Reason why = whyNotStrict(listing.notes); !why.none()) {
            if (watcher.refused) watcher.refused({.file = listing.path, .reason = std::move(why)});
            return false;
        }
    for (const Note& note : listing.notes) bench.note(note);
    return true;
}

void noteWhatIsInNoSum(Workbench& bench, const ListReport& report) {
    if (!report.options.needsStatistics()) return;
    for (const std::string& file : report.result.totals.withoutLengths)
        bench.note(NoteKind::Unit, file,
                   "its index is no depth in a known unit; it is in no sum of lengths and no price");
}

void keepSummary(const std::string& from, const std::string& to, OutputFile::Mode mode) {
    OutputFile kept(to, mode);
    kept.write(mapFile(from).bytes());
    kept.commit();
}

}  // namespace

ListReport listFiles(Workbench& bench, const ListRequest& request, const ListWatcher& watcher) {
    if (!request.summary.empty()) {
        std::vector<Input> inputs;
        for (const std::string& file : request.files) inputs.push_back({file, file});
        bench.checkOutput(request.summary, inputs);
    }
    ListReport report;
    report.options = readListingOptions(listingOrd(bench.app(), request));
    report.options.rules = FigureRules::trueFigures;
    report.options.reading = request.choices.reading(bench.app().run);
    report.options.indexUnit = request.choices.indexUnit;
    const std::string scratch = bench.app().platform.scratchFolder();
    report.listingPath = scratch + "listing.txt";
    report.summaryPath = scratch + "summary.txt";
    {
        ListInputs inputs(bench, request.files.size());
        ListingRequest listing;
        listing.files = request.files;
        listing.listingPath = report.listingPath;
        listing.reportPath = report.summaryPath;
        listing.onUnreadable = [&watcher](const std::string& file) {
            const Fault fault = faultOf(file);
            if (watcher.refused) watcher.refused(fault);
        };
        listing.accept = [&](const FileListing& file) { return acceptFile(bench, watcher, file); };
        listing.open = [&inputs](const std::string& file) { return inputs.open(file); };
        if (watcher.listed) listing.onFile = [&](const FileListing& file) { watcher.listed(file, report.options); };
        std::optional<ListAhead> ahead;
        if (const std::size_t workers = workersFor(request.files.size(), request.workers); workers > 0) {
            report.options.reading.workers.count = 1;
            ahead.emplace(bench, request, report.options, workers);
            listing.read = [&](std::size_t number, FileListing& file) {
                inputs.begin(request.files[number]);
                return ahead->take(file);
            };
        }
        report.result = propertyListing(bench.app(), report.options, listing, report.grid);
    }
    noteWhatIsInNoSum(bench, report);
    report.notes = bench.takeNotes();
    if (report.result.cancelled) return report;
    if (!report.result.why.empty()) throw Refusal("", report.result.why);
    if (report.result.listed == 0) throw Refusal("", "no file could be listed");
    if (!request.summary.empty()) keepSummary(report.summaryPath, request.summary, bench.outputMode());
    return report;
}

}  // namespace welvane
