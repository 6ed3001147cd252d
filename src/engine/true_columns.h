#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// A null as a column of so many decimals shows it. By FigureRules::trueFigures it keeps the digits that tell it from a
/// figure: -999.3 is no null of -999.25.
std::string nullText(const PassContext& context, int decimals);

/// Decimals and widths of the output's columns by FigureRules::trueFigures: as many decimals as the inputs' values have
/// (at least the format's), and room for the widest value, for the null and for the names of the data title. Notes
/// channels whose figures the decimals asked for change.
void settleTrueColumns(PassContext& context);

}  // namespace welvane
