#include "desktop/log_view.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QWheelEvent>
#include <utility>

#include "desktop/export_picture.h"
#include "desktop/picture_view.h"
#include "desktop/text.h"
#include "desktop/theme.h"

namespace welvane {

namespace {

constexpr int restMs = 300, pollMs = 30;
constexpr double wheelShare = 0.15, keyShare = 0.1, pageShare = 0.9, zoomStep = 1.4;

/// True when a picture of one session would be another one of the other.
bool differs(const Session& one, const Session& other) {
    for (std::size_t slot = 0; slot < slotCount; ++slot)
        if (one.slots[slot].path != other.slots[slot].path || one.opened[slot] != other.opened[slot]) return true;
    return one.tables != other.tables;
}

}  // namespace

LogCanvas::LogCanvas(LogPreview& preview, std::function<void(const QString&)> tell, QWidget* parent)
    : QWidget(parent), preview_(preview), tell_(std::move(tell)) {
    setAccessibleName("Logs");
    setObjectName("Logs");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(200, 200);
}

void LogCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = themeOf(palette());
    painter.fillRect(rect(), colourIn(Ink::Paper, theme));
    const Drawing drawing = preview_.drawing(width(), height());
    if (drawing.shapes.empty()) {
        painter.setPen(colourIn(Ink::Faint, theme));
        const QString text =
            preview_.empty() ? shown(preview_.message()) : QString("The window is too small for these logs.");
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, text);
        return;
    }
    paintDrawing(painter, drawing, theme);
    if (!pointer_ || !preview_.depthAt(pointer_->y())) return;
    painter.setPen(QPen(colourIn(Ink::Faint, theme), 1, Qt::DashLine));
    painter.drawLine(QPointF(0, pointer_->y()), QPointF(width(), pointer_->y()));
}

void LogCanvas::wheelEvent(QWheelEvent* event) {
    const double turns = event->angleDelta().y() / 120.0;
    if (event->modifiers().testFlag(Qt::ControlModifier))
        preview_.zoom(turns > 0 ? zoomStep : 1 / zoomStep, event->position().y());
    else
        preview_.scroll(-turns * wheelShare);
    event->accept();
    update();
}

void LogCanvas::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = event->position();
    tell_(shown(preview_.readout(pointer_->x(), pointer_->y())));
    update();
}

void LogCanvas::leaveEvent(QEvent* event) {
    pointer_.reset();
    tell_({});
    update();
    QWidget::leaveEvent(event);
}

void LogCanvas::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Down:
            preview_.scroll(keyShare);
            break;
        case Qt::Key_Up:
            preview_.scroll(-keyShare);
            break;
        case Qt::Key_PageDown:
            preview_.scroll(pageShare);
            break;
        case Qt::Key_PageUp:
            preview_.scroll(-pageShare);
            break;
        case Qt::Key_Plus:
            preview_.zoom(zoomStep, -1);
            break;
        case Qt::Key_Minus:
            preview_.zoom(1 / zoomStep, -1);
            break;
        case Qt::Key_Home:
            preview_.whole();
            break;
        default:
            return QWidget::keyPressEvent(event);
    }
    update();
}

LogView::LogView(Frame& frame, Platform& platform, QWidget* parent)
    : QWidget(parent), frame_(frame), platform_(platform) {
    auto* const column = new QVBoxLayout(this);
    readout_ = new QLabel(this);
    canvas_ = new LogCanvas(
        preview_, [this](const QString& text) { readout_->setText(text); }, this);
    readout_->setTextFormat(Qt::PlainText);
    addTools();
    column->addWidget(canvas_, 1);
    wait_.setSingleShot(true);
    connect(&wait_, &QTimer::timeout, this, [this] { start(); });
    connect(&poll_, &QTimer::timeout, this, [this] { follow(); });
}

LogView::~LogView() = default;

void LogView::addTools() {
    auto* const line = new QHBoxLayout;
    what_ = new QComboBox(this);
    what_->setAccessibleName("What is shown");
    what_->setObjectName("What is shown");
    what_->addItems({"New file", "Files beside each other"});
    connect(what_, &QComboBox::activated, this, [this] {
        stale_ = true;
        preview_ = {};
        refresh();
    });
    line->addWidget(what_);
    line->addWidget(readout_, 1);
    const auto button = [&](const QString& text, const QString& name, const std::function<void()>& act) {
        auto* const made = new QPushButton(text, this);
        made->setAccessibleName(name);
        made->setToolTip(name);
        connect(made, &QPushButton::clicked, this, act);
        line->addWidget(made);
    };
    const auto change = [this](const auto& act) {
        return [this, act] {
            act(preview_);
            canvas_->update();
        };
    };
    button("+", "Zoom in", change([](LogPreview& logs) { logs.zoom(zoomStep, -1); }));
    button("-", "Zoom out", change([](LogPreview& logs) { logs.zoom(1 / zoomStep, -1); }));
    button("All", "The whole log", change([](LogPreview& logs) { logs.whole(); }));
    button("Save Picture...", "Save the picture as SVG or PNG", [this] { exportPicture(); });
    qobject_cast<QVBoxLayout*>(layout())->addLayout(line);
}

void LogView::exportPicture() {
    const Drawing drawing = preview_.drawing(canvas_->width(), canvas_->height());
    if (drawing.shapes.empty()) return;
    const EditOutcome outcome = welvane::exportPicture(frame_.app.user, drawing, "logs", themeOf(palette()));
    if (!outcome.why.empty()) readout_->setText(shown(outcome.why));
}

void LogView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

void LogView::refresh() {
    if (!shownFor_ || differs(*shownFor_, frame_.session)) stale_ = true;
    if (!stale_ || !isVisible() || frame_.running) return;
    // An older picture is of no use any more.
    if (job_) job_->cancel(true);
    wait_.start(restMs);
}

void LogView::start() {
    if (job_ && !job_->finished()) return wait_.start(restMs);
    stale_ = false;
    shownFor_ = std::make_unique<Session>(frame_.session);
    result_ = std::make_shared<SharedLogs>();
    job_.emplace(frame_.app, frame_.session, platform_);
    job_->desk().close();  // a picture asks nobody
    const bool output = what_->currentIndex() == 0;
    job_->start([result = result_, output](App& app, Session& session) {
        *result = output ? readOutputLogs(app, session) : readInputLogs(app, session);
    });
    poll_.start(pollMs);
}

void LogView::follow() {
    if (!job_ || !job_->finished()) return;
    poll_.stop();
    const bool wanted = !job_->cancelWanted();
    job_.reset();
    if (wanted && !stale_ && *result_) preview_.show(*result_);
    canvas_->update();
    if (stale_) refresh();
}

}  // namespace welvane
