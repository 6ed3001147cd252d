#include "cli/picture_options.h"

#include "shared/text.h"

namespace welvane {

void addPictureOptions(VerbOptions& rows, PictureChoices& choices) {
    addOptions(rows, "Picture",
               {{"-o,--output", &choices.output, "PICTURE.svg", "The picture to write; - is stdout"},
                {"--theme",
                 &choices.theme,
                 "light|dark",
                 "Dark on light, or light on dark (light)",
                 {.words = {"light", "dark"}, .anyCase = true}},
                {"--width", &choices.width, "PIXELS", "Width of the picture", {.least = 120, .most = 30000}},
                {"--height", &choices.height, "PIXELS", "Height of the picture", {.least = 120, .most = 30000}}});
}

PictureRequest pictureRequest(const PictureChoices& choices) {
    return {choices.output, sameText(choices.theme, "dark") ? Theme::Dark : Theme::Light, choices.width,
            choices.height};
}

}  // namespace welvane
