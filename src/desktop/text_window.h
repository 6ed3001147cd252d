#pragma once

#include <QString>

class QWidget;

namespace welvane {

struct ShownText;

/// Shows a text in a window of its own, until it is closed: letters of one width, to be looked at and copied.
void showTextWindow(const QString& title, const ShownText& text, QWidget* parent);

}  // namespace welvane
