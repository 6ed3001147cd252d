#pragma once

#include <string>
#include <vector>

#include "jobs/true_input.h"
#include "las/header_line.h"

/// A well with all its channels in memory, for programs that compute on them.
namespace welvane {

/// A section of a header but ~Curve and ~A. Texts are UTF-8.
struct WellSection {
    std::string title{};               ///< the whole title line, "~" in front
    char letter = 0;                   ///< V, W, P or O; 0 for any other section
    std::vector<HeaderField> lines{};  ///< of V, W, P: the value of a ~Well line of LAS 1.2 stands in `value` too
    std::vector<std::string> text{};   ///< of other sections, and the lines that are no header lines; no comments
};

/// One channel, or the index.
struct WellChannel {
    HeaderField field{};           ///< its ~Curve line in UTF-8, the mnemonic distinct: a second GR is GR_1
    std::vector<double> values{};  ///< one for each record, NaN for null
};

struct WellData : JobReport {
    std::vector<WellChannel> channels;  ///< element 0 the index; those that the data lack are null throughout
    std::vector<WellSection> sections;  ///< in their order
    std::string indexUnit;              ///< "" where none is known
    std::string version;                ///< of VERS, as it stands
    double nullValue = 0;               ///< what stands for null in the file
    bool wrapped = false;
};
/// Reads all of the file. Refusal for what cannot be read, and when a person stopped it.
WellData readWell(Workbench& bench, const std::string& file, const ReadingChoices& choices);

}  // namespace welvane
