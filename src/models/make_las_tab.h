#pragma once

#include <array>
#include <string>
#include <string_view>

#include "models/frame.h"

/// The tab that makes LAS of a table: which file, how it is read, and the header of what comes of it.
namespace welvane {

/// An entry of the list of delimiters.
struct DelimiterChoice {
    std::string_view text;
    Delimiter delimiter;
};
const std::array<DelimiterChoice, 5>& delimiterChoices();

/// Ask for a file; "" when cancelled.
std::string askTableFile(Frame& frame);
std::string askHeaderFile(Frame& frame);

/// Takes a table that was read in place of the one there was, which can be taken back; one that could not be read
/// changes nothing. `path` is "" for the clipboard.
EditOutcome takeTable(Frame& frame, const std::string& path, GenericTable&& grd, const TableLoadResult& result);
/// "Sort Depth". Nothing takes it back, and steps of the table before it cannot be found any more.
void sortTable(Frame& frame);
/// Line of the file that a row of grd came from; 0 for the heads and for added rows.
std::size_t lineOfTableRow(const GenericTable& grd, std::int64_t row);

/// The header as a person edits it, lines by LF: the template of the region until it was edited.
std::string tableHeaderText(const Frame& frame);
/// A text that is the template again counts as not edited. What is typed in one go is taken back as one step.
void setTableHeaderText(Frame& frame, const std::string& text);

}  // namespace welvane
