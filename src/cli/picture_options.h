#pragma once

#include <string>

#include "cli/options.h"
#include "jobs/picture_file.h"

/// The options of a verb that draws.
namespace welvane {

struct PictureChoices {
    std::string output, theme;
    double width = 0, height = 0;
};
/// Adds the options to those of a verb; `usual` tells the sizes that a picture has without them.
void addPictureOptions(VerbOptions& rows, PictureChoices& choices);
PictureRequest pictureRequest(const PictureChoices& choices);

}  // namespace welvane
