#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "desktop/grid_view.h"
#include "models/frame.h"

class QRadioButton;

namespace welvane {

/// The tab "Survey": the stations of the well, and the true vertical depths computed from them.
class SurveyView : public QWidget {
  public:
    /// `changed` is called behind each edit.
    SurveyView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent);
    void refresh();

  protected:
    /// What was changed is taken over when the tab is left.
    void hideEvent(QHideEvent* event) override;

  private:
    void addUnits();
    void addButtons();
    void asStep(const std::string& text, const std::function<EditOutcome()>& act);
    void goTo(int row, int column);

    Frame& frame_;
    std::function<void(const EditOutcome&)> changed_;
    GridView* grid_;
    std::array<QRadioButton*, 2> units_{};
};

}  // namespace welvane
