#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "shared/prompts.h"

namespace welvane {

enum class EditPart : char { Mnem = 'M', Unit = 'U', Value = 'V', Desc = 'D' };
enum class EditResult : std::int16_t { Done = -1, Refused = 1 };  ///< refused, or not found

/// A new text for one field of one header line. `section` is V, W, C, P, O, or 0 for the whole header.
struct HeaderEdit {
    std::string_view mnem;
    EditPart part = EditPart::Value;
    char section = 0;
    std::string text;
};

/// Gives the field its new text; dot, value and colon stay where they stand. A line that would become shorter keeps its
/// length, a longer one moves what stands behind it. Refused: no such section or line, an empty mnemonic, and a line of
/// fewer than 20 characters, which `shortLine` then holds.
EditResult editHeaderText(std::string& header, const HeaderEdit& edit, std::string& shortLine);
/// The box that tells of such a line.
void tellShortLine(std::string_view line, UserInterface& user);

/// The same in a file, edit by edit and with the boxes. A header that keeps its length is overwritten in place; with a
/// longer one the file is written anew beside itself and renamed, so that a failure leaves the old one whole. Refused
/// also where there is no such file; FileFailure where it cannot be read or written.
EditResult editHeaderFields(std::string_view path, std::span<const HeaderEdit> edits, UserInterface& user);
/// One edit of a file.
EditResult editHeaderField(std::string_view path, std::string_view mnem, EditPart part, std::string_view newText,
                           char section, UserInterface& user);

}  // namespace welvane
