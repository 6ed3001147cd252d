#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>

#include "desktop/function_window.h"
#include "desktop/grid_view.h"
#include "desktop/log_view.h"
#include "desktop/session_view.h"
#include "window_fixture.h"

namespace welvane::test {
namespace {

class SessionWindow : public Window {
  protected:
    SessionWindow() {
        openByDoubleClick("kestrel-7-run1.las");
        openByDoubleClick("kestrel-7-run2.las");
    }
    SessionView& session() { return *window->findChild<SessionView*>(); }
    GridView& channels() { return part<GridView>("New Channels"); }
    void showTab(const QString& name) {
        for (int tab = 0; tab < session().count(); ++tab)
            if (session().tabText(tab).remove('&') == name)
                QTest::mouseClick(session().tabBar(), Qt::LeftButton, {}, session().tabBar()->tabRect(tab).center());
        EXPECT_EQ(session().tabText(session().currentIndex()).remove('&'), name);
    }
    /// A press of a key on whatever has the keyboard.
    void key(Qt::Key pressed, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QWidget* const focus = QApplication::focusWidget();
        QTest::keyClick(focus == nullptr ? window.get() : focus, pressed, held);
        QApplication::processEvents();
        QApplication::processEvents();
    }
};

TEST_F(SessionWindow, anEditIsTakenBackAndMadeAgain) {
    const QModelIndex cell = channels().model()->index(0, 0);
    typeInto(channels(), 0, 0, "FIRST");
    typeInto(channels(), 0, 0, "SECOND");
    ASSERT_EQ(cell.data().toString(), "SECOND");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell.data().toString(), "FIRST");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell.data().toString(), "GR");
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(cell.data().toString(), "FIRST");
    key(Qt::Key_J, Qt::ControlModifier);
    const TableModel& table = channels().grid().table();
    EXPECT_EQ(table.text(linkRow(1, Link::Mnem), 1), "GRC");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(table.text(linkRow(1, Link::Mnem), 1), "") << "a splice is one step";
}

TEST_F(SessionWindow, columnsHaveTheWidthThatWasChosen) {
    const int fitted = channels().columnWidth(0);
    for (const auto& [typed, width] : {std::pair{"1800", 120}, {"Fit", fitted}}) {
        whenShown<QInputDialog>([&, text = typed](QInputDialog& dialog) {
            dialog.setTextValue(text);
            dialog.accept();
        });
        choose("ID_Size");
        QApplication::processEvents();
        EXPECT_EQ(channels().columnWidth(0), width) << typed;
    }
}

TEST_F(SessionWindow, cellsTravelByTheClipboard) {
    clickCell(channels(), 0, 0);
    QTest::keyClick(&channels(), Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().trimmed(), "GR\tCALI");
    QApplication::clipboard()->setText("ONE\tTWO");
    clickCell(channels(), 0, 0);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(channels().model()->index(0, 1).data().toString(), "TWO");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(channels().model()->index(0, 0).data().toString(), "GR") << "a block is one step";
    EXPECT_EQ(channels().model()->index(0, 1).data().toString(), "CALI");
}

TEST_F(SessionWindow, aFunctionIsChosenInItsDialog) {
    clickCell(channels(), static_cast<int>(SrdRow::Function) - 1, 0);
    whenShown<FunctionWindow>([](FunctionWindow& dialog) {
        keepPicture(dialog, "function");
        auto* const value = dialog.findChild<QLineEdit*>("A");
        ASSERT_TRUE(value != nullptr && value->isVisible());
        QTest::mouseDClick(value, Qt::LeftButton);
        QTest::keyClicks(value, "2.5");
        press(dialog, "OK");
    });
    QTest::keyClick(&channels(), Qt::Key_F2);
    auto* const list = dynamic_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(list, nullptr);
    QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(list, "MATH");
    QTest::keyClick(list, Qt::Key_Return);
    QApplication::processEvents();
    const auto& table = channels().grid().table();
    EXPECT_EQ(table.text(static_cast<int>(SrdRow::Function), 1), "MATH");
    window->activateWindow();  // as a screen does when a dialog is gone
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(table.text(static_cast<int>(SrdRow::Function), 1), "<none>");
}

