#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/channel_statistics.h"
#include "las/las_file.h"
#include "listing/listing_options.h"
#include "platform/output_file.h"
#include "shared/figure_rules.h"

/// The listing of one file: its facts as values, then as text.
namespace welvane {

/// What a listing is to hold, taken from ord.
struct ListingOptions {
    /// By true figures: cells, columns and index by these rules, names as the file writes them, no sum over unlike
    /// units, no total that was not counted.
    FigureRules rules = FigureRules::asLaidDown;
    ChannelReading reading{};  ///< with indexUnit (the file's own when "") by true figures only
    std::string indexUnit{};
    bool curveList = false, footageStats = false, intervals = false, minMaxStats = false, mnemonicsList = false,
         includePrice = false;
    std::string topName, comment, pricingComment;
    std::vector<std::string> mnemonics;
    PriceInput price;

    /// The statistics of the data are needed.
    bool needsStatistics() const { return footageStats || minMaxStats || includePrice; }
};
/// RunTimeFailure for a price beyond a single.
ListingOptions readListingOptions(const Table& ord);

/// A header line that was asked for by its mnemonic.
struct ListedField {
    std::string mnem, value, desc;
};

/// One file of a listing. Depths and lengths are in its own unit.
struct FileListing {
    std::string path;
    std::string well;  ///< VALUE of WELL
    std::vector<ListedField> fields;
    LasStatistics statistics;  ///< element 0 of its channels is the index
    std::vector<Note> notes;   ///< by true figures: what is to be told of its figures
    bool hasStatistics = false;
    bool hasLengths = true;  ///< false where its index is no depth in metres or feet: it adds to no total and no price
    double depthFactor = 1;  ///< feet in one of its unit
    double curveTotal = 0;   ///< non-null length of all channels
    double fullTotal = 0;    ///< number of channels x length of the interval
    float price = 0;
};

/// Reads a file; Failed without channels or data, FileFailure when a part of it cannot be read. Boxes tell of gaps in
/// its header. By true figures notes tell, and what cannot be read is a DataRefusal or a RunTimeFailure. `name` is the
/// file's for people.
StepResult readFileListing(App& app, const LasFile& file, const std::string& name, const ListingOptions& options,
                           FileListing& listing);
/// Writes its part of the listing.
void writeFileListing(const FileListing& listing, const ListingOptions& options, OutputFile& output);

}  // namespace welvane
