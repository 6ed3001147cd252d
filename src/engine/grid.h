#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Options and grid of a pass, from prd. False when the pass must stop: report.refusal then says why (a step of zero, a
/// question answered with Cancel, a grid beyond 32 bits or beyond the memory that is free). Takes no matrix memory yet.
bool deriveGrid(PassContext& context);

/// False, with a refusal, where the two matrices do not fit into the memory that is free.
bool memorySuffices(PassContext& context);

/// Bytes of the two matrices.
std::uint64_t matrixBytes(const PassContext& context);

}  // namespace welvane
