#pragma once

#include <string>
#include <vector>

#include "shared/figure_rules.h"

namespace welvane {

/// Makes equal names (case ignored) distinct by an ending; `names` are mnemonics in column order, and the first of
/// them, the depth's, keeps its name. Near linear in the total length of the names that come out.
///
/// By FigureRules::trueFigures the first of several equal names stays and the others become NAME_1, NAME_2 ..., passing
/// over what another column is called already: all are different. As laid down each name in turn pushes every other one
/// that equals it on by one step: "GR" becomes "GR_1", "GR_9" becomes "GR_10", "GR_10" becomes "GR_10_1" and "A_X"
/// stays, so that names can come out equal and, for thousands of equal ones, very long.
void makeDistinct(std::vector<std::string>& names, FigureRules rules);

}  // namespace welvane
