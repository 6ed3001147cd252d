#pragma once

#include <functional>
#include <string>
#include <vector>

#include "certify/batch.h"
#include "convert/generic_table.h"
#include "engine/driver.h"
#include "session/session.h"

/// The one command that runs whatever the open windows call for.
namespace welvane {

enum class ProcessKind { Nothing, Certify, MakeLas, MakeManyLas, Pass, Listing };

/// What is open when the command is given. The objects belong to the caller and outlive the job.
struct ProcessRequest {
    bool certifyOpen = false, sessionOpen = false, listingOpen = false, toolsOpen = false;
    bool browserOpen = false;
    bool makeLasTab = false;       ///< the session shows the tab that makes LAS of a table
    BrowserSelection selection{};  ///< of the browser, when it is open
    std::string pattern{};         ///< of its list
    std::string headerFile{};      ///< hTxt: where a LAS of a table takes its header from; "" for the template
    std::string headerText{};      ///< that header as a person edited it, lines by LF; "" for the template
    BatchCertification* certification = nullptr;
    GenericTable* grd = nullptr;
    /// Runs the listing of its window; false when it was cancelled. It tells its own boxes.
    std::function<bool()> runListing{};
    std::function<void()> refreshTools{};
};

/// What runs, by the first rule that fits: certification, a session, a listing.
ProcessKind processKind(const ProcessRequest& request);

/// A file that was passed over in a run of many.
struct LeftOutFile {
    std::string path, why;
};

struct ProcessOutcome {
    ProcessKind kind = ProcessKind::Nothing;
    bool completed = false;
    bool cancelled = false;         ///< by the user, while it ran or before
    std::string refusal;            ///< why it did not start or broke off
    bool showProperties = false;    ///< a pass that stopped: step and format are mended in their tab
    std::vector<ItemReport> items;  ///< of a pass
    std::vector<std::string> written;
    std::vector<LeftOutFile> leftOut;
};

/// Settles the name of the output where one file is to be made, as a dialog asks for it; app.run.targetFile takes it.
/// False ends the command. Nothing is asked for the other kinds.
bool settleTarget(App& app, Session& session, const ProcessRequest& request);

/// The job itself, then what follows a single file. Outputs take their names when they are whole. A failure comes back
/// in the outcome, after a box that tells it. The run's values are as before a run when it ends.
ProcessOutcome process(App& app, Session& session, const ProcessRequest& request);

/// The button of the progress dialog: asks, and the run's flag takes the answer.
void askCancel(UserInterface& user, RunState& run);

}  // namespace welvane
