#pragma once

#include <functional>

#include "desktop/grid_view.h"
#include "models/frame.h"

namespace welvane {

/// The list of problems: a double click, or F4, leads to the place in the file.
class ProblemsView : public GridView {
  public:
    ProblemsView(Frame& frame, std::function<void(const std::string& path, std::size_t line)> show, QWidget* parent);

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void showCurrent();

    Frame& frame_;
    std::function<void(const std::string&, std::size_t)> show_;
};

}  // namespace welvane
