#include "desktop/session_view.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/coverage_view.h"
#include "desktop/text.h"
#include "models/table_models.h"

namespace welvane {

namespace {

/// Around the rows of a grid that shows all of them.
constexpr int frameHeight = 4;

}  // namespace

SessionView::SessionView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent)
    : QTabWidget(parent), frame_(frame), changed_(std::move(changed)) {
    setAccessibleName("Session");
    addChannels();
    coverage_ = new CoverageView(frame_.session, changed_, this);
    addTab(coverage_, "&Visualization");
    addTables();
    connect(this, &QTabWidget::currentChanged, this, [this](int tab) { frame_.tab = static_cast<SessionTab>(tab); });
    refresh();
}

// Tabs that are taken away one by one would each make the next one current.
SessionView::~SessionView() {
    disconnect(this, nullptr, this, nullptr);
    output_->selectionModel()->disconnect(this);
}

GridView* SessionView::addGrid(QWidget* parent, std::unique_ptr<TableModel> table, const QString& name) {
    grids_.push_back(new GridView(std::move(table), name, changed_, parent));
    return grids_.back();
}

void SessionView::addChannels() {
    auto* const page = new QSplitter(Qt::Vertical, this);
    for (int slot = 0; slot < slotCount; ++slot) {
        GridView* const grid = addGrid(page, std::make_unique<CellTableModel>(inputChannelsModel(frame_.session, slot)),
                                       QString("Channels of File %1").arg(slot + 1));
        grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        inputs_[static_cast<std::size_t>(slot)] = grid;
    }
    output_ = addGrid(page,
                      std::make_unique<CellTableModel>(newChannelsModel(
                          frame_.app, frame_.session,
                          [this](std::string_view, std::string_view) {
                              showWarning(frame_.app.user, "Not There Yet",
                                          "The window of the functions is still to be made; welvane run takes them.");
                              return std::optional<FunctionDescriptor>();
                          })),
                      "New Channels");
    connect(output_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& cell) { markCurrentChannel(cell); });
    scrollTogether();
    addTab(page, "&Channels");
}

void SessionView::addTables() {
    addTab(addGrid(this, std::make_unique<CellTableModel>(propertiesModel(frame_.app, frame_.session)), "Properties"),
           "&Properties");
    auto* const page = new QSplitter(Qt::Vertical, this);
    addGrid(page, std::make_unique<CellTableModel>(sectionsModel(frame_.app, frame_.session)), "Sections");
    addGrid(page, std::make_unique<CellTableModel>(fieldsModel(frame_.session.tables.wrd)), "Well");
    addTab(page, "&Header");
}

std::vector<GridView*> SessionView::channelGrids() const {
    std::vector<GridView*> grids(inputs_.begin(), inputs_.end());
    grids.push_back(output_);
    return grids;
}

void SessionView::scrollTogether() {
    for (GridView* const one : channelGrids())
        for (GridView* const other : channelGrids())
            if (one != other)
                connect(one->horizontalScrollBar(), &QScrollBar::valueChanged, other->horizontalScrollBar(),
                        &QScrollBar::setValue);
}

void SessionView::alignChannels() {
    const std::vector<GridView*> grids = channelGrids();
    int labels = 0;
    for (const GridView* const grid : grids) labels = std::max(labels, grid->verticalHeader()->sizeHint().width());
    for (GridView* const grid : grids) grid->verticalHeader()->setFixedWidth(labels);
    for (int column = 0; column < output_->grid().columnCount(); ++column) {
        int width = 0;
        for (const GridView* const grid : grids) width = std::max(width, grid->columnWidth(column));
        for (GridView* const grid : grids) grid->setColumnWidth(column, width);
    }
}

void SessionView::markCurrentChannel(const QModelIndex& cell) {
    if (!cell.isValid()) return;
    frame_.currentChannel = output_->grid().tableColumn(cell.column());
}

/// As high as its rows: all of them are seen, and the new channels have the rest.
void SessionView::refreshInput(int slot) {
    GridView& grid = *inputs_[static_cast<std::size_t>(slot)];
    grid.setVisible(frame_.session.loaded(slot));
    int height = grid.horizontalHeader()->sizeHint().height() + frameHeight;
    for (int row = 0; row < grid.grid().rowCount(); ++row) height += grid.rowHeight(row);
    grid.setFixedHeight(height);
}

void SessionView::refresh() {
    for (GridView* const grid : grids_) grid->refresh();
    for (int slot = 0; slot < slotCount; ++slot) refreshInput(slot);
    const int channels = output_->grid().columnCount();
    if (channels != fittedFor_) {
        for (GridView* const grid : grids_) grid->fitColumns();
        alignChannels();
    }
    fittedFor_ = channels;
    coverage_->refresh();
    if (currentIndex() != static_cast<int>(frame_.tab)) setCurrentIndex(static_cast<int>(frame_.tab));
}

}  // namespace welvane
