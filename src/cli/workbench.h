#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/terminal_interface.h"
#include "platform/platform.h"
#include "session/session.h"

/// What every verb works with: the process, the common options, input and output rules, and where results go.
namespace welvane {

enum class ExitCode { Done = 0, Negative = 1, Usage = 2, Interrupted = 130 };

/// A file or a wish that is refused. Its text is "FILE: reason" and stands on one line.
struct Refusal : std::runtime_error {
    Refusal(const std::string& file, const std::string& reason)
        : std::runtime_error(file.empty() ? reason : file + ": " + reason) {}
};
/// Options that make no sense: told with a hint at the help, exit status 2.
struct UsageFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Options that every verb knows.
struct CommonOptions {
    bool quiet = false, yes = false, no = false, force = false, strict = false, json = false;
    std::string progress = "auto";
};

/// An input as a verb was given it, and the file to read in its place.
struct Input {
    std::string given;  ///< for messages and results
    std::string path;   ///< the same, or a scratch copy with repaired line ends
};

class Workbench {
  public:
    explicit Workbench(const CommonOptions& options);
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    const CommonOptions& options() const { return options_; }
    TerminalInterface& user() { return user_; }
    App& app() { return *app_; }
    Platform& platform() { return *platform_; }

    /// Files as named, with @LIST and "-" replaced by the paths that they hold, one a line. Refusal for a list that
    /// cannot be read.
    std::vector<std::string> expandLists(const std::vector<std::string>& named) const;
    /// An input that can be read: there, a file, not empty, not binary, its lines ended by CR LF or CR. One whose lines
    /// end in LF only is read through a scratch copy, with a note; Refusal under --strict and for everything else.
    /// Opened once more, the same copy serves again.
    Input openInput(const std::string& named);
    /// Removes the scratch copy of an input that is done with, if it has one.
    void release(const Input& input);
    /// The same, and what a LAS file needs: ~C with lines, ~A with data, STEP, at most 32767 columns, lines of sane
    /// length, and (unless `loose`) data of a regular shape.
    Input openLas(const std::string& named, bool loose);
    /// Refusal for an output that is one of the inputs, that exists (without --force), or whose folder is not there.
    /// `tried` also opens it, so that a folder that cannot be written is told before any work is done.
    void checkOutput(const std::string& output, const std::vector<Input>& inputs, bool tried = true) const;

    /// Puts text on stdout.
    void print(std::string_view text);
    /// Runs `body` for each item; a refusal is told and the next one follows. Negative when one was refused or `body`
    /// returned it.
    template <class Item, class Body>
    ExitCode forEach(const std::vector<Item>& items, Body body) {
        ExitCode result = ExitCode::Done;
        for (const Item& item : items) {
            if (stopped()) return ExitCode::Interrupted;
            try {
                if (body(item) != ExitCode::Done) result = ExitCode::Negative;
            } catch (const std::runtime_error& refused) {
                user_.say(refused.what());
                result = ExitCode::Negative;
            }
        }
        return result;
    }
    bool stopped() const { return app_->run.cancelRequested; }

  private:
    std::string repairedCopy(const std::string& named);

    CommonOptions options_;
    TerminalInterface user_;
    std::unique_ptr<Platform> platform_;
    std::unique_ptr<App> app_;
    int copies_ = 0;
    std::map<std::string, std::string> copyOf_;  ///< by the name of the input
};

}  // namespace welvane
