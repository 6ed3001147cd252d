#include <QTabBar>

#include "desktop/area_window.h"
#include "desktop/function_window.h"
#include "desktop/grid_view.h"
#include "desktop/log_view.h"
#include "desktop/session_view.h"
#include "window_fixture.h"

namespace welvane::test {
namespace {

/// Each window is painted, and kept in the folder WELVANE_PICTURES where that is named, in the size that
/// WELVANE_PICTURE_SIZE tells.
class Pictures : public Window {
  protected:
    Pictures() {
        const QStringList size = qEnvironmentVariable("WELVANE_PICTURE_SIZE", "1024x700").split('x');
        window->resize(size[0].toInt(), size[1].toInt());
        QApplication::processEvents();
    }
};

TEST_F(Pictures, ofEachWindow) {
    keepPicture(*window, "welcome");
    openByDoubleClick("kestrel-7-run1.las");
    openByDoubleClick("kestrel-7-run2.las");
    QTest::keyClick(window.get(), Qt::Key_J, Qt::ControlModifier);
    QApplication::processEvents();
    auto& session = *window->findChild<SessionView*>();
    const char* const tabs[] = {"channels", "coverage", "properties", "header", "survey", "makelas", "preview"};
    for (int tab = 0; tab < session.count(); ++tab) {
        QTest::mouseClick(session.tabBar(), Qt::LeftButton, {}, session.tabBar()->tabRect(tab).center());
        session.setCurrentIndex(tab);
        ASSERT_TRUE(QTest::qWaitFor([&] { return session.logs().settled(); }, patience));
        keepPicture(*window, tabs[tab]);
    }
    session.setCurrentIndex(0);
    auto& channels = part<GridView>("New Channels");
    clickCell(channels, static_cast<int>(SrdRow::Function) - 1, 0);
    whenShown<FunctionWindow>([](FunctionWindow& dialog) {
        keepPicture(dialog, "function");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    typeInto(channels, static_cast<int>(SrdRow::Function) - 1, 0, "BULKDEN2PORO");
    for (const auto& [id, name] : {std::pair{"ID_Preferences", "Preferences"},
                                   {"ID_Certify", "Certify"},
                                   {"ID_prop", "Property Listing"},
                                   {"ID_Toolbox", "Bytes"},
                                   {"ID_CurveLibrary", "Curve Library"},
                                   {"ID_Help", "Help"},
                                   {"ID_About", "About"}}) {
        choose(id);
        auto& area = part<AreaWindow>(name);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
        keepPicture(area, name);
        QTest::keyClick(&area, Qt::Key_Escape);
        QApplication::processEvents();
    }
}

}  // namespace
}  // namespace welvane::test
