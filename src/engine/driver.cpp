#include "engine/driver.h"

#include "session/filters.h"
#include "session/loading.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The second pass behind a true vertical depth output: the depths are no regular grid any more, so the file just
/// written is read again and its samples are filled linearly onto one. It replaces that file when it is whole.
void makeTvdRegular(App& app, Session& session, ItemReport& item) {
    const std::string keptLasFile = app.run.lasFile;
    app.run.lasFile = app.run.targetFile;
    for (InputSlot& slot : session.slots) slot.path.clear();
    session.slots[0].path = app.run.targetFile;
    Open4Files(app, session, 0);
    session.tables.setting(PrdRow::NullFill) = "Linear";
    PassContext context(app, session, {app.run.targetFile, false, OutputFile::Mode::Beside});
    if (doitmastnew(context) == PassResult::Done) {
        item.pass = context.report;
        item.pass.applyTvd = true;
    } else {
        item.pass.failures.add("second pass", "the depths could not be made regular: " + context.report.refusal);
    }
    session.tables.setting(PrdRow::NullFill) = "None";
    app.run.lasFile = keptLasFile;
}

/// True when the item is done.
bool oneItem(App& app, Session& session, const RunRequest& request, RunOutcome& outcome) {
    app.run.batchRunning = true;
    ItemReport& item = outcome.items.emplace_back();
    item.source = app.run.lasFile.empty() ? session.slots[0].path : app.run.lasFile;
    item.target = app.run.targetFile;
    PassContext context(
        app, session,
        {app.run.targetFile, app.run.noInputRun, request.outputMode, request.wholeInputs, request.exactDepthUnit});
    const PassResult result = doitmastnew(context);
    item.pass = context.report;
    if (result == PassResult::Done && context.applyTvd) makeTvdRegular(app, session, item);
    if (result == PassResult::Stopped && !app.run.commandMode && request.outputMode == OutputFile::Mode::InPlace)
        app.user.ask({"Problem writing the OutPut File!",
                      "An Error occured while writing the new file. Do not use this file without careful checking! ",
                      Buttons::Ok, Icon::Warning, Answer::Ok});
    if (result != PassResult::Done) outcome.refusal = context.report.refusal;
    return result == PassResult::Done;
}

bool outputIsInput(App& app, Session& session, RunOutcome& outcome) {
    for (const InputSlot& slot : session.slots) {
        if (slot.path.empty() || app.run.targetFile.empty() ||
            !(sameText(slot.path, app.run.targetFile) || samePath(slot.path, app.run.targetFile)))
            continue;
        if (!app.run.commandMode)
            app.user.ask({"Duplicate File Name!",
                          "Input and output files cannot be the same file! Change the new file name or write it to a "
                          "different directory!",
                          Buttons::Ok, Icon::Stop, Answer::Ok});
        outcome.refusal = "input and output are the same file";
        return true;
    }
    return false;
}

void clearSlots(Session& session) {
    for (int slot = 0; slot < slotCount; ++slot) {
        session.slots[static_cast<std::size_t>(slot)] = InputSlot();
        session.channels[static_cast<std::size_t>(slot)].assign(1, SlotChannel());
        session.opened[static_cast<std::size_t>(slot)] = false;
    }
}

/// The pass once per selected file, under the filter in use. A file that fails ends the run; the files done so far
/// stay.
void manyItems(App& app, Session& session, const RunRequest& request, RunOutcome& outcome) {
    clearSlots(session);
    for (const std::string& name : request.browser->names) {
        app.run.lasFile = withBackslash(request.browser->sourceFolder) + name;
        app.run.targetFile = withBackslash(request.browser->destinationFolder) + name;
        app.run.sourceLabel = app.run.lasFile;
        app.run.targetLabel = app.run.targetFile;
        session.slots[0].path = app.run.lasFile;
        if (request.reopenSession) request.reopenSession();
        if (!oneItem(app, session, request, outcome)) return;
    }
    outcome.completed = true;
}

void singleItem(App& app, Session& session, const RunRequest& request, RunOutcome& outcome) {
    if (outputIsInput(app, session, outcome)) return;
    if (!app.run.commandMode && !request.filterApplied && session.tables.filterInUse()) openFilter(app, session);
    if (!oneItem(app, session, request, outcome)) return;
    outcome.completed = true;
    if (!app.run.commandMode && request.afterProcess) request.afterProcess(app.run.targetFile);
}

/// The name of the output; "" when the question was cancelled.
std::string askTargetName(App& app, Session& session, const RunRequest& request) {
    std::string name = app.run.targetFile;
    const bool plain = session.tables.checked(PrdRow::PlainAscii) && request.browser == nullptr;
    if (name.empty()) {
        const std::string folder = request.browser ? request.browser->destinationFolder : app.settings.outDir;
        name = withBackslash(folder) + fileNameOf(app.run.lasFile);
    }
    if (plain) name = changeExtension(name, "txt");
    const std::string extension = plain ? "txt" : "las";
    name = app.user.askFile({plain ? "Specify New Generic ASCII File Name" : "Specify New LAS File Name", extension,
                             dirOf(name), name, true});
    if (plain && endsWith(name, "las") &&
        app.user.ask({"LAS Name Not Appropriate!",
                      "Extension must NOT be LAS for a non-LAS file! Click Okay to proceed anyway or Cancel to supply "
                      "a new filename.",
                      Buttons::OkCancel, Icon::Warning, Answer::Ok}) == Answer::Cancel)
        return {};
    return name;
}

}  // namespace

RunOutcome processMMM(App& app, Session& session, const RunRequest& request) {
    RunOutcome outcome;
    app.run.batchRunning = true;
    if (app.run.commandMode) {
        if (!outputIsInput(app, session, outcome)) outcome.completed = oneItem(app, session, request, outcome);
        app.run.batchRunning = false;
        return outcome;
    }
    const std::size_t selected = request.browser ? request.browser->names.size() : 0;
    if (selected > 1 && samePath(request.browser->sourceFolder, request.browser->destinationFolder)) {
        app.user.ask({"Can't Continue",
                      "Source and Destination Folders are the same. They must be different to process multiple files. "
                      "Change Destination folder and try "
                      "again.",
                      Buttons::Ok, Icon::Stop, Answer::Ok});
        outcome.refusal = "source and destination folder are the same";
        return outcome;  // Kept: batchRunning stays set until the next run clears it.
    }
    if (selected > 1) {
        manyItems(app, session, request, outcome);
    } else {
        singleItem(app, session, request, outcome);
    }
    app.run.batchRunning = false;
    return outcome;
}

RunOutcome doProcess(App& app, Session& session, const RunRequest& request) {
    if (app.run.commandMode) return processMMM(app, session, request);
    if (request.browser == nullptr || request.browser->names.size() < 2) {
        const std::string name = askTargetName(app, session, request);
        if (name.empty()) {
            RunOutcome outcome;
            outcome.refusal = "no name for the output was given";
            return outcome;
        }
        app.run.targetFile = name;
    }
    RunOutcome outcome = processMMM(app, session, request);
    app.run.cancelRequested = false;
    app.run.progressFraction = 0;
    app.run.batchRunning = false;
    return outcome;
}

}  // namespace welvane
