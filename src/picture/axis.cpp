#include "picture/axis.h"

#include <cmath>

#include "shared/numbers.h"

namespace welvane {

double roundStep(double least) {
    if (!(least > 0) || !std::isfinite(least)) return 1;
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        // A step that is meant to be round and came out a little larger by reckoning.
        if (factor * power >= least * (1 - 1e-9)) return factor * power;
    }
    return 10 * power;
}

std::vector<double> multiplesOf(double step, double from, double to) {
    std::vector<double> multiples;
    const double first = std::ceil(from / step - 1e-9), last = std::floor(to / step + 1e-9);
    if (!(last - first < 10000)) return multiples;
    // Counted from the first one: a count near 10^38 would stay where it is.
    for (int index = 0; index <= static_cast<int>(last - first); ++index) multiples.push_back((first + index) * step);
    return multiples;
}

std::string axisNumber(double value, double step) {
    if (!(std::abs(value) < 1e12)) return plainNumber(static_cast<float>(value));
    const int decimals = static_cast<int>(std::max(0.0, std::ceil(-std::log10(step) - 1e-9)));
    return formatMask(value, std::min(decimals, 12));
}

std::string shortNumber(double value) {
    const double size = std::abs(value);
    if (size != 0 && (size >= 1e7 || size < 1e-4)) return plainNumber(static_cast<float>(value));
    int decimals = 5;
    for (double limit = 10; decimals > 0 && size >= limit; limit *= 10) --decimals;
    return stripZeros(formatMask(value, size < 1 ? 6 : decimals));
}

double DepthAxis::mainStep(double room) const {
    return roundStep((bottom - top) * room / (lowerEdge - upperEdge));
}

}  // namespace welvane
