#pragma once

#include "engine/pass.h"

namespace welvane {

/// Takes the two matrices: the input matrix with all samples null, ready for readInputs.
void allocateInputs(PassContext& context);
/// Reads every loaded slot onto the grid and treats its columns: rate check, fill, clip, offset. With noInputRun slot 0
/// alone, untreated.
void readInputs(PassContext& context);
/// The output channels, spliced from the inputs by the From and To of their links: a later slot overwrites an earlier
/// one, nulls included.
void composeChannels(PassContext& context);
/// Runs the functions of the output channels in column order.
void applyFunctions(PassContext& context);
/// Running three-point smoothing of every output channel, forward through its own results.
void applyDovranFilter(PassContext& context);

}  // namespace welvane
