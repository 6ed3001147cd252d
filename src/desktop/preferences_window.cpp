#include "desktop/preferences_window.h"

#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/grid_view.h"

namespace welvane {

PreferencesWindow::PreferencesWindow(const WindowLinks& links, QWidget* parent)
    : AreaWindow(links, WorkArea::Preferences, "Preferences", parent), preferences_(links.frame.app) {
    grid_ = new GridView(std::make_unique<CellTableModel>(preferences_.model()), "Preferences", links.changed, this);
    grid_->setBrowse([this](int row, int) {
        preferences_.browseProgram(row);
        refresh();
    });
    grid_->horizontalHeader()->setStretchLastSection(true);
    page().addWidget(grid_);
    addButton("&OK", [this] { accept(); });
    addClose("Cancel");
    refresh();
    resize(560, 24 * (static_cast<int>(preferenceCount) + 4));
    grid_->setFocus();
}

void PreferencesWindow::refresh() {
    grid_->refresh();
}

void PreferencesWindow::accept() {
    if (acceptPreferences(frame(), preferences_)) leave();
}

}  // namespace welvane
