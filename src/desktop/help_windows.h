#pragma once

#include "desktop/area_window.h"

namespace welvane {

/// The name of the program and its version.
class AboutWindow : public AreaWindow {
  public:
    AboutWindow(const WindowLinks& links, QWidget* parent);
};

/// The guide, and the list of keys.
class HelpWindow : public AreaWindow {
  public:
    HelpWindow(const WindowLinks& links, QWidget* parent);

  private:
    QWidget* guide();
    QWidget* shortcuts();
};

}  // namespace welvane
