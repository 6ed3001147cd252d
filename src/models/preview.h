#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "jobs/background_job.h"
#include "jobs/plot_input.h"

namespace welvane {

/// The output of a session as it would be written now, worked out beside the window on copies, for pictures and tables
/// of it. Nothing is written and nobody is asked: questions of the run have their safe answers.
class OutputPreview {
  public:
    /// `platform` is the job's own; `wake` is called by its thread, see BackgroundJob.
    OutputPreview(Platform& platform, std::function<void()> wake);
    OutputPreview(const OutputPreview&) = delete;
    OutputPreview& operator=(const OutputPreview&) = delete;
    /// A job at work is given up, and its end awaited.
    ~OutputPreview() = default;

    /// The session is another one now: what was worked out stays to be shown, out of date; work on it is given up, and
    /// poll() begins anew. Waits for nothing.
    void changed();
    /// To be called when woken and after a change: takes what is done, and begins where something is to be done.
    void poll(const App& app, const Session& session);

    bool working() const { return job_ != nullptr; }
    /// What was last worked out tells of the session as it is.
    bool current() const { return current_; }
    /// The samples, the index first; nothing before the first one is done, and where the run would be refused.
    const PlotInput* output() const { return output_.get(); }
    /// Why there is no output.
    const std::string& refusal() const { return refusal_; }
    /// What there is to tell of it.
    const std::vector<Note>& notes() const { return notes_; }

  private:
    struct Work {
        std::unique_ptr<PlotInput> output;
        std::vector<Note> notes;
    };
    void begin(const App& app, const Session& session);
    void take();

    Platform& platform_;
    std::function<void()> wake_;
    bool current_ = false;
    bool outdated_ = false;  ///< the session changed since the job began
    std::unique_ptr<PlotInput> output_;
    std::string refusal_;
    std::vector<Note> notes_;
    std::shared_ptr<Work> work_;
    std::unique_ptr<BackgroundJob> job_;
};

}  // namespace welvane
