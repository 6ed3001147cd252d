#pragma once

#include <optional>
#include <string>
#include <vector>

#include "convert/load_table.h"
#include "convert/make_las.h"
#include "jobs/given_number.h"
#include "jobs/workbench.h"

/// A table of columns becomes a LAS file, in two steps: it is opened, so that it can be shown as it is understood, and
/// then written.
namespace welvane {

enum class RowOrder { AsTheyStand, ShallowFirst, DeepFirst };

struct TableRequest {
    std::string table{};               ///< the file
    std::string output{};              ///< "" where it is only opened
    std::string header{};              ///< file whose ~Version, ~Well, ~Parameter and ~Other are taken; "" for none
    std::vector<std::string> names{};  ///< mnemonics of the columns; an empty one keeps the table's
    std::vector<std::string> units{};  ///< in the same way
    std::vector<std::string> drop{};   ///< columns to leave out, by name or by number from 1
    Delimiter delimiter = Delimiter::Guess;
    bool decimalComma = false;  ///< commas between digits are points
    std::size_t dataLine = 0;   ///< 1-based number of the first line of data; 0 finds it
    RowOrder order = RowOrder::AsTheyStand;
    std::optional<GivenNumber> null{};  ///< -999.25 without it
};

struct OpenedTable {
    GenericTable grd;
    TableLoadResult loaded;
    bool depthUnitTold = false;  ///< by the table, the header or the request; otherwise it is the region's
};
/// Reads the table, names its columns, leaves out and orders what the request says; the first column that is left is
/// the depth. Its unit is the request's, else the table's, else the header's. Refusal for a table and a header of
/// unlike units, for a table or a header that cannot be read, for an output that is not free, for fewer than two
/// columns, and for choices that the table cannot follow.
OpenedTable openTable(Workbench& bench, const TableRequest& request);

struct TableToLasReport : JobReport {
    LasResult made;
    std::string depthUnit;
};
/// Writes an opened table. Refusal when that failed, with nothing written.
TableToLasReport writeTable(Workbench& bench, OpenedTable& table, const TableRequest& request);

}  // namespace welvane
