#include "desktop/main_window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDropEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>
#include <algorithm>
#include <memory>

#include "desktop/browser_panel.h"
#include "desktop/bytes_window.h"
#include "desktop/certify_window.h"
#include "desktop/find_bar.h"
#include "desktop/grid_view.h"
#include "desktop/help_windows.h"
#include "desktop/icons.h"
#include "desktop/library_window.h"
#include "desktop/listing_window.h"
#include "desktop/preferences_window.h"
#include "desktop/print.h"
#include "desktop/problems_view.h"
#include "desktop/session_view.h"
#include "desktop/text.h"
#include "desktop/welcome_page.h"
#include "models/byte_place.h"
#include "models/command_effects.h"
#include "models/commands.h"
#include "models/recent_files.h"
#include "models/session_store.h"
#include "models/welcome.h"
#include "models/wrap_command.h"

namespace welvane {

namespace {

constexpr int browserWidth = 230;

}  // namespace

MainWindow::MainWindow(App& app, Platform& jobPlatform, Platform& previewPlatform)
    : previewPlatform_(previewPlatform),
      frame_(app),
      process_(frame_, jobPlatform, {}),
      jobs_(frame_, jobPlatform, *this) {
    setWindowTitle("Welvane");
    setWindowIcon(programIcon());
    setActions();
    addMenus();
    addBrowser();
    addProblems();
    addWelcome();
    find_ = new FindBar(this);
    addToolBar(Qt::BottomToolBarArea, find_);
    find_->hide();
    setAcceptDrops(true);
    judged_ = new QLabel(this);
    size_ = new QLabel(this);
    judged_->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(judged_, 1);
    statusBar()->addPermanentWidget(size_);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { focusMoved(now); });
    auto* const next = new QShortcut(QKeySequence(Qt::Key_F6), this);
    connect(next, &QShortcut::activated, this, [this] { nextPart(); });
    places_ = saveState();
    refresh();
}

// The parts look at the frame until they are gone, and it goes before the window's children would.
MainWindow::~MainWindow() {
    disconnect(qApp, nullptr, this, nullptr);
    for (AreaWindow* const window : windows_) delete window;
    delete session_;
    delete browser_;
}

void MainWindow::setActions() {
    frame_.actions.show = [this](WorkArea area) { showArea(area); };
    frame_.actions.close = [this](WorkArea area) { closeArea(area); };
    frame_.actions.refresh = [this] { refresh(); };
    frame_.actions.startProcess = [this] { startProcess(); };
    frame_.actions.arrange = [this] { restoreState(places_); };
    frame_.actions.print = [this](const std::string& text) { printText(shown(text), this); };
    frame_.actions.chooseFont = [this](const GridFontSetting& font) { return chooseFont(font, this); };
    frame_.actions.saveSession = [this] { saveSession(); };
    frame_.actions.openSession = [this] { openSession(); };
    frame_.actions.wrapFile = [this] { wrapFile(); };
    frame_.actions.find = [this] { find_->open(currentGrid_); };
    frame_.actions.findNext = [this] { find_->findNext(); };
    frame_.actions.exit = [this] {
        ended_ = true;
        close();
    };
}

/// The middle needs the room; the layout gives it away when what stands there changes.
void MainWindow::keepBrowserNarrow() {
    QTimer::singleShot(0, this,
                       [this] { resizeDocks({findChild<QDockWidget*>("Browser")}, {browserWidth}, Qt::Horizontal); });
}

void MainWindow::addBrowser() {
    auto* const dock = new QDockWidget("Browser", this);
    dock->setObjectName("Browser");
    browser_ = new BrowserPanel(
        frame_, [this] { refresh(); }, [this] { openCurrent(); }, dock);
    dock->setWidget(browser_);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
}

void MainWindow::addProblems() {
    problemsDock_ = new QDockWidget("Problems", this);
    problemsDock_->setObjectName("Problems Dock");
    problems_ = new ProblemsView(
        frame_, [this](const std::string& path, std::size_t line) { showPlace(path, line); }, problemsDock_);
    problemsDock_->setWidget(problems_);
    addDockWidget(Qt::BottomDockWidgetArea, problemsDock_);
    problemsDock_->hide();
}

