#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <pybind11/pybind11.h>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "jobs/workbench.h"
#include "platform/platform.h"
#include "session/session.h"

/// How Python reaches the jobs. Every call has a process of its own, so that threads do not meet, and nothing stays
/// between two calls.
namespace welvane {

/// What each call is told beside its request.
struct CallChoices {
    std::string dataFolder{};  ///< the package's folder of reference files
    bool strict = false, force = false;
};

/// Nobody is asked: every question gets its safe answer. While a call works the lock of the interpreter is free; a few
/// times a second it is taken to see whether a signal, such as Ctrl-C, has come.
class PythonInterface : public UserInterface {
  public:
    void watch(RunState& run) { run_ = &run; }

    Answer ask(const Prompt& prompt) override { return prompt.safe(); }
    std::string askText(const TextPrompt&) override { return {}; }
    std::string askFile(const FilePrompt&) override { return {}; }
    std::string askFolder(const std::string&, const std::string&) override { return {}; }
    void progress(const Progress&) override { lookForSignals(); }
    void pumpEvents() override;

    /// Raises what a signal handler raised while the work went on. The lock is held.
    void raiseSignal();

  private:
    void lookForSignals();

    RunState* run_ = nullptr;
    std::thread::id thread_ = std::this_thread::get_id();
    std::chrono::steady_clock::time_point looked_ = std::chrono::steady_clock::now();
    unsigned turns_ = 0;
    std::unique_ptr<pybind11::error_already_set> raised_;
};

class Call {
  public:
    /// FileFailure and Refusal where the process cannot start.
    explicit Call(const CallChoices& choices);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    Workbench& bench() { return *bench_; }
    const CallChoices& choices() const { return choices_; }

    /// Does the work without the lock. What it throws comes out, unless a signal ended it: then that is raised.
    template <class Body>
    auto work(Body&& body) {
        std::exception_ptr failure;
        std::optional<decltype(body())> made;
        {
            const pybind11::gil_scoped_release free;
            try {
                start();
                made.emplace(body());
            } catch (...) {
                failure = std::current_exception();
            }
        }
        user_.raiseSignal();
        if (failure) std::rethrow_exception(failure);
        return std::move(*made);
    }

  private:
    void start();

    CallChoices choices_;
    PythonInterface user_;
    std::unique_ptr<Platform> platform_;
    std::unique_ptr<App> app_;
    std::unique_ptr<Workbench> bench_;
};

/// Notes as tuples (kind, file, channel, line, count, text).
pybind11::list notesOf(const std::vector<Note>& notes);

/// Makes exceptions of the package of what jobs throw.
void translateRefusals();

/// A fault as a person in Python reads it, with the keyword that would help.
std::string pythonFault(const Fault& fault);

}  // namespace welvane
