#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// What readInputs does, by FigureRules::trueFigures: places the records of every loaded slot on the grid, each channel
/// by its own shift and within its own clip, fills gaps where that was asked for, and notes what has no place.
void placeInputs(PassContext& context);

}  // namespace welvane
