#pragma once

#include <QMainWindow>
#include <QTimer>
#include <optional>

#include "models/running_process.h"

class QLabel;
class QMenu;
class QProgressDialog;
class QToolBar;

namespace welvane {

class BrowserPanel;
class SessionView;
struct EditOutcome;

/// The main window: menus and tool bar from the table of commands, the browser, the session, and the run beside them.
class MainWindow : public QMainWindow {
  public:
    /// `jobPlatform` is that of the runs, which have a thread of their own.
    MainWindow(App& app, Platform& jobPlatform);
    ~MainWindow() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void setActions();
    void addMenus();
    void fillMenu(QMenu& menu, std::string_view id);
    void showArea(WorkArea area);
    void closeArea(WorkArea area);
    /// A file of the browser's list was activated: into the session, which is opened first.
    void openCurrent();
    void give(std::string_view id);
    void edited(const EditOutcome& outcome);
    void startProcess();
    void followProcess();
    void endProcess();
    void refresh();
    void refreshStatus();

    Frame frame_;
    RunningProcess process_;
    QTimer timer_;
    BrowserPanel* browser_ = nullptr;
    SessionView* session_ = nullptr;
    QToolBar* tools_ = nullptr;
    QLabel *judged_ = nullptr, *size_ = nullptr;
    QProgressDialog* progress_ = nullptr;
    bool ended_ = false;
};

}  // namespace welvane
