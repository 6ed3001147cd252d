#include "desktop/print.h"

#include <QFontDatabase>
#include <QFontDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>

#include "desktop/text.h"

namespace welvane {

void printText(const QString& text, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted) return;
    QTextDocument document(text);
    document.setDefaultFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    document.print(&printer);
}

std::optional<GridFontSetting> chooseFont(const GridFontSetting& now, QWidget* parent) {
    bool accepted = false;
    const QFont font = QFontDialog::getFont(&accepted, gridFont(now), parent, "Font", QFontDialog::DontUseNativeDialog);
    if (!accepted) return std::nullopt;
    GridFontSetting chosen = now;
    chosen.name = typed(font.family());
    chosen.size = static_cast<float>(font.pointSizeF());
    chosen.bold = font.bold();
    return chosen;
}

QFont gridFont(const GridFontSetting& setting) {
    QFont font(shown(setting.name));
    font.setPointSizeF(std::max(1.0, static_cast<double>(setting.size)));
    font.setBold(setting.bold);
    return font;
}

}  // namespace welvane
