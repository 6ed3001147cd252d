#pragma once

#include <cstdint>
#include <string_view>

#include "shared/prompts.h"

namespace welvane {

enum class EditPart : char { Mnem = 'M', Unit = 'U', Value = 'V', Desc = 'D' };
enum class EditResult : std::int16_t { Done = -1, Refused = 1 };  ///< refused, or not found

/// Gives one field of a header line a new text, dot, value and colon staying where they stand. A line that keeps its
/// length is overwritten in place, byte for byte; for a longer one the file is written anew beside itself and renamed,
/// so that a failure leaves the old one whole. `section` is V, W, C, P, O, or 0 for the whole header. Refused: no such
/// file, section or line, an empty mnemonic, a file that cannot be written, and, with a box, a line of fewer than 20
/// characters.
EditResult editHeaderField(std::string_view path, std::string_view mnem, EditPart part, std::string_view newText,
                           char section, UserInterface& user);

}  // namespace welvane
