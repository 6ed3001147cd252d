#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>
#include <optional>

#include "picture/theme.h"

/// From the marks of the tables to colours that can be read in a light and in a dark window.
namespace welvane {

/// What the palette of a window is.
Theme themeOf(const QPalette& palette);
QColor colourIn(Ink ink, Theme theme);
/// Behind a cell with this mark; nothing for one that is plain. The bands of the four files are tints of the colours
/// that the pictures have for them.
std::optional<QColor> cellColour(std::uint32_t mark, Theme theme);

}  // namespace welvane
