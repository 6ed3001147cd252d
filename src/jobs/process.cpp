#include "jobs/process.h"

#include <exception>
#include <utility>

#include "app/startup.h"
#include "convert/make_las.h"
#include "jobs/after_process.h"
#include "jobs/reopen.h"
#include "las/classify.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view sameFoldersTitle = "Can't Continue";
constexpr std::string_view sameFoldersText =
    "Source and Destination Folders are the same. They must be different to process multiple files. Change Destination "
    "folder and try again.";
constexpr std::string_view stoppedText = "Error in doitmastnew was , #=0";
constexpr std::string_view problemTitle = "Problem writing the OutPut File!";
constexpr std::string_view problemText =
    "An Error occured while writing the new file. Do not use this file without careful checking! ";
constexpr std::string_view cancelTitle = "Cancel Process?";
constexpr std::string_view cancelText = "User has selected to CANCEL this process. Please Confirm. ";
constexpr std::string_view lasPattern = "*.las";

void tell(App& app, std::string_view title, std::string text, Icon icon) {
    if (!app.run.commandMode) app.user.ask({std::string(title), std::move(text), Buttons::Ok, icon, Answer::Ok});
}

RunRequest windowRun(App& app, Session& session, const ProcessRequest& request) {
    RunRequest run;
    run.outputMode = OutputFile::Mode::Beside;
    run.wholeInputs = !session.loose;
    run.rules = session.rules;
    // As laid down it is applied once more, over what was edited since.
    run.filterApplied = session.rules == FigureRules::trueFigures && session.filterApplied;
    run.browser = request.browserOpen ? &request.selection : nullptr;
    run.reopenSession = [&app, &session] { reopenSlots(app, session, session.rules); };
    run.afterProcess = [&app](const std::string& path) { afterProcess(app, path); };
    return run;
}

void runPass(App& app, Session& session, const ProcessRequest& request, ProcessOutcome& outcome) {
    RunOutcome run = processMMM(app, session, windowRun(app, session, request));
    outcome.completed = run.completed;
    outcome.refusal = std::move(run.refusal);
    outcome.items = std::move(run.items);
    for (const ItemReport& item : outcome.items)
        if (item.pass.result == PassResult::Done) outcome.written.push_back(item.target);
    if (outcome.completed || outcome.items.empty()) return;
    // A step of zero and a refused change of format set the flag too; only a wish to stop leaves no other reason.
    outcome.cancelled = app.run.cancelRequested && outcome.refusal == "cancelled";
    outcome.showProperties = true;
    tell(app, "", std::string(stoppedText), Icon::None);
    if (outcome.items.back().pass.result == PassResult::Stopped)
        tell(app, problemTitle, std::string(problemText), Icon::Warning);
}

LasRequest lasRequest(const Session& session, const ProcessRequest& request, const std::string& target) {
    return {.targetPath = target,
            .headerFile = std::string(trim(request.headerFile)),
            .headerText = request.headerText,
            .nullText = session.tables.prd.rows() > 0 ? session.tables.setting(PrdRow::Null) : std::string(),
            .mode = OutputFile::Mode::Beside};
}

void makeOneLas(App& app, Session& session, const ProcessRequest& request, ProcessOutcome& outcome) {
    if (request.grd == nullptr) return;
    const std::string target = app.run.targetFile;
    const LasResult result = makeLas(app, *request.grd, lasRequest(session, request, target));
    outcome.completed = result.done;
    outcome.cancelled = result.cancelled;
    outcome.refusal = result.why;
    if (!result.done) return;
    outcome.written.push_back(target);
    afterProcess(app, target);
}

