#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// File text, which may hold any bytes, as UTF-8.
namespace welvane {

/// The bytes when they are UTF-8, otherwise read as Latin-1 and given as UTF-8.
std::string utf8Text(std::string_view bytes);
/// Characters of a UTF-8 text.
std::size_t characterCount(std::string_view text);

}  // namespace welvane
