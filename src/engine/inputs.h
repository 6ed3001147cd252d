#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Takes the input matrix with all samples null, ready for readInputs.
void allocateInputs(PassContext& context);
/// Reads every loaded slot onto the grid and treats its columns: rate check, fill, clip, offset. With noInputRun slot 0
/// alone, untreated. By FigureRules::trueFigures the records that were read when the slots were loaded are placed.
void readInputs(PassContext& context);

}  // namespace welvane
