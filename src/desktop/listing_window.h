#pragma once

#include "desktop/area_window.h"

class QLabel;

namespace welvane {

class GridView;

/// The property listing: its options and prices, its files with their RUN values, and the statistics of the last run.
class ListingWindow : public AreaWindow {
  public:
    ListingWindow(const WindowLinks& links, QWidget* parent);
    void refresh() override;

  private:
    void chooseReport();
    void showListing();
    void addColumnMenu();

    GridView *options_, *files_, *statistics_;
    QLabel* report_;
};

}  // namespace welvane
