#pragma once

#include <cstddef>
#include <string_view>

/// Words of data lines, in place. A tab counts as a blank.
namespace welvane {

constexpr bool isDataBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr std::size_t countDataWords(std::string_view line) {
    std::size_t count = 0;
    bool inside = false;
    for (const char c : line) {
        const bool blank = isDataBlank(c);
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
