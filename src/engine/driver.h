#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/pass_context.h"

/// What drives the pass: once for the loaded session, or once per selected file.
namespace welvane {

/// The files selected in the browser, and the two folders.
struct BrowserSelection {
    std::string sourceFolder, destinationFolder;
    std::vector<std::string> names;  ///< in list order
};

/// Everything around one run that the caller settles.
struct RunRequest {
    OutputFile::Mode outputMode = OutputFile::Mode::InPlace;
    bool wholeInputs = false;  ///< as PassOptions
    FigureRules rules = FigureRules::asLaidDown;
    bool wrapSettled = false, strict = false;  ///< as PassOptions
    /// The caller has applied the filter in use, and perhaps changed what it set: a single run does not apply it again.
    bool filterApplied = false;
    /// Nothing when no browser is open.
    const BrowserSelection* browser = nullptr;
    /// Loads the session's slots again, and its filter when one is in use.
    std::function<void()> reopenSession;
    /// What follows a finished single run outside command mode: editor, checker, viewer.
    std::function<void(const std::string& path)> afterProcess;
};

/// One file of a run.
struct ItemReport {
    std::string source, target;
    PassReport pass;
};
struct RunOutcome {
    std::vector<ItemReport> items;
    bool completed = false;  ///< every item is done
    std::string refusal;     ///< why the run did not start or broke off, "" when completed
};

/// Runs the pass on app.run.targetFile for the loaded session; with more than one file selected, for each of them in
/// turn, ending at the first that fails.
RunOutcome processMMM(App& app, Session& session, const RunRequest& request);

/// Asks for the name of the output that a window's run makes; "" when cancelled.
std::string askTargetName(App& app, Session& session, const RunRequest& request);

/// Asks for the output's name where the run is not in command mode, then runs.
RunOutcome doProcess(App& app, Session& session, const RunRequest& request);

}  // namespace welvane
