#include "picture/theme.h"

#include <array>

namespace welvane {

namespace {

struct InkRow {
    Ink ink;
    Colour light, dark;
};

/// Slots and curves after M. Okabe and K. Ito, "Color Universal Design" (2008), made darker on white and lighter on
/// black.
constexpr std::array<InkRow, 19> inkRows = {{{Ink::None, {255, 255, 255}, {24, 26, 30}},
                                             {Ink::Paper, {255, 255, 255}, {24, 26, 30}},
                                             {Ink::Panel, {246, 247, 249}, {34, 37, 43}},
                                             {Ink::Text, {28, 30, 34}, {232, 234, 238}},
                                             {Ink::Faint, {96, 102, 112}, {160, 167, 178}},
                                             {Ink::Frame, {92, 98, 108}, {118, 125, 137}},
                                             {Ink::Grid, {228, 231, 235}, {44, 48, 55}},
                                             {Ink::StrongGrid, {192, 198, 206}, {70, 76, 87}},
                                             {Ink::Slot1, {0, 108, 174}, {92, 178, 240}},
                                             {Ink::Slot2, {196, 90, 0}, {240, 168, 60}},
                                             {Ink::Slot3, {0, 124, 92}, {50, 200, 156}},
                                             {Ink::Slot4, {170, 76, 130}, {228, 152, 196}},
                                             {Ink::OnSlot, {255, 255, 255}, {16, 18, 22}},
                                             {Ink::Curve1, {0, 108, 174}, {92, 178, 240}},
                                             {Ink::Curve2, {196, 90, 0}, {240, 168, 60}},
                                             {Ink::Curve3, {0, 124, 92}, {50, 200, 156}},
                                             {Ink::Curve4, {170, 76, 130}, {228, 152, 196}},
                                             {Ink::Curve5, {40, 42, 48}, {226, 228, 232}},
                                             {Ink::Curve6, {146, 124, 0}, {236, 220, 92}}}};

}  // namespace

Colour colourOf(Ink ink, Theme theme) {
    const InkRow& row = inkRows[static_cast<std::size_t>(ink)];
    return theme == Theme::Light ? row.light : row.dark;
}

}  // namespace welvane
