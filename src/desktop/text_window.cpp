#include "desktop/text_window.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "desktop/text.h"
#include "models/shown_text.h"

namespace welvane {

void showTextWindow(const QString& title, const ShownText& text, QWidget* parent) {
    auto* const window = new QDialog(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(title + " - Welvane");
    auto* const view = new QPlainTextEdit(shown(text.why.empty() ? text.text : text.why), window);
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    view->setAccessibleName(title);
    view->setObjectName(title);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, window);
    QObject::connect(buttons, &QDialogButtonBox::rejected, window, &QDialog::reject);
    auto* const page = new QVBoxLayout(window);
    page->addWidget(view);
    page->addWidget(buttons);
    if (text.cut) view->appendPlainText("... the file is longer");
    window->resize(820, 560);
    window->show();
}

}  // namespace welvane
