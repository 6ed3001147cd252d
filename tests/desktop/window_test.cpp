#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabBar>

#include "desktop/grid_view.h"
#include "desktop/session_view.h"
#include "window_fixture.h"

namespace welvane::test {
namespace {

TEST_F(Window, joinsTwoWellsAsTheVerbDoes) {
    openByDoubleClick("kestrel-7-run1.las");
    openByDoubleClick("kestrel-7-run2.las");
    auto& output = part<GridView>("New Channels");
    ASSERT_GT(output.model()->columnCount(), 1);
    QTest::keyClick(window.get(), Qt::Key_J, Qt::ControlModifier);
    QApplication::processEvents();

    const std::string made = folder.path("made.las"), expected = folder.path("expected.las");
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        // The dialog puts its proposed name back when it has read its folder, in a thread of its own.
        const auto* const names = dialog.findChild<QAbstractItemView*>("listView");
        ASSERT_NE(names, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return names->model()->rowCount(names->rootIndex()) >= 2; }, patience));
        QTest::qWait(200);
        QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(name, QString::fromStdString(made));
        // The list of completions takes the keys while it stands.
        if (QWidget* const list = QApplication::activePopupWidget()) QTest::keyClick(list, Qt::Key_Escape);
        EXPECT_EQ(name->text().toStdString(), made);
        QTest::keyClick(name, Qt::Key_Return);
    });
    QTest::keyClick(window.get(), Qt::Key_F5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return message().starts_with("Written"); }, patience)) << message();

    const ProgramRun verb =
        runProgram({WELVANE_PROGRAM, "run", folder.path("kestrel-7-run1.las"), folder.path("kestrel-7-run2.las"),
                    "--splice", "-o", expected},
                   folder.path(), {"WELVANE_HOME=" WELVANE_SOURCE_DIR "/data", "XDG_CONFIG_HOME=" + folder.path()});
    ASSERT_EQ(verb.status, 0) << verb.err;
    const std::string bytes = TempFolder::readFile(made);
    EXPECT_GT(bytes.size(), 100000U);
    EXPECT_TRUE(bytes == TempFolder::readFile(expected)) << "the window's file differs from the verb's";
}

TEST_F(Window, aTypedNameComesIntoTheTable) {
    openByDoubleClick("kestrel-7-run1.las");
    auto& output = part<GridView>("New Channels");
    const QModelIndex cell = output.model()->index(0, 1);
    const QString before = cell.data().toString();
    QTest::mouseClick(output.viewport(), Qt::LeftButton, {}, output.visualRect(cell).center());
    ASSERT_EQ(output.currentIndex(), cell);
    QTest::keyClick(&output, Qt::Key_F2);
    QWidget* const editor = QApplication::focusWidget();
    ASSERT_TRUE(editor != nullptr && editor->parentWidget() == output.viewport());
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, "NEWNAME");
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();  // an editor hands its text over in a turn of its own
    EXPECT_EQ(cell.data().toString().toStdString(), "NEWNAME") << "was " << before.toStdString();
}

TEST_F(Window, refusesWhatCannotBeRun) {
    QTest::keyClick(window.get(), Qt::Key_F5);
    QApplication::processEvents();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "nothing is open that could run";
}

TEST_F(Window, showsAQuestionWordForWordAndEscapesSafely) {
    std::string title, text;
    for (const auto& [key, expected] : {std::pair{Qt::Key_Escape, Answer::No}, std::pair{Qt::Key_Y, Answer::Yes}}) {
        whenShown<QMessageBox>([&, pressed = key](QMessageBox& box) {
            title = box.windowTitle().toStdString();
            text = box.text().toStdString();
            QTest::keyClick(&box, pressed, pressed == Qt::Key_Y ? Qt::AltModifier : Qt::NoModifier);
        });
        EXPECT_EQ(boxes.ask({"Please <Confirm>", "a < b & c?", Buttons::YesNo, Icon::Question, Answer::Yes}), expected);
        EXPECT_EQ(title, "Please <Confirm>");
        EXPECT_EQ(text, "a < b & c?");
    }
}

TEST_F(Window, aClickOnATabShowsItAndEveryGridHasAName) {
    openByDoubleClick("kestrel-7-run1.las");
    openByDoubleClick("kestrel-7-run2.las");
    auto& session = *window->findChild<SessionView*>();
    ASSERT_EQ(session.count(), 7);
    for (int tab = 0; tab < session.count(); ++tab) {
        QTest::mouseClick(session.tabBar(), Qt::LeftButton, {}, session.tabBar()->tabRect(tab).center());
        EXPECT_EQ(session.currentIndex(), tab);
        QApplication::processEvents();
        keepPicture(*window, "tab" + std::to_string(tab));
    }
    for (const GridView* const grid : window->findChildren<GridView*>()) EXPECT_FALSE(grid->accessibleName().isEmpty());
    auto &input = part<GridView>("Channels of File 2"), &output = part<GridView>("New Channels");
    for (int column = 0; column < 3; ++column) EXPECT_EQ(input.columnWidth(column), output.columnWidth(column));
    output.horizontalScrollBar()->setValue(output.horizontalScrollBar()->maximum() / 2);
    EXPECT_EQ(input.horizontalScrollBar()->value(), output.horizontalScrollBar()->value());
}

}  // namespace
}  // namespace welvane::test

int main(int count, char** values) {
    // The build lists the tests without CTest's environment.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(count, values);
    QApplication::setStyle("Fusion");
    if (qEnvironmentVariable("WELVANE_PICTURE_THEME") == "dark") QApplication::setPalette(welvane::test::darkPalette());
    ::testing::InitGoogleTest(&count, values);
    return RUN_ALL_TESTS();
}
