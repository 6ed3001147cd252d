#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "las/header_line.h"
#include "shared/line_reader.h"

/// Sections of a LAS file and single values in them. Each routine that takes a path opens the file and closes it again;
/// none reports a failure: a file that cannot be read gives "" or 0. A section is found by the letter behind "~"; the
/// rest of its title is ignored.
namespace welvane {

/// Rows of a section's data lines, upper-cased, trimmed, tabs removed.
using SectionTable = std::vector<HeaderField>;

/// Moves the reader behind the title of section `letter` and returns that place as a file position (1-based); 0, with
/// the reader at the start, when absent. A line that holds "~A" anywhere ends the search, unless "A" is the letter.
std::size_t seekSection(LineReader& file, char letter);

/// Text between the section's title line and the next "~" less the line end before it; "" when absent.
std::string getSectionText(std::string_view path, char letter);

/// What getLasValue found beside the value.
struct LasValue {
    std::string text;    ///< the value, trimmed; " " when the search reached ~A
    std::string marker;  ///< "NOT" when the search reached ~A
    std::string unit;    ///< trimmed
};

/// VALUE of a mnemonic (of a LAS 1.2 ~Well line but STRT, STOP, STEP, NULL: its DESC). `section` is W, V, P, O or C;
/// anything else searches all.
LasValue getLasValue(std::string_view path, std::string_view mnem, char section);
/// The same over all sections; " " when ~A was reached. `unit`, when given, receives the UNIT as it stands.
std::string getFileValue(std::string_view path, std::string_view mnem, std::string* unit = nullptr);
/// VALUE in a file that the caller holds open, tabs and colons removed; knows nothing of LAS 1.2.
std::string getOpenValue(LineReader& file, std::string_view mnem, char section);

/// STRT, STOP, STEP, NULL of ~Well, in this order.
struct DepthHeader {
    struct Entry {
        std::string value, unit;
    };
    std::array<Entry, 4> entries;
    ColumnLayout
        layout;  ///< of the STRT line; 0 where not set; the value column is 15 when the value was not found in its line
    std::string indexName;  ///< "DEPT", "" only when the file could not be read
    const Entry& strt() const { return entries[0]; }
    const Entry& stop() const { return entries[1]; }
    const Entry& step() const { return entries[2]; }
    const Entry& null() const { return entries[3]; }
};
DepthHeader getDepthHeader(std::string_view path);

/// Data lines of a section, up to the first line that holds "~" anywhere. Returns the row count; a missing section
/// leaves the table alone and returns 0; a section without data lines gives an empty table.
int readSection(SectionTable& table, std::string_view path, char letter);
/// Rows appended to a table that is reset first; returns the last row's index, -1 without any line, 0 when the section
/// is absent.
int appendSection(SectionTable& table, std::string_view path, char letter);
/// As readSection, for files in which a unit can stand apart from the dot.
int readSectionLoose(SectionTable& table, std::string_view path, char letter);

/// Data lines of a section as readSection finds them, their letters kept as they stand; empty without the section.
SectionTable readSectionLines(std::string_view path, char letter);

/// Titles of all sections in file order, each the whole trimmed title line with its "~"; ends behind ~A.
std::vector<std::string> readSections(std::string_view path);

}  // namespace welvane
