#pragma once

#include <string>

#include "jobs/workbench.h"
#include "picture/drawing.h"
#include "picture/theme.h"

namespace welvane {

/// How a picture is written.
struct PictureRequest {
    std::string output{};  ///< the file; "" or "-" for none
    Theme theme = Theme::Light;
    double width = 0, height = 0;  ///< in pixels; 0 leaves them to the picture

    bool named() const { return !output.empty() && output != "-"; }
};

/// Refusal for a size that is no picture's, and for a picture that cannot be written, before any work is done.
void checkPicture(Workbench& bench, const PictureRequest& request, const std::vector<Input>& inputs);
/// The drawing as SVG, written to the file when one is named. The file takes its name when it is whole.
std::string writePicture(Workbench& bench, const Drawing& drawing, const PictureRequest& request);

}  // namespace welvane
