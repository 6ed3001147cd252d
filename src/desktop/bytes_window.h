#pragma once

#include "desktop/area_window.h"

class QLabel;
class QSpinBox;

namespace welvane {

class ByteGrid;
class GridView;

/// The current file byte by byte: characters or codes, bad line ends in red, and search and replace.
class BytesWindow : public AreaWindow {
  public:
    BytesWindow(const WindowLinks& links, QWidget* parent);
    void refresh() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void addPaging();
    void turn(bool (*turned)(ByteViewState&));
    void findBadEnd();
    void replace();

    ByteGrid* bytes_;
    GridView* grid_;
    QLabel *tag_, *pages_;
    QSpinBox* page_;
    bool filling_ = false;
};

}  // namespace welvane
