#include "engine/driver.h"

#include <algorithm>

#include "engine/pass.h"
#include "session/filters.h"
#include "session/loading.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The second pass behind a true vertical depth output: the depths are no regular grid any more, so the file just
/// written is read again and its samples are filled linearly onto one. It replaces that file when it is whole. Where
/// that is refused the file goes: its STEP is not that of its depths. Returns why, "" when it was not refused.
std::string makeTvdRegular(App& app, Session& session, ItemReport& item) {
    std::string why;
    const std::string keptLasFile = app.run.lasFile;
    app.run.lasFile = app.run.targetFile;
    for (InputSlot& slot : session.slots) slot.path.clear();
    session.slots[0].path = app.run.targetFile;
    const SlotLoadResult loaded = Open4Files(app, session, 0);
    session.tables.setting(PrdRow::NullFill) = textOf(NullFill::Linear);
    PassContext context(app, session, {app.run.targetFile, false, OutputFile::Mode::Beside});
    if (loaded.status == LoadStatus::Unreadable)
        context.report.refusal = loaded.why;
    else
        doitmastnew(context);
    if (context.report.result == PassResult::Done) {
        item.pass = context.report;
        item.pass.applyTvd = true;
    } else {
        why = "the depths could not be made regular: " + context.report.refusal;
        item.pass.failures.add("second pass", why);
    }
    session.tables.setting(PrdRow::NullFill) = textOf(NullFill::None);
    app.run.lasFile = keptLasFile;
    if (context.report.result != PassResult::Stopped) return {};
    removeFile(app.run.targetFile);
    return why;
}

/// True when the item is done.
bool oneItem(App& app, Session& session, const RunRequest& request, RunOutcome& outcome) {
    app.run.batchRunning = true;
    ItemReport& item = outcome.items.emplace_back();
    item.source = app.run.lasFile.empty() ? session.slots[0].path : app.run.lasFile;
    item.target = app.run.targetFile;
    PassContext context(app, session,
                        {app.run.targetFile, app.run.noInputRun, request.outputMode, request.wholeInputs, request.rules,
                         request.wrapSettled});
    PassResult result = doitmastnew(context);
    item.pass = context.report;
    if (result == PassResult::Done && context.applyTvd)
        if (std::string why = makeTvdRegular(app, session, item); !why.empty()) {
            context.report.refusal = std::move(why);
            result = PassResult::Stopped;
        }
    if (result == PassResult::Stopped && !app.run.commandMode && request.outputMode == OutputFile::Mode::InPlace)
        app.user.ask({"Problem writing the OutPut File!",
                      "An Error occured while writing the new file. Do not use this file without careful checking! ",
                      Buttons::Ok, Icon::Warning, Answer::Ok});
    if (result != PassResult::Done) outcome.refusal = context.report.refusal;
    return result == PassResult::Done;
}

bool outputIsInput(App& app, Session& session, const RunRequest& request, RunOutcome& outcome) {
    const std::string& target = app.run.targetFile;
    const auto isTarget = [&](const std::string& path) {
        if (path.empty() || target.empty()) return false;
        // As laid down a name in other letter cases counts as the same one, whatever the system says.
        return samePath(path, target) || (request.rules == FigureRules::asLaidDown && sameText(path, target));
    };
    const bool isInput = std::ranges::any_of(session.slots, [&](const InputSlot& slot) { return isTarget(slot.path); });
    if (!isInput && !(session.tables.filterInUse() && isTarget(session.filterFile))) return false;
    if (isInput && !app.run.commandMode)
        app.user.ask({"Duplicate File Name!",
                      "Input and output files cannot be the same file! Change the new file name or write it to a "
                      "different directory!",
                      Buttons::Ok, Icon::Stop, Answer::Ok});
    outcome.refusal = isInput ? "input and output are the same file" : "filter and output are the same file";
    return true;
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
    if (outputIsInput(app, session, request, outcome)) return;
    if (!app.run.commandMode && !request.filterApplied && session.tables.filterInUse()) {
        const FilterReport filter = openFilter(app, session, request.rules);
        if (filter.unreadable) {
            outcome.refusal = filter.why;
            return;
        }
    }
    if (!oneItem(app, session, request, outcome)) return;
    outcome.completed = true;
    if (!app.run.commandMode && request.afterProcess) request.afterProcess(app.run.targetFile);
}

}  // namespace

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

RunOutcome processMMM(App& app, Session& session, const RunRequest& request) {
    RunOutcome outcome;
    app.run.batchRunning = true;
    if (app.run.commandMode) {
        if (!outputIsInput(app, session, request, outcome)) outcome.completed = oneItem(app, session, request, outcome);
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