TEST_F(SessionWindow, thePreviewFollowsTheSession) {
    key(Qt::Key_J, Qt::ControlModifier);
    showTab("Preview");
    auto& logs = session().logs();
    ASSERT_TRUE(QTest::qWaitFor([&] { return logs.settled(); }, patience));
    keepPicture(*window, "preview");
    const QImage before = logs.grab().toImage();
    auto& canvas = part<QWidget>("Logs");
    canvas.setFocus();
    QTest::keyClick(&canvas, Qt::Key_Plus);
    EXPECT_NE(logs.grab().toImage(), before) << "zoomed";
    keepPicture(*window, "preview_zoomed");
    QTest::keyClick(&canvas, Qt::Key_Home);
    QTest::mouseMove(&canvas, QPoint(120, canvas.height() / 2));
    QApplication::processEvents();
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(logs.settled()) << "another session, another picture";
    ASSERT_TRUE(QTest::qWaitFor([&] { return logs.settled(); }, patience));
}

TEST_F(SessionWindow, aSurveyIsTypedAndComputed) {
    showTab("Survey");
    auto& grid = part<GridView>("Survey");
    typeInto(grid, 1, 0, "1000");
    typeInto(grid, 1, 2, "0");
    press(*window, "Compute TVD Column");
    EXPECT_EQ(grid.model()->index(1, 1).data().toString(), "1000.00");
    keepPicture(*window, "survey");
    std::string told;
    whenShown<QMessageBox>([&](QMessageBox& box) {
        told = box.windowTitle().toStdString();
        QTest::keyClick(&box, Qt::Key_Y, Qt::AltModifier);
    });
    clickCell(grid, 1, 1);
    QTest::keyClick(&grid, Qt::Key_Delete);
    EXPECT_EQ(told, "Please Confirm!");
    EXPECT_EQ(grid.model()->index(1, 1).data().toString(), "");
}

TEST_F(SessionWindow, aTableOfTheClipboardBecomesATable) {
    showTab("Make LAS");
    QApplication::clipboard()->setText("100 1.5 2\n101 1.6 3\n102 1.7 4\n");
    press(*window, "ClipBoard");
    auto& grid = part<GridView>("Table");
    EXPECT_EQ(grid.model()->columnCount(), 3);
    EXPECT_EQ(grid.model()->index(4, 1).data().toString(), "1.6");
    typeInto(grid, 0, 1, "GR");
    EXPECT_EQ(grid.model()->index(0, 1).data().toString(), "GR");
    keepPicture(*window, "makelas");
}

TEST_F(SessionWindow, spliceDepthsGoFromTheBoxToTheChannels) {
    showTab("Visualization");
    auto& box = part<QLineEdit>("Splice Depth 2");
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&box, "1170");
    QTest::keyClick(&box, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(box.text().left(4), "1169") << "on the grid of the file: " << box.text().toStdString();
    press(*window, "Apply to all channels of file 1");
    EXPECT_EQ(channels().grid().table().text(linkRow(0, Link::To), 1), box.text().toStdString());
}

TEST_F(SessionWindow, findsInTheGrid) {
    clickCell(channels(), 0, 0);
    key(Qt::Key_F, Qt::ControlModifier);
    auto& text = part<QLineEdit>("Find Text");
    ASSERT_TRUE(text.isVisible());
    QTest::keyClicks(&text, "rhob");
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(channels().currentIndex().data().toString(), "RHOB");
    QTest::keyClick(&text, Qt::Key_Escape);
    EXPECT_FALSE(text.isVisible());
}

TEST_F(Window, theExampleWellsOpenFromTheWelcomePage) {
    const std::string target = folder.path("examples");
    std::filesystem::create_directory(target);
    keepPicture(*window, "welcome");
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QTest::qWait(300);
        QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(name, QString::fromStdString(target));
        if (QWidget* const list = QApplication::activePopupWidget()) QTest::keyClick(list, Qt::Key_Escape);
        QTest::keyClick(name, Qt::Key_Return);
        if (dialog.isVisible()) QTest::keyClick(name, Qt::Key_Return);
    });
    press(*window, "Open the example wells");
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->findChild<SessionView*>() != nullptr; }, patience));
    auto& logs = window->findChild<SessionView*>()->logs();
    EXPECT_TRUE(logs.isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return logs.settled(); }, patience));
    EXPECT_TRUE(std::filesystem::exists(target + "/plover-state-1.las"));
}

}  // namespace
}  // namespace welvane::test
