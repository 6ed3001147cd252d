#pragma once

#include <QFont>
#include <QString>
#include <optional>

#include "shared/settings.h"

class QWidget;

/// What needs a dialog of the system: the printer, and the font of the grids.
namespace welvane {

/// Asks for a printer, or a PDF, and prints the text.
void printText(const QString& text, QWidget* parent);

/// Asks for the font of the grids; nothing when cancelled.
std::optional<GridFontSetting> chooseFont(const GridFontSetting& now, QWidget* parent);
QFont gridFont(const GridFontSetting& setting);

}  // namespace welvane
