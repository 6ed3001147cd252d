#include "desktop/library_window.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <utility>

#include "desktop/grid_view.h"
#include "desktop/text.h"

namespace welvane {

LibraryWindow::LibraryWindow(const WindowLinks& links, QWidget* parent)
    : AreaWindow(links, WorkArea::Library, "Curve Library", parent),
      library_(links.frame.app),
      tabs_(new QTabWidget(this)) {
    tabs_->setAccessibleName("Curve Library");
    addHalf(curves_, library_.lrdModel(), library_.crdModel(), "Curves");
    addHalf(units_, library_.ugdModel(), library_.urdModel(), "Units");
    addChannels();
    page().addWidget(tabs_, 1);
    frame().actionsOf(WorkArea::Library).save = [this] {
        library_.save();
        refresh();
    };
    frame().actionsOf(WorkArea::Library).leave = [this] { return library_.leave(); };
    connect(curves_.rows->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& cell) {
                if (cell.isValid()) tell(shown(library_.curveHelp(curves_.rows->grid().tableRow(cell.row()))));
            });
    addButton("&Save", [this] { this->links().give("ID_Save"); });
    addClose();
    refresh();
    for (GridView* const grid : {curves_.groups, curves_.rows, units_.groups, units_.rows}) grid->fitColumns();
    resize(960, 620);
    curves_.groups->setFocus();
}

void LibraryWindow::addHalf(Half& half, CellTableModel groups, CellTableModel rows, const QString& name) {
    auto* const parts = new QSplitter(this);
    const auto changed = [this](const EditOutcome& outcome) { done(outcome); };
    const auto column = [&](CellTableModel model, const QString& title, bool ofGroups) {
        auto* const box = new QWidget(parts);
        auto* const layout = new QVBoxLayout(box);
        auto* const grid = new GridView(std::make_unique<CellTableModel>(std::move(model)), title, changed, box);
        grid->horizontalHeader()->setStretchLastSection(true);
        layout->addWidget(grid, 1);
        (ofGroups ? half.groups : half.rows) = grid;
        layout->addWidget(editButtons(half, ofGroups, box));
    };
    column(std::move(groups), "Groups of " + name, true);
    column(std::move(rows), name + " of the Group", false);
    connect(half.groups->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, &half] { showGroup(half); });
    tabs_->addTab(parts, half.part == LibraryPart::Curves ? "&Curves" : "&Units");
}

QWidget* LibraryWindow::editButtons(const Half& half, bool groups, QWidget* parent) {
    auto* const box = new QWidget(parent);
    auto* const line = new QHBoxLayout(box);
    line->setContentsMargins(0, 0, 0, 0);
    const auto button = [&](const QString& text, const std::function<void()>& act) {
        auto* const made = new QPushButton(text, box);
        made->setAccessibleName(text + (groups ? " of the groups" : " of the rows"));
        connect(made, &QPushButton::clicked, this, act);
        line->addWidget(made);
    };
    button("Add...", [this, &half, groups] { add(half, groups); });
    button("Delete", [this, &half, groups] { remove(half, groups); });
    button("Up", [this, &half, groups] { move(half, groups, -1); });
    button("Down", [this, &half, groups] { move(half, groups, 1); });
    line->addStretch(1);
    return box;
}

void LibraryWindow::addChannels() {
    auto* const box = new QWidget(this);
    auto* const layout = new QVBoxLayout(box);
    file_ = new QLabel(box);
    file_->setTextFormat(Qt::PlainText);
    layout->addWidget(file_);
    channels_ = new GridView(
        std::make_unique<CellTableModel>(library_.ardModel()), "Channels of the LAS File",
        [this](const EditOutcome& outcome) { done(outcome); }, box);
    channels_->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(channels_, 1);
    auto* const line = new QHBoxLayout;
    auto* const open = new QPushButton("&Open LAS...", box);
    connect(open, &QPushButton::clicked, this, [this] {
        library_.openLASLibAdd();
        refresh();
        channels_->fitColumns();
    });
    auto* const add = new QPushButton("&Add To Library", box);
    connect(add, &QPushButton::clicked, this, [this] {
        library_.addToLibrary();
        refresh();
    });
    line->addWidget(open);
    line->addWidget(add);
    line->addStretch(1);
    layout->addLayout(line);
    tabs_->addTab(box, "&LAS Channels");
}

void LibraryWindow::showGroup(const Half& half) {
    const int row = half.groups->grid().tableRow(half.groups->currentIndex().row());
    half.part == LibraryPart::Curves ? library_.showCurvesOfGroup(row) : library_.showUnitsOfGroup(row);
    half.rows->refresh();
    half.rows->fitColumns();
}

void LibraryWindow::add(const Half& half, bool groups) {
    const QString name = QInputDialog::getText(this, groups ? "New Group" : "New Row", "Name");
    if (name.isEmpty()) return;
    done(groups ? library_.addGroup(half.part, typed(name)) : library_.addRow(half.part, typed(name)));
}

void LibraryWindow::remove(const Half& half, bool groups) {
    GridView& grid = groups ? *half.groups : *half.rows;
    const int row = grid.grid().tableRow(grid.currentIndex().row());
    done(groups ? library_.deleteGroup(half.part, row) : library_.deleteRow(half.part, row));
}

void LibraryWindow::move(const Half& half, bool groups, int steps) {
    GridView& grid = groups ? *half.groups : *half.rows;
    const QModelIndex current = grid.currentIndex();
    const int row = grid.grid().tableRow(current.row());
    const EditOutcome outcome =
        groups ? library_.moveGroup(half.part, row, steps) : library_.moveRow(half.part, row, steps);
    done(outcome);
    if (outcome.done) grid.setCurrentIndex(grid.model()->index(current.row() + steps, current.column()));
}

void LibraryWindow::done(const EditOutcome& outcome) {
    tell(shown(outcome.why));
    links().changed(outcome);
}

void LibraryWindow::refresh() {
    for (GridView* const grid : {curves_.groups, curves_.rows, units_.groups, units_.rows, channels_}) grid->refresh();
    file_->setText(library_.ard().rows() > 1 ? shown(library_.ard().caption())
                                             : QString("Open a LAS file to see which of its channels are not known."));
    setWindowModified(library_.changed());
}

}  // namespace welvane
