#pragma once

#include <QWidget>
#include <functional>

#include "models/frame.h"

class QVBoxLayout;

namespace welvane {

/// What stands in the middle while no session is open: where to begin.
class WelcomePage : public QWidget {
  public:
    /// `done` is called behind each choice, with whether to show the preview.
    WelcomePage(Frame& frame, const std::function<void(std::string_view id)>& give,
                std::function<void(bool preview)> done, QWidget* parent);

  private:
    void addRecent(QVBoxLayout& column);

    Frame& frame_;
    std::function<void(bool)> done_;
};

}  // namespace welvane
