#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Start, stop and the decimals of the written depths by FigureRules::trueFigures, for the step that the
/// grid has. While the step is
/// the inputs' own, the grid is the one on which the first input's records lie, and a From or To between two records
/// takes the first or last record inside. False, with `report.refusal` where nothing is left
/// between From and To.
bool deriveTrueGrid(PassContext& context);

}  // namespace welvane
