#include "desktop/listing_window.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "desktop/grid_view.h"
#include "desktop/text.h"
#include "desktop/text_window.h"
#include "models/shown_text.h"
#include "models/table_models.h"

namespace welvane {

ListingWindow::ListingWindow(const WindowLinks& links, QWidget* parent)
    : AreaWindow(links, WorkArea::Listing, "Property Listing", parent), report_(new QLabel(this)) {
    ListingSession& listing = *frame().listing;
    App& app = frame().app;
    auto* const parts = new QSplitter(this);
    options_ = new GridView(std::make_unique<CellTableModel>(listingOptionsModel(app, listing.ord)),
                            "Options and Prices", links.changed, parts);
    auto* const right = new QSplitter(Qt::Vertical, parts);
    files_ = new GridView(std::make_unique<CellTableModel>(runValuesModel(app, listing.vrd)), "Files to List",
                          links.changed, right);
    statistics_ = new GridView(std::make_unique<StatisticsModel>(listing.srd), "Statistics", links.changed, right);
    files_->horizontalHeader()->setStretchLastSection(true);
    parts->setSizes({600, 420});
    page().addWidget(parts, 1);
    report_->setTextFormat(Qt::PlainText);
    page().addWidget(report_);
    addButton("&List", [this] { this->links().give("ID_Process"); });
    addButton("&Summary To...", [this] { chooseReport(); });
    addButton("Sho&w Listing", [this] { showListing(); });
    addColumnMenu();
    addClose();
    refresh();
    options_->fitColumns();
    files_->fitColumns();
    resize(980, 560);
    options_->setFocus();
}

void ListingWindow::addColumnMenu() {
    auto* const menu = new QMenu(this);
    for (int column = 0; column < statistics_->grid().columnCount(); ++column) {
        QAction* const entry =
            menu->addAction(statistics_->grid().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() + "  " +
                            shown(StatisticsModel::meaning(column)));
        entry->setCheckable(true);
        entry->setChecked(true);
        connect(entry, &QAction::toggled, this, [this, column](bool on) { statistics_->setColumnHidden(column, !on); });
    }
    addButton("C&olumns", [] {})->setMenu(menu);
}

void ListingWindow::refresh() {
    if (!frame().listing) return;
    for (GridView* const grid : {options_, files_, statistics_}) grid->refresh();
    statistics_->fitColumns();
    const ListingSession& listing = *frame().listing;
    report_->setText("Summary: " + (listing.reportPath.empty() ? QString("not written") : shown(listing.reportPath)));
}

void ListingWindow::chooseReport() {
    chooseReportPath(frame().app, *frame().listing);
    refresh();
}

void ListingWindow::showListing() {
    const std::string& path = frame().listing->listingPath;
    if (path.empty()) return tell("There is no listing yet: choose List first.");
    showTextWindow("Listing", readShownText(path), this);
}

}  // namespace welvane
