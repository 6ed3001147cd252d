#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Options and grid of a pass, from prd. False when the pass must stop: report.refusal then says why (a step of zero, a
/// question answered with Cancel, a grid beyond 32 bits or beyond the memory that is free). Takes no matrix memory yet.
bool deriveGrid(PassContext& context);

/// A limit text of prd rows 1 and 2: a plain number, or a sign and a number that bound `header` (slot 0's STRT or
/// STOP).
double depthLimit(std::string_view text, double header);

/// The step of the grid that a text of prd row 3 tells: positive, rounded to four decimals.
double gridStep(std::string_view text, std::string_view depthUnit);

/// Output channels: columns of srd(4) from 1 with a mnemonic.
int countOutputChannels(const SessionTables& tables);

/// Bytes of the two matrices.
std::uint64_t matrixBytes(const PassContext& context);

}  // namespace welvane
