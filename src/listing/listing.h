#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "listing/summary.h"

/// The property listing: a plain-text report over a selection of LAS files, with a summary, a grid of statistics and a
/// price.
namespace welvane {

/// The statistics grid of a listing. Each row is one channel of one file as tab-separated text under the heads
/// "WellName", "Channel", "Min", "Max", "Average", "STD", "NNCF", "Min @", "Max @". Reset at the start of a run.
struct StatisticsGrid {
    std::vector<std::string> rows;
    void add(const FileListing& listing, FigureRules rules = FigureRules::asLaidDown);
    /// Heads and rows as tab-separated lines.
    std::string asText() const;
    /// The same with commas, a field in quotes where it needs them.
    std::string asCsv() const;
};
/// A column of the grid and what it means.
struct StatisticsColumn {
    std::string_view head, meaning;
};
std::span<const StatisticsColumn> statisticsColumns();

struct ListingRequest {
    std::vector<std::string> files;
    std::string reportPath;
    /// Where the listing of the files is written; "" is the file "~~list.~~" of the scratch folder.
    std::string listingPath;
    OutputFile::Mode mode = OutputFile::Mode::InPlace;
    std::optional<std::chrono::year_month_day> today;  ///< otherwise by the clock
    /// Opens what is read in place of a named file, such as a repaired copy; nullptr skips it. Without it files are
    /// read as named.
    std::function<LasFilePointer(const std::string& path)> open;
    /// Reads the file of this number, from 0, in place of `open` and readFileListing, be it beforehand.
    std::function<StepResult(std::size_t number, FileListing& listing)> read;
    /// Told of a file that is skipped because it could not be opened or read; called while the failure is under way.
    std::function<void(const std::string& path)> onUnreadable;
    /// Given each file that was read, before anything of it is listed: false skips it.
    std::function<bool(const FileListing&)> accept;
    /// Given each file that was listed, for whoever wants its numbers; they are not kept.
    std::function<void(const FileListing&)> onFile;
};

struct ListingResult {
    bool cancelled = false;
    std::vector<std::string> skipped;  ///< files that could not be read
    std::size_t listed = 0;
    ListingTotals totals;
    std::string listingPath;  ///< the report of the files
    std::string why;          ///< of a report that could not be written
    bool done() const { return !cancelled && why.empty(); }
};

/// Writes the listing of the files by the options, then the summary when a report path is set. Fills the grid and the
/// totals anew. A file that cannot be read is skipped and named; a wish to stop is heard at the next file.
ListingResult propertyListing(App& app, const ListingOptions& options, const ListingRequest& request,
                              StatisticsGrid& grid);

/// The curve total as the price grid wants it: feet for a price per foot, metres for a price per metre.
double totalForPrice(const Table& ord, const ListingTotals& totals);

}  // namespace welvane
