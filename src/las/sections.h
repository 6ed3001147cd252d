#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "las/header_line.h"
#include "las/las_text.h"

/// Sections of a LAS text and single values in them. A section is found by the letter behind "~"; the rest of its title
/// is ignored.
namespace welvane {

/// Data lines of a section.
using SectionTable = std::vector<HeaderField>;

/// How the lines of a section are read.
struct SectionReading {
    enum class Letters {
        Upper,       ///< all text upper-cased, trimmed, tabs removed
        AsTheyStand  ///< as parseHeaderLine gives it
    } letters = Letters::Upper;
    enum class End {
        TildeAnywhere,  ///< the first line that holds "~"
        TildeInFront    ///< the first line that begins with it
    } end = End::TildeAnywhere;
    bool unitApart = false;  ///< a unit can stand apart from the dot, alone in front of a number; Letters::Upper only
};
inline constexpr SectionReading lettersAsTheyStand = {.letters = SectionReading::Letters::AsTheyStand};

/// Data lines of a section; nothing when the text does not have it, an empty table when it has no such lines.
std::optional<SectionTable> readSection(const LasText& text, char letter, const SectionReading& how = {});

/// Text between the section's title line and the next "~" less the line end before it; "" when absent.
std::string getSectionText(const LasText& text, char letter);

/// A single value of a header and how the search for it ended.
struct LasValue {
    enum class End {
        Found,
        NotFound,    ///< the text ended, or the section that tells how to read was broken off
        ReachedData  ///< ~A came first
    } end = End::NotFound;
    std::string text;  ///< trimmed; "" unless found
    std::string unit;
};

/// VALUE of a mnemonic (of a LAS 1.2 ~Well line but STRT, STOP, STEP, NULL: its DESC). `section` is W, V, P, O or C;
/// anything else searches all, and then knows nothing of LAS 1.2.
LasValue getLasValue(const LasText& text, std::string_view mnem, char section);
/// The same over all sections, and knowing of LAS 1.2.
LasValue getFileValue(const LasText& text, std::string_view mnem);
/// VALUE of a line behind the section's title, also in the sections behind it, tabs and colons removed; knows nothing
/// of LAS 1.2. For headers that break the standard.
std::string getOpenValue(const LasText& text, std::string_view mnem, char section);

/// The name of the index channel, whatever the file calls it.
inline constexpr std::string_view indexMnem = "DEPT";

/// STRT, STOP, STEP, NULL of ~Well, in this order.
struct DepthHeader {
    struct Entry {
        std::string value, unit;
    };
    std::array<Entry, 4> entries;
    ColumnLayout
        layout;  ///< of the STRT line; 0 where not set; the value column is 15 when the value was not found in its line
    const Entry& strt() const { return entries[0]; }
    const Entry& stop() const { return entries[1]; }
    const Entry& step() const { return entries[2]; }
    const Entry& null() const { return entries[3]; }
};
DepthHeader getDepthHeader(const LasText& text);

}  // namespace welvane
