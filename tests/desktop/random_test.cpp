#include <QAbstractButton>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QProgressDialog>
#include <QScrollBar>
#include <QTabBar>
#include <algorithm>
#include <random>

#include "desktop/grid_view.h"
#include "window_fixture.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;

/// Reference files that a gesture may write into.
struct OwnHome {
    OwnHome() { fs::copy(WELVANE_SOURCE_DIR "/data", home.path(), fs::copy_options::recursive); }
    TempFolder home;
};

/// Somebody who does anything at all: clicks, drags, wheels and keys on whatever can be reached, box by box as they
/// come. What is not to be reached is outside of the test's own folders: nobody moves up the folders, and a dialog for
/// files is answered with a name in the test's folder.
class Gestures : protected OwnHome, public Window {
  protected:
    Gestures() : Window(home.path() + "/") {
        qputenv("HOME", folder.path().c_str());  // where a dialog prints to
        QDir::setCurrent(QString::fromStdString(folder.path()));
    }
    ~Gestures() override { QDir::setCurrent("/"); }

    void doAnything(int steps, unsigned seed) {
        random_.seed(seed);
        left_ = steps;
        while (left_ > 0) {
            QTimer::singleShot(0, this->window.get(), [this] { step(); });
            loop_.exec();
            if (left_ > 0) startAnew();
        }
    }
    /// The longest that one gesture kept the window.
    qint64 longestMs() const { return longest_; }
    const std::string& longestGesture() const { return longestGesture_; }

