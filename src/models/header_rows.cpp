#include "models/header_rows.h"

#include <algorithm>
#include <array>
#include <utility>

#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

bool everyFileNeeds(std::string_view mnem) {
    constexpr std::array<std::string_view, 4> needed = {"STRT", "STOP", "STEP", "NULL"};
    return std::ranges::any_of(needed, [&](std::string_view name) { return sameText(trim(mnem), name); });
}

void swapLines(Table& table, int one, int other) {
    for (int column = 0; column < table.columns(); ++column)
        std::swap(table.cell(one, column), table.cell(other, column));
    const bool hidden = table.rowHidden(one);
    table.setRowHidden(one, table.rowHidden(other));
    table.setRowHidden(other, hidden);
}

}  // namespace

int addHeaderLine(Table& table, int row) {
    if (row < 1) throw RunTimeFailure("a line cannot stand in front of the heads");
    const int added = table.addRow({"", ".", "", "", ":", ""});
    const int place = std::min(row, added);
    for (int line = added; line > place; --line) swapLines(table, line, line - 1);
    return place;
}

EditOutcome deleteHeaderLine(Table& table, int row) {
    if (row < 1 || row >= table.rows()) return {false, "no line is there"};
    if (table.rowHidden(row)) return {false, "only a filter reads this line"};
    const std::string& mnem = table.text(row, FieldColumn::Mnem);
    if (everyFileNeeds(mnem)) return {false, "every file needs its line " + mnem};
    table.removeRow(row);
    return {};
}

}  // namespace welvane
