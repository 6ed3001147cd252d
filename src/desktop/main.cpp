#include <QApplication>
#include <QPainter>
#include <QSplashScreen>
#include <QTimer>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include "app/startup.h"
#include "desktop/box_interface.h"
#include "desktop/icons.h"
#include "desktop/main_window.h"
#include "desktop/text.h"
#include "platform/platform.h"

namespace welvane {
namespace {

constexpr const char* help =
    "usage: welvane-desktop [FILE...]\n\n"
    "The windows of Welvane: joins, corrects and writes well logs in LAS files.\n"
    "Files that are named go into a session.\n"
    "  --minimised  begins as an icon\n"
    "  --help       this text\n"
    "  --version    the number of the version\n";

/// Qt ends the process where it finds no screen.
bool hasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!qEnvironmentVariableIsEmpty(name)) return true;
    return false;
}

constexpr int splashMs = 1500;

/// The sign and the version; a click takes it away.
QPixmap splashPicture() {
    constexpr int side = 128, width = 300, height = 210;
    QPixmap picture(width, height);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.drawPixmap((width - side) / 2, 20, programIcon().pixmap(side, side));
    painter.setPen(Qt::black);
    painter.drawText(QRect(0, side + 25, width, height - side - 30), Qt::AlignCenter,
                     "Welvane\nVersion " WELVANE_VERSION);
    painter.drawRect(0, 0, width - 1, height - 1);
    return picture;
}

int showWindow(const std::vector<std::string>& files, bool minimised) {
    BoxInterface boxes;
    QSplashScreen splash(splashPicture());
    if (!minimised) splash.show();
    const std::unique_ptr<Platform> platform = makeSystemPlatform();
    const std::unique_ptr<Platform> jobPlatform = makeSystemPlatform();
    const std::unique_ptr<Platform> previewPlatform = makeSystemPlatform();
    App app(boxes, *platform);
    app.run.workers.count = coreCount();
    if (!loadProcess(app)) return 1;
    MainWindow window(app, *jobPlatform, *previewPlatform);
    boxes.setParent(&window);
    minimised ? window.showMinimized() : window.showMaximized();
    window.openFiles(files);
    QTimer::singleShot(splashMs, &splash, &QSplashScreen::close);
    return QApplication::exec();
}

int start(int count, char** values) {
    for (int place = 1; place < count; ++place) {
        const std::string_view argument = values[place];
        if (argument == "--help" || argument == "-h") return std::fputs(help, stdout) < 0 ? 1 : 0;
        if (argument == "--version") return std::puts("welvane-desktop " WELVANE_VERSION) < 0 ? 1 : 0;
    }
    if (!hasDisplay()) {
        std::fputs("welvane-desktop: there is no display (DISPLAY and WAYLAND_DISPLAY are not set)\n", stderr);
        return 1;
    }
    const QApplication application(count, values);
    try {
        std::vector<std::string> files(values + 1, values + count);
        const bool minimised = std::erase(files, "--minimised") > 0;
        return showWindow(files, minimised);
    } catch (const std::exception& error) {
        BoxInterface().ask({"Welvane", error.what(), Buttons::Ok, Icon::Stop, Answer::Ok});
        return 1;
    }
}

}  // namespace
}  // namespace welvane

int main(int count, char** values) {
    return welvane::start(count, values);
}
