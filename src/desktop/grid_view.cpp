#include "desktop/grid_view.h"

#include <QComboBox>
#include <QHeaderView>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "desktop/text.h"

namespace welvane {

namespace {

constexpr int narrowestColumn = 40, widestColumn = 260;
constexpr std::string_view browseButton = "...";

/// A list in the cells that have one, a line of text in the others.
class PickDelegate : public QStyledItemDelegate {
  public:
    PickDelegate(GridModel& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& cell) const override {
        const std::string list = listOf(cell);
        if (list.empty()) return QStyledItemDelegate::createEditor(parent, option, cell);
        auto* const box = new QComboBox(parent);
        box->setEditable(true);
        box->addItems(shown(list).split('|'));
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& cell) const override {
        auto* const box = dynamic_cast<QComboBox*>(editor);
        if (box == nullptr) return QStyledItemDelegate::setEditorData(editor, cell);
        box->setCurrentIndex(box->findText(cell.data(Qt::EditRole).toString()));
        box->setEditText(cell.data(Qt::EditRole).toString());
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& cell) const override {
        auto* const box = dynamic_cast<QComboBox*>(editor);
        if (box == nullptr) return QStyledItemDelegate::setModelData(editor, model, cell);
        const QString text = box->currentText();
        if (text == cell.data(Qt::EditRole).toString()) return;
        model_.choose(cell, box->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive), text);
    }

  private:
    std::string listOf(const QModelIndex& cell) const {
        const std::string list =
            model_.table().pickList(model_.tableRow(cell.row()), model_.tableColumn(cell.column()));
        return list == browseButton ? std::string() : list;
    }

    GridModel& model_;
};

}  // namespace

GridView::GridView(std::unique_ptr<TableModel> table, const QString& name,
                   std::function<void(const EditOutcome&)> changed, QWidget* parent)
    : QTableView(parent), model_(std::move(table), std::move(changed)) {
    setModel(&model_);
    setItemDelegate(new PickDelegate(model_, this));
    setAccessibleName(name);
    setObjectName(name);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setMinimumSectionSize(narrowestColumn);
    verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void GridView::refresh() {
    model_.refresh();
    for (int row = 0; row < model_.rowCount(); ++row) {
        const bool hidden = model_.table().rowHidden(model_.tableRow(row));
        if (isRowHidden(row) != hidden) setRowHidden(row, hidden);
    }
}

void GridView::fitColumns() {
    // Only the first screens: measuring thousands of columns takes seconds.
    constexpr int measured = 200;
    for (int column = 0; column < std::min(model_.columnCount(), measured); ++column) {
        resizeColumnToContents(column);
        setColumnWidth(column, std::clamp(columnWidth(column), narrowestColumn, widestColumn));
    }
}

}  // namespace welvane
