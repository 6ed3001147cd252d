#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "las/input_slot.h"

/// The ~A data of a file without loading it: shape, ends, facts of a slot; wrap conversion, tops and statistics.
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
DataShape detectDataLayout(std::string_view path);

struct DataEnds {
    bool found = false;  ///< the file could be read and has ~A
    double firstDepth = 0, lastDepth = 0;
    bool hasLastDepth = false;
    std::int64_t firstPosition = 0, lastPosition = 0;  ///< file positions (1-based); last is 0 when not found
};
/// Looks at the first line and at the last three steps only.
DataEnds locateDataEnds(std::string_view path, std::int32_t wordsPerStep, std::int32_t bytesPerStep, bool wrapped);

/// Words of the text; each is read as a number and given back as the shortest text of that number ("1.500" gives
/// "1.5"). A run of the delimiter counts as one. Returns the count.
std::size_t splitValues(std::string_view text, char delimiter, std::vector<std::string>& words);

/// Fills all of `slot` from the file's header and the shape of its data; false when the file cannot be read or has no
/// data (what was found stays set).
bool fillInputSlot(std::string_view path, InputSlot& slot);

/// Columns of one ~Curve section: element 0 the index line, as SlotChannels wants it. Empty without a section.
SlotChannels readSlotChannels(std::string_view path);

}  // namespace welvane
