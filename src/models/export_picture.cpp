#include "models/export_picture.h"

#include "platform/output_file.h"
#include "shared/text.h"

namespace welvane {

std::string askPicturePath(UserInterface& user, std::string_view name, PictureKind kind) {
    const std::string extension = kind == PictureKind::Png ? "png" : "svg";
    return user.askFile({"Save Picture", extension, "", std::string(name) + "." + extension, true});
}

PictureKind pictureKind(std::string_view path) {
    return endsWith(path, ".png") ? PictureKind::Png : PictureKind::Svg;
}

EditOutcome writePictureBytes(const std::string& path, std::string_view bytes) {
    try {
        OutputFile file(path, OutputFile::Mode::Beside);
        file.write(bytes);
        file.commit();
    } catch (const std::exception& error) {
        return {false, error.what()};
    }
    return {true, "Written: " + path};
}

}  // namespace welvane
