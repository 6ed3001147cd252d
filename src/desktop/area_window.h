#pragma once

#include <QWidget>
#include <functional>

#include "models/frame.h"
#include "models/table_model.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace welvane {

class JobWatch;

/// What a window of its own is given of the main one.
struct WindowLinks {
    Frame& frame;
    JobWatch& jobs;
    std::function<void(WorkArea)> leave;              ///< the window wants to be closed; done in a turn of its own
    std::function<void(std::string_view id)> give;    ///< a command, as its entry would
    std::function<void(const EditOutcome&)> changed;  ///< behind each edit
    std::function<void(const std::string&, std::size_t)> showPlace = {};  ///< a file, at a line
};

/// A window of its own beside the main one: its parts over a line for messages and buttons. Escape closes it.
class AreaWindow : public QWidget {
  public:
    AreaWindow(const WindowLinks& links, WorkArea area, const QString& title, QWidget* parent);

    /// Everything that is shown, anew.
    virtual void refresh() {}
    WorkArea area() const { return area_; }
    void tell(const QString& text);

  protected:
    Frame& frame() { return links_.frame; }
    const WindowLinks& links() const { return links_; }
    /// Where the parts of the window go.
    QVBoxLayout& page() { return *page_; }
    QPushButton* addButton(const QString& text, const std::function<void()>& act);
    /// The last of the buttons, "Close" or "Cancel".
    void addClose(const QString& text = "C&lose");
    void leave() { links_.leave(area_); }
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    WindowLinks links_;
    WorkArea area_;
    QVBoxLayout* page_;
    QHBoxLayout* buttons_;
    QLabel* message_;
};

}  // namespace welvane