void MainWindow::addWelcome() {
    setCentralWidget(new WelcomePage(
        frame_, [this](std::string_view id) { give(id); },
        [this](bool preview) {
            browser_->refresh();
            refresh();
            if (preview && session_ != nullptr) session_->showPreview();
        },
        this));
    keepBrowserNarrow();
}

void MainWindow::showPlace(const std::string& path, std::size_t line) {
    openArea(frame_, WorkArea::Tools);
    if (!showLineOfFile(frame_.bytes, path, line)) statusBar()->showMessage(shown(path) + " could not be read");
    refresh();
}

void MainWindow::addMenus() {
    tools_ = addToolBar("Tool Bar");
    tools_->setObjectName("Tool Bar");
    for (const Command& command : commandTable()) {
        if (command.kind != CommandKind::Menu) continue;
        QMenu* const menu = menuBar()->addMenu(shown(command.text));
        for (const Command& entry : commandTable())
            if (entry.menu == command.id) menu->addAction(addAction(entry));
        connect(menu, &QMenu::aboutToShow, this, [this] { refreshCommands(); });
        if (command.id == "ID_FileMN") addRecent(*menu);
    }
    for (const CommandEntry& entry : toolBar(frame_))
        for (const Entry& known : entries_)
            if (known.command->id == entry.id) tools_->addAction(known.action);
}

QAction* MainWindow::addAction(const Command& command) {
    auto* const action = new QAction(shown(command.text), this);
    action->setObjectName(shown(command.id));
    action->setShortcut(QKeySequence(shown(command.shortcut)));
    action->setShortcutContext(Qt::ApplicationShortcut);  // the windows beside this one have no menus
    action->setToolTip(shown(command.tip));
    action->setStatusTip(shown(command.tip));
    action->setCheckable(command.kind == CommandKind::Toggle);
    connect(
        action, &QAction::triggered, this, [this, id = command.id] { give(id); }, Qt::QueuedConnection);
    entries_.push_back({&command, action});
    return action;
}

void MainWindow::addRecent(QMenu& menu) {
    QMenu* const recent = menu.addMenu("&Recent Files");
    connect(recent, &QMenu::aboutToShow, this, [this, recent] {
        recent->clear();
        for (const std::string& path : recentFiles(frame_.app.platform.settings())) {
            QAction* const entry = recent->addAction(shown(path).replace('&', "&&"));
            connect(
                entry, &QAction::triggered, this,
                [this, path] {
                    openFromList(frame_, path);
                    refresh();
                },
                Qt::QueuedConnection);
        }
        if (recent->isEmpty()) recent->addAction("No file was opened yet")->setEnabled(false);
    });
}

void MainWindow::give(std::string_view id) {
    perform(frame_, id);
    if (!ended_) refresh();
}

AreaWindow* MainWindow::windowOf(WorkArea area) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](const AreaWindow* window) { return window->area() == area; });
    return found == windows_.end() ? nullptr : *found;
}

AreaWindow* MainWindow::makeWindow(WorkArea area) {
    const WindowLinks links{frame_, jobs_,
                            [this](WorkArea closed) {
                                QMetaObject::invokeMethod(
                                    this, [this, closed] { welvane::closeArea(frame_, closed); }, Qt::QueuedConnection);
                            },
                            [this](std::string_view id) { give(id); },
                            [this](const EditOutcome& outcome) { edited(outcome); }};
    switch (area) {
        case WorkArea::Preferences:
            return new PreferencesWindow(links, this);
        case WorkArea::Certify:
            return new CertifyWindow(links, this);
        case WorkArea::Listing:
            return new ListingWindow(links, this);
        case WorkArea::Library:
            return new LibraryWindow(links, this);
        case WorkArea::Tools:
            return new BytesWindow(links, this);
        case WorkArea::Help:
            return new HelpWindow(links, this);
        default:
            return new AboutWindow(links, this);
    }
}

