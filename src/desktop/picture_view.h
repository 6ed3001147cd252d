#pragma once

#include <QWidget>
#include <functional>

#include "picture/drawing.h"
#include "picture/theme.h"

class QPainter;

namespace welvane {

/// Paints the list of shapes in the colours of the theme.
void paintDrawing(QPainter& painter, const Drawing& drawing, Theme theme);

/// Shows a drawing, made anew for the size that it has.
class PictureView : public QWidget {
  public:
    using Maker = std::function<Drawing(double width, double height)>;
    PictureView(Maker make, const QString& name, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Maker make_;
};

}  // namespace welvane
