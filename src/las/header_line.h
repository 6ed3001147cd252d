#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// One line of a LAS header: what kind it is, and its four fields. Tabs become blanks before a field is cut; all
/// comparison ignores case.
namespace welvane {

enum class LineKind : std::int16_t {
    Data = -1,    ///< a dot and a colon, the first dot before the first colon and not the first character
    Other = 0,    ///< no dot, no colon, or the colon first
    Comment = 1,  ///< first character "#"
    Title = 2,    ///< first character "~"
    Blank = 3,
    DotFirst = 4  ///< as Data, but the line begins with the dot: no mnemonic
};

/// The fields of one line; "" means absent.
struct HeaderField {
    std::string mnem, unit, value, desc;
};

/// Kind of the line, blanks at its ends aside (a tab is not blank).
LineKind lineKind(std::string_view line);

/// Words of the trimmed text; runs of the delimiter and the blanks behind it count as one. "" counts as 1.
int countWords(std::string_view text, char delimiter = ' ');

/// Text in front of the first dot, trimmed; "" without a dot.
std::string getMnemField(std::string_view line);
/// What is stuck to the first dot, up to the first blank; "" when a blank follows the dot or a dot or colon is missing.
std::string getUnitField(std::string_view line);
/// Text between the unit and the last colon. Changes the caller's line: tabs become blanks, and colons but the last one
/// become "|" (they are
/// ":" again in the result). getDescField relies on that. "" for a line that is no data line.
std::string getValueField(std::string& line);
/// Text behind the last colon, trimmed; a line without a colon gives the whole trimmed line. Tabs in the line become
/// blanks.
std::string getDescField(std::string& line);

/// Cuts a data line into its fields; false, with all four empty, for any other kind. Changes `line` as getValueField
/// does.
bool parseHeaderLine(std::string& line, HeaderField& fields);
/// The same on a copy.
bool parseHeaderLine(std::string_view line, HeaderField& fields);

/// Columns (1-based) of a header line's dot, value and colon.
struct ColumnLayout {
    std::int16_t dot = 0, value = 0, colon = 0;
};

/// A text as one word of a header line: "_" in place of each blank and control character, of every character of `ends`,
/// and of "#" or "~" in front.
std::string headerWord(std::string_view text, std::string_view ends);

/// The four fields laid out: MNEM ends before the dot's column, UNIT begins behind the dot, VALUE at its column (with
/// `value` below 1: ends right before the colon), DESC right behind the colon. A column is pushed out where a field is
/// too long for it; the line is cut to 254 characters, unless `whole`.
std::string formatHeaderLine(const HeaderField& fields, int dot, int colon, int value, bool whole = false);

/// False for a comment line that only repeats the column titles: every word behind a first "#" holds "DEPT" or one of
/// the names from names[1] on (names[0] is the index). Such a line, a lone "#" too, is not copied to a new file.
bool isNotTitleLine(std::string_view line, const std::vector<std::string>& names);

}  // namespace welvane