void MainWindow::showArea(WorkArea area) {
    if (area == WorkArea::Browser) return browser_->setFocus();
    if (area == WorkArea::Session) {
        if (session_ == nullptr) {
            session_ = new SessionView(
                frame_, jobs_, previewPlatform_, [this](const EditOutcome& outcome) { edited(outcome); }, this);
            setCentralWidget(session_);
            keepBrowserNarrow();
        }
        activateWindow();
        return session_->setFocus();
    }
    AreaWindow* window = windowOf(area);
    if (window == nullptr) windows_.push_back(window = makeWindow(area));
    window->show();
    window->raise();
    window->activateWindow();
}

void MainWindow::openCurrent() {
    if (frame_.running) return;
    if (!frame_.isOpen(WorkArea::Session)) return give("ID_MMM");
    openArea(frame_, WorkArea::Session);
    openInSession(frame_, frame_.app.run.lasFile);
    refresh();
}

void MainWindow::closeArea(WorkArea area) {
    if (area == WorkArea::Session && session_ != nullptr) {
        session_->hide();
        session_->deleteLater();
        session_ = nullptr;
        if (!ended_) addWelcome();
    }
    AreaWindow* const window = windowOf(area);
    if (window == nullptr) return;
    // What it shows is gone already, so it goes at once.
    std::erase(windows_, window);
    delete window;
    if (!ended_) refresh();
}

void MainWindow::edited(const EditOutcome& outcome) {
    refresh();
    statusBar()->showMessage(shown(outcome.why));
    for (AreaWindow* const window : windows_)
        if (window->isActiveWindow()) window->tell(shown(outcome.why));
}

void MainWindow::focusMoved(QWidget* now) {
    if (ended_ || now == nullptr) return;
    std::optional<WorkArea> area;
    GridView* grid = nullptr;
    for (QWidget* part = now; part != nullptr && !area; part = part->parentWidget()) {
        if (auto* const found = dynamic_cast<GridView*>(part)) grid = found;
        if (part == browser_) area = WorkArea::Browser;
        if (part == session_) area = WorkArea::Session;
        if (const auto* const window = dynamic_cast<AreaWindow*>(part)) area = window->area();
    }
    // Menus, tool bar and boxes belong to no part: commands go where they went.
    if (!area || !frame_.isOpen(*area)) return;
    frame_.front = area;
    takeGrid(*area, grid);
    refreshCommands();
}

void MainWindow::takeGrid(WorkArea area, GridView* grid) {
    currentGrid_ = grid;
    AreaActions& actions = frame_.actionsOf(area);
    const auto of = [&](void (GridView::*act)()) {
        return grid == nullptr ? std::function<void()>() : [this, act] {
            if (currentGrid_ != nullptr) (currentGrid_->*act)();
        };
    };
    actions.cut = of(&GridView::cut);
    actions.copy = of(&GridView::copy);
    actions.paste = of(&GridView::paste);
}

void MainWindow::saveSession() {
    const std::string path = askSessionToSave(frame_);
    if (path.empty()) return;
    jobs_.run(
        *this, [path](App& app, Session& session) { keepSession(app, session, path); },
        [this, path](const std::string& failure) {
            edited({failure.empty(), failure.empty() ? "Written: " + path : failure});
        });
}

void MainWindow::openSession() {
    const std::string path = askSessionToOpen(frame_);
    if (path.empty()) return;
    auto restored = std::make_shared<RestoredSession>();
    jobs_.run(
        *this, [restored, path](App& app, Session&) { *restored = restoreKeptSession(app, path); },
        [this, restored, path](const std::string& failure) {
            if (failure.empty()) takeSession(frame_, std::move(*restored), path);
            edited({failure.empty(), failure});
        });
}

void MainWindow::wrapFile() {
    const std::string file = fileToWrap(frame_), output = file.empty() ? "" : askWrapOutput(frame_, file);
    if (output.empty()) return;
    auto outcome = std::make_shared<EditOutcome>();
    jobs_.run(
        *this, [outcome, file, output](App& app, Session&) { *outcome = wrapInto(app, file, output); },
        [this, outcome](const std::string& failure) {
            if (!failure.empty()) *outcome = {false, failure};
            edited(*outcome);
        });
}

