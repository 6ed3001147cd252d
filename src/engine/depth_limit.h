#pragma once

#include <string_view>

namespace welvane {

/// A limit text of prd rows 1 and 2: a plain number, or a sign and a number that bound `header` (slot 0's STRT or
/// STOP).
double depthLimit(std::string_view text, double header);

/// The step of the grid that a text of prd row 3 tells: positive, rounded to four decimals.
double gridStep(std::string_view text, std::string_view depthUnit);

}  // namespace welvane
