#pragma once

#include <cstdint>

#include "engine/pass_context.h"

namespace welvane {

enum class ReadResult : std::int16_t { ToTheEnd = -1, NotDone = 0, Cancelled = 1 };

/// Reads the ~Ascii section of a slot's file into columns firstColumn to lastColumn of the input matrix. A line goes to
/// the grid sample nearest to its depth (ties to the even index) or, outside the grid, nowhere; a later line overwrites
/// an earlier one. Field 1 of a line is the depth, field n + 1 feeds the n-th column; a missing field is 0. With
/// fixedColumnWidth above 0 fields are cut by position and a missing one is -999.25. No null translation takes place. A
/// depth that is no number ends the reading: NotDone, with a failure that names file and line. So does a file that
/// could not be read to its end.
ReadResult readDataIntoMatrix(PassContext& context, const InputSlot& slot, int firstColumn, int lastColumn);

}  // namespace welvane
