#pragma once

#include <QMainWindow>
#include <QPointer>
#include <vector>

#include "desktop/job_watch.h"
#include "models/running_process.h"

class QDockWidget;
class QLabel;
class QMenu;
class QToolBar;

namespace welvane {

class AreaWindow;
class BrowserPanel;
class FindBar;
class GridView;
class ProblemsView;
class SessionView;
struct Command;
struct EditOutcome;

/// The main window: menus and tool bar from the table of commands, the browser, the session, and the run beside them.
class MainWindow : public QMainWindow {
  public:
    /// `jobPlatform` is that of the runs, which have a thread of their own.
    /// `previewPlatform` that of the previews, which have another one.
    MainWindow(App& app, Platform& jobPlatform, Platform& previewPlatform);
    ~MainWindow() override;

    /// Files that were named at the start: into the session.
    void openFiles(const std::vector<std::string>& paths);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void setActions();
    void addMenus();
    void addBrowser();
    void addProblems();
    void addWelcome();
    void keepBrowserNarrow();
    void showPlace(const std::string& path, std::size_t line);
    QAction* addAction(const Command& command);
    void addRecent(QMenu& menu);
    void showArea(WorkArea area);
    void closeArea(WorkArea area);
    AreaWindow* makeWindow(WorkArea area);
    AreaWindow* windowOf(WorkArea area) const;
    /// A file of the browser's list was activated: into the session, which is opened first.
    void openCurrent();
    void give(std::string_view id);
    void edited(const EditOutcome& outcome);
    /// The keyboard went to another part: commands follow it.
    void focusMoved(QWidget* now);
    void takeGrid(WorkArea area, GridView* grid);
    void saveSession();
    void openSession();
    void wrapFile();
    void nextPart();
    void startProcess();
    void endProcess();
    void refresh();
    void refreshCommands();
    void refreshStatus();
    void applyFont();

    /// An entry of the menus and of the tool bar.
    struct Entry {
        const Command* command;
        QAction* action;
    };

    Platform& previewPlatform_;
    Frame frame_;
    RunningProcess process_;
    JobWatch jobs_;
    std::vector<Entry> entries_;
    std::vector<AreaWindow*> windows_;
    QPointer<GridView> currentGrid_;
    BrowserPanel* browser_ = nullptr;
    SessionView* session_ = nullptr;
    ProblemsView* problems_ = nullptr;
    QDockWidget* problemsDock_ = nullptr;
    FindBar* find_ = nullptr;
    QToolBar* tools_ = nullptr;
    QLabel *judged_ = nullptr, *size_ = nullptr;
    QByteArray places_;  ///< of the parts, as they were at first
    std::size_t problemsSeen_ = 0;
    bool ended_ = false;
};

}  // namespace welvane
