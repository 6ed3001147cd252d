#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "app/startup.h"
#include "desktop/box_interface.h"
#include "desktop/grid_view.h"
#include "desktop/main_window.h"
#include "desktop/session_view.h"
#include "support/memory_platform.h"
#include "support/run_program.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;
constexpr int patience = 10000;

/// The program's reference files over settings in memory.
class StockPlatform : public MemoryPlatform {
  public:
    std::string programFolder() const override { return WELVANE_SOURCE_DIR "/data/"; }
};

/// Calls `act` with the next dialog of its kind that stands, from within the dialog's own loop.
template <class Dialog>
void whenShown(const std::function<void(Dialog&)>& act) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        auto* const dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        timer->stop();
        timer->deleteLater();
        act(*dialog);
    });
    timer->start(20);
    QTimer::singleShot(patience, timer, [] {
        QWidget* const left = QApplication::activeModalWidget();
        if (left == nullptr) return;
        auto* const box = dynamic_cast<QMessageBox*>(left);
        ADD_FAILURE() << "nobody answered: " << left->windowTitle().toStdString() << " "
                      << (box == nullptr ? std::string() : box->text().toStdString());
        left->close();
    });
}

class Window : public ::testing::Test {
  protected:
    Window() : app(boxes, platform) {
        for (const char* name : {"kestrel-7-run1.las", "kestrel-7-run2.las"})
            fs::copy_file(fs::path(WELVANE_SOURCE_DIR "/examples") / name, folder.path(name));
        for (const char* key : {"inDir", "outDir"}) platform.settings().put(key, folder.path() + "/");
        platform.settings().put("editafter", "0");
        platform.settings().put("certafter", "0");
        EXPECT_TRUE(loadProcess(app));
        window = std::make_unique<MainWindow>(app, jobPlatform);
        boxes.setParent(window.get());
        window->resize(1024, 700);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    template <class Widget>
    Widget& part(const char* name) {
        Widget* const found = window->findChild<Widget*>(name);
        if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
        return *found;
    }
    void openByDoubleClick(const QString& name) {
        auto& list = part<QListWidget>("Files");
        const QList<QListWidgetItem*> items = list.findItems(name, Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1) << name.toStdString();
        const QPoint place = list.visualItemRect(items.first()).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
        QApplication::processEvents();
    }
    /// What the window says at its lower edge.
    std::string message() { return window->statusBar()->currentMessage().toStdString(); }

    TempFolder folder;
    StockPlatform platform, jobPlatform;
    BoxInterface boxes;
    App app;
    std::unique_ptr<MainWindow> window;
};

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

// With a folder in WELVANE_PICTURES also takes a picture of each tab.
TEST_F(Window, aClickOnATabShowsItAndEveryGridHasAName) {
    openByDoubleClick("kestrel-7-run1.las");
    openByDoubleClick("kestrel-7-run2.las");
    const std::string pictures = qgetenv("WELVANE_PICTURES").toStdString();
    auto& session = *window->findChild<SessionView*>();
    ASSERT_EQ(session.count(), 4);
    for (int tab = 0; tab < session.count(); ++tab) {
        QTest::mouseClick(session.tabBar(), Qt::LeftButton, {}, session.tabBar()->tabRect(tab).center());
        EXPECT_EQ(session.currentIndex(), tab);
        QApplication::processEvents();
        if (!pictures.empty())
            window->grab().save(QString::fromStdString(pictures + "/tab" + std::to_string(tab) + ".png"));
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
    ::testing::InitGoogleTest(&count, values);
    return RUN_ALL_TESTS();
}
