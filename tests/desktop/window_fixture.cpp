#include "window_fixture.h"

#include <QAbstractButton>
#include <QListWidget>
#include <QStatusBar>
#include <set>

#include "desktop/grid_view.h"

namespace welvane::test {

namespace fs = std::filesystem;

Window::Window(const std::string& home) : app(boxes, platform) {
    for (StockPlatform* const one : {&platform, &jobPlatform, &previewPlatform}) one->home = home;
    // A picture shows the name of the folder, which is to be one that says something.
    const bool pictures = !qEnvironmentVariableIsEmpty("WELVANE_PICTURES");
    const std::string wells = pictures ? fs::temp_directory_path().string() + "/wells/" : folder.path();
    fs::create_directories(wells);
    for (const char* name : {"kestrel-7-run1.las", "kestrel-7-run2.las"})
        fs::copy_file(fs::path(WELVANE_SOURCE_DIR "/examples") / name, wells + name,
                      fs::copy_options::overwrite_existing);
    for (const char* key : {"inDir", "outDir"}) platform.settings().put(key, wells);
    platform.settings().put("editafter", "0");
    platform.settings().put("certafter", "0");
    EXPECT_TRUE(loadProcess(app));
    openWindow();
}

void Window::openWindow() {
    window = std::make_unique<MainWindow>(app, jobPlatform, previewPlatform);
    boxes.setParent(window.get());
    window->resize(1024, 700);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

QPalette darkPalette() {
    const QColor window(45, 47, 51), base(32, 33, 36), text(225, 226, 228);
    QPalette colours(window, base);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        colours.setColor(role, text);
    colours.setColor(QPalette::Base, base);
    colours.setColor(QPalette::Window, window);
    colours.setColor(QPalette::Button, window.lighter(115));
    colours.setColor(QPalette::Highlight, QColor(48, 110, 170));
    colours.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, text.darker(180));
    return colours;
}

void Window::choose(const char* id) {
    auto* const action = window->findChild<QAction*>(id);
    ASSERT_NE(action, nullptr) << id;
    QMenuBar& bar = *window->menuBar();
    for (QAction* const entry : bar.actions()) {
        if (!entry->menu()->actions().contains(action)) continue;
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(entry).center());
        ASSERT_TRUE(entry->menu()->isVisible());
        QTest::mouseClick(entry->menu(), Qt::LeftButton, {}, entry->menu()->actionGeometry(action).center());
    }
    QApplication::processEvents();
    QApplication::processEvents();
}

void Window::openByDoubleClick(const QString& name) {
    auto& list = part<QListWidget>("Files");
    const QList<QListWidgetItem*> items = list.findItems(name, Qt::MatchExactly);
    ASSERT_EQ(items.size(), 1) << name.toStdString();
    const QPoint place = list.visualItemRect(items.first()).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    QApplication::processEvents();
}

void Window::press(QWidget& window, const QString& text) {
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>())
        if (button->text().remove('&') == text && button->isVisible()) {
            QTest::mouseClick(button, Qt::LeftButton);
            QApplication::processEvents();
            QApplication::processEvents();
            return;
        }
    ADD_FAILURE() << "no button " << text.toStdString();
}

/// Clicks into a cell, as in the view.
void clickCell(GridView& grid, int row, int column) {
    const QModelIndex cell = grid.model()->index(row, column);
    grid.scrollTo(cell);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell).center());
    ASSERT_EQ(grid.currentIndex(), cell);
}

/// Types over a cell.
void typeInto(GridView& grid, int row, int column, const QString& text) {
    clickCell(grid, row, column);
    QTest::keyClick(&grid, Qt::Key_F2);
    QWidget* const editor = QApplication::focusWidget();
    ASSERT_TRUE(editor != nullptr && grid.isAncestorOf(editor));
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
}

std::string Window::message() {
    return window->statusBar()->currentMessage().toStdString();
}

void Window::keepPicture(QWidget& widget, const std::string& name) {
    QApplication::processEvents();
    const QImage picture = widget.grab().toImage();
    std::set<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) colours.insert(picture.pixel(x, y));
    EXPECT_GT(colours.size(), 8U) << name << " is empty";
    const std::string pictures = qgetenv("WELVANE_PICTURES").toStdString();
    EXPECT_TRUE(pictures.empty() || picture.save(QString::fromStdString(pictures + "/" + name + ".png")));
}

}  // namespace welvane::test
