#pragma once

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

#include "app/startup.h"
#include "desktop/box_interface.h"
#include "desktop/main_window.h"
#include "support/memory_platform.h"
#include "support/run_program.h"

namespace welvane {
class GridView;
}

namespace welvane::test {

constexpr int patience = 10000;

/// The program's reference files over settings in memory.
class StockPlatform : public MemoryPlatform {
  public:
    std::string programFolder() const override { return home; }

    std::string home = WELVANE_SOURCE_DIR "/data/";
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

/// The colours of a dark screen.
QPalette darkPalette();

/// Clicks into a cell, as in the view.
void clickCell(GridView& grid, int row, int column);
/// Types over a cell.
void typeInto(GridView& grid, int row, int column, const QString& text);

/// A main window over the two wells of an example in a folder of its own.
class Window : public ::testing::Test {
  protected:
    /// `home` is the folder of the reference files; one of the test's own where it may write into it.
    explicit Window(const std::string& home = WELVANE_SOURCE_DIR "/data/");
    /// A window over the same settings, as a next start has it.
    void openWindow();
    template <class Widget>
    Widget& part(const char* name) {
        for (QWidget* const top : QApplication::topLevelWidgets()) {
            if (auto* const self = dynamic_cast<Widget*>(top); self != nullptr && self->objectName() == name)
                return *self;
            if (Widget* const found = top->findChild<Widget*>(name)) return *found;
        }
        throw std::runtime_error(std::string("no widget ") + name);
    }
    /// By the mouse through the menu bar.
    void choose(const char* id);
    void openByDoubleClick(const QString& name);
    /// A click on a button by its text.
    static void press(QWidget& window, const QString& text);
    /// What the window says at its lower edge.
    std::string message();
    /// Paints `widget`, which is to show something, and keeps the picture when a folder for pictures is named.
    static void keepPicture(QWidget& widget, const std::string& name);

    TempFolder folder;
    StockPlatform platform, jobPlatform, previewPlatform;
    BoxInterface boxes;
    App app;
    std::unique_ptr<MainWindow> window;
};

}  // namespace welvane::test
