#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "convert/generic_table.h"
#include "session/session.h"

/// Loading a generic ASCII table into grd.
namespace welvane {

struct LoadOptions {
    Delimiter delimiter = Delimiter::Guess;
    std::size_t dataLine = 0;  ///< 1-based number of the line marked "Data Starts Here"; 0 finds it
};

struct TableLoadResult {
    bool done = false;
    bool cancelled = false;
    Delimiter delimiter = Delimiter::Blanks;  ///< the one used
    std::size_t dataLine = 0;                 ///< 1-based number of the first data line, 0 without one
    std::int64_t skipped = 0;                 ///< lines whose number of fields was another one
    bool depthUnitTold = false;               ///< the table itself names the unit of its first column
    std::string why;                          ///< of a failure
};

/// Loads a file in place of what the table held. The number of fields of the first data line is the number of columns;
/// later lines with another number are skipped, counted, and told once in a box; blank lines and the headings of
/// further blocks of a report are passed over. Column 1 is named "DEPT", its unit is the one found, otherwise that of
/// the region. Not done, with the table as it was, for a file that cannot be read, holds NUL bytes or more columns than
/// 16 bits count. A file without data gives a table without rows.
TableLoadResult loadTable(App& app, std::string_view path, const LoadOptions& options, GenericTable& grd);
/// The same from a text, such as the clipboard's.
TableLoadResult loadTableText(App& app, std::string text, const LoadOptions& options, GenericTable& grd);

}  // namespace welvane
