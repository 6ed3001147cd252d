#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Runs the functions of the output channels in column order.
void applyFunctions(PassContext& context);
/// Running three-point smoothing of every output channel, forward through its own results.
void applyDovranFilter(PassContext& context);

}  // namespace welvane
