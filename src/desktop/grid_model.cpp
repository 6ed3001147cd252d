#include "desktop/grid_model.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <utility>

#include "desktop/text.h"
#include "desktop/theme.h"

namespace welvane {

namespace {

/// A cell with more letters may be cut; it shows them all under the pointer.
constexpr std::size_t longText = 24;

bool isNumber(const QString& text) {
    bool number = false;
    text.toDouble(&number);
    return number;
}

}  // namespace

GridModel::GridModel(std::unique_ptr<TableModel> table, std::function<void(const EditOutcome&)> changed)
    : table_(std::move(table)), changed_(std::move(changed)) {
    refresh();
}

void GridModel::refresh() {
    const int rows = std::max(0, static_cast<int>(table_->rows()) - table_->headRows());
    const int columns = std::max(0, table_->columns() - table_->headColumns());
    if (rows != rows_ || columns != columns_) {
        beginResetModel();
        rows_ = rows;
        columns_ = columns;
        endResetModel();
    } else if (rows > 0 && columns > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rows - 1, columns - 1));
        Q_EMIT headerDataChanged(Qt::Vertical, 0, rows - 1);
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns - 1);
    }
}

void GridModel::choose(const QModelIndex& cell, int item, const QString& text) {
    done(table_->edit(tableRow(cell.row()), tableColumn(cell.column()), typed(text), item));
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant GridModel::data(const QModelIndex& cell, int role) const {
    if (!cell.isValid()) return {};
    const int row = tableRow(cell.row()), column = tableColumn(cell.column());
    if (row >= table_->rows() || column >= table_->columns()) return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole) return shown(table_->text(row, column));
    if (role == Qt::AccessibleTextRole)
        return headerData(cell.row(), Qt::Vertical, Qt::DisplayRole).toString() + ", " +
               headerData(cell.column(), Qt::Horizontal, Qt::DisplayRole).toString() + ": " +
               shown(table_->text(row, column));
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter |
                        (isNumber(shown(table_->text(row, column))) ? Qt::AlignRight : Qt::AlignLeft));
    if (role == Qt::ToolTipRole) {
        const std::string text = table_->text(row, column);
        return text.size() > longText ? QVariant(shown(text)) : QVariant();
    }
    if (role == Qt::CheckStateRole) {
        const Check check = table_->check(row, column);
        if (check == Check::None) return {};
        return check == Check::Checked ? Qt::Checked : Qt::Unchecked;
    }
    if (role == Qt::BackgroundRole) {
        const auto colour = cellColour(table_->backColour(row, column), themeOf(QGuiApplication::palette()));
        if (colour) return *colour;
    }
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation direction, int role) const {
    if (role != Qt::DisplayRole) return {};
    const bool across = direction == Qt::Horizontal;
    // A table may have shrunk since the view was told of its size.
    const bool there = across ? tableColumn(section) < table_->columns() && table_->headRows() <= table_->rows()
                              : tableRow(section) < table_->rows() && table_->headColumns() <= table_->columns();
    if (!there) return {};
    const int heads = across ? table_->headRows() : table_->headColumns();
    QString text;
    for (int head = 0; head < heads; ++head) {
        if (head > 0) text += across ? "\n" : " ";
        text += shown(across ? table_->text(head, tableColumn(section)) : table_->text(tableRow(section), head));
    }
    return text;
}

Qt::ItemFlags GridModel::flags(const QModelIndex& cell) const {
    Qt::ItemFlags flags = QAbstractTableModel::flags(cell);
    if (!cell.isValid()) return flags;
    const int row = tableRow(cell.row()), column = tableColumn(cell.column());
    if (row >= table_->rows() || column >= table_->columns()) return flags;
    const bool check = table_->check(row, column) != Check::None;
    if (check) return flags | Qt::ItemIsUserCheckable;
    return table_->mayEdit(row, column) ? flags | Qt::ItemIsEditable : flags;
}

bool GridModel::setData(const QModelIndex& cell, const QVariant& value, int role) {
    const int row = tableRow(cell.row()), column = tableColumn(cell.column());
    if (role == Qt::CheckStateRole) return done(table_->setCheck(row, column, value.toInt() == Qt::Checked));
    // An unchanged cell keeps its bytes.
    if (role != Qt::EditRole || value.toString() == shown(table_->text(row, column))) return false;
    return done(table_->edit(row, column, typed(value.toString())));
}

bool GridModel::done(const EditOutcome& outcome) {
    changed_(outcome);
    return outcome.done;
}

}  // namespace welvane
