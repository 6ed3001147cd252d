#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// File text, which may hold any bytes, in a form for people and for JSON.
namespace welvane {

/// The bytes when they are UTF-8, otherwise read as Latin-1 and given as UTF-8.
std::string utf8Text(std::string_view bytes);
/// The same as a terminal may be given it: control characters but line feeds become "?", tabs blanks.
std::string shownText(std::string_view bytes);
/// Characters of a UTF-8 text.
std::size_t characterCount(std::string_view text);
/// Filled up with blanks at the right (or left) to so many characters; a longer text stays.
std::string padded(std::string_view text, std::size_t width);
std::string paddedLeft(std::string_view text, std::size_t width);

}  // namespace welvane
