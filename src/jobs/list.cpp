#include "jobs/list.h"

#include <optional>

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
    ListInputs(Workbench& bench, const ListRequest& request, const ListWatcher& watcher)
        : bench_(bench), request_(request), watcher_(watcher) {}
    ListInputs(const ListInputs&) = delete;
    ListInputs& operator=(const ListInputs&) = delete;
    ~ListInputs() {
        close();
        bench_.user().endWork();
    }

    /// Nothing for one that is refused.
    LasFilePointer open(const std::string& file) {
        close();
        const auto all = static_cast<double>(request_.files.size());
        bench_.user().startWork({.label = "Listing",
                                 .file = file,
                                 .begin = static_cast<double>(opened_) / all,
                                 .end = static_cast<double>(opened_ + 1) / all});
        ++opened_;
        try {
            last_ = bench_.openLas(file, request_.loose);
            return last_->file;
        } catch (const std::runtime_error&) {
            if (watcher_.refused) watcher_.refused(faultInFlight());
            return {};
        }
    }

  private:
    void close() {
        if (last_) bench_.release(*last_);
        last_.reset();
    }

    Workbench& bench_;
    const ListRequest& request_;
    const ListWatcher& watcher_;
    std::optional<Input> last_;
    std::size_t opened_ = 0;
};

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
    const std::string scratch = bench.app().platform.scratchFolder();
    report.listingPath = scratch + "listing.txt";
    report.summaryPath = scratch + "summary.txt";
    {
        ListInputs inputs(bench, request, watcher);
        ListingRequest listing;
        listing.files = request.files;
        listing.listingPath = report.listingPath;
        listing.reportPath = report.summaryPath;
        listing.onUnreadable = [&watcher](const std::string& file, const std::string& why) {
            if (watcher.refused) watcher.refused({.file = file, .reason = {why}});
        };
        listing.open = [&inputs](const std::string& file) { return inputs.open(file); };
        if (watcher.listed) listing.onFile = [&](const FileListing& file) { watcher.listed(file, report.options); };
        report.result = propertyListing(bench.app(), report.options, listing, report.grid);
    }
    for (const std::string& file : report.result.totals.withoutLengths)
        bench.note(NoteKind::Unit, file,
                   "its index is no depth in metres or feet; it is in no sum of lengths and no price");
    report.notes = bench.takeNotes();
    if (report.result.cancelled) return report;
    if (!report.result.why.empty()) throw Refusal("", report.result.why);
    if (report.result.listed == 0) throw Refusal("", "no file could be listed");
    if (!request.summary.empty()) keepSummary(report.summaryPath, request.summary, bench.outputMode());
    return report;
}

}  // namespace welvane
