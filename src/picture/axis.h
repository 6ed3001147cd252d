#pragma once

#include <string>
#include <vector>

#include "picture/drawing.h"

/// The depth axis of a picture: round steps, and where a depth stands.
namespace welvane {

/// The smallest of 1, 2 and 5 times a power of ten that is not below `least`; 1 where `least` is no positive number.
double roundStep(double least);
/// Multiples of `step` from `from` to `to`, both included; none where they would be more than 10000.
std::vector<double> multiplesOf(double step, double from, double to);
/// A multiple of a round step with the decimals that the step needs.
std::string axisNumber(double value, double step);
/// A value with at most six significant digits, for reading.
std::string shortNumber(double value);

/// Depths `top` to `bottom` over heights of the drawing.
struct DepthAxis {
    double top = 0, bottom = 0;           ///< depths, top the smaller
    double upperEdge = 0, lowerEdge = 0;  ///< their places
    /// Where a depth stands; outside the axis for one outside. A range without length stands in the middle.
    double place(double depth) const {
        const double share = bottom > top ? (depth - top) / (bottom - top) : 0.5;
        return upperEdge + share * (lowerEdge - upperEdge);
    }
    /// The round step that leaves `room` between two main lines.
    double mainStep(double room) const;
};

}  // namespace welvane
