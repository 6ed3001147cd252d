#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "models/table_model.h"

/// Blocks of cells between a grid and the clipboard, as tab-separated text: what any spreadsheet takes and gives.
namespace welvane {

/// Cells from one corner to the other, both included, heads counted.
struct CellArea {
    std::int64_t firstRow = 0;
    int firstColumn = 0;
    std::int64_t lastRow = 0;
    int lastColumn = 0;
};

/// The cells as text: a line per row that is shown, tabs between columns; a check is 1 or 0. A cell with a tab, a line
/// end or a quote in it stands in quotes. What lies outside of the table is left out.
std::string copyCells(const TableModel& table, const CellArea& area);

/// Rows and cells of such a text. A line end behind the last row begins no other one.
std::vector<std::vector<std::string>> splitCells(std::string_view text);

/// A cell that did not take what it was given.
struct RefusedCell {
    std::int64_t row = 0;
    int column = 0;
    std::string text, why;
};

/// What became of a block.
struct PasteReport {
    std::size_t changed = 0;           ///< cells that took another text
    std::vector<RefusedCell> refused;  ///< each keeps what it held
    std::string why;                   ///< why nothing at all was pasted
    bool clean() const { return why.empty() && refused.empty(); }
    /// For the user: "" when all was taken, else how many cells kept what they held, and why the first did.
    std::string summary() const;
};

/// Puts a block into the table from a cell on, each cell by its edit rule; rows that are hidden are passed over. A cell
/// that holds the text already is left alone. A block that reaches beyond the table changes nothing.
PasteReport pasteCells(TableModel& table, std::int64_t row, int column, std::string_view text);

/// Empties the cells of an area by their edit rules; cells that take no edit, and checks, stay.
PasteReport clearCells(TableModel& table, const CellArea& area);

}  // namespace welvane
