#pragma once

#include <QWidget>
#include <functional>

#include "models/file_browser.h"

class QLabel;
class QListWidget;

namespace welvane {

/// The browser: folders, the list of files, and what is known of the selected one.
class BrowserPanel : public QWidget {
  public:
    /// `changed` is called when the selection or the folder is another one, `activated` when a person opens a file.
    BrowserPanel(Frame& frame, std::function<void()> changed, std::function<void()> activated, QWidget* parent);

    ~BrowserPanel() override;

    FileBrowser& browser() { return browser_; }
    /// All lists and texts anew.
    void refresh();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void takeSelection();
    void showDetails();

    Frame& frame_;
    FileBrowser browser_;
    std::function<void()> changed_, activated_;
    QLabel *source_, *destination_, *heading_, *details_;
    QListWidget *folders_, *files_;
    bool filling_ = false;
};

}  // namespace welvane
