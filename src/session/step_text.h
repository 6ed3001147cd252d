#pragma once

#include <string>
#include <string_view>

#include "shared/prompts.h"

/// The text of the Sample Rate row: a plain number, or a list item with its feet and its metre value such as
/// `" 0.5    f ( 0.1524 m)`, between which the depth unit chooses.
namespace welvane {

/// The items offered, "|"-joined.
std::string stepList();
/// The piece of the text that holds the step: of a list item what stands for the depth unit (F and FT take the feet),
/// else all of it.
std::string_view stepPiece(std::string_view text, std::string_view depthUnit);
/// The step, lenient and signed as it stands.
double stepNumber(std::string_view text, std::string_view depthUnit);
/// A step in the form of a list item; a length that four decimals do not hold gets five.
std::string stepItemText(double step, std::string_view depthUnit);
/// The box about a step of zero.
Prompt zeroStepPrompt();

}  // namespace welvane
