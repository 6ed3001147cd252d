#include "shared/table.h"

#include <algorithm>

#include "shared/failure.h"

namespace welvane {

namespace {
[[noreturn]] void outside() {
    throw RunTimeFailure("subscript out of range");
}
}  // namespace

void Table::resize(int rows, int columns) {
    if (rows < 0 || columns < 0) outside();
    columns_.resize(static_cast<std::size_t>(columns));
    for (auto& column : columns_) column.resize(static_cast<std::size_t>(rows));
    hiddenRows_.resize(static_cast<std::size_t>(rows));
    rows_ = rows;
}

SessionCell& Table::cell(TableIndex row, TableIndex column) {
    if (row < 0 || row >= rows_ || column < 0 || column >= columns()) outside();
    return columns_[column][row];
}

const SessionCell& Table::cell(TableIndex row, TableIndex column) const {
    return const_cast<Table*>(this)->cell(row, column);
}

int Table::addRow(const std::vector<std::string>& texts) {
    const int row = rows_;
    resize(rows_ + 1, std::max(columns(), static_cast<int>(texts.size())));
    for (std::size_t column = 0; column < texts.size(); ++column) text(row, column) = texts[column];
    return row;
}

void Table::removeRow(TableIndex row) {
    if (row < 0 || row >= rows_) outside();
    for (auto& column : columns_) column.erase(column.begin() + row);
    hiddenRows_.erase(hiddenRows_.begin() + row);
    --rows_;
}

void Table::moveColumn(int from, int to) {
    if (from < 0 || from >= columns() || to < 0 || to >= columns()) outside();
    const auto begin = columns_.begin();
    if (from < to) std::rotate(begin + from, begin + from + 1, begin + to + 1);
    if (to < from) std::rotate(begin + to, begin + from, begin + from + 1);
}

bool Table::rowHidden(TableIndex row) const {
    if (row < 0 || row >= rows_) outside();
    return hiddenRows_[row];
}

void Table::setRowHidden(TableIndex row, bool hidden) {
    if (row < 0 || row >= rows_) outside();
    hiddenRows_[row] = hidden;
}

}  // namespace welvane
