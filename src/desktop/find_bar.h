#pragma once

#include <QPointer>
#include <QToolBar>

class QLabel;
class QLineEdit;

namespace welvane {

class GridView;

/// The line at the lower edge that looks for a text in the grid that had the keyboard.
class FindBar : public QToolBar {
  public:
    explicit FindBar(QWidget* parent);

    void open(GridView* grid);
    void findNext();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QLineEdit* text_;
    QLabel* told_;
    QPointer<GridView> grid_;
};

}  // namespace welvane
