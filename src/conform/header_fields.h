#pragma once

#include <cstddef>
#include <string_view>

#include "conform/decimal.h"
#include "conform/findings.h"

/// A header line cut as the standard cuts it: `MNEM.UNIT  VALUE : DESCRIPTION`, at the first dot and the last colon.
/// All parts are views into the line.
namespace welvane {

struct HeaderFields {
    std::string_view line{};
    std::size_t number = 0;  ///< of the line, from 1; 0 for a line that is not there
    bool dot = false;        ///< in front of the last colon
    bool colon = false;
    std::string_view mnem{}, unit{}, value{}, desc{};

    bool present() const { return number != 0; }
    /// Where a part of the line stands; the begin of the line for an empty one.
    TextPlace at(std::string_view part) const {
        const bool inside = !part.empty() && part.data() >= line.data() && part.data() <= line.data() + line.size();
        return {number, inside ? static_cast<std::size_t>(part.data() - line.data()) + 1 : 1};
    }
};

HeaderFields cutHeaderLine(std::string_view line, std::size_t number);
/// The value as a number of ~Well. A unit that stands apart from its dot ("STRT. M 635.0", lawful in 1.2) is left out;
/// `unit` takes it.
std::string_view numberIn(const HeaderFields& fields, std::string_view& unit);

/// Empty, or blanks and tabs alone.
bool isBlankLine(std::string_view line);
/// A comment; in LAS 1.2 one that stands behind a quotation mark is one too.
bool isCommentLine(std::string_view line, StandardVersion version);
/// The title of a section from its "~" on; "" for another line.
std::string_view titleIn(std::string_view line, StandardVersion version);
/// The capital letter behind the "~"; NUL for none.
char sectionLetter(std::string_view title);

/// Without case, and with FEET and METRE in all their spellings as FT and M.
bool sameUnit(std::string_view one, std::string_view other);
/// "FT" and "M" for their other spellings; "" for other units.
std::string_view plainDepthUnit(std::string_view unit);

}  // namespace welvane
