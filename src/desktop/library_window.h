#pragma once

#include "desktop/area_window.h"
#include "models/curve_library.h"

class QLabel;
class QTabWidget;

namespace welvane {

class GridView;

/// The curve library: groups and their rows for curves and for units, and the channels of a LAS file to be added.
class LibraryWindow : public AreaWindow {
  public:
    LibraryWindow(const WindowLinks& links, QWidget* parent);
    void refresh() override;

  private:
    /// Groups over rows of one half of the library.
    struct Half {
        LibraryPart part = LibraryPart::Curves;
        GridView *groups = nullptr, *rows = nullptr;
    };
    void addHalf(Half& half, CellTableModel groups, CellTableModel rows, const QString& name);
    void addChannels();
    QWidget* editButtons(const Half& half, bool groups, QWidget* parent);
    void add(const Half& half, bool groups);
    void remove(const Half& half, bool groups);
    void move(const Half& half, bool groups, int steps);
    void done(const EditOutcome& outcome);
    void showGroup(const Half& half);

    CurveLibrary library_;
    QTabWidget* tabs_;
    Half curves_{LibraryPart::Curves, nullptr, nullptr}, units_{LibraryPart::Units, nullptr, nullptr};
    GridView* channels_ = nullptr;
    QLabel* file_ = nullptr;
};

}  // namespace welvane
