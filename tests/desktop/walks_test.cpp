#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <set>

#include "desktop/area_window.h"
#include "desktop/grid_view.h"
#include "desktop/session_view.h"
#include "models/commands.h"
#include "support/known_prompts.h"
#include "window_fixture.h"

namespace welvane::test {
namespace {

const std::pair<const char*, const char*> ownWindows[] = {{"ID_Preferences", "Preferences"},
                                                          {"ID_Certify", "Certify"},
                                                          {"ID_prop", "Property Listing"},
                                                          {"ID_Toolbox", "Bytes"},
                                                          {"ID_CurveLibrary", "Curve Library"},
                                                          {"ID_Help", "Help"},
                                                          {"ID_About", "About"}};

std::string nameOf(const QWidget& widget) {
    return std::string(widget.metaObject()->className()) + " \"" + widget.objectName().toStdString() + "\" \"" +
           widget.accessibleName().toStdString() + "\"";
}

/// What a screen reader would say of it.
QString spokenName(QWidget& widget) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&widget);
    const QString name = face == nullptr ? QString() : face->text(QAccessible::Name);
    return name.isEmpty() ? widget.accessibleName() : name;
}

bool takesInput(const QWidget& widget) {
    const auto* const parent = widget.parentWidget();
    // The line inside of a list or a number is not one of its own.
    if (dynamic_cast<const QComboBox*>(parent) != nullptr || dynamic_cast<const QAbstractSpinBox*>(parent) != nullptr)
        return false;
    return dynamic_cast<const QLineEdit*>(&widget) || dynamic_cast<const QComboBox*>(&widget) ||
           dynamic_cast<const QAbstractSpinBox*>(&widget) || dynamic_cast<const QAbstractItemView*>(&widget) ||
           dynamic_cast<const QPlainTextEdit*>(&widget) || dynamic_cast<const QAbstractButton*>(&widget);
}

bool insideHeader(const QWidget& widget) {
    for (const QWidget* part = &widget; part != nullptr; part = part->parentWidget())
        if (part->inherits("QHeaderView") || part->inherits("QTableCornerButton") || part->inherits("QScrollBar") ||
            part->inherits("QDockWidgetTitleButton") || part->inherits("QTabBar") ||
            part->inherits("QToolBarExtension"))
            return true;
    return false;
}

/// Every input has a name, no text is cut.
void checkParts(QWidget& top) {
    for (QWidget* const part : top.findChildren<QWidget*>()) {
        if (!part->isVisible() || insideHeader(*part) || part->window() != &top) continue;
        if (takesInput(*part)) {
            EXPECT_FALSE(spokenName(*part).isEmpty()) << nameOf(*part) << " has no name";
        }
        if (auto* const label = dynamic_cast<QLabel*>(part); label != nullptr && !label->wordWrap()) {
            EXPECT_GE(label->width() + 1, label->sizeHint().width()) << "cut: " << label->text().toStdString();
        }
        if (auto* const button = dynamic_cast<QAbstractButton*>(part);
            button != nullptr && dynamic_cast<QToolButton*>(part) == nullptr && !button->text().isEmpty()) {
            EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(QString(button->text()).remove('&')))
                << "cut: " << button->text().toStdString();
        }
    }
}

