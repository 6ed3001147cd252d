#include "engine/depth_limit.h"

#include <cmath>
#include <string>

#include "session/step_text.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

double depthLimit(std::string_view text, double header) {
    if (text.find_first_of("<>=") == npos) return val(text);
    std::string number;
    for (const char c : text)
        if (c != '<' && c != '>' && c != '=') number += c;
    const double value = val(number);
    if (holdsText(text, "=>") || holdsText(text, ">=")) return value > header ? value : header;
    if (holdsText(text, "=<") || holdsText(text, "<=")) return value < header ? value : header;
    if (holdsText(text, ">")) return value >= header ? value : header;
    if (holdsText(text, "<")) return value <= header ? value : header;
    return value;
}

double gridStep(std::string_view text, std::string_view depthUnit) {
    return val(formatMask(std::abs(stepNumber(text, depthUnit)), 4));
}

}  // namespace welvane