void MainWindow::openFiles(const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    dropOnFrame(frame_, paths);
    refresh();
}

/// F6: the keyboard goes to the next of browser, middle and problems.
void MainWindow::nextPart() {
    std::vector<QWidget*> parts = {browser_, centralWidget()};
    if (problemsDock_->isVisible()) parts.push_back(problemsDock_);
    QWidget* const focus = QApplication::focusWidget();
    std::size_t now = parts.size() - 1;
    for (std::size_t part = 0; part < parts.size(); ++part)
        if (focus != nullptr && parts[part]->isAncestorOf(focus)) now = part;
    for (QWidget* const inside : parts[(now + 1) % parts.size()]->findChildren<QWidget*>()) {
        if (!inside->isVisible() || !inside->isEnabled() || dynamic_cast<QAbstractItemView*>(inside) == nullptr)
            continue;
        return inside->setFocus(Qt::TabFocusReason);
    }
}

void MainWindow::startProcess() {
    if (jobs_.busy() || !process_.start(browser_->browser().pattern())) return;
    jobs_.watch(process_.job(), [this] { endProcess(); });
}

void MainWindow::endProcess() {
    const ProcessOutcome outcome = process_.finish();
    if (ended_) return;
    browser_->refresh();
    refresh();
    QString text;
    if (!outcome.refusal.empty())
        text = shown(outcome.refusal);
    else if (outcome.completed && !outcome.written.empty())
        text = "Written: " + shown(outcome.written.back());
    statusBar()->showMessage(text);
    for (AreaWindow* const window : windows_)
        if (window->isActiveWindow()) window->tell(text);
}

void MainWindow::refresh() {
    if (ended_) return;
    if (session_ != nullptr) session_->refresh();
    problems_->refresh();
    problemsDock_->setWindowTitle(QString("Problems (%1)").arg(frame_.problems.size()));
    if (frame_.problems.size() > 0 && problemsSeen_ != frame_.problems.size()) problemsDock_->show();
    problemsSeen_ = frame_.problems.size();
    for (AreaWindow* const window : windows_) window->refresh();
    applyFont();
    refreshCommands();
    refreshStatus();
}

void MainWindow::refreshCommands() {
    for (const Entry& entry : entries_) {
        entry.action->setText(shown(commandText(frame_, *entry.command)));
        entry.action->setToolTip(shown(commandTip(frame_, *entry.command)));
        entry.action->setStatusTip(entry.action->toolTip());
        entry.action->setEnabled(commandEnabled(frame_, *entry.command));
        entry.action->setChecked(commandChecked(frame_, *entry.command));
    }
}

void MainWindow::refreshStatus() {
    const FileBrowser& browser = browser_->browser();
    judged_->setText(shown(browser.status()));
    QPalette colours = statusBar()->palette();
    if (browser.statusRed()) colours.setColor(QPalette::WindowText, Qt::red);
    judged_->setPalette(colours);
    size_->setText(shown(browser.sizeText()));
}

void MainWindow::applyFont() {
    const QFont font = gridFont(frame_.app.settings.gridFont);
    constexpr int twentiethsPerPixel = 15;
    std::optional<int> width = chosenColumnWidth(frame_.app);
    if (width) *width /= twentiethsPerPixel;
    for (GridView* const grid : findChildren<GridView*>()) {
        grid->useFont(font);
        grid->useWidth(width);
    }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && !frame_.running) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    std::vector<std::string> paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) paths.push_back(typed(url.toLocalFile()));
    event->acceptProposedAction();
    dropOnFrame(frame_, paths);
    browser_->refresh();
    refresh();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!ended_ && jobs_.busy() && !process_.running())
        jobs_.askCancel();
    else if (!ended_)
        process_.wishToExit();
    event->setAccepted(ended_);
}

}  // namespace welvane
