#pragma once

#include "las/input_slot.h"
#include "las/las_file.h"

namespace welvane {

/// Fills all of `slot` but its file from the header and the shape of the data; false when there are no data (what was
/// found stays set).
bool fillInputSlot(const LasFile& file, InputSlot& slot);

/// What InputSlot::lasVersion holds of the file. Kept: a blank stands for a header that has no VERS line in front of
/// its data.
std::string lasVersionOf(const LasFile& file);

/// Columns of one ~Curve section: element 0 the index line, as SlotChannels wants it. Empty without a section.
SlotChannels readSlotChannels(const LasFile& file);

}  // namespace welvane
