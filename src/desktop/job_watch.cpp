#include "desktop/job_watch.h"

#include <QApplication>
#include <QPointer>
#include <QProgressDialog>
#include <memory>
#include <utility>

#include "desktop/text.h"

namespace welvane {

namespace {

constexpr int followEveryMs = 50, quietMs = 300;
constexpr double msPerSecond = 1000, whole = 100;

}  // namespace

JobWatch::JobWatch(Frame& frame, Platform& platform, QWidget& window)
    : frame_(frame), platform_(platform), window_(window) {
    connect(&timer_, &QTimer::timeout, this, [this] { follow(); });
}

JobWatch::~JobWatch() = default;

/// Until its dialog stands, a job has nothing that keeps a person from changing what it works on.
bool JobWatch::eventFilter(QObject* watched, QEvent* event) {
    if (watched_ == nullptr || !watched->isWidgetType() || QApplication::activeModalWidget() != nullptr) return false;
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::Wheel:
        case QEvent::Drop:
            return true;
        default:
            return false;
    }
}

void JobWatch::watch(BackgroundJob& job, std::function<void()> done) {
    watched_ = &job;
    done_ = std::move(done);
    started_.start();
    dialog_ = new QProgressDialog(&window_);
    dialog_->setWindowTitle("Welvane");
    dialog_->setWindowModality(Qt::WindowModal);
    dialog_->setRange(0, static_cast<int>(whole));
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
    dialog_->setMinimumDuration(quietMs);
    qApp->installEventFilter(this);
    // The dialog stays until the job has ended, whatever its button is told.
    disconnect(dialog_, SIGNAL(canceled()), dialog_, SLOT(cancel()));
    connect(dialog_, &QProgressDialog::canceled, this, [this] { askCancel(); });
    timer_.start(followEveryMs);
}

bool JobWatch::run(const QObject& owner, BackgroundJob::Step step, std::function<void(const std::string&)> done) {
    if (busy() || frame_.running) return false;
    frame_.running = true;
    own_.emplace(frame_.app, frame_.session, platform_);
    own_->start(std::move(step));
    watch(*own_, [this, told = std::move(done), alive = QPointer<const QObject>(&owner)] {
        const std::string failure = own_->failure();
        own_.reset();
        frame_.running = false;
        if (alive != nullptr) told(failure);
        if (frame_.actions.refresh) frame_.actions.refresh();
    });
    return true;
}

void JobWatch::askCancel() {
    if (watched_ == nullptr) return;
    // A job that ends while the question stands must not be put away under it.
    timer_.stop();
    watched_->askCancel(frame_.app.user);
    timer_.start(followEveryMs);
}

void JobWatch::answer(const Question& question) {
    timer_.stop();
    UserInterface& user = frame_.app.user;
    QuestionDesk& desk = watched_->desk();
    if (const auto* box = std::get_if<Prompt>(&question)) desk.answer(user.ask(*box));
    if (const auto* line = std::get_if<TextPrompt>(&question)) desk.answer(user.askText(*line));
    if (const auto* file = std::get_if<FilePrompt>(&question)) desk.answer(user.askFile(*file));
    if (const auto* folder = std::get_if<FolderPrompt>(&question))
        desk.answer(user.askFolder(folder->title, folder->start));
    timer_.start(followEveryMs);
}

QString JobWatch::timesText(double seconds, int percent) {
    QString text = QString("%1 s").arg(seconds, 0, 'f', 0);
    if (percent > 0 && percent < whole)
        text += QString(", about %1 s left").arg(seconds * (whole - percent) / percent, 0, 'f', 0);
    return text;
}

void JobWatch::follow() {
    if (watched_->finished()) return end();
    if (const auto question = watched_->desk().pending()) return answer(*question);
    const ProgressLabels labels = watched_->labels();
    const double seconds = static_cast<double>(started_.elapsed()) / msPerSecond;
    dialog_->setLabelText(shown(labels.status + "\n" + labels.source + "\n" + labels.target) + "\n" +
                          timesText(seconds, labels.percent));
    dialog_->setValue(labels.percent);
}

void JobWatch::end() {
    timer_.stop();
    qApp->removeEventFilter(this);
    dialog_->deleteLater();
    dialog_ = nullptr;
    watched_ = nullptr;
    std::exchange(done_, {})();
}

}  // namespace welvane
