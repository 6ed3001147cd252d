#include "desktop/replace_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <utility>

#include "desktop/text.h"

namespace welvane {

ReplaceDialog::ReplaceDialog(std::string sourcePath, QWidget* parent)
    : QDialog(parent),
      source_(std::move(sourcePath)),
      text_(new QRadioButton("&Text", this)),
      codes_(new QRadioButton("ASCII &codes", this)),
      searchLabel_(new QLabel(this)),
      replaceLabel_(new QLabel(this)),
      search_(new QLineEdit(this)),
      replacement_(new QLineEdit(this)) {
    setWindowTitle("Search and Replace");
    auto* const page = new QVBoxLayout(this);
    auto* const file = new QLabel(shown(source_), this);
    file->setTextFormat(Qt::PlainText);
    file->setWordWrap(true);
    page->addWidget(file);
    text_->setChecked(true);
    connect(text_, &QRadioButton::clicked, this, [this] { choose(SearchForm::Text); });
    connect(codes_, &QRadioButton::clicked, this, [this] { choose(SearchForm::Codes); });
    for (QWidget* const part :
         std::initializer_list<QWidget*>{text_, codes_, searchLabel_, search_, replaceLabel_, replacement_})
        page->addWidget(part);
    searchLabel_->setBuddy(search_);
    replaceLabel_->setBuddy(replacement_);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText("&Replace");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    page->addWidget(buttons);
    choose(SearchForm::Text);
    resize(460, sizeHint().height());
    search_->setFocus();
}

void ReplaceDialog::choose(SearchForm form) {
    searchLabel_->setText(shown(searchLabel(form)));
    replaceLabel_->setText(shown(replaceLabel(form)));
    search_->setAccessibleName(searchLabel_->text());
    replacement_->setAccessibleName(replaceLabel_->text());
    if (form == SearchForm::Codes) search_->setText(shown(startingCodes));
}

SearchRequest ReplaceDialog::request() const {
    return {codes_->isChecked() ? SearchForm::Codes : SearchForm::Text, source_, typed(search_->text()),
            typed(replacement_->text())};
}

}  // namespace welvane
