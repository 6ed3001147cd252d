#include "desktop/theme.h"

#include <algorithm>

#include "session/session_tables.h"

namespace welvane {

namespace {

/// How much of a colour lies over the base, of 255.
constexpr int bandTint = 40, markTint = 110, greyTint = 40;
constexpr std::uint32_t byteMask = 0xFF;

}  // namespace

Theme themeOf(const QPalette& palette) {
    constexpr int middle = 128;
    return palette.window().color().lightness() < middle ? Theme::Dark : Theme::Light;
}

QColor colourIn(Ink ink, Theme theme) {
    const Colour rgb = colourOf(ink, theme);
    return {rgb.red, rgb.green, rgb.blue};
}

std::optional<QColor> cellColour(std::uint32_t mark, Theme theme) {
    if (mark == 0 || mark == colours::editable) return std::nullopt;
    const auto slot = std::find(colours::slots.begin(), colours::slots.end(), mark);
    if (slot != colours::slots.end()) {
        QColor band = colourIn(slotInk(static_cast<int>(slot - colours::slots.begin())), theme);
        band.setAlpha(bandTint);
        return band;
    }
    // Marks have red in their low byte.
    const auto part = [mark](unsigned shift) { return static_cast<int>(mark >> shift & byteMask); };
    return QColor(part(0), part(8), part(16), mark == colours::fixed ? greyTint : markTint);
}

}  // namespace welvane
