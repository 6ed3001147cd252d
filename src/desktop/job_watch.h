#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <optional>

#include "jobs/background_job.h"
#include "models/frame.h"

class QProgressDialog;

namespace welvane {

/// Watches a job beside the window: shows its progress when it takes long, asks its questions, and tells when it is
/// done. One at a time; the window never waits for it.
class JobWatch : public QObject {
  public:
    /// `platform` is the jobs' own.
    JobWatch(Frame& frame, Platform& platform, QWidget& window);
    ~JobWatch() override;

    bool busy() const { return watched_ != nullptr; }
    Platform& platform() { return platform_; }
    /// A job that someone else owns and has started; `done` takes its results back.
    void watch(BackgroundJob& job, std::function<void()> done);
    /// A step on copies of the frame's process and session, of which nothing goes back; its results go through what
    /// `step` holds. `done` is told why the step failed, "" when it did not; nobody is told once `owner` is gone. False
    /// while another job is at work.
    bool run(const QObject& owner, BackgroundJob::Step step, std::function<void(const std::string& failure)> done);
    /// The window wants to close: asks to cancel.
    void askCancel();
    /// How long the job has been at work, and how long it will be by what is done of it.
    static QString timesText(double seconds, int percent);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void follow();
    void answer(const Question& question);
    void end();

    Frame& frame_;
    Platform& platform_;
    QWidget& window_;
    QTimer timer_;
    BackgroundJob* watched_ = nullptr;
    std::optional<BackgroundJob> own_;
    std::function<void()> done_;
    QProgressDialog* dialog_ = nullptr;
    QElapsedTimer started_;
};

}  // namespace welvane
