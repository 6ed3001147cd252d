#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Decimals and widths of the output's columns by FigureRules::trueFigures: as many decimals as the inputs' values have
/// (at least the format's), and room for the widest value, for the null and for the names of the data title. Notes
/// channels whose figures the decimals asked for change.
void settleTrueColumns(PassContext& context);

}  // namespace welvane
