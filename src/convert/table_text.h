#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Lines and fields of a generic ASCII table. Such a table comes from any program: here, unlike in a LAS file, a lone
/// line feed ends a line.
namespace welvane {

/// What separates the fields of a line.
enum class Delimiter : char {
    Guess = 0,
    Tab = '\t',
    Comma = ',',
    Semicolon = ';',
    Blanks = ' '  ///< a run of blanks and tabs counts as one
};

/// Whether no NUL among its first bytes tells that it is none.
bool isText(std::string_view bytes);

/// Hands out the lines of a text as views, without their ends (CR LF, LF, or CR where most of the first lines end in a
/// lone one).
class TableLines {
  public:
    explicit TableLines(std::string_view bytes, std::size_t position = 0);

    bool next(std::string_view& line);
    /// Place of the first byte of the line that next() would return.
    std::size_t position() const { return position_; }
    /// The line that begins at this place.
    std::string_view lineAt(std::size_t position) const;
    /// 1-based number of the line that begins at this place. Reads all before it: for messages only.
    std::size_t numberAt(std::size_t position) const;

  private:
    std::string_view bytes_;
    std::size_t position_;
    char end_;
};

/// Hands out the fields of one line, blanks and tabs at their ends aside. Where the delimiter is a character, a field
/// in double quotes may hold it.
class FieldCursor {
  public:
    FieldCursor(std::string_view line, Delimiter delimiter);
    bool next(std::string_view& field);

  private:
    bool nextWord(std::string_view& field);
    const char* place_;
    const char* end_;
    char delimiter_;
    bool more_;
};

/// Number of fields; a blank line has none.
std::size_t countFields(std::string_view line, Delimiter delimiter);
/// All fields; the storage of `fields` is kept from call to call.
void splitFields(std::string_view line, Delimiter delimiter, std::vector<std::string_view>& fields);

/// Without blanks and tabs at both ends.
std::string_view trimSpace(std::string_view text);

/// True for a number with a comma in place of its point: "1,5", "-0,25".
bool isDecimalComma(std::string_view cell);
/// The text with a point in place of each comma between two digits.
std::string withDecimalPoints(std::string_view text);

/// True for "inf" and "NaN" (either case, with or without a sign), which become the null value.
bool isNoNumberText(std::string_view cell);

}  // namespace welvane
