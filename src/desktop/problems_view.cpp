#include "desktop/problems_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <utility>

namespace welvane {

ProblemsView::ProblemsView(Frame& frame, std::function<void(const std::string&, std::size_t)> show, QWidget* parent)
    : GridView(
          std::make_unique<ProblemsModel>(frame.problems), "Problems", [](const EditOutcome&) {}, parent),
      frame_(frame),
      show_(std::move(show)) {
    setSelectionBehavior(SelectRows);
    horizontalHeader()->setStretchLastSection(true);
    setToolTip("A double click, or F4, shows the place in the file.");
}

void ProblemsView::showCurrent() {
    if (!currentIndex().isValid()) return;
    const ProblemsModel::Place place = ProblemsModel(frame_.problems).placeOf(grid().tableRow(currentIndex().row()));
    if (!place.path.empty()) show_(place.path, place.line);
}

void ProblemsView::mouseDoubleClickEvent(QMouseEvent* event) {
    GridView::mouseDoubleClickEvent(event);
    showCurrent();
}

void ProblemsView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F4) return showCurrent();
    GridView::keyPressEvent(event);
}

}  // namespace welvane