/// Tab leads to every part that takes the keyboard by it.
void checkTabOrder(QWidget& top) {
    std::set<const QWidget*> wanted, reached;
    for (QWidget* const part : top.findChildren<QWidget*>())
        if (part->isVisible() && part->isEnabled() && part->window() == &top && !insideHeader(*part) &&
            takesInput(*part) && (part->focusPolicy() & Qt::TabFocus) != 0)
            wanted.insert(part);
    for (std::size_t step = 0; step < 3 * wanted.size() + 20; ++step) {
        QWidget* const focus = QApplication::focusWidget();
        if (focus == nullptr) break;
        for (QWidget* part = focus; part != nullptr; part = part->parentWidget()) reached.insert(part);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    for (const QWidget* const part : wanted) {
        // Of a group of choices the keyboard goes to the one that is on.
        const auto* const button = dynamic_cast<const QAbstractButton*>(part);
        if (button != nullptr && button->autoExclusive() && !button->isChecked()) continue;
        EXPECT_TRUE(reached.contains(part))
            << nameOf(*part) << " is not reached by Tab in " << top.windowTitle().toStdString();
    }
}

class Walk : public Window, public ::testing::WithParamInterface<int> {
  protected:
    Walk() {
        QFont font = before;
        font.setPointSize(GetParam());
        QApplication::setFont(font);
        app.settings.gridFont.size = static_cast<float>(GetParam());
    }
    ~Walk() override {
        window.reset();
        QApplication::setFont(before);
    }
    QFont before = QApplication::font();
};

TEST_P(Walk, everyInputHasANameAndNoTextIsCut) {
    checkParts(*window);
    openByDoubleClick("kestrel-7-run1.las");
    auto& session = *window->findChild<SessionView*>();
    for (int tab = 0; tab < session.count(); ++tab) {
        SCOPED_TRACE(session.tabText(tab).toStdString());
        QTest::mouseClick(session.tabBar(), Qt::LeftButton, {}, session.tabBar()->tabRect(tab).center());
        session.setCurrentIndex(tab);  // one that has no room on the bar is reached by its arrows
        QApplication::processEvents();
        checkParts(*window);
    }
    for (const auto& [id, name] : ownWindows) {
        SCOPED_TRACE(id);
        choose(id);
        auto& area = part<AreaWindow>(name);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
        checkParts(area);
        checkTabOrder(area);
        keepPicture(area, name + std::string("_") + std::to_string(GetParam()));
        const QPointer<AreaWindow> standing = &area;
        QTest::keyClick(&area, Qt::Key_Escape);
        ASSERT_TRUE(QTest::qWaitFor([&] { return standing.isNull(); }, patience));
    }
}

INSTANTIATE_TEST_SUITE_P(Points, Walk, ::testing::Values(10, 16));

// Menus hold what the table says, in its order, with its texts, keys and states; ids without an entry stay out.
TEST_F(Window, theMenusAreTheTableOfCommands) {
    for (const bool withSession : {false, true}) {
        if (withSession) openByDoubleClick("kestrel-7-run1.las");
        std::set<QString> keys;
        for (const Command& command : commandTable()) {
            SCOPED_TRACE(std::string(command.id));
            auto* const action = window->findChild<QAction*>(QString::fromUtf8(command.id.data(), command.id.size()));
            if (command.menu.empty()) {
                EXPECT_EQ(action, nullptr);
                continue;
            }
            ASSERT_NE(action, nullptr);
            EXPECT_FALSE(action->text().isEmpty());
            EXPECT_TRUE(action->text().contains('&')) << "a letter to choose it by";
            const QString shortcut = action->shortcut().toString();
            EXPECT_EQ(shortcut.isEmpty(), command.shortcut.empty()) << "keys that Qt does not know";
            if (!shortcut.isEmpty()) {
                EXPECT_TRUE(keys.insert(shortcut).second) << "twice: " << shortcut.toStdString();
            }
            EXPECT_EQ(action->isCheckable(), command.kind == CommandKind::Toggle);
        }
        EXPECT_EQ(window->findChild<QAction*>("ID_SpliceEM")->isEnabled(), withSession);
        EXPECT_FALSE(window->findChild<QAction*>("ID_Undo")->isEnabled());
    }
}

TEST_F(Window, togglesAreStoredWhenTheyAreGiven) {
    for (const auto& [id, key] :
         {std::pair{"ID_EditAfter", "editafter"}, {"ID_certAfter", "certafter"}, {"ID_Multiple", "multButState"}}) {
        SCOPED_TRACE(id);
        const bool before = window->findChild<QAction*>(id)->isChecked();
        choose(id);
        EXPECT_EQ(window->findChild<QAction*>(id)->isChecked(), !before);
        EXPECT_EQ(platform.settings().get(key, ""), before ? "0" : "1");
    }
}

QMessageBox::Icon shownIcon(Icon icon) {
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

// Every box of the program, read back word for word; Enter and Escape are the safe answer.
TEST_F(Window, everyBoxSaysWhatItIsGiven) {
    for (const KnownPrompt& known : knownPrompts) {
        SCOPED_TRACE(std::string(known.title) + ": " + std::string(known.text));
        Prompt prompt{std::string(known.title), std::string(known.text), known.buttons, known.icon};
        for (std::size_t star = 0; (star = prompt.text.find('*', star)) != std::string::npos; star += 16)
            prompt.text.replace(star, 1, "/a <b>/&c.las \"");
        const int buttons = known.buttons == Buttons::Ok ? 1 : 2;
        for (const auto pressed : {Qt::Key_Escape, Qt::Key_Return}) {
            whenShown<QMessageBox>([&](QMessageBox& box) {
                EXPECT_EQ(box.windowTitle().toStdString(), prompt.title);
                EXPECT_EQ(box.text().toStdString(), prompt.text);
                const auto* const label = box.findChild<QLabel*>("qt_msgbox_label");
                ASSERT_NE(label, nullptr);
                EXPECT_EQ(label->textFormat(), Qt::PlainText) << "a path may hold what looks like a mark";
                EXPECT_EQ(label->text().toStdString(), prompt.text);
                EXPECT_EQ(box.icon(), shownIcon(prompt.icon));
                EXPECT_EQ(box.buttons().size(), buttons);
                QTest::keyClick(&box, pressed);
            });
            EXPECT_EQ(boxes.ask(prompt), prompt.safe());
        }
    }
}

}  // namespace
}  // namespace welvane::test
