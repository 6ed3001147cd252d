#include "desktop/box_interface.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "desktop/text.h"

namespace welvane {

namespace {

QMessageBox::StandardButtons buttonsOf(Buttons buttons) {
    if (buttons == Buttons::YesNo) return QMessageBox::Yes | QMessageBox::No;
    if (buttons == Buttons::OkCancel) return QMessageBox::Ok | QMessageBox::Cancel;
    return QMessageBox::Ok;
}

QMessageBox::StandardButton buttonOf(Answer answer) {
    switch (answer) {
        case Answer::Yes:
            return QMessageBox::Yes;
        case Answer::No:
            return QMessageBox::No;
        case Answer::Cancel:
            return QMessageBox::Cancel;
        default:
            return QMessageBox::Ok;
    }
}

/// "las", or a list "las Files (*.las;*.fil)|*.las;*.fil", as Qt writes it.
QString filterOf(const QString& extension) {
    const qsizetype bar = extension.indexOf('|');
    if (bar < 0) return "*." + extension;
    QString patterns = extension.mid(bar + 1);
    return extension.left(extension.indexOf(" (")) + " (" + patterns.replace(';', ' ') + ")";
}

QMessageBox::Icon iconOf(Icon icon) {
    switch (icon) {
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::Warning:
            return QMessageBox::Warning;
        case Icon::Stop:
            return QMessageBox::Critical;
        default:
            return QMessageBox::NoIcon;
    }
}

}  // namespace

Answer BoxInterface::ask(const Prompt& prompt) {
    QMessageBox box(iconOf(prompt.icon), shown(prompt.title), shown(prompt.text), buttonsOf(prompt.buttons), parent_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(buttonOf(prompt.safe()));
    box.setEscapeButton(buttonOf(prompt.safe()));
    const int pressed = box.exec();
    for (const Answer answer : {Answer::Ok, Answer::Cancel, Answer::Yes, Answer::No})
        if (pressed == buttonOf(answer)) return answer;
    return prompt.safe();
}

std::string BoxInterface::askText(const TextPrompt& prompt) {
    bool accepted = false;
    const QString text = QInputDialog::getText(parent_, shown(prompt.title), shown(prompt.text), QLineEdit::Normal,
                                               shown(prompt.defaultText), &accepted);
    return accepted ? typed(text) : std::string();
}

std::string BoxInterface::askFile(const FilePrompt& prompt) {
    QFileDialog dialog(parent_, shown(prompt.title), shown(prompt.folder));
    dialog.setAcceptMode(prompt.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(prompt.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!prompt.extension.empty()) {
        const QString extension = shown(prompt.extension);
        dialog.setNameFilters({filterOf(extension), "*"});
        if (prompt.save) dialog.setDefaultSuffix(extension);
    }
    if (!prompt.defaultName.empty()) dialog.selectFile(shown(prompt.defaultName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return typed(dialog.selectedFiles().first());
}

std::string BoxInterface::askFolder(const std::string& title, const std::string& start) {
    return typed(QFileDialog::getExistingDirectory(parent_, shown(title), shown(start)));
}

}  // namespace welvane
