#pragma once

#include <cstdint>
#include <string_view>

#include "picture/drawing.h"

namespace welvane {

enum class Theme { Light, Dark };

struct Colour {
    std::uint8_t red = 0, green = 0, blue = 0;
};
/// What a colour looks like. The four of the slots are blue, orange, bluish green and reddish purple, which also people
/// who are colour-blind tell apart; each stands out from the paper of its theme. Ink::None is the paper's.
Colour colourOf(Ink ink, Theme theme);

}  // namespace welvane