/// False ends the run: it was cancelled.
bool makeLasOf(App& app, Session& session, const ProcessRequest& request, const std::string& name,
               ProcessOutcome& outcome) {
    const std::string source = withBackslash(request.selection.sourceFolder) + name;
    if (!isPlexmoreAscii(source)) {
        outcome.leftOut.push_back({source, "it is no table of a report"});
        return true;
    }
    app.run.lasFile = app.run.sourceLabel = source;
    app.run.targetFile = app.run.targetLabel =
        withBackslash(request.selection.destinationFolder) + changeExtension(name, "las");
    const LasResult result = tableToLas(app, source, {}, lasRequest(session, request, app.run.targetFile));
    if (result.cancelled) return false;
    if (result.done)
        outcome.written.push_back(app.run.targetFile);
    else
        outcome.leftOut.push_back({source, result.why});
    return true;
}

void makeManyLas(App& app, Session& session, const ProcessRequest& request, ProcessOutcome& outcome) {
    if (samePath(request.selection.sourceFolder, request.selection.destinationFolder)) {
        tell(app, sameFoldersTitle, std::string(sameFoldersText), Icon::Stop);
        outcome.refusal = "source and destination folder are the same";
        return;
    }
    app.run.batchRunning = true;
    for (const std::string& name : request.selection.names) {
        outcome.cancelled = app.run.cancelRequested || !makeLasOf(app, session, request, name, outcome);
        if (outcome.cancelled) return;
    }
    outcome.completed = true;
}

void runKind(App& app, Session& session, const ProcessRequest& request, ProcessOutcome& outcome) {
    switch (outcome.kind) {
        case ProcessKind::Certify:
            outcome.completed = request.certification != nullptr && doBatchChecks(app, *request.certification);
            return;
        case ProcessKind::MakeLas:
            return makeOneLas(app, session, request, outcome);
        case ProcessKind::MakeManyLas:
            return makeManyLas(app, session, request, outcome);
        case ProcessKind::Pass:
            return runPass(app, session, request, outcome);
        case ProcessKind::Listing:
            outcome.completed = request.runListing && request.runListing();
            return;
        case ProcessKind::Nothing:
            return;
    }
}

bool severalSelected(const ProcessRequest& request) {
    return request.browserOpen && request.selection.names.size() > 1;
}

}  // namespace

ProcessKind processKind(const ProcessRequest& request) {
    if (request.certifyOpen) return ProcessKind::Certify;
    if (request.sessionOpen && request.makeLasTab)
        return severalSelected(request) && !sameText(request.pattern, lasPattern) ? ProcessKind::MakeManyLas
                                                                                  : ProcessKind::MakeLas;
    if (request.sessionOpen) return ProcessKind::Pass;
    return request.listingOpen ? ProcessKind::Listing : ProcessKind::Nothing;
}

bool settleTarget(App& app, Session& session, const ProcessRequest& request) {
    const ProcessKind kind = processKind(request);
    const bool oneFile = kind == ProcessKind::MakeLas || (kind == ProcessKind::Pass && !severalSelected(request));
    if (!oneFile || app.run.commandMode) return true;
    const std::string name = askTargetName(app, session, windowRun(app, session, request));
    if (name.empty()) return false;
    app.run.targetFile = name;
    app.run.sourceLabel = app.run.lasFile;
    app.run.targetLabel = name;
    return true;
}

ProcessOutcome process(App& app, Session& session, const ProcessRequest& request) {
    ProcessOutcome outcome;
    outcome.kind = processKind(request);
    try {
        runKind(app, session, request, outcome);
    } catch (const std::exception& error) {
        outcome.completed = false;
        outcome.refusal = error.what();
        tell(app, "", "processMMM error=" + outcome.refusal + ", #=" + std::to_string(failureNumber(outcome.refusal)),
             Icon::None);
    }
    if (request.toolsOpen && request.refreshTools) request.refreshTools();
    if (outcome.kind != ProcessKind::Pass) outcome.cancelled = outcome.cancelled || app.run.cancelRequested;
    app.run.cancelRequested = false;
    app.run.progressFraction = 0;
    app.run.batchRunning = false;
    return outcome;
}

void askCancel(UserInterface& user, RunState& run) {
    run.cancelRequested = user.ask({std::string(cancelTitle), std::string(cancelText), Buttons::OkCancel,
                                    Icon::Question, Answer::Cancel}) == Answer::Ok;
}

}  // namespace welvane
