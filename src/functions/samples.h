#pragma once

#include <limits>

/// What the arithmetic of all functions says of one sample.
namespace welvane {

/// What a sample becomes that cannot be told.
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Nulls are compared as singles, as they stand in a file.
inline bool isNull(double value, float nullValue) {
    return static_cast<float>(value) == nullValue;
}

}  // namespace welvane
