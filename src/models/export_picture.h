#pragma once

#include <string>
#include <string_view>

#include "models/table_model.h"
#include "shared/prompts.h"

namespace welvane {

enum class PictureKind { Svg, Png };
/// Asks where a picture goes; "" when cancelled. Its kind is that of the name's extension, SVG where it has none of the
/// two.
std::string askPicturePath(UserInterface& user, std::string_view name, PictureKind kind);
PictureKind pictureKind(std::string_view path);
/// Writes the bytes of a picture under a name that it takes when it is whole.
EditOutcome writePictureBytes(const std::string& path, std::string_view bytes);

}  // namespace welvane
