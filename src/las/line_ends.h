#pragma once

#include <cstdint>
#include <string_view>

namespace welvane {

enum class LineEnds : std::int16_t {
    Good = -1,      ///< CR LF
    Undecided = 0,  ///< mixed, or the file could not be read
    Unix = 1,       ///< LF only
    Missing = 2,
    Empty = 3,
    Binary = 4  ///< a NUL byte in the first block
};

/// How the lines of a text end, by its first 4096 bytes and its last 4096: of a shorter one all of it, twice.
LineEnds lineEndsOf(std::string_view head, std::string_view tail);
/// The same for a caller that has the whole text.
LineEnds lineEndsOf(std::string_view bytes);

}  // namespace welvane
