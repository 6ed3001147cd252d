#include "jobs/picture_file.h"

#include "picture/svg.h"
#include "platform/output_file.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

void checkSize(const char* choice, double size) {
    constexpr double least = 120, most = 30000;
    if (size == 0 || (size >= least && size <= most)) return;
    throw senselessChoice(choice, plainNumber(size) + " is no size of a picture (" + plainNumber(least) + " to " +
                                      plainNumber(most) + ")");
}

}  // namespace

void checkPicture(Workbench& bench, const PictureRequest& request, const std::vector<Input>& inputs) {
    checkSize("width", request.width);
    checkSize("height", request.height);
    if (request.named()) bench.checkOutput(request.output, inputs);
}

std::string writePicture(Workbench& bench, const Drawing& drawing, const PictureRequest& request) {
    std::string svg = svgText(drawing, request.theme);
    if (!request.named()) return svg;
    OutputFile file(request.output, bench.outputMode());
    file.write(svg);
    file.commit();
    return svg;
}

}  // namespace welvane
