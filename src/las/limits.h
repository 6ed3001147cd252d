#pragma once

#include <cstddef>

namespace welvane {

/// No header is longer. A file of gigabytes without CR is one single line, and this bounds the search in it.
inline constexpr std::size_t headerLimit = std::size_t{64} << 20U;
/// What is looked at to judge the data, at most; a line that does not end within it counts as the file's last.
inline constexpr std::size_t lookLimit = std::size_t{256} << 20U;
/// No section has more lines; more of them are damage that must not fill memory.
inline constexpr std::size_t rowLimit = 200'000;

}  // namespace welvane
