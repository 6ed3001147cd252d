#include "shared/numbers.h"

#include <limits>

#include "shared/failure.h"

namespace welvane {

namespace {

[[noreturn]] void overflow() {
    throw RunTimeFailure("overflow");
}

/// Nearest whole number, ties to even, of a value below 2^51: the addition leaves no bits for the fraction.
double nearestEven(double value) {
    constexpr double noFraction = 0x1.8p52;
    return value + noFraction - noFraction;
}

/// The nearest whole number within the limits of `Whole`; anything else, NaN too, overflows.
template <class Whole>
Whole checkedNearest(double value) {
    constexpr double low = std::numeric_limits<Whole>::min();
    constexpr double high = std::numeric_limits<Whole>::max();
    // Both ends are tested before rounding: low - 0.5 is a tie to the even `low`, high + 0.5 one to high + 1.
    if (!(value >= low - 0.5 && value < high + 0.5)) overflow();
    return static_cast<Whole>(nearestEven(value));
}

}  // namespace

std::int32_t roundToEven(double value) {
    return checkedNearest<std::int32_t>(value);
}

std::int32_t floorToInt32(double value) {
    if (!(value >= std::numeric_limits<std::int32_t>::min() && value < std::numeric_limits<std::int32_t>::max() + 1.0))
        overflow();
    const auto towardsZero = static_cast<std::int32_t>(value);
    return towardsZero > value ? towardsZero - 1 : towardsZero;
}

std::int16_t toInt16(double value) {
    return checkedNearest<std::int16_t>(value);
}

std::int32_t toInt32(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
        overflow();
    return static_cast<std::int32_t>(value);
}

float toSingle(double value) {
    // Half a unit above the largest single; from there on rounding leaves the singles.
    constexpr double limit = 0x1.ffffffp127;
    if (!(value > -limit && value < limit)) overflow();
    return static_cast<float>(value);
}

}  // namespace welvane
