#pragma once

#include <QDialog>
#include <functional>

#include "models/channels_tab.h"

class QLabel;
class QLineEdit;

namespace welvane {

/// Shift and clip of one input channel. It stays open, and tells why, while what was typed cannot be.
class AdjustDialog : public QDialog {
  public:
    AdjustDialog(const ChannelAdjustment& now, QWidget* parent);
    using Judge =
        std::function<EditOutcome(const std::string& shift, const std::string& top, const std::string& bottom)>;
    void setJudge(Judge judge) { judge_ = std::move(judge); }

    void accept() override;

  private:
    QLineEdit *shift_, *top_, *bottom_;
    QLabel* why_;
    Judge judge_;
};

}  // namespace welvane
