#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "las/las_text.h"

/// The ~A data of a text without loading it: their shape and their ends.
namespace welvane {

enum class DataLayout : std::int16_t {
    OneLine = 1,   ///< one line per depth step
    Wrapped = 2,   ///< the depth alone on a line, the values on the lines behind it
    Undecided = 3  ///< no ~A, or lines of no regular shape
};

/// Shape of the data by its first 200 non-blank lines (the file's last line is not taken).
struct DataShape {
    DataLayout layout = DataLayout::Undecided;
    std::int16_t linesPerStep = 0;
    std::int32_t bytesPerStep = 0;
    std::int32_t wordsPerStep = 0;
    /// For Undecided: 1-based line numbers of the first line and of the first one that differs in its word count; 0
    /// when there are none.
    std::size_t firstLineNumber = 0, differingLineNumber = 0;
};
DataShape detectDataLayout(const LasText& text);

struct DataEnds {
    bool found = false;  ///< the text has ~A
    double firstDepth = 0, lastDepth = 0;
    bool hasLastDepth = false;
    std::int64_t firstPosition = 0, lastPosition = 0;  ///< file positions (1-based); last is 0 when not found
};
/// Looks at the first line and, by the shape, at the last three steps only.
DataEnds locateDataEnds(const LasText& text, const DataShape& shape);

/// Why data of this shape are of no use, naming the two lines that differ.
std::string shapeProblem(const DataShape& shape);

}  // namespace welvane
