#include "desktop/icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <array>

#include "desktop/theme.h"

namespace welvane {

namespace {

/// In a square of 64 units.
void paintSign(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(250, 250, 247));
    painter.drawRoundedRect(QRectF(3, 3, 58, 58), 9, 9);
    constexpr double leftTop = 8, leftBottom = 40, rightTop = 26, rightBottom = 56;
    const auto bar = [&](int slot, double x, double top, double bottom) {
        QColor colour = colourIn(slotInk(slot), Theme::Light);
        painter.setBrush(colour);
        painter.drawRoundedRect(QRectF(x, top, 9, bottom - top), 3, 3);
    };
    bar(0, 9, leftTop, leftBottom);
    bar(1, 20, rightTop, rightBottom);
    constexpr std::array<double, 9> wiggle = {46, 40, 52, 36, 48, 56, 42, 50, 38};
    QPainterPath curve(QPointF(wiggle.front(), leftTop));
    double depth = leftTop;
    for (const double x : wiggle) curve.lineTo(x, depth += 5.3);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(30, 40, 60), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(curve);
}

}  // namespace

QIcon programIcon() {
    constexpr double units = 64;
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.scale(size / units, size / units);
        paintSign(painter);
        icon.addPixmap(picture);
    }
    return icon;
}

}  // namespace welvane
