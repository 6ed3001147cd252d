#include "desktop/find_bar.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "desktop/grid_view.h"

namespace welvane {

FindBar::FindBar(QWidget* parent) : QToolBar("Find", parent), text_(new QLineEdit(this)), told_(new QLabel(this)) {
    setObjectName("Find");
    auto* const label = new QLabel("Find in the grid ", this);
    label->setBuddy(text_);
    addWidget(label);
    text_->setAccessibleName("Find in the grid");
    text_->setObjectName("Find Text");
    addWidget(text_);
    addWidget(told_);
    connect(text_, &QLineEdit::returnPressed, this, [this] { findNext(); });
    hide();
}

void FindBar::open(GridView* grid) {
    grid_ = grid;
    show();
    told_->setText(grid == nullptr ? "  Click into a grid first." : "");
    text_->setFocus();
    text_->selectAll();
}

void FindBar::findNext() {
    if (grid_ == nullptr) return;
    told_->setText(grid_->find(text_->text()) ? "" : "  not found");
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) return QToolBar::keyPressEvent(event);
    hide();
    if (grid_ != nullptr) grid_->setFocus();
}

}  // namespace welvane
