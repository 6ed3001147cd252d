#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "listing/listing.h"
#include "shared/table.h"

/// A listing session: its options, its files with their RUN values, and what its last run gave.
namespace welvane {

/// Columns of vrd.
enum class VrdColumn { File = 0, Run };

/// vrd for these files: the path and the VALUE of RUN in the file's ~Parameter section, "" where it has none.
Table makeVrd(const std::vector<std::string>& files);

/// A listing session: its options, its files and what its last run gave.
struct ListingSession {
    explicit ListingSession(App& app);
    Table ord;
    /// vrd: the files. Row 0 heads, a row per file; see makeVrd. Lives as long as the window.
    Table vrd;
    StatisticsGrid srd;
    std::string reportPath;   ///< where the summary goes; "" nowhere
    std::string listingPath;  ///< the listing of the files that the last run wrote, to be shown; "" for none
};

/// Asks where the summary goes, and keeps the choice for the next time (the setting "mwLFile"). False when cancelled.
bool chooseReportPath(App& app, ListingSession& session);

/// A listing run of a session: keeps the options under "listdef", runs, puts the grand total into the price grid (in
/// the unit of its price) and recomputes it; tells a cancel in a box.
ListingResult runListing(App& app, ListingSession& session, ListingRequest request);

enum class RunEdit { Done, Declined, NoRunLine, Failed };
/// Gives the file of a row of vrd (from 1) a new RUN value: asks "Update LAS file with this run value?" and rewrites
/// the RUN line of ~Parameter. The cell keeps the new text only when that succeeded. Boxes tell a failure.
RunEdit editRun(App& app, Table& vrd, int row, std::string_view newValue);
/// The same for a file alone.
RunEdit editRun(App& app, std::string_view path, std::string_view newValue);

}  // namespace welvane
