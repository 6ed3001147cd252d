#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The spacing of depths that are known to so many decimals.
namespace welvane {

/// Digits behind the point of a number's text; 0 without a point.
std::size_t decimalsOf(std::string_view number);
/// The longest fraction that a depth, a step or a null is printed with.
inline constexpr std::size_t mostDepthDecimals = 12;
/// Digits behind the point that the number takes when printed, mostDepthDecimals at most.
int decimalsToShow(double value);
/// What the rounding of two depths to their decimals can be out by.
double depthRounding(std::size_t decimals);
/// True when depth i is the first one plus i steps, give or take the tolerance.
bool followStep(const std::vector<double>& depths, double step, double tolerance);
/// The step that all depths follow, as a text with the fewest decimals that do; "" where they have none, which one
/// depth alone never has.
std::string regularStep(const std::vector<double>& depths, std::size_t decimals);

}  // namespace welvane
