#pragma once

#include <span>
#include <string>
#include <vector>

#include "reference/reference_tables.h"

/// From values to places across a track.
namespace welvane {

struct Scale {
    double left = 0, right = 1;  ///< values at the edges; either may be the greater, and they differ
    bool logarithmic = false;    ///< both above 0 then
    /// 0 at the left edge, 1 at the right one, less or more for a value beyond them. On a logarithmic scale a value of
    /// 0 or less lies infinitely far beyond the smaller end.
    double share(double value) const;
    double least() const { return left < right ? left : right; }
    double greatest() const { return left < right ? right : left; }
};

/// Which curves are drawn in one track.
enum class TrackKind { Correlation, Resistivity, Porosity, Sonic, Other };

/// A curve's name and unit, and its samples; NaN is none.
struct CurveValues {
    std::string mnem, unit;
    std::span<const double> values;
};

struct ScaleChoice {
    Scale scale;
    TrackKind kind = TrackKind::Other;
};
/// The scale that a log analyst expects, by curve group and unit ("NPHI" in V/V is 0.45 to -0.15, in PU 45 to -15),
/// else by the unit alone (OHMM is 0.2 to 2000, logarithmic). A curve that the table does not know, or of which less
/// than a tenth would lie on its scale, gets its percentiles 2 and 98, rounded outwards.
ScaleChoice usualScale(const ReferenceTables& reference, const CurveValues& curve);
/// Whole decades around the percentiles 2 and 98 of the values above 0; 0.2 to 2000 where there are none.
Scale decadeScale(std::span<const double> values);
/// The percentiles 2 and 98, rounded outwards; around a constant; 0 to 1 without values.
Scale percentileScale(std::span<const double> values);

/// The group of a mnemonic in the curve library, "" when it is in none.
std::string curveGroup(const ReferenceTables& reference, const std::string& mnem);

/// Values of the lines of a grid behind a scale.
struct GridLines {
    std::vector<double> main, fine;
};
/// Ten divisions, the middle one a main line; logarithmic: the decades, and 2 to 9 times each where they are no more
/// than eight. The edges are no lines.
GridLines gridOf(const Scale& scale);

}  // namespace welvane
