#include "desktop/main_window.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>
#include <QStatusBar>
#include <QToolBar>

#include "desktop/browser_panel.h"
#include "desktop/session_view.h"
#include "desktop/text.h"
#include "models/commands.h"

namespace welvane {

namespace {

constexpr int followEveryMs = 50, quietMs = 300;

}  // namespace

MainWindow::MainWindow(App& app, Platform& jobPlatform) : frame_(app), process_(frame_, jobPlatform, {}) {
    setWindowTitle("Welvane");
    setActions();
    addMenus();
    auto* const dock = new QDockWidget("Browser", this);
    dock->setObjectName("Browser");
    browser_ = new BrowserPanel(
        frame_, [this] { refresh(); }, [this] { openCurrent(); }, dock);
    dock->setWidget(browser_);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    judged_ = new QLabel(this);
    size_ = new QLabel(this);
    statusBar()->addWidget(judged_, 1);
    statusBar()->addPermanentWidget(size_);
    connect(&timer_, &QTimer::timeout, this, [this] { followProcess(); });
    refresh();
}

// The parts look at the frame until they are gone, and it goes before the window's children would.
MainWindow::~MainWindow() {
    timer_.stop();
    delete session_;
    delete browser_;
}

void MainWindow::setActions() {
    frame_.actions.show = [this](WorkArea area) { showArea(area); };
    frame_.actions.close = [this](WorkArea area) { closeArea(area); };
    frame_.actions.refresh = [this] { refresh(); };
    frame_.actions.startProcess = [this] { startProcess(); };
    frame_.actions.exit = [this] {
        ended_ = true;
        close();
    };
}

void MainWindow::addMenus() {
    tools_ = addToolBar("Tool Bar");
    tools_->setObjectName("Tool Bar");
    for (const Command& command : commandTable()) {
        if (command.kind != CommandKind::Menu) continue;
        QMenu* const menu = menuBar()->addMenu(shown(command.text));
        // Shortcuts live on the entries, so they stand from the start; their states are set when a menu opens.
        fillMenu(*menu, command.id);
        connect(menu, &QMenu::aboutToShow, this, [this, menu, id = command.id] {
            menu->clear();
            fillMenu(*menu, id);
        });
    }
}

void MainWindow::fillMenu(QMenu& menu, std::string_view id) {
    for (const CommandEntry& entry : openMenu(frame_, id)) {
        QAction* const action = menu.addAction(shown(entry.text));
        action->setShortcut(QKeySequence(shown(entry.shortcut)));
        action->setToolTip(shown(entry.tip));
        action->setCheckable(entry.toggle);
        action->setChecked(entry.checked);
        action->setEnabled(entry.enabled);
        connect(
            action, &QAction::triggered, this, [this, command = entry.id] { give(command); }, Qt::QueuedConnection);
    }
}

void MainWindow::give(std::string_view id) {
    perform(frame_, id);
    if (!ended_) refresh();
}

void MainWindow::showArea(WorkArea area) {
    if (area == WorkArea::Browser) return browser_->setFocus();
    if (area != WorkArea::Session) {
        welvane::closeArea(frame_, area);
        showWarning(frame_.app.user, "Not There Yet",
                    "This window is still to be made. The verbs do its work: welvane --help");
        return;
    }
    if (session_ == nullptr) {
        session_ = new SessionView(
            frame_, [this](const EditOutcome& outcome) { edited(outcome); }, this);
        setCentralWidget(session_);
    }
    session_->setFocus();
}

void MainWindow::openCurrent() {
    if (frame_.running) return;
    if (!frame_.isOpen(WorkArea::Session)) return give("ID_MMM");
    openArea(frame_, WorkArea::Session);
    openInSession(frame_, frame_.app.run.lasFile);
    refresh();
}

void MainWindow::closeArea(WorkArea area) {
    if (area != WorkArea::Session || session_ == nullptr) return;
    session_->hide();
    session_->deleteLater();
    session_ = nullptr;
}

void MainWindow::edited(const EditOutcome& outcome) {
    refresh();
    if (!outcome.why.empty()) statusBar()->showMessage(shown(outcome.why));
}

void MainWindow::startProcess() {
    if (!process_.start(browser_->browser().pattern())) return;
    progress_ = new QProgressDialog(this);
    progress_->setWindowTitle("Welvane");
    progress_->setWindowModality(Qt::WindowModal);
    progress_->setRange(0, 100);
    progress_->setAutoClose(false);
    progress_->setAutoReset(false);
    progress_->setMinimumDuration(quietMs);
    connect(progress_, &QProgressDialog::canceled, this, [this] {
        // A job that ends while the question stands must not be put away under it.
        timer_.stop();
        process_.job().askCancel(frame_.app.user);
        timer_.start(followEveryMs);
    });
    // The dialog stays until the job has ended, whatever its button is told.
    disconnect(progress_, SIGNAL(canceled()), progress_, SLOT(cancel()));
    timer_.start(followEveryMs);
}

void MainWindow::followProcess() {
    if (!process_.running()) return endProcess();
    QuestionDesk& desk = process_.job().desk();
    if (const auto question = desk.pending()) {
        timer_.stop();
        UserInterface& user = frame_.app.user;
        if (const auto* box = std::get_if<Prompt>(&*question)) desk.answer(user.ask(*box));
        if (const auto* line = std::get_if<TextPrompt>(&*question)) desk.answer(user.askText(*line));
        if (const auto* file = std::get_if<FilePrompt>(&*question)) desk.answer(user.askFile(*file));
        if (const auto* folder = std::get_if<FolderPrompt>(&*question))
            desk.answer(user.askFolder(folder->title, folder->start));
        timer_.start(followEveryMs);
        return;
    }
    const ProgressLabels labels = process_.job().labels();
    progress_->setLabelText(shown(labels.status + "\n" + labels.source + "\n" + labels.target));
    progress_->setValue(labels.percent);
}

void MainWindow::endProcess() {
    timer_.stop();
    progress_->deleteLater();
    progress_ = nullptr;
    const ProcessOutcome outcome = process_.finish();
    if (ended_) return;
    browser_->refresh();
    refresh();
    if (!outcome.refusal.empty()) return statusBar()->showMessage(shown(outcome.refusal));
    if (outcome.completed && !outcome.written.empty())
        statusBar()->showMessage("Written: " + shown(outcome.written.back()));
}

void MainWindow::refresh() {
    if (session_ != nullptr) session_->refresh();
    tools_->clear();
    for (const CommandEntry& entry : toolBar(frame_)) {
        QAction* const action = tools_->addAction(shown(entry.text).remove('&'));
        action->setToolTip(shown(entry.tip));
        action->setCheckable(entry.toggle);
        action->setChecked(entry.checked);
        action->setEnabled(entry.enabled);
        connect(
            action, &QAction::triggered, this, [this, id = entry.id] { give(id); }, Qt::QueuedConnection);
    }
    for (const QAction* const menu : menuBar()->actions())
        for (QAction* const action : menu->menu()->actions()) action->setEnabled(true);
    if (browser_ != nullptr && judged_ != nullptr) refreshStatus();
}

void MainWindow::refreshStatus() {
    const FileBrowser& browser = browser_->browser();
    judged_->setText(shown(browser.status()));
    QPalette colours = statusBar()->palette();
    if (browser.statusRed()) colours.setColor(QPalette::WindowText, Qt::red);
    judged_->setPalette(colours);
    size_->setText(shown(browser.sizeText()));
}

void MainWindow::closeEvent(QCloseEvent* event) {
    timer_.stop();
    if (!ended_) process_.wishToExit();
    if (progress_ != nullptr) timer_.start(followEveryMs);
    event->setAccepted(ended_);
}

}  // namespace welvane
