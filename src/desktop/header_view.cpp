#include "desktop/header_view.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <utility>

#include "desktop/text.h"
#include "models/header_rows.h"
#include "models/other_text.h"
#include "models/session_files.h"
#include "models/table_models.h"
#include "session/session_setup.h"

namespace welvane {

namespace {

constexpr int sectionsHeight = 130;

}  // namespace

HeaderView::HeaderView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent)
    : QWidget(parent), frame_(frame), changed_(std::move(changed)), parts_(new QTabWidget(this)) {
    parts_->setAccessibleName("Parts of the header");
    setLayout(new QVBoxLayout);
    layout()->setContentsMargins(0, 0, 0, 0);
    addSections();
    layout()->addWidget(parts_);
    parts_->addTab(addLines(frame_.session.tables.wrd, SessionGrid::Well, "Well"), "Well");
    for (std::size_t slot = 0; slot < slotCount; ++slot) {
        const QString name = QString("Parameters %1").arg(slot + 1);
        parameters_[slot] = addLines(frame_.session.tables.parg[slot], SessionGrid::Parameters, name);
        parts_->addTab(parameters_[slot], name);
    }
    addOther();
    addFilter();
    refresh();
}

HeaderView::~HeaderView() {
    sections_->horizontalHeader()->disconnect(this);
}

GridView* HeaderView::addGrid(QWidget* parent, std::unique_ptr<TableModel> table, SessionGrid kind,
                              const QString& name) {
    grids_.push_back(new GridView(
        std::make_unique<UndoableModel>(std::move(table), kind, frame_.history, frame_.app, frame_.session), name,
        changed_, parent));
    return grids_.back();
}

void HeaderView::addSections() {
    sections_ = addGrid(this, std::make_unique<CellTableModel>(sectionsModel(frame_.app, frame_.session)),
                        SessionGrid::Sections, "Sections");
    sections_->setMaximumHeight(sectionsHeight);
    sections_->horizontalHeader()->setSectionsMovable(true);
    connect(sections_->horizontalHeader(), &QHeaderView::sectionMoved, this,
            [this](int, int from, int to) { moveColumn(from, to); });
    layout()->addWidget(sections_);
}

void HeaderView::moveColumn(int from, int to) {
    if (filling_) return;
    filling_ = true;
    sections_->horizontalHeader()->moveSection(to, from);
    filling_ = false;
    asStep("Move section", [&] {
        const bool moved = moveSection(frame_.session, from + 1, to + 1);
        return EditOutcome{moved, moved ? "" : "this section keeps its place"};
    });
}

void HeaderView::asStep(const std::string& text, const std::function<EditOutcome()>& act) {
    EditOutcome outcome;
    {
        const UndoHistory::Step step(frame_.history, frame_.app, frame_.session, text);
        outcome = act();
    }
    changed_(outcome);
}

GridView* HeaderView::addLines(Table& table, SessionGrid kind, const QString& name) {
    GridView* const grid = addGrid(this, std::make_unique<CellTableModel>(fieldsModel(table)), kind, name);
    grid->setMenu([this, &table](int row, int, QMenu& menu) {
        menu.addAction("&Add Line", this, [this, &table, row] {
            asStep("Add line", [&] {
                addHeaderLine(table, row);
                return EditOutcome{};
            });
        });
        menu.addAction("&Delete Line", this,
                       [this, &table, row] { asStep("Delete line", [&] { return deleteHeaderLine(table, row); }); });
    });
    return grid;
}

void HeaderView::addOther() {
    other_ = new QPlainTextEdit(this);
    other_->setAccessibleName("Other");
    other_->setObjectName("Other");
    other_->setTabChangesFocus(true);
    other_->setUndoRedoEnabled(false);
    connect(other_, &QPlainTextEdit::textChanged, this, [this] {
        if (filling_) return;
        typeOtherText(frame_.history, frame_.app, frame_.session, typed(other_->toPlainText()));
        changed_({});
    });
    parts_->addTab(other_, "Other");
}

void HeaderView::addFilter() {
    auto* const page = new QWidget(this);
    auto* const column = new QVBoxLayout(page);
    GridView* const grid = addGrid(page, std::make_unique<CellTableModel>(filterModel(frame_.app, frame_.session)),
                                   SessionGrid::Filter, "Filter");
    const auto open = [this] {
        asStep("Open filter", [&] {
            doOpenFilter(frame_.app, frame_.session);
            return EditOutcome{};
        });
    };
    grid->setBrowse([open](int, int) { open(); });
    column->addWidget(grid, 1);
    auto* const line = new QHBoxLayout;
    auto* const button = new QPushButton("Open Filter...", page);
    connect(button, &QPushButton::clicked, this, open);
    filterOn_ = new QCheckBox("Apply Filter", page);
    connect(filterOn_, &QCheckBox::clicked, this, [this](bool on) { changed_(switchFilter(frame_, on)); });
    line->addWidget(button);
    line->addWidget(filterOn_);
    line->addStretch(1);
    column->addLayout(line);
    parts_->addTab(page, "Filter");
}

void HeaderView::refresh() {
    filling_ = true;
    for (GridView* const grid : grids_) {
        const int columns = grid->grid().columnCount(), rows = grid->grid().rowCount();
        grid->refresh();
        if (columns != grid->grid().columnCount() || rows != grid->grid().rowCount()) grid->fitColumns();
    }
    const SessionTables& tables = frame_.session.tables;
    for (std::size_t slot = 0; slot < slotCount; ++slot)
        parts_->setTabVisible(parts_->indexOf(parameters_[slot]), tables.parg[slot].visible());
    if (typed(other_->toPlainText()) != shownOtherText(frame_.session))
        other_->setPlainText(shown(shownOtherText(frame_.session)));
    filterOn_->setChecked(tables.filterInUse());
    filling_ = false;
}

}  // namespace welvane
