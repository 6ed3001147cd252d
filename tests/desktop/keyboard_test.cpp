#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>

#include "desktop/grid_view.h"
#include "desktop/session_view.h"
#include "window_fixture.h"

namespace welvane::test {
namespace {

/// Gives keys to whatever has the keyboard, as a person does.
class Keyboard : public Window {
  protected:
    void key(Qt::Key pressed, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QWidget* const focus = QApplication::focusWidget();
        QWidget* const popup = QApplication::activePopupWidget();
        QTest::keyClick(popup != nullptr ? popup : focus == nullptr ? window.get() : focus, pressed, held);
        QApplication::processEvents();
        QApplication::processEvents();
    }
    /// Tab until the part has the keyboard.
    void tabTo(const char* name) {
        for (int step = 0; step < 60; ++step) {
            QWidget* const focus = QApplication::focusWidget();
            if (focus != nullptr && focus->objectName() == name) return;
            key(Qt::Key_Tab);
        }
        FAIL() << name << " is not reached by Tab";
    }
    void answerFile(const std::string& path) {
        whenShown<QFileDialog>([path](QFileDialog& dialog) {
            auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(name, nullptr);
            ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
            const auto* const names = dialog.findChild<QAbstractItemView*>("listView");
            ASSERT_TRUE(QTest::qWaitFor([&] { return names->model()->rowCount(names->rootIndex()) >= 2; }, patience));
            QTest::qWait(200);
            QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(name, QString::fromStdString(path));
            if (QWidget* const list = QApplication::activePopupWidget()) QTest::keyClick(list, Qt::Key_Escape);
            QTest::keyClick(name, Qt::Key_Return);
        });
    }
    std::string byVerb(std::vector<std::string> options) {
        const std::string expected = folder.path("expected.las");
        std::vector<std::string> command = {WELVANE_PROGRAM, "run", folder.path("kestrel-7-run1.las"),
                                            folder.path("kestrel-7-run2.las")};
        command.insert(command.end(), options.begin(), options.end());
        command.insert(command.end(), {"-o", expected});
        const ProgramRun verb = runProgram(
            command, folder.path(), {"WELVANE_HOME=" WELVANE_SOURCE_DIR "/data", "XDG_CONFIG_HOME=" + folder.path()});
        EXPECT_EQ(verb.status, 0) << verb.err;
        return TempFolder::readFile(expected);
    }
    /// Both runs into the session, from the list of files, by keys.
    void openBoth() {
        tabTo("Files");
        key(Qt::Key_Home);
        key(Qt::Key_Return);
        ASSERT_NE(window->findChild<SessionView*>(), nullptr);
        key(Qt::Key_B, Qt::ControlModifier);
        tabTo("Files");
        key(Qt::Key_Home);
        key(Qt::Key_Down);
        key(Qt::Key_Return);
    }
    void goToGrid(const char* name) {
        for (int step = 0; step < 60; ++step) {
            if (QApplication::focusWidget() == &part<GridView>(name)) return;
            key(Qt::Key_Tab);
        }
        FAIL() << name << " is not reached by Tab";
    }
    /// Rows down from the first cell, then another text.
    void typeAt(int down, int right, const QString& text) {
        key(Qt::Key_Home, Qt::ControlModifier);
        for (int step = 0; step < down; ++step) key(Qt::Key_Down);
        for (int step = 0; step < right; ++step) key(Qt::Key_Right);
        key(Qt::Key_F2);
        QWidget* const editor = QApplication::focusWidget();
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
    }
    std::string processed() {
        const std::string made = folder.path("made.las");
        answerFile(made);
        key(Qt::Key_F5);
        EXPECT_TRUE(QTest::qWaitFor([&] { return message().starts_with("Written"); }, patience)) << message();
        return TempFolder::readFile(made);
    }
};

TEST_F(Keyboard, fromTheStartToTheWrittenFile) {
    openBoth();
    key(Qt::Key_J, Qt::ControlModifier);
    const std::string made = processed();
    EXPECT_GT(made.size(), 100000U);
    EXPECT_TRUE(made == byVerb({"--splice"}));
}

TEST_F(Keyboard, menusAreWalkedByTheirLetters) {
    QTest::keyClick(window.get(), Qt::Key_T, Qt::AltModifier);
    QWidget* const menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_S);
    QApplication::processEvents();
    QApplication::processEvents();
    EXPECT_NE(window->findChild<SessionView*>(), nullptr);
}

// Each run that the verb does by options, done by keys in the tables: the same bytes.
TEST_F(Keyboard, whatIsTypedInTheTablesWritesWhatTheVerbWrites) {
    openBoth();
    key(Qt::Key_J, Qt::ControlModifier);
    key(Qt::Key_P, Qt::AltModifier);
    goToGrid("Properties");
    typeAt(0, 0, "1100");
    typeAt(1, 0, "1300");
    typeAt(2, 0, "0.3048");
    typeAt(8, 0, "-9999");
    EXPECT_TRUE(processed() ==
                byVerb({"--splice", "--from", "1100", "--to", "1300", "--step", "0.3048", "--null", "-9999"}))
        << "the window's file differs from the verb's";
}

}  // namespace
}  // namespace welvane::test
