#include "session/step_text.h"

#include <algorithm>
#include <cmath>

#include "session/choices.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

std::string stepList() {
    return "\" 1.0    f ( 0.3048 m)|\" 0.5    f ( 0.1524 m)|\" 0.25   f ( 0.0762 m)|\" 0.1667 f ( 0.0508 m)|"
           "\" 0.0833 f ( 0.0254 m)";
}

std::string_view stepPiece(std::string_view text, std::string_view depthUnit) {
    const std::size_t open = text.find('(');
    if (open == npos || !holdsText(text, "f") || !holdsText(text, "m")) return text;
    const bool feet = isFeet(depthUnit);
    const std::size_t first = feet ? text.find('"') + 1 : open + 1;  // npos + 1 is the begin of the text
    return text.substr(first, std::min(findText(text, feet ? "f" : "m", first), text.size()) - first);
}

double stepNumber(std::string_view text, std::string_view depthUnit) {
    return val(stepPiece(text, depthUnit));
}

std::string stepItemText(double step, std::string_view depthUnit) {
    constexpr double factor = 0.3048;
    const bool feet = isFeet(depthUnit);
    const double length = std::abs(step);
    const auto number = [](double value) {
        std::string text = formatMask(value, 4);
        return val(text) == value ? text : formatMask(value, 5);
    };
    return "\" " + number(feet ? length : length / factor) + " f (" + number(feet ? length * factor : length) + " m)";
}

Prompt zeroStepPrompt() {
    return {"Invalid STEP Value",
            "Please enter a STEP that is not zero. Welvane can only produce LAS files with a non-zero step.",
            Buttons::Ok, Icon::Stop, Answer::Ok};
}

}  // namespace welvane
