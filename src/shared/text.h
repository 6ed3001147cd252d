#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Text as this program compares it: bytes, ASCII case ignored, and "trim" takes the blank only, never a tab.
namespace welvane {

inline constexpr std::size_t npos = std::string_view::npos;

constexpr char upperChar(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Equal but for ASCII case.
bool sameText(std::string_view one, std::string_view other);
/// Less in the order of the upper-cased bytes: for sorted containers that ignore case.
bool lessText(std::string_view one, std::string_view other);
/// First place (0-based) of `part` in `text` at or behind `from`, case ignored; npos when absent.
std::size_t findText(std::string_view text, std::string_view part, std::size_t from = 0);
bool holdsText(std::string_view text, std::string_view part);
bool beginsWith(std::string_view text, std::string_view start);
bool endsWith(std::string_view text, std::string_view end);

/// Without the blanks at both ends (at the left, at the right); a tab stays.
std::string_view trim(std::string_view text);
std::string_view trimLeft(std::string_view text);
std::string_view trimRight(std::string_view text);
/// Without blanks, tabs, CR and LF at both ends.
std::string_view trimBreaks(std::string_view text);

std::string upper(std::string_view text);
/// Every occurrence of `find` (case ignored, from left to right, none overlapping) replaced.
std::string replaceAll(std::string_view text, std::string_view find, std::string_view replacement);
void tabsToBlanks(std::string& text);
std::string withoutChar(std::string_view text, char unwanted);

/// `text` at the right end of `width` characters; a longer one loses its left end.
std::string rightAligned(std::string_view text, std::size_t width);
/// Cut at each separator; always at least one piece, empty pieces kept.
std::vector<std::string> split(std::string_view text, char separator);
std::string join(const std::vector<std::string>& pieces, std::string_view separator);
/// "1 sample", "2 samples".
std::string counted(std::int64_t number, std::string_view thing);

}  // namespace welvane
