#include "desktop/channels_view.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "desktop/adjust_dialog.h"
#include "desktop/function_window.h"
#include "desktop/text.h"
#include "models/table_models.h"

namespace welvane {

namespace {

/// Around the rows of a grid that shows all of them.
constexpr int frameHeight = 4;

}  // namespace

ChannelsView::ChannelsView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent)
    : QSplitter(Qt::Vertical, parent), frame_(frame), changed_(std::move(changed)) {
    addInputs();
    addOutput();
    scrollTogether();
    setAcceptDrops(true);
    refresh();
}

ChannelsView::~ChannelsView() {
    output_->selectionModel()->disconnect(this);
    output_->horizontalHeader()->disconnect(this);
}

void ChannelsView::addInputs() {
    for (int slot = 0; slot < slotCount; ++slot) {
        auto* const grid = new GridView(std::make_unique<CellTableModel>(inputChannelsModel(frame_.session, slot)),
                                        QString("Channels of File %1").arg(slot + 1), changed_, this);
        grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        inputs_[static_cast<std::size_t>(slot)] = grid;
    }
}

void ChannelsView::addOutput() {
    auto model = std::make_unique<CellTableModel>(
        newChannelsModel(frame_.app, frame_.session, [this](int column, std::string_view old, std::string_view chosen) {
            return chooseFunction(column, old, chosen);
        }));
    output_ = new GridView(std::make_unique<UndoableModel>(std::move(model), SessionGrid::NewChannels, frame_.history,
                                                           frame_.app, frame_.session),
                           "New Channels", changed_, this);
    output_->setMenu([this](int row, int column, QMenu& menu) { fillMenu(row, column, menu); });
    connect(output_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& cell) {
        if (!cell.isValid()) return;
        makeCurrent(frame_, output_->grid().tableRow(cell.row()), output_->grid().tableColumn(cell.column()));
    });
    connect(output_->verticalHeader(), &QHeaderView::sectionDoubleClicked, this,
            [this](int row) { browse(slotOfChannelRow(output_->grid().tableRow(row))); });
    output_->horizontalHeader()->setSectionsMovable(true);
    connect(output_->horizontalHeader(), &QHeaderView::sectionMoved, this,
            [this](int, int from, int to) { moveColumn(from, to); });
}

std::optional<FunctionDescriptor> ChannelsView::chooseFunction(int column, std::string_view old,
                                                               std::string_view chosen) {
    FunctionChoice choice(frame_.app, frame_.session, column, old, chosen);
    FunctionWindow window(choice, this);
    return window.exec() == QDialog::Accepted ? window.descriptor() : choice.old;
}

std::vector<GridView*> ChannelsView::grids() const {
    std::vector<GridView*> all(inputs_.begin(), inputs_.end());
    all.push_back(output_);
    return all;
}

void ChannelsView::scrollTogether() {
    for (GridView* const one : grids())
        for (GridView* const other : grids())
            if (one != other)
                connect(one->horizontalScrollBar(), &QScrollBar::valueChanged, other->horizontalScrollBar(),
                        &QScrollBar::setValue);
}

void ChannelsView::alignColumns() {
    int labels = 0;
    for (const GridView* const grid : grids()) labels = std::max(labels, grid->verticalHeader()->sizeHint().width());
    for (GridView* const grid : grids()) grid->verticalHeader()->setFixedWidth(labels);
    for (int column = 0; column < output_->grid().columnCount(); ++column) {
        int width = 0;
        for (const GridView* const grid : grids()) width = std::max(width, grid->columnWidth(column));
        for (GridView* const grid : grids()) grid->setColumnWidth(column, width);
    }
}

void ChannelsView::fillMenu(int row, int column, QMenu& menu) {
    for (const MenuEntry& entry : openChannelMenu(frame_, row, column)) {
        QAction* const action = menu.addAction(shown(entry.text));
        action->setEnabled(entry.enabled && !frame_.running);
        connect(action, &QAction::triggered, this, [this, entry, row, column] {
            if (entry.command == ChannelCommand::Adjust) return adjust(row, column);
            std::string text = entry.text;
            std::erase(text, '&');
            asStep(text, [&] { runChannelCommand(frame_, entry.command); });
        });
    }
    const int slot = slotOfChannelRow(row);
    if (slot >= 0) menu.addAction(QString("&Open File %1...").arg(slot + 1), this, [this, slot] { browse(slot); });
}

