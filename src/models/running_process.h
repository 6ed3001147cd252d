#pragma once

#include <functional>
#include <optional>

#include "jobs/background_job.h"
#include "jobs/process.h"
#include "models/frame.h"

/// A run that was started from the frame and goes on beside it: what the command ID_Process does.
namespace welvane {

class RunningProcess {
  public:
    /// `platform` is the job's own; `wake` is called by its thread, see BackgroundJob.
    RunningProcess(Frame& frame, Platform& platform, std::function<void()> wake);
    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;

    /// Settles the name of the output and starts. `pattern` is that of the file list. False when nothing is open that
    /// could run, or no name was given. While it runs, the commands that would change what it works on are off.
    bool start(const std::string& pattern);
    bool running() const { return job_ && !job_->finished(); }
    BackgroundJob& job() { return *job_; }
    /// A wish to close the main window: asks to cancel. The program ends when the job has.
    void wishToExit();
    /// When the job is finished: everything it made goes back to the frame. A pass that stopped shows the properties.
    ProcessOutcome finish();

  private:
    Frame& frame_;
    Platform& platform_;
    std::function<void()> wake_;
    BatchCertification certification_;
    std::optional<ListingSession> listing_;
    GenericTable grd_;
    ProcessOutcome outcome_;
    std::optional<BackgroundJob> job_;
    bool exitWanted_ = false;
};

/// What is open, as a run is told of it; the objects are left to the caller.
ProcessRequest processRequest(const Frame& frame, const std::string& pattern);

}  // namespace welvane
