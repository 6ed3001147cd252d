#include "las/depth_spacing.h"

#include <algorithm>
#include <cmath>

#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

std::size_t decimalsOf(std::string_view number) {
    const std::size_t dot = number.find('.');
    if (dot == npos) return 0;
    const std::size_t end = std::min(number.find_first_not_of("0123456789", dot + 1), number.size());
    return end - dot - 1;
}

int decimalsToShow(double value) {
    return static_cast<int>(decimalsOf(stripZeros(formatMask(value, static_cast<int>(mostDepthDecimals)))));
}

double depthRounding(std::size_t decimals) {
    return 1.01 * std::pow(10.0, -static_cast<double>(decimals));
}

bool followStep(const std::vector<double>& depths, double step, double tolerance) {
    for (std::size_t index = 0; index < depths.size(); ++index)
        if (!(std::abs(depths[index] - depths.front() - static_cast<double>(index) * step) <= tolerance)) return false;
    return true;
}

std::string regularStep(const std::vector<double>& depths, std::size_t decimals) {
    if (depths.size() < 2) return {};
    constexpr std::size_t moreDecimals = 3, mostDecimals = 12;
    const double mean = (depths.back() - depths.front()) / static_cast<double>(depths.size() - 1);
    const double tolerance = std::min(depthRounding(decimals), std::abs(mean) / 4);
    for (std::size_t shown = decimals; shown <= std::min(decimals + moreDecimals, mostDecimals); ++shown) {
        std::string step = stripZeros(formatMask(mean, static_cast<int>(shown)));
        if (val(step) != 0 && followStep(depths, val(step), tolerance)) return step;
    }
    return {};
}

}  // namespace welvane
