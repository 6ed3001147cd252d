#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "session/session.h"
#include "shared/progress.h"

/// A long step beside a window: it works on copies in a thread of its own, its questions are answered by the thread of
/// the window, and what came of it is taken back when it is done. Two jobs can run at once without knowing each other.
namespace welvane {

/// A folder dialog.
struct FolderPrompt {
    std::string title, start;
};
using Question = std::variant<Prompt, TextPrompt, FilePrompt, FolderPrompt>;

/// The interface of a job: its questions wait here until another thread answers them.
class QuestionDesk : public UserInterface {
  public:
    /// `wake` is called by the job's thread when there is a question or news of progress, about every 256th turn.
    explicit QuestionDesk(std::function<void()> wake) : wake_(std::move(wake)) {}

    /// The other thread's side: the question that waits, and its answer. A box takes an Answer, the others a text.
    std::optional<Question> pending() const;
    void answer(Answer answer);
    void answer(const std::string& text);
    /// From now on every question has its safe answer at once.
    void close();
    /// What the job last told of its progress.
    ProgressLabels labels() const;
    /// The notes that it told so far.
    std::vector<Note> notes() const;

    /// The job's side.
    void watch(RunState& run) { run_ = &run; }
    Answer ask(const Prompt& prompt) override;
    std::string askText(const TextPrompt& prompt) override;
    std::string askFile(const FilePrompt& prompt) override;
    std::string askFolder(const std::string& title, const std::string& start) override;
    void progress(const Progress& progress) override;
    void tell(const Note& note) override;
    void pumpEvents() override;
    /// The run's values as they are now, for whoever looks from another thread.
    void publish();

  private:
    using Reply = std::variant<std::monostate, Answer, std::string>;
    std::string waitForText(Question question);
    std::optional<Reply> waitFor(Question question);
    void reply(Reply answer);

    std::function<void()> wake_;
    mutable std::mutex mutex_;
    std::condition_variable answered_;
    std::optional<Question> question_;
    Reply reply_;
    bool closed_ = false;
    ProgressLabels labels_;
    std::vector<Note> notes_;
    RunState* run_ = nullptr;
    unsigned turns_ = 0;
};

class BackgroundJob {
  public:
    using Step = std::function<void(App& app, Session& session)>;

    /// Copies what the step works on. The platform is the job's own: its settings are written through it.
    BackgroundJob(const App& app, const Session& session, Platform& platform, std::function<void()> wake = {});
    BackgroundJob(const BackgroundJob&) = delete;
    BackgroundJob& operator=(const BackgroundJob&) = delete;
    /// A job at work is cancelled, its questions have their safe answers, and its end is awaited.
    ~BackgroundJob();

    /// Starts the step, once. `wake` is called when it is done too.
    void start(Step step);
    bool finished() const { return finished_; }
    /// Why the step ended by a failure; "" when it did not. Known when it is finished.
    const std::string& failure() const { return failure_; }

    QuestionDesk& desk() { return desk_; }
    /// A wish to stop, heard at the next record or line. `closing` answers what is asked with the safe answers.
    void cancel(bool closing = false);
    /// The button of the display: asks with the window's interface. An answer that comes after the end changes nothing.
    void askCancel(UserInterface& window);
    bool cancelWanted() const { return app_.run.cancelRequested; }
    ProgressLabels labels() const { return desk_.labels(); }

    /// When it is finished: the session, the format and the labels go back. Waits for the end if need be.
    void takeBack(App& app, Session& session);

  private:
    void run(const Step& step);

    QuestionDesk desk_;
    std::function<void()> wake_;
    App app_;
    Session session_;
    std::string failure_;
    std::atomic<bool> finished_{false};
    std::thread thread_;
};

}  // namespace welvane
