#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTextBrowser>

#include "desktop/area_window.h"
#include "desktop/grid_view.h"
#include "models/preferences.h"
#include "window_fixture.h"

namespace welvane::test {
namespace {

// Each opens by its menu, stands in front, names its parts, and closes by Escape.
TEST_F(Window, everyAreaOpensAndCloses) {
    openByDoubleClick("kestrel-7-run1.las");
    const std::pair<const char*, const char*> areas[] = {{"ID_Preferences", "Preferences"},
                                                         {"ID_Certify", "Certify"},
                                                         {"ID_prop", "Property Listing"},
                                                         {"ID_Toolbox", "Bytes"},
                                                         {"ID_CurveLibrary", "Curve Library"},
                                                         {"ID_Help", "Help"},
                                                         {"ID_About", "About"}};
    for (const auto& [id, name] : areas) {
        SCOPED_TRACE(id);
        choose(id);
        auto& area = part<AreaWindow>(name);
        EXPECT_TRUE(area.isVisible());
        ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
        keepPicture(area, name);
        for (const GridView* const grid : area.findChildren<GridView*>())
            EXPECT_FALSE(grid->accessibleName().isEmpty());
        const QPointer<AreaWindow> standing = &area;
        QTest::keyClick(&area, Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([&] { return standing.isNull(); }, patience));
    }
}

TEST_F(Window, preferencesAreTakenOverByOkAlone) {
    for (const bool accept : {false, true}) {
        choose("ID_Preferences");
        auto& area = part<AreaWindow>("Preferences");
        auto& grid = part<GridView>("Preferences");
        const int row = static_cast<int>(PreferenceRow::DataWidth) - 1;
        typeInto(grid, row, 0, "17");
        press(area, accept ? "OK" : "Cancel");
        EXPECT_EQ(app.settings.format.dataWidth == 17, accept);
    }
}

TEST_F(Window, bytesAreToldAndReplaced) {
    const std::string path = folder.path("bytes.las");
    folder.write("bytes.las", "~V\r\nabc abc\nxyz\r\n");
    app.run.lasFile = path;
    choose("ID_Toolbox");
    auto& area = part<AreaWindow>("Bytes");
    auto& grid = part<GridView>("Bytes of the File");
    clickCell(grid, 0, 4);
    EXPECT_EQ(grid.currentIndex().data().toString(), "a");
    EXPECT_TRUE(grid.model()->index(0, 11).data(Qt::BackgroundRole).isValid()) << "an isolated line feed is red";
    press(area, "Codes");
    EXPECT_EQ(grid.model()->index(0, 4).data().toString(), "097");

    std::string told;
    whenShown<QMessageBox>([&](QMessageBox& box) {
        told = box.windowTitle().toStdString();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    press(area, "Find Bad Termination");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }, patience));
    EXPECT_EQ(told, "Bad Termination Found");
}

}  // namespace
}  // namespace welvane::test
