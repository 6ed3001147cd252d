#include "desktop/export_picture.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include "desktop/picture_view.h"
#include "desktop/theme.h"
#include "models/export_picture.h"
#include "picture/svg.h"

namespace welvane {

namespace {

std::string pngBytes(const Drawing& drawing, Theme theme) {
    constexpr int scale = 2;
    QImage image(static_cast<int>(drawing.width) * scale, static_cast<int>(drawing.height) * scale,
                 QImage::Format_RGB32);
    image.fill(colourIn(Ink::Paper, theme));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    paintDrawing(painter, drawing, theme);
    painter.end();
    QBuffer bytes;
    bytes.open(QBuffer::WriteOnly);
    image.save(&bytes, "PNG");
    return bytes.data().toStdString();
}

}  // namespace

EditOutcome exportPicture(UserInterface& user, const Drawing& drawing, const char* name, Theme theme) {
    const std::string path = askPicturePath(user, name, PictureKind::Svg);
    if (path.empty()) return {false, ""};
    return writePictureBytes(
        path, pictureKind(path) == PictureKind::Png ? pngBytes(drawing, theme) : svgText(drawing, theme));
}

}  // namespace welvane
