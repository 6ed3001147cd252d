#pragma once

#include <QDialog>

#include "models/search.h"

class QLabel;
class QLineEdit;
class QRadioButton;

namespace welvane {

/// The fields of search and replace. What they hold is judged by the command.
class ReplaceDialog : public QDialog {
  public:
    ReplaceDialog(std::string sourcePath, QWidget* parent);
    SearchRequest request() const;

  private:
    void choose(SearchForm form);

    std::string source_;
    QRadioButton *text_, *codes_;
    QLabel *searchLabel_, *replaceLabel_;
    QLineEdit *search_, *replacement_;
};

}  // namespace welvane
