#include "desktop/picture_view.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "desktop/text.h"
#include "desktop/theme.h"

namespace welvane {

namespace {

/// One shape after the other, each by its kind.
class ShapePainter {
  public:
    ShapePainter(QPainter& painter, Theme theme) : painter_(painter), theme_(theme) {}

    void operator()(const Line& line) {
        painter_.setPen(penOf(line.stroke));
        painter_.drawLine(pointOf(line.from), pointOf(line.to));
    }
    void operator()(const Box& box) {
        painter_.setPen(penOf(box.stroke));
        painter_.setBrush(box.fill == Ink::None ? QBrush() : QBrush(colour(box.fill)));
        painter_.drawRect(areaOf(box.area));
        painter_.setBrush(QBrush());
    }
    void operator()(const Polyline& lines) {
        painter_.setPen(penOf(lines.stroke));
        for (const std::vector<Point>& piece : lines.pieces) {
            QPolygonF points;
            for (const Point& point : piece) points.append(pointOf(point));
            if (points.size() == 1)
                painter_.drawPoint(points.first());
            else
                painter_.drawPolyline(points);
        }
    }
    void operator()(const Label& label) {
        QFont font = painter_.font();
        font.setPixelSize(std::max(1, static_cast<int>(label.size)));
        font.setBold(label.bold);
        painter_.setFont(font);
        painter_.setPen(colour(label.ink));
        const QString text = shown(label.text);
        const double width = QFontMetricsF(font).horizontalAdvance(text);
        const double shift = label.anchor == Anchor::Left ? 0 : label.anchor == Anchor::Middle ? width / 2 : width;
        painter_.drawText(QPointF(label.at.x - shift, label.at.y), text);
    }
    void operator()(const GroupStart& group) {
        painter_.save();
        if (group.clip) painter_.setClipRect(areaOf(*group.clip), Qt::IntersectClip);
    }
    void operator()(const GroupEnd&) { painter_.restore(); }

  private:
    static QPointF pointOf(const Point& point) { return {point.x, point.y}; }
    static QRectF areaOf(const Area& area) { return {area.left, area.top, area.width(), area.height()}; }
    QColor colour(Ink ink) const { return colourIn(ink, theme_); }
    QPen penOf(const Stroke& stroke) const {
        if (stroke.ink == Ink::None) return Qt::NoPen;
        constexpr Qt::PenStyle styles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
        return {colour(stroke.ink), stroke.width, styles[static_cast<int>(stroke.dash)]};
    }

    QPainter& painter_;
    Theme theme_;
};

}  // namespace

void paintDrawing(QPainter& painter, const Drawing& drawing, Theme theme) {
    ShapePainter shapes(painter, theme);
    for (const Shape& shape : drawing.shapes) std::visit(shapes, shape);
}

PictureView::PictureView(Maker make, const QString& name, QWidget* parent) : QWidget(parent), make_(std::move(make)) {
    setAccessibleName(name);
    setObjectName(name);
    setMinimumSize(200, 200);
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = themeOf(palette());
    painter.fillRect(rect(), colourIn(Ink::Paper, theme));
    paintDrawing(painter, make_(width(), height()), theme);
}

}  // namespace welvane
