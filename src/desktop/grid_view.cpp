#include "desktop/grid_view.h"

#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "desktop/text.h"

namespace welvane {

namespace {

constexpr int narrowestColumn = 40, widestColumn = 260, rowPadding = 6;
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
        box->setCompleter(nullptr);  // "-9999" is not to become the "-99999" of the list
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
    setTextElideMode(Qt::ElideMiddle);  // the end of a path tells most
    verticalHeader()->setVisible(model_.table().headColumns() > 0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
    verticalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setMinimumSectionSize(narrowestColumn);
    horizontalHeader()->setTextElideMode(Qt::ElideMiddle);
    verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    refresh();
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
    if (width_) {
        for (int column = 0; column < model_.columnCount(); ++column) setColumnWidth(column, *width_);
        return;
    }
    for (int column = 0; column < std::min(model_.columnCount(), measured); ++column) {
        resizeColumnToContents(column);
        setColumnWidth(column, std::clamp(columnWidth(column), narrowestColumn, widestColumn));
    }
}

void GridView::useWidth(std::optional<int> pixels) {
    if (pixels) pixels = std::max(*pixels, narrowestColumn);
    if (pixels == width_) return;
    width_ = pixels;
    fitColumns();
}

void GridView::useFont(const QFont& font) {
    if (font == this->font()) return;
    setFont(font);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
    fitColumns();
}

CellArea GridView::marked() const {
    const QModelIndex current = currentIndex();
    int top = current.row(), bottom = top, left = current.column(), right = left;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        top = std::min(top, range.top());
        bottom = std::max(bottom, range.bottom());
        left = std::min(left, range.left());
        right = std::max(right, range.right());
    }
    return {model_.tableRow(top), model_.tableColumn(left), model_.tableRow(bottom), model_.tableColumn(right)};
}

void GridView::copy() {
    if (!currentIndex().isValid()) return;
    QGuiApplication::clipboard()->setText(shown(copyCells(model_.table(), marked())));
}

void GridView::cut() {
    copy();
    clearMarked();
}

void GridView::paste() {
    if (!currentIndex().isValid()) return;
    const CellArea area = marked();
    const std::string text = typed(QGuiApplication::clipboard()->text());
    const int row = static_cast<int>(area.firstRow);
    if (paste_) return paste_(row, area.firstColumn, text);
    const PasteReport report = pasteCells(model_.table(), row, area.firstColumn, text);
    model_.tellChange({report.clean(), report.summary()});
}

void GridView::clearMarked() {
    if (!currentIndex().isValid()) return;
    if (clear_) return clear_(marked());
    const PasteReport report = clearCells(model_.table(), marked());
    model_.tellChange({report.clean(), report.summary()});
}

bool GridView::find(const QString& text) {
    const int columns = model_.columnCount();
    const qint64 cells = static_cast<qint64>(model_.rowCount()) * columns;
    if (cells == 0 || text.isEmpty()) return false;
    const QModelIndex from = currentIndex();
    const qint64 start = from.isValid() ? static_cast<qint64>(from.row()) * columns + from.column() : -1;
    for (qint64 step = 1; step <= cells; ++step) {
        const qint64 place = (start + step) % cells;
        const QModelIndex cell = model_.index(static_cast<int>(place / columns), static_cast<int>(place % columns));
        if (isRowHidden(cell.row()) || isColumnHidden(cell.column())) continue;
        if (!cell.data().toString().contains(text, Qt::CaseInsensitive)) continue;
        setCurrentIndex(cell);
        return true;
    }
    return false;
}

bool GridView::browses(const QModelIndex& cell) const {
    return browse_ && cell.isValid() &&
           model_.table().pickList(model_.tableRow(cell.row()), model_.tableColumn(cell.column())) == browseButton;
}

void GridView::browseCurrent() {
    const QModelIndex cell = currentIndex();
    if (!browses(cell)) return;
    browse_(model_.tableRow(cell.row()), model_.tableColumn(cell.column()));
}

bool GridView::edit(const QModelIndex& cell, EditTrigger trigger, QEvent* event) {
    if (trigger == DoubleClicked && browses(cell)) {
        browseCurrent();
        return false;
    }
    return QTableView::edit(cell, trigger, event);
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete) return clearMarked();
    if (event->key() == Qt::Key_F4) return browseCurrent();
    QTableView::keyPressEvent(event);
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    if (byMouse && indexAt(event->pos()).isValid()) setCurrentIndex(indexAt(event->pos()));
    const QModelIndex cell = currentIndex();
    if (!cell.isValid()) return;
    QMenu menu(this);
    if (browses(cell)) menu.addAction("&Browse...", this, [this] { browseCurrent(); });
    if (fillMenu_) fillMenu_(model_.tableRow(cell.row()), model_.tableColumn(cell.column()), menu);
    if (menu.isEmpty()) return;
    menu.exec(byMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(cell).bottomLeft()));
}

}  // namespace welvane
