#include "desktop/area_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace welvane {

AreaWindow::AreaWindow(const WindowLinks& links, WorkArea area, const QString& title, QWidget* parent)
    : QWidget(parent, Qt::Window),
      links_(links),
      area_(area),
      page_(new QVBoxLayout),
      buttons_(new QHBoxLayout),
      message_(new QLabel(this)) {
    setWindowTitle(title + " - Welvane");
    setObjectName(title);
    auto* const all = new QVBoxLayout(this);
    all->addLayout(page_, 1);
    message_->setTextFormat(Qt::PlainText);
    message_->setWordWrap(true);
    all->addWidget(message_);
    message_->hide();
    buttons_->addStretch(1);
    all->addLayout(buttons_);
}

void AreaWindow::tell(const QString& text) {
    message_->setText(text);
    message_->setVisible(!text.isEmpty());
}

QPushButton* AreaWindow::addButton(const QString& text, const std::function<void()>& act) {
    auto* const button = new QPushButton(text, this);
    // A press may take the window away; that has to wait until the button is done with it.
    connect(button, &QPushButton::clicked, this, act, Qt::QueuedConnection);
    button->setAutoDefault(true);
    buttons_->addWidget(button);
    return button;
}

void AreaWindow::addClose(const QString& text) {
    addButton(text, [this] { leave(); });
}

void AreaWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    leave();
}

void AreaWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return leave();
    QWidget::keyPressEvent(event);
}

}  // namespace welvane
