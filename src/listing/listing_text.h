#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "las/statistics.h"
#include "shared/figure_rules.h"
#include "shared/numbers.h"
#include "shared/settings.h"
#include "shared/text.h"

/// Small helpers of the listing's text.
namespace welvane {

/// The largest sample of a channel, whatever its sign.
inline double largestOf(const ChannelStatistics& channel) {
    return std::max(std::abs(channel.minimum), std::abs(channel.maximum));
}

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

/// A figure of the listing with four decimals. By true figures one that four decimals would cut to nothing, or that is
/// too large for all its digits to be known, is written in full; not so a mean or a deviation that is next to nothing
/// beside the largest of its samples, `largest`, since rounding alone makes such a one.
inline std::string figureText(double value, FigureRules rules, double largest = 0) {
    const double size = std::abs(value);
    const bool masked = value == 0 || (size >= 1e-3 && size < 1e15) || size < 1e-6 * largest;
    return masked || rules == FigureRules::asLaidDown ? formatMask(value, 4) : plainNumber(value);
}

/// Feet in one of the unit: 1, or 1 / 0.3048 for a unit that begins with "M".
inline double feetPerUnit(std::string_view depthUnit) {
    return beginsWith(depthUnit, "M") ? 1 / 0.3048 : 1;
}

}  // namespace welvane
