#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "listing/file_report.h"
#include "listing/unique_channels.h"

/// What a listing tells over all its files.
namespace welvane {

/// Sums over the files. Lengths are in `depthUnit`, that of the first file; files in the other unit are converted.
struct ListingTotals {
    std::string depthUnit;
    bool hasUnit = false;                     ///< a file was read
    double depthFactor = 1;                   ///< feet in one of depthUnit
    std::vector<std::string> withoutLengths;  ///< files whose index is no depth: they are in no sum
    double nonNullCurve = 0;                  ///< non-null curve length
    double fullCurve = 0;                     ///< number of channels x length of the interval
    double sumOfPrices = 0;
    HeaderField index;  ///< the index curve of the first file
    UniqueChannels unique;

    /// Adds a file that was read.
    void add(const FileListing& listing, const ListingOptions& options);
};

/// "07-Jun-2024".
std::string dateText(std::chrono::year_month_day date);
/// Today by the local clock.
std::chrono::year_month_day localToday();

/// Writes the summary with, when asked for, its cost estimate.
void writeSummary(const ListingTotals& totals, const ListingOptions& options, std::chrono::year_month_day today,
                  OutputFile& output);

}  // namespace welvane
