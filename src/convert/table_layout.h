#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "convert/table_text.h"

/// How a generic table is laid out: its delimiter, where its data start, what its columns are called.
namespace welvane {

struct TableLayout {
    Delimiter delimiter = Delimiter::Blanks;
    std::size_t dataPosition = 0;  ///< first byte of the first data line; the text's length when there is none
    std::size_t columns = 0;       ///< fields of that line
    /// Per column, "" where not told. A unit is what stands in "(" and ")" behind a name, or in the line under the
    /// names.
    std::vector<std::string> names, units;
};

/// A line of "===" rules, which stands between the names and the data of a report.
bool isRuleLine(std::string_view line);

/// Text of a names line as name and unit apart: "Depth (m)  GR (API)" gives two.
struct NameAndUnit {
    std::string name, unit;
};
std::vector<NameAndUnit> namesWithUnits(std::string_view line, Delimiter delimiter);

/// The delimiter under which most of the first lines are rows of numbers.
Delimiter guessDelimiter(std::string_view bytes);

/// Looks at the text. `dataLine` is the 1-based number of the line marked "Data Starts Here"; 0 looks for the first row
/// of numbers that has another like it behind it. A line beyond the text gives a layout without columns.
TableLayout findTableLayout(std::string_view bytes, Delimiter delimiter, std::size_t dataLine);

/// A unit as a LAS file has it: "OHM.M" is "OHMM", "FT3/FT3" and "M3/M3" are "V/V"; others as they stand.
std::string normalUnit(std::string_view unit);

}  // namespace welvane
