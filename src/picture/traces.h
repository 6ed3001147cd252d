#pragma once

#include <span>
#include <vector>

#include "picture/axis.h"
#include "picture/drawing.h"
#include "picture/extremes.h"
#include "picture/scales.h"

namespace welvane {

/// A curve as lines: gaps stay gaps, and of each row of pixels as much as is seen.
struct Trace {
    Polyline inside;  ///< the curve, held at the edges of the track where it lies beyond its scale
    Polyline beyond;  ///< along the edges, where it does
};

/// Which samples fall into which row of pixels: samples rows[r] to rows[r + 1] - 1 into row r. Made once for all curves
/// over the same depths.
struct PixelRows {
    std::vector<std::size_t> begins;  ///< one more than rows
    std::size_t first = 0,
                last = 0;  ///< samples `first` to `last` - 1 are drawn: those on the axis and one on each side
};
PixelRows pixelRows(std::span<const double> depths, const DepthAxis& axis);

/// The curve of `values` at `depths` within the area of its track. A row with many samples is drawn by its first,
/// least, greatest and last one, so that no peak is lost; a stretch without values is a gap, but for one inside a
/// single row.
Trace traceOf(std::span<const double> depths, std::span<const double> values, const PixelRows& rows,
              const DepthAxis& axis, const Scale& scale, const Area& track);

}  // namespace welvane
