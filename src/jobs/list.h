#pragma once

#include <functional>
#include <string>
#include <vector>

#include "jobs/price.h"
#include "jobs/true_input.h"
#include "jobs/workbench.h"
#include "listing/listing.h"

/// The property listing of files, with its summary, its grid of statistics and a price.
namespace welvane {

struct ListRequest {
    std::vector<std::string> files{};
    std::string summary{};                 ///< file that the summary is written to; "" none
    std::vector<std::string> mnemonics{};  ///< header lines to list; empty for the usual ones
    std::string top{};                     ///< only the formation of this name in the [TOPS] block
    std::string comment{}, pricingComment{};
    int workers = 1;  ///< files that are read at once; 0 for as many as there are cores
    bool listMnemonics = true, curves = true, footage = true, intervals = false, statistics = true;
    bool grid = false;          ///< fill the grid, whether statistics are listed or not
    bool includePrice = false;  ///< each detail of the price includes it too
    ReadingChoices choices{};
    PriceDetails price{};
};

/// Told while files are listed.
struct ListWatcher {
    std::function<void(const FileListing&, const ListingOptions&)> listed{};  ///< each file that was read
    std::function<void(const Fault&)> refused{};                              ///< each file that could not be
};

struct ListReport : JobReport {
    ListingOptions options;
    ListingResult result;
    StatisticsGrid grid;
    std::string listingPath, summaryPath;  ///< both texts, in the process's scratch folder
};
/// Each file is opened when its turn comes, and a repaired copy goes as soon as it was read. Refusal when no file could
/// be listed; a cancelled listing is told by its result.
ListReport listFiles(Workbench& bench, const ListRequest& request, const ListWatcher& watcher);

}  // namespace welvane