void ChannelsView::asStep(const std::string& text, const std::function<void()>& act) {
    {
        const UndoHistory::Step step(frame_.history, frame_.app, frame_.session, text);
        act();
    }
    changed_({});
}

void ChannelsView::browse(int slot) {
    if (slot < 0 || frame_.running) return;
    asStep("Open File " + std::to_string(slot + 1), [&] { browseSlotFile(frame_, slot); });
}

void ChannelsView::adjust(int row, int column) {
    const auto now = channelAdjustment(frame_.session, row, column);
    if (!now) return;
    AdjustDialog dialog(*now, this);
    dialog.setJudge([&](const std::string& shift, const std::string& top, const std::string& bottom) {
        EditOutcome outcome;
        asStep("Shift and clip " + now->channel,
               [&] { outcome = adjustChannel(frame_.session, row, column, shift, top, bottom); });
        return outcome;
    });
    dialog.exec();
}

void ChannelsView::moveColumn(int from, int to) {
    if (moving_) return;
    // The table's columns move, and the view shows them in their order.
    moving_ = true;
    output_->horizontalHeader()->moveSection(to, from);
    moving_ = false;
    asStep("Move channel " + std::to_string(from + 1), [&] { moveNewChannel(frame_.session, from + 1, to + 1); });
}

int ChannelsView::rowAt(const QPoint& place) const {
    const QPoint inside = output_->viewport()->mapFrom(this, place);
    const int row = output_->rowAt(inside.y());
    return output_->rect().contains(output_->mapFrom(this, place)) && row >= 0 ? output_->grid().tableRow(row) : 0;
}

void ChannelsView::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && !frame_.running) event->acceptProposedAction();
}

void ChannelsView::dragMoveEvent(QDragMoveEvent* event) {
    event->acceptProposedAction();
}

void ChannelsView::dropEvent(QDropEvent* event) {
    std::vector<std::string> paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) paths.push_back(typed(url.toLocalFile()));
    if (paths.empty()) return;
    event->acceptProposedAction();
    const int row = rowAt(event->position().toPoint());
    asStep("Drop files", [&] { dropFiles(frame_, paths, row); });
}

/// As high as its rows: all of them are seen, and the new channels have the rest.
void ChannelsView::refreshInput(int slot) {
    const auto place = static_cast<std::size_t>(slot);
    GridView& grid = *inputs_[place];
    grid.setVisible(frame_.session.loaded(slot));
    int height = grid.horizontalHeader()->sizeHint().height() + frameHeight;
    for (int row = 0; row < grid.grid().rowCount(); ++row) height += grid.rowHeight(row);
    grid.setFixedHeight(height);
}

/// Of a file that is free only the row that opens one is shown.
void ChannelsView::hideFreeRows() {
    for (int row = 0; row < output_->grid().rowCount(); ++row) {
        const int tableRow = output_->grid().tableRow(row), slot = slotOfChannelRow(tableRow);
        if (slot < 0 || tableRow == linkRow(slot, Link::Mnem)) continue;
        const bool hidden = output_->grid().table().rowHidden(tableRow) || !frame_.session.loaded(slot);
        if (output_->isRowHidden(row) != hidden) output_->setRowHidden(row, hidden);
    }
}

/// Which channels stand in the columns, by their numbers in the heads.
QString ChannelsView::columnNumbers() const {
    QString numbers;
    for (const GridView* const grid : grids())
        for (int column = 0; column < grid->model()->columnCount(); ++column)
            numbers += grid->model()->headerData(column, Qt::Horizontal).toString() + " ";
    return numbers;
}

void ChannelsView::refresh() {
    for (GridView* const grid : grids()) grid->refresh();
    hideFreeRows();
    for (int slot = 0; slot < slotCount; ++slot) refreshInput(slot);
    const QString columns = columnNumbers();
    if (columns != fittedFor_) {
        for (GridView* const grid : grids()) grid->fitColumns();
        alignColumns();
    }
    fittedFor_ = columns;
}

}  // namespace welvane
