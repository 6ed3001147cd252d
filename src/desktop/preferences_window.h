#pragma once

#include "desktop/area_window.h"
#include "models/preferences.h"

namespace welvane {

class GridView;

/// The preferences: a grid of names and values. OK takes them over, Cancel and Escape do not.
class PreferencesWindow : public AreaWindow {
  public:
    PreferencesWindow(const WindowLinks& links, QWidget* parent);
    void refresh() override;

  private:
    void accept();

    Preferences preferences_;
    GridView* grid_;
};

}  // namespace welvane
