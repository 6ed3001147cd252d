#include "models/table_model.h"

#include <exception>
#include <utility>

namespace welvane {

bool TableModel::rowHidden(std::int64_t) const {
    return false;
}
Check TableModel::check(std::int64_t, int) const {
    return Check::None;
}
std::uint32_t TableModel::backColour(std::int64_t, int) const {
    return 0;
}
std::string TableModel::pickList(std::int64_t, int) const {
    return {};
}
bool TableModel::mayEdit(std::int64_t, int) const {
    return false;
}
void TableModel::asOneStep(const std::string&, const std::function<void()>& body) {
    body();
}
void TableModel::applyEdit(std::int64_t, int, const std::string&, int) {}
void TableModel::applyCheck(std::int64_t, int, bool) {}

EditOutcome TableModel::attemptEdit(std::int64_t row, int column, const std::function<void()>& body) {
    if (row < 0 || row >= rows() || column < 0 || column >= columns() || !mayEdit(row, column))
        return {false, "this cell takes no edit"};
    try {
        body();
    } catch (const std::exception& error) {
        return {false, error.what()};
    }
    return {};
}

EditOutcome TableModel::edit(std::int64_t row, int column, const std::string& text, int item) {
    return attemptEdit(row, column, [&] { applyEdit(row, column, text, item); });
}

EditOutcome TableModel::setCheck(std::int64_t row, int column, bool on) {
    return attemptEdit(row, column, [&] {
        if (check(row, column) != Check::None) applyCheck(row, column, on);
    });
}

CellTableModel::CellTableModel(Table& table, TableRules rules) : table_(table), rules_(std::move(rules)) {}

std::int64_t CellTableModel::rows() const {
    return table_.rows();
}
int CellTableModel::columns() const {
    return table_.columns();
}
int CellTableModel::headRows() const {
    return rules_.headRows;
}
int CellTableModel::headColumns() const {
    return rules_.headColumns;
}
bool CellTableModel::rowHidden(std::int64_t row) const {
    return table_.rowHidden(row);
}
std::string CellTableModel::text(std::int64_t row, int column) const {
    return table_.text(row, column);
}
Check CellTableModel::check(std::int64_t row, int column) const {
    return table_.check(row, column);
}
std::uint32_t CellTableModel::backColour(std::int64_t row, int column) const {
    return table_.backColour(row, column);
}
std::string CellTableModel::pickList(std::int64_t row, int column) const {
    return rules_.pickList ? rules_.pickList(row, column) : std::string();
}
bool CellTableModel::mayEdit(std::int64_t row, int column) const {
    return rules_.mayEdit && rules_.mayEdit(row, column);
}
void CellTableModel::applyEdit(std::int64_t row, int column, const std::string& text, int item) {
    if (rules_.edit) rules_.edit({row, column, text, item});
}
void CellTableModel::applyCheck(std::int64_t row, int column, bool on) {
    if (rules_.check) rules_.check(row, column, on);
}

}  // namespace welvane
