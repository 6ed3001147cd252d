#include "desktop/help_windows.h"

#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "desktop/icons.h"
#include "desktop/text.h"
#include "models/commands.h"
#include "models/shown_text.h"

namespace welvane {

namespace {

/// Keys that are no command's.
const std::vector<Shortcut> otherKeys = {{"Edit the current cell", "F2"},
                                         {"Choose a file or open the list of a cell", "F4"},
                                         {"Menu of the current cell", "Shift+F10"},
                                         {"Empty the marked cells; delete the marked files", "Del"},
                                         {"Find in the grid; the next one", "Ctrl+F; Ctrl+G"},
                                         {"To the next part of the window", "F6"},
                                         {"Tabs of a session", "Alt and the letter; Ctrl+Tab"},
                                         {"Zoom into a log; the whole log", "+ and -; Home"},
                                         {"Close a window, leave a question by its safe answer", "Esc"}};

}  // namespace

AboutWindow::AboutWindow(const WindowLinks& links, QWidget* parent)
    : AreaWindow(links, WorkArea::About, "About", parent) {
    auto* const picture = new QLabel(this);
    picture->setPixmap(programIcon().pixmap(96, 96));
    picture->setAlignment(Qt::AlignCenter);
    page().addWidget(picture);
    auto* const text =
        new QLabel("Welvane\nVersion " WELVANE_VERSION "\n\nJoins, corrects and writes well logs in LAS files.", this);
    text->setObjectName("Version");
    text->setAlignment(Qt::AlignCenter);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    page().addWidget(text);
    addClose();
}

HelpWindow::HelpWindow(const WindowLinks& links, QWidget* parent) : AreaWindow(links, WorkArea::Help, "Help", parent) {
    auto* const tabs = new QTabWidget(this);
    tabs->setAccessibleName("Help");
    tabs->addTab(guide(), "&Guide");
    tabs->addTab(shortcuts(), "&Keys");
    page().addWidget(tabs, 1);
    addClose();
    resize(860, 640);
    tabs->setFocus();
}

QWidget* HelpWindow::guide() {
    auto* const text = new QTextBrowser(this);
    text->setAccessibleName("Guide");
    text->setObjectName("Guide");
    text->setOpenLinks(false);
    const std::string path = documentPath(frame().app.platform, "docs/guide.md");
    const ShownText read = path.empty() ? ShownText{.why = "the guide was not installed"} : readShownText(path);
    if (read.why.empty())
        text->setMarkdown(shown(read.text));
    else
        text->setPlainText(shown(read.why));
    return text;
}

QWidget* HelpWindow::shortcuts() {
    std::vector<Shortcut> keys = shortcutList();
    keys.insert(keys.end(), otherKeys.begin(), otherKeys.end());
    auto* const table = new QTableWidget(static_cast<int>(keys.size()), 2, this);
    table->setAccessibleName("Keys");
    table->setObjectName("Keys");
    table->setHorizontalHeaderLabels({"What", "Keys"});
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    for (int row = 0; row < table->rowCount(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(shown(keys[static_cast<std::size_t>(row)].text)));
        table->setItem(row, 1, new QTableWidgetItem(shown(keys[static_cast<std::size_t>(row)].keys)));
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

}  // namespace welvane
