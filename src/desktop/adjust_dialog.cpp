#include "desktop/adjust_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

#include "desktop/text.h"

namespace welvane {

namespace {

QString limitText(const std::optional<double>& depth) {
    return depth ? QString::number(*depth, 'g', 10) : QString();
}

}  // namespace

AdjustDialog::AdjustDialog(const ChannelAdjustment& now, QWidget* parent)
    : QDialog(parent),
      shift_(new QLineEdit(QString::number(now.shift, 'g', 10), this)),
      top_(new QLineEdit(limitText(now.top), this)),
      bottom_(new QLineEdit(limitText(now.bottom), this)),
      why_(new QLabel(this)) {
    setWindowTitle("Shift and Clip " + shown(now.channel));
    auto* const form = new QFormLayout(this);
    const auto add = [&](const QString& name, QLineEdit* line) {
        line->setAccessibleName(QString(name).remove('&'));
        line->setObjectName(line->accessibleName());
        form->addRow(name, line);
    };
    add("&Shift, down is positive", shift_);
    add("Nothing &above", top_);
    add("Nothing &below", bottom_);
    why_->setTextFormat(Qt::PlainText);
    why_->setWordWrap(true);
    form->addRow(why_);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

void AdjustDialog::accept() {
    const EditOutcome outcome = judge_(typed(shift_->text()), typed(top_->text()), typed(bottom_->text()));
    why_->setText(shown(outcome.why));
    if (outcome.done) QDialog::accept();
}

}  // namespace welvane