  private:
    int below(int count) { return count <= 0 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(count)); }
    template <class Item>
    const Item& oneOf(const std::vector<Item>& items) {
        return items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
    }

    void startAnew() {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        openWindow();
    }

    // The next gesture is called for before this one is done: one that opens a dialog ends when that is closed.
    void step() {
        if (left_ <= 0 || !window->isVisible()) {
            if (QApplication::activeModalWidget() == nullptr && QApplication::activePopupWidget() == nullptr)
                return loop_.quit();
        }
        --left_;
        QTimer::singleShot(1, qApp, [this] { step(); });
        if (left_ % 250 == 0) putWellsBack();
        QElapsedTimer time;
        time.start();
        const int mine = left_;
        gesture();
        // What was done in a dialog that a gesture opened is not its own time.
        if (left_ != mine || time.elapsed() <= longest_) return;
        longest_ = time.elapsed();
        longestGesture_ = said_;
    }

    void putWellsBack() {
        for (const char* const name : {"kestrel-7-run1.las", "kestrel-7-run2.las"})
            if (!fs::exists(folder.path(name)))
                fs::copy_file(fs::path(WELVANE_SOURCE_DIR "/examples") / name, folder.path(name));
    }

    void gesture() {
        if (auto* const menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget())) return inMenu(*menu);
        if (QWidget* const popup = QApplication::activePopupWidget()) return keyOn(*popup);
        QWidget* const modal = QApplication::activeModalWidget();
        if (auto* const files = dynamic_cast<QFileDialog*>(modal)) return inFileDialog(*files);
        // A dialog that nobody finds out of is left by Escape now and then.
        if (modal != nullptr && below(6) == 0) return key(*modal, Qt::Key_Escape, Qt::NoModifier);
        QWidget* const top = modal == nullptr ? anyWindow() : modal;
        if (top == nullptr) return;
        switch (below(10)) {
            case 0:
            case 1:
            case 2:
            case 3:
                return keyOn(focused(*top));
            case 4:
                return drag(anyPart(*top));
            case 5:
                return wheel(anyPart(*top));
            default:
                return click(anyPart(*top));
        }
    }

    QWidget* anyWindow() {
        std::vector<QWidget*> windows;
        for (QWidget* const top : QApplication::topLevelWidgets())
            if (top->isVisible() && top->isEnabled() && top->windowType() == Qt::Window) windows.push_back(top);
        if (windows.empty()) return nullptr;
        // The main one more often than each of the others.
        QWidget* const chosen = below(2) == 0 && window->isVisible() ? window.get() : oneOf(windows);
        chosen->activateWindow();
        return chosen;
    }

    static bool offLimits(const QWidget& part) {
        for (const QWidget* at = &part; at != nullptr; at = at->parentWidget())
            if (at->objectName() == "Folders") return true;
        return false;
    }
    static bool answersTheMouse(const QWidget& part) {
        return part.focusPolicy() != Qt::NoFocus || part.inherits("QHeaderView") || part.inherits("QScrollBar") ||
               part.inherits("QMenuBar") || part.objectName() == "qt_scrollarea_viewport" ||
               dynamic_cast<const QAbstractButton*>(&part) != nullptr;
    }
    QWidget& anyPart(QWidget& top) {
        std::vector<QWidget*> parts;
        for (QWidget* const part : top.findChildren<QWidget*>())
            if (part->isVisible() && part->isEnabled() && part->window() == &top && answersTheMouse(*part) &&
                !offLimits(*part) && !part->rect().isEmpty())
                parts.push_back(part);
        return parts.empty() ? top : *oneOf(parts);
    }
    static QWidget& focused(QWidget& top) {
        QWidget* const focus = QApplication::focusWidget();
        return focus != nullptr && focus->window() == &top && !offLimits(*focus) ? *focus : top;
    }
    QPoint anyPlace(const QWidget& part) { return {below(part.width()), below(part.height())}; }
    void say(const char* what, const QWidget& part) {
        said_ = std::string(what) + " " + part.metaObject()->className() + " \"" + part.objectName().toStdString() +
                "\" in \"" + part.window()->windowTitle().toStdString() + "\"";
    }

    void click(QWidget& part) {
        say("click on", part);
        const QPoint place = anyPlace(part);
        switch (below(8)) {
            case 0:
                QTest::mouseClick(&part, Qt::LeftButton, {}, place);
                [[fallthrough]];
            case 1:
                return QTest::mouseDClick(&part, Qt::LeftButton, {}, place);
            case 2: {
                QTest::mouseClick(&part, Qt::RightButton, {}, place);
                QContextMenuEvent menu(QContextMenuEvent::Mouse, place, part.mapToGlobal(place));
                QApplication::sendEvent(&part, &menu);
                return;
            }
            case 3:
                return QTest::mouseClick(&part, Qt::LeftButton, Qt::ShiftModifier, place);
            case 4:
                return QTest::mouseClick(&part, Qt::LeftButton, Qt::ControlModifier, place);
            default:
                return QTest::mouseClick(&part, Qt::LeftButton, {}, place);
        }
    }
    void drag(QWidget& part) {
        say("drag over", part);
        const QPointer<QWidget> there = &part;
        QTest::mousePress(&part, Qt::LeftButton, {}, anyPlace(part));
        for (int move = 0; move < 3 && there != nullptr; ++move) {
            const QPoint place = anyPlace(part);
            QMouseEvent event(QEvent::MouseMove, place, part.mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(&part, &event);
        }
        if (there != nullptr) QTest::mouseRelease(&part, Qt::LeftButton, {}, anyPlace(part));
    }
    void wheel(QWidget& part) {
        say("wheel over", part);
        const QPoint place = anyPlace(part);
        QWheelEvent event(place, part.mapToGlobal(place), {}, {0, below(2) == 0 ? 120 : -120}, Qt::NoButton,
                          below(3) == 0 ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&part, &event);
    }
    void key(QWidget& part, Qt::Key pressed, Qt::KeyboardModifiers held) {
        say(QKeySequence(pressed).toString().toUtf8().constData(), part);
        QTest::keyClick(&part, pressed, held);
    }
    void keyOn(QWidget& part) {
        static const std::vector<Qt::Key> moves = {
            Qt::Key_Tab, Qt::Key_Tab,    Qt::Key_Return, Qt::Key_Escape,    Qt::Key_F2,       Qt::Key_F4,
            Qt::Key_F6,  Qt::Key_Down,   Qt::Key_Up,     Qt::Key_Left,      Qt::Key_Right,    Qt::Key_Home,
            Qt::Key_End, Qt::Key_Delete, Qt::Key_Space,  Qt::Key_Backspace, Qt::Key_PageDown, Qt::Key_Menu};
        static const std::vector<Qt::Key> commands = {
            Qt::Key_Z, Qt::Key_Z, Qt::Key_Y, Qt::Key_C, Qt::Key_V,   Qt::Key_X,      Qt::Key_A,      Qt::Key_J,
            Qt::Key_M, Qt::Key_F, Qt::Key_G, Qt::Key_O, Qt::Key_Tab, Qt::Key_Insert, Qt::Key_Delete, Qt::Key_P};
        static const QString letters = "abGR0123456789.,-+:|\"; <>&";
        switch (below(8)) {
            case 0:
            case 1:
            case 2:
                return key(part, oneOf(moves), below(5) == 0 ? Qt::ShiftModifier : Qt::NoModifier);
            case 3:
                return key(part, oneOf(commands), Qt::ControlModifier);
            case 4:
                return key(part, static_cast<Qt::Key>(Qt::Key_A + below(26)), Qt::AltModifier);
            case 5:
                return key(part, below(8) == 0 ? Qt::Key_F5 : Qt::Key_Down, Qt::NoModifier);
            default:
                say("letters into", part);
                const QPointer<QWidget> there = &part;
                for (int letter = below(5); letter >= 0 && there != nullptr; --letter)
                    QTest::keyClick(there, letters[below(static_cast<int>(letters.size()))].toLatin1());
        }
    }
    void inMenu(QMenu& menu) {
        const QList<QAction*> entries = menu.actions();
        if (entries.isEmpty() || below(4) == 0) return key(menu, Qt::Key_Escape, Qt::NoModifier);
        if (below(2) == 0) return key(menu, Qt::Key_Down, Qt::NoModifier);
        QAction* const entry = entries[below(static_cast<int>(entries.size()))];
        // The end comes seldom, or nothing else would ever be seen.
        if (entry->objectName() == "ID_Exit" && below(10) != 0) return;
        say(("menu entry " + entry->text().toStdString() + " of").c_str(), menu);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(entry).center());
    }
    void inFileDialog(QFileDialog& dialog) {
        say("answer", dialog);
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        if (name == nullptr || below(3) == 0) return key(dialog, Qt::Key_Escape, Qt::NoModifier);
        static const std::vector<std::string> names = {
            "kestrel-7-run1.las", "kestrel-7-run2.las", "new.las", "session.wsn", "picture.png", "nothing", "out"};
        const bool wantsFolder = dialog.fileMode() == QFileDialog::Directory;
        name->setText(QString::fromStdString(wantsFolder ? folder.path() : folder.path(oneOf(names))));
        QTest::keyClick(name, Qt::Key_Return);
    }

    std::mt19937 random_;
    QEventLoop loop_;
    int left_ = 0;
    qint64 longest_ = 0;
    std::string said_, longestGesture_;
};

// WELVANE_GESTURES tells how many, WELVANE_SEED which.
TEST_F(Gestures, ofAnyKindBreakNothing) {
    const int steps = qEnvironmentVariable("WELVANE_GESTURES", "600").toInt();
    const auto seed = qEnvironmentVariable("WELVANE_SEED", "7").toUInt();
    doAnything(steps, seed);
    std::printf("%d gestures from seed %u, the longest %lld ms: %s\n", steps, seed, static_cast<long long>(longestMs()),
                longestGesture().c_str());
    // The files that were given are as they were, whatever was done to their copies.
    for (const char* const name : {"kestrel-7-run1.las", "kestrel-7-run2.las"})
        EXPECT_GT(fs::file_size(fs::path(WELVANE_SOURCE_DIR "/examples") / name), 100000U);
}

}  // namespace
}  // namespace welvane::test
