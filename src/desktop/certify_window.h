#pragma once

#include <array>

#include "desktop/area_window.h"
#include "models/certification.h"

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QRadioButton;

namespace welvane {

class GridView;

/// The checker over a list of files: verdicts in colour, the log of the current file beside them.
class CertifyWindow : public AreaWindow {
  public:
    CertifyWindow(const WindowLinks& links, QWidget* parent);
    void refresh() override;

  private:
    void addOptions();
    void showLog();

    CheckDetails details_;
    GridView* files_;
    std::array<QRadioButton*, checkKindCount> kinds_{};
    QCheckBox *repair_, *keepLogs_;
    QLabel* label_;
    QPlainTextEdit* log_;
};

}  // namespace welvane
