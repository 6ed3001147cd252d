#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "models/coverage.h"
#include "models/frame.h"
#include "models/table_model.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace welvane {

class PictureView;

/// The tab "&Visualization": the picture of the files' depths, and beside it the boxes and buttons of splice depths.
class CoverageView : public QWidget {
  public:
    /// `changed` is called behind each change of the session.
    CoverageView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent);
    void refresh();

  private:
    /// What stands beside the picture for one file.
    struct FileParts {
        QLabel *top = nullptr, *bottom = nullptr, *topCaption = nullptr, *bottomCaption = nullptr;
        std::array<QLineEdit*, 2> boxes{};
        std::array<QLabel*, 2> boxCaptions{};
        QPushButton* apply = nullptr;
    };
    QWidget* addFile(int slot);
    QWidget* addParameters();
    void refreshFile(int slot);
    QLabel* plain(QWidget* parent) const;
    void paintLabel(QLabel& label, const CoverageLabel& shown);

    void asStep(const std::string& text, const std::function<void()>& act);

    Frame& frame_;
    Session& session_;
    std::function<void(const EditOutcome&)> changed_;
    PictureView* picture_;
    QLabel *shallowest_ = nullptr, *deepest_ = nullptr;
    std::array<QWidget*, slotCount> groups_{};
    std::array<FileParts, slotCount> files_{};
    QWidget* parameters_ = nullptr;
    QComboBox *from_ = nullptr, *to_ = nullptr;
};

}  // namespace welvane
