#pragma once

#include <string>
#include <vector>

#include "jobs/pass_request.h"
#include "jobs/picture_file.h"
#include "jobs/workbench.h"
#include "picture/log_plot.h"

namespace welvane {

struct PlotRequest {
    std::vector<std::string> files{};  ///< one to four
    PictureRequest picture{};
    PlotWishes wishes{};
    /// From and To bound what is drawn. With anything else set the files are joined and computed by a pass, as a run
    /// does it, and what comes out is drawn.
    PassRequest pass{};
    std::string session{};  ///< a saved session, whose output is drawn; its inputs are the files where none are named
};
struct PlotReport : JobReport {
    std::size_t sources = 0, curves = 0;  ///< files, and channels drawn
    double top = 0, bottom = 0;           ///< of the index
    std::string indexUnit;
    std::string svg;
};
/// Draws the channels of files as they stand, or of an output that is not written, as a log plot. Refusal for files
/// that cannot be read, for channels that they do not have, and for a picture that is too small or cannot be written.
PlotReport plotFiles(Workbench& bench, const PlotRequest& request);

}  // namespace welvane
