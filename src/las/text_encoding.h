#pragma once

#include <string>
#include <string_view>

/// What the characters of a file are written in, as far as its first bytes tell.
namespace welvane {

enum class TextEncoding {
    Plain,        ///< one byte a character, or UTF-8
    MarkedUtf8,   ///< the same behind a byte order mark
    Utf16Little,  ///< UTF-16, the low byte first; with its byte order mark, or known by a first "~" or "#"
    Utf16Big
};
TextEncoding encodingOf(std::string_view bytes);

constexpr bool isUtf16(TextEncoding encoding) {
    return encoding == TextEncoding::Utf16Little || encoding == TextEncoding::Utf16Big;
}

/// The bytes behind the byte order mark of UTF-8, all of them without one.
std::string_view withoutMark(std::string_view bytes, TextEncoding encoding);
/// Text in UTF-16 as UTF-8, without its mark. A half pair becomes U+FFFD; an odd last byte is left out.
std::string utf8Of(std::string_view bytes, TextEncoding encoding);

}  // namespace welvane
