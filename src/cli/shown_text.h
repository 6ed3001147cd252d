#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "shared/utf8.h"

/// File text, which may hold any bytes, in a form for people and for JSON.
namespace welvane {

/// The bytes as UTF-8 (utf8Text), as a terminal may be given it: control characters but line feeds become "?", tabs
/// blanks.
std::string shownText(std::string_view bytes);
/// A file's name within a line: as shownText, with line feeds as "?" too.
std::string shownName(std::string_view bytes);
/// Filled up with blanks at the right (or left) to so many characters; a longer text stays.
std::string padded(std::string_view text, std::size_t width);
std::string paddedLeft(std::string_view text, std::size_t width);

}  // namespace welvane
