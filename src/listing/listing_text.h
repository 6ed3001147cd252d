#pragma once

#include <string>
#include <string_view>

#include "shared/settings.h"
#include "shared/text.h"

/// Small helpers of the listing's text.
namespace welvane {

/// Left-justified in `width`; a longer text stays whole.
inline std::string leftAligned(std::string_view text, std::size_t width) {
    std::string result(text);
    if (result.size() < width) result.resize(width, ' ');
    return result;
}

/// As leftAligned, with at least one blank behind the text, for columns that stand side by side.
inline std::string columnText(std::string_view text, std::size_t width) {
    return leftAligned(text, width - 1) + " ";
}

/// Right-justified in `width`; a longer text stays whole.
inline std::string rightJustified(std::string_view text, std::size_t width) {
    return text.size() < width ? rightAligned(text, width) : std::string(text);
}

/// Feet in one of the unit: 1, or 1 / 0.3048 for a unit that begins with "M".
inline double feetPerUnit(std::string_view depthUnit) {
    return beginsWith(depthUnit, "M") ? 1 / 0.3048 : 1;
}

}  // namespace welvane
