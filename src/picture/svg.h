#pragma once

#include <string>

#include "picture/drawing.h"
#include "picture/theme.h"

namespace welvane {

/// The drawing as one SVG document in UTF-8: the same bytes for the same drawing. Groups are `<g>` with their title as
/// `<title>`; texts keep their letters, control characters become U+FFFD. Coordinates are rounded to tenths.
std::string svgText(const Drawing& drawing, Theme theme);

}  // namespace welvane
