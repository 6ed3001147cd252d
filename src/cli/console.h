#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/terminal_interface.h"
#include "jobs/workbench.h"
#include "platform/platform.h"

/// What every verb works with: the common options, the terminal, a process, and a workbench for its job.
namespace welvane {

/// ClosedPipe is what a shell shows of a program that the signal of a closed pipe ended.
enum class ExitCode { Done = 0, Negative = 1, Usage = 2, Interrupted = 130, ClosedPipe = 141 };

/// Options that make no sense: told with a hint at the help, exit status 2.
struct UsageFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Who read the standard output went away, as "| head" does: no fault of anyone.
struct ClosedPipe {};

/// Options that every verb knows.
struct CommonOptions {
    bool quiet = false, yes = false, no = false, force = false, strict = false, json = false, recursive = false;
    bool jsonLines = false;  ///< then json holds too
    std::string progress = "auto";
};

class Console {
  public:
    explicit Console(const CommonOptions& options);
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    const CommonOptions& options() const { return options_; }
    TerminalInterface& user() { return user_; }
    App& app() { return *app_; }
    Platform& platform() { return *platform_; }
    Workbench& bench() { return *bench_; }

    /// Files as named, lists and folders replaced by what they hold.
    std::vector<std::string> expandLists(const std::vector<std::string>& named);
    /// Puts text on stdout. ClosedPipe when nobody reads it any more.
    void print(std::string_view text);
    /// A path that people know by another name: it is shown by that.
    void showAs(const std::string& path, const std::string& name);
    /// One line on stderr that tells a fault.
    void say(const Fault& fault);
    bool stopped() const { return app_->run.cancelRequested; }

  private:
    CommonOptions options_;
    std::vector<std::pair<std::string, std::string>> shownAs_;
    TerminalInterface user_;
    std::unique_ptr<Platform> platform_;
    std::unique_ptr<App> app_;
    std::unique_ptr<Workbench> bench_;
};

/// A fault as a verb tells it: what it is about, why, and which option would help.
std::string faultText(const Fault& fault);

}  // namespace welvane
