#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Words of data lines, in place. A tab counts as a blank.
namespace welvane {

constexpr bool isDataBlank(char c) {
    return c == ' ' || c == '\t';
}

namespace detail {

/// The highest bit of each byte that is 0.
constexpr std::uint64_t zeroBytes(std::uint64_t word) {
    constexpr std::uint64_t low = 0x7F7F7F7F7F7F7F7FU;
    return ~(((word & low) + low) | word | low);
}

}  // namespace detail

/// Words of a line, eight bytes at a time: each begins with a byte that is no blank behind one that is, or in front.
inline std::size_t countDataWords(std::string_view line) {
    constexpr std::uint64_t blanks = 0x2020202020202020U, tabs = 0x0909090909090909U;
    std::size_t count = 0, place = 0;
    bool inside = false;
    if constexpr (std::endian::native == std::endian::little) {
        std::uint64_t before = 0x80;  // the last byte before these was a blank
        for (; place + 8 <= line.size(); place += 8) {
            std::uint64_t bytes = 0;
            std::memcpy(&bytes, line.data() + place, sizeof bytes);
            const std::uint64_t blank = detail::zeroBytes(bytes ^ blanks) | detail::zeroBytes(bytes ^ tabs);
            count += static_cast<std::size_t>(std::popcount(~blank & (blank << 8 | before) & 0x8080808080808080U));
            before = blank >> 56;
        }
        inside = before == 0;
    }
    for (; place < line.size(); ++place) {
        const bool blank = isDataBlank(line[place]);
        count += !blank && !inside ? 1U : 0U;
        inside = !blank;
    }
    return count;
}

/// The line without blanks and tabs at its ends.
constexpr std::string_view trimDataLine(std::string_view line) {
    while (!line.empty() && isDataBlank(line.front())) line.remove_prefix(1);
    while (!line.empty() && isDataBlank(line.back())) line.remove_suffix(1);
    return line;
}

/// A line whose cells are parted by tabs, without those in front: a first cell that is empty would be no index.
constexpr std::string_view withoutIndent(std::string_view line) {
    while (!line.empty() && isDataBlank(line.front())) line.remove_prefix(1);
    return line;
}

/// Takes the next word off the front of `rest`; empty when there is none.
constexpr std::string_view nextDataWord(std::string_view& rest) {
    const char* place = rest.data();
    const char* const end = place + rest.size();
    while (place != end && isDataBlank(*place)) ++place;
    const char* const first = place;
    while (place != end && !isDataBlank(*place)) ++place;
    rest = {place, static_cast<std::size_t>(end - place)};
    return {first, static_cast<std::size_t>(place - first)};
}

/// The first word of a line; empty on a blank line.
constexpr std::string_view firstDataWord(std::string_view line) {
    return nextDataWord(line);
}

}  // namespace welvane
