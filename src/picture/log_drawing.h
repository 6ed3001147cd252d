#pragma once

#include <vector>

#include "picture/drawing.h"
#include "picture/log_plot.h"

namespace welvane {

/// The part of the index that is drawn, and the size of the picture; 0 leaves a size to the plot.
struct PlotPage {
    double top = 0, bottom = 0;  ///< top not below bottom
    double width = 0, height = 0;
};
/// Smallest index and greatest one of all sources; 0 and 0 where none has a sample.
PlotPage wholePage(const std::vector<PlotSource>& sources);

/// The plot as a picture: titles, a head for each curve with both ends of its scale, tracks with their grids, an index
/// track with round steps. Each curve is a group that tells its mnemonic. A curve beyond its scale runs along the edge
/// of its track as a thick mark. RunTimeFailure for a page that is too small ("the picture needs a width of 500").
Drawing logDrawing(const LogPlot& plot, const std::vector<PlotSource>& sources, const PlotPage& page);

}  // namespace welvane
