#include "jobs/background_job.h"

#include <exception>
#include <utility>

#include "jobs/process.h"

namespace welvane {

namespace {

/// The values of a run but its flag, which no thread may copy from another.
void copyRun(const RunState& from, RunState& to) {
    to.commandMode = from.commandMode;
    to.batchRunning = from.batchRunning;
    to.statusText = from.statusText;
    to.progressFraction = from.progressFraction;
    to.sourceLabel = from.sourceLabel;
    to.targetLabel = from.targetLabel;
    to.lasFile = from.lasFile;
    to.targetFile = from.targetFile;
    to.noInputRun = from.noInputRun;
    to.workers = from.workers;
}

}  // namespace

std::optional<Question> QuestionDesk::pending() const {
    const std::lock_guard lock(mutex_);
    return question_;
}

ProgressLabels QuestionDesk::labels() const {
    const std::lock_guard lock(mutex_);
    return labels_;
}

std::vector<Note> QuestionDesk::notes() const {
    const std::lock_guard lock(mutex_);
    return notes_;
}

void QuestionDesk::tell(const Note& note) {
    const std::lock_guard lock(mutex_);
    notes_.push_back(note);
}

void QuestionDesk::reply(Reply answer) {
    const std::lock_guard lock(mutex_);
    if (!question_) return;
    reply_ = std::move(answer);
    question_.reset();
    answered_.notify_all();
}

void QuestionDesk::answer(Answer answer) {
    reply(answer);
}

void QuestionDesk::answer(const std::string& text) {
    reply(text);
}

void QuestionDesk::close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    question_.reset();
    answered_.notify_all();
}

/// Nothing once the desk is closed.
std::optional<QuestionDesk::Reply> QuestionDesk::waitFor(Question question) {
    publish();
    std::unique_lock lock(mutex_);
    if (closed_) return std::nullopt;
    reply_ = std::monostate();
    question_ = std::move(question);
    lock.unlock();
    if (wake_) wake_();
    lock.lock();
    answered_.wait(lock, [this] { return closed_ || !question_; });
    if (std::holds_alternative<std::monostate>(reply_)) return std::nullopt;
    return reply_;
}

Answer QuestionDesk::ask(const Prompt& prompt) {
    const std::optional<Reply> reply = waitFor(prompt);
    const Answer* const answer = reply ? std::get_if<Answer>(&*reply) : nullptr;
    return answer == nullptr ? prompt.safe() : *answer;
}

std::string QuestionDesk::waitForText(Question question) {
    const std::optional<Reply> reply = waitFor(std::move(question));
    const std::string* const text = reply ? std::get_if<std::string>(&*reply) : nullptr;
    return text == nullptr ? std::string() : *text;
}

std::string QuestionDesk::askText(const TextPrompt& prompt) {
    return waitForText(prompt);
}

std::string QuestionDesk::askFile(const FilePrompt& prompt) {
    return waitForText(prompt);
}

std::string QuestionDesk::askFolder(const std::string& title, const std::string& start) {
    return waitForText(FolderPrompt{title, start});
}

void QuestionDesk::publish() {
    if (run_ == nullptr) return;
    ProgressLabels labels = progressLabels(*run_);
    const std::lock_guard lock(mutex_);
    labels_ = std::move(labels);
}

void QuestionDesk::progress(const Progress& progress) {
    if (run_ == nullptr) return;
    run_->statusText = progress.status;
    run_->progressFraction = static_cast<float>(progress.fraction);
    pumpEvents();
}

void QuestionDesk::pumpEvents() {
    constexpr unsigned turnsPerNews = 256;
    if (++turns_ % turnsPerNews != 1) return;
    publish();
    if (wake_) wake_();
}

BackgroundJob::BackgroundJob(const App& app, const Session& session, Platform& platform, std::function<void()> wake)
    : desk_(wake), wake_(std::move(wake)), app_(desk_, platform), session_(session) {
    app_.settings = app.settings;
    app_.reference = app.reference;
    copyRun(app.run, app_.run);
    desk_.watch(app_.run);
    desk_.publish();
}

BackgroundJob::~BackgroundJob() {
    if (!thread_.joinable()) return;
    cancel(true);
    thread_.join();
}

void BackgroundJob::run(const Step& step) {
    try {
        step(app_, session_);
    } catch (const std::exception& error) {
        failure_ = error.what();
    }
    desk_.publish();
    finished_ = true;
    if (wake_) wake_();
}

void BackgroundJob::start(Step step) {
    if (thread_.joinable()) return;
    thread_ = std::thread([this, work = std::move(step)] { run(work); });
}

void BackgroundJob::cancel(bool closing) {
    app_.run.cancelRequested = true;
    if (closing) desk_.close();
}

void BackgroundJob::askCancel(UserInterface& window) {
    welvane::askCancel(window, app_.run);
}

void BackgroundJob::takeBack(App& app, Session& session) {
    if (thread_.joinable()) thread_.join();
    session = std::move(session_);
    app.settings.format = app_.settings.format;
    copyRun(app_.run, app.run);
}

}  // namespace welvane
