#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "listing/summary.h"

/// The property listing: a plain-text report over a selection of LAS files, with a summary, a grid of statistics and a
/// price.
namespace welvane {

/// The statistics grid of a listing. Each row is one channel of one file as tab-separated text under the heads
/// "WellName", "Channel", "Min", "Max", "Average", "STD", "NNCF", "Min @", "Max @". Reset at the start of a run.
struct StatisticsGrid {
    std::vector<std::string> rows;
    void add(const FileListing& listing);
    /// Heads and rows as tab-separated lines.
    std::string asText() const;
    /// The same with commas, a field in quotes where it needs them.
    std::string asCsv() const;
};
/// What each column of the grid means, in column order.
std::vector<std::string_view> statisticsGridOptions();

/// A listing session: its options, its files and what its last run gave.
struct ListingSession {
    explicit ListingSession(App& app);
    Table ord;
    /// vrd: the files. Row 0 heads, a row per file; see run_value.h. Lives as long as the window.
    Table vrd;
    StatisticsGrid srd;
    std::string reportPath;  ///< where the summary goes; "" nowhere
};

struct ListingRequest {
    std::vector<std::string> files;
    std::string reportPath;
    /// Where the listing of the files is written; "" is the file "~~list.~~" of the scratch folder.
    std::string listingPath;
    OutputFile::Mode mode = OutputFile::Mode::InPlace;
    std::optional<std::chrono::year_month_day> today;  ///< otherwise by the clock
    /// The file to read in place of a named one, such as a repaired copy; "" skips it. Without it files are read as
    /// named.
    std::function<std::string(const std::string& path)> open;
    /// Given each file that was read, for whoever wants its numbers; they are not kept.
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

/// A listing run of a session: keeps the options under "listdef", runs, puts the grand total into the price grid (in
/// the unit of its price) and recomputes it; tells a cancel in a box.
ListingResult runListing(App& app, ListingSession& session, ListingRequest request);

/// The curve total as the price grid wants it: feet for a price per foot, metres for a price per metre.
double totalForPrice(const Table& ord, const ListingTotals& totals);

}  // namespace welvane
