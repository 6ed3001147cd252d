#include "desktop/welcome_page.h"

#include <QCommandLinkButton>
#include <QLabel>
#include <QVBoxLayout>
#include <utility>

#include "desktop/icons.h"
#include "desktop/text.h"
#include "models/recent_files.h"
#include "models/welcome.h"
#include "shared/files.h"

namespace welvane {

namespace {

constexpr int pageWidth = 460, signSize = 72;
constexpr std::size_t recentShown = 4;

}  // namespace

WelcomePage::WelcomePage(Frame& frame, const std::function<void(std::string_view)>& give,
                         std::function<void(bool)> done, QWidget* parent)
    : QWidget(parent), frame_(frame), done_(std::move(done)) {
    setObjectName("Welcome");
    auto* const middle = new QWidget(this);
    middle->setMaximumWidth(pageWidth);
    auto* const line = new QHBoxLayout(this);
    line->addStretch(1);
    line->addWidget(middle, 4);
    line->addStretch(1);
    auto* const column = new QVBoxLayout(middle);
    column->addStretch(1);
    auto* const sign = new QLabel(middle);
    sign->setPixmap(programIcon().pixmap(signSize, signSize));
    column->addWidget(sign);
    auto* const title = new QLabel("Join, correct and write well logs", middle);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    title->setFont(large);
    column->addWidget(title);
    const auto button = [&](const QString& text, const QString& more, const std::function<void()>& act) {
        auto* const made = new QCommandLinkButton(text, more, middle);
        made->setAccessibleName(QString(text).remove('&'));
        // The page goes away when a session opens.
        connect(made, &QCommandLinkButton::clicked, this, act, Qt::QueuedConnection);
        column->addWidget(made);
    };
    button("Open the example well&s", "Two runs of one well, spliced, up to the preview of the new file.", [this] {
        const bool opened = openExamples(frame_);
        done_(opened);
    });
    button("Open an empt&y session", "Then drop up to four LAS files on it.", [give] { give("ID_MMM"); });
    button("Lea&rn how", "The guide, and the list of keys.", [give] { give("ID_Help"); });
    addRecent(*column);
    column->addStretch(2);
}

void WelcomePage::addRecent(QVBoxLayout& column) {
    std::vector<std::string> recent = recentFiles(frame_.app.platform.settings());
    if (recent.empty()) return;
    column.addWidget(new QLabel("Opened last:", this));
    recent.resize(std::min(recent.size(), recentShown));
    for (const std::string& path : recent) {
        auto* const made = new QCommandLinkButton(shown(fileNameOf(path)).replace('&', "&&"), shown(dirOf(path)), this);
        made->setAccessibleName("Open " + shown(path));
        connect(
            made, &QCommandLinkButton::clicked, this,
            [this, path] {
                openFromList(frame_, path);
                done_(false);
            },
            Qt::QueuedConnection);
        column.addWidget(made);
    }
}

}  // namespace welvane
