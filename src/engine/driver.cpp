#include "engine/driver.h"

#include <algorithm>
#include <utility>

#include "engine/pass.h"
#include "session/filters.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

PassOptions passOptions(const App& app, const RunRequest& request, std::string output) {
    return {.outputPath = std::move(output),
            .noInputRun = app.run.noInputRun,
            .outputMode = request.outputMode,
            .wholeInputs = request.wholeInputs,
            .rules = request.rules,
            .wrapSettled = request.wrapSettled,
            .strict = request.strict};
}

/// Leaves the file in hand as it was when this one is gone.
class KeptLasFile {
  public:
    explicit KeptLasFile(RunState& run) : run_(run), kept_(run.lasFile) {}
    ~KeptLasFile() { run_.lasFile = kept_; }
    KeptLasFile(const KeptLasFile&) = delete;
    KeptLasFile& operator=(const KeptLasFile&) = delete;

  private:
    RunState& run_;
    std::string kept_;
};

/// A session of its own on the output of a first pass: rows at their defaults, no filter, gaps filled linearly.
SlotLoadResult openFirstOutput(App& app, Session& session, FigureRules rules, const std::string& path) {
    openSession(app, session);
    session.tables.frd.setCheck(1, FrdColumn::Apply, Check::Unchecked);
    session.rules = rules;
    app.run.lasFile = path;
    session.slots[0].path = path;
    SlotLoadResult loaded = Open4Files(app, session, 0);
    session.tables.setting(PrdRow::NullFill) = textOf(NullFill::Linear);
    return loaded;
}

std::string notRegular(ItemReport& item, const std::string& refusal) {
    std::string why = "the depths could not be made regular: " + refusal;
    item.pass.failures.add("second pass", why);
    return why;
}

/// The second pass behind a true vertical depth output: the depths are no regular grid any more, so the file just
/// written is read again and its samples are filled linearly onto one. It replaces that file when it is whole. Where
/// that is refused the file goes: its STEP is not that of its depths. Returns why, "" when it was not refused.
std::string makeTvdRegular(App& app, ItemReport& item) {
    const KeptLasFile kept(app.run);
    Session session;
    const SlotLoadResult loaded = openFirstOutput(app, session, FigureRules::asLaidDown, app.run.targetFile);
    PassContext context(app, session, {app.run.targetFile, false, OutputFile::Mode::Beside});
    if (loaded.status == LoadStatus::Unreadable)
        context.report.refusal = loaded.why;
    else
        doitmastnew(context);
    if (context.report.result == PassResult::Done) {
        item.pass = context.report;
        item.pass.applyTvd = true;
        return {};
    }
    std::string why = notRegular(item, context.report.refusal);
    if (context.report.result != PassResult::Stopped) return {};
    removeFile(app.run.targetFile);
    return why;
}

/// The options of a plain table, which only the second pass writes.
void movePlainTable(SessionTables& from, SessionTables& to) {
    for (const PrdColumn column : {PrdColumn::Option, PrdColumn::SecondOption})
        to.prd.text(PrdRow::PlainAscii, column) = from.prd.text(PrdRow::PlainAscii, column);
    to.setChecked(PrdRow::PlainAscii, from.checked(PrdRow::PlainAscii));
    from.setChecked(PrdRow::PlainAscii, false);
}

/// Both passes by true figures: the first into a scratch file, so that nobody ever sees one whose depths are no grid.
PassResult trueVerticalPasses(App& app, Session& session, const RunRequest& request, ItemReport& item,
                              std::string& refusal) {
    const KeptLasFile kept(app.run);
    const std::string scratch = app.platform.scratchFolder() + "vertical-" + fileNameOf(app.run.targetFile);
    Session second;
    PassContext first(app, session, passOptions(app, request, scratch));
    first.options.outputMode = OutputFile::Mode::Beside;
    SessionTables plain;
    plain.prd = session.tables.prd;
    movePlainTable(session.tables, plain);
    const PassResult result = doitmastnew(first);
    movePlainTable(plain, session.tables);
    item.pass = first.report;
    refusal = first.report.refusal;
    if (result != PassResult::Done || !first.applyTvd) return result;
    const SlotLoadResult loaded = openFirstOutput(app, second, request.rules, scratch);
    if (loaded.status != LoadStatus::Loaded) {
        refusal = notRegular(item, loaded.why);
        return PassResult::Stopped;
    }
    second.tables.setting(PrdRow::SampleRate) = stripZeros(formatMask(first.grid.step / first.depthDivisor, 12));
    movePlainTable(session.tables, second.tables);
    PassContext context(app, second, passOptions(app, request, app.run.targetFile));
    const PassResult made = doitmastnew(context);
    removeFile(scratch);
    for (Note& note : context.report.notes)
        if (note.file == scratch) note.file.clear();
    context.report.notes.insert(context.report.notes.begin(), first.report.notes.begin(), first.report.notes.end());
    item.pass = context.report;
    item.pass.applyTvd = true;
    if (made == PassResult::Stopped) refusal = notRegular(item, context.report.refusal);
    return made;
}

/// True when the item is done.
bool oneItem(App& app, Session& session, const RunRequest& request, RunOutcome& outcome) {
    app.run.batchRunning = true;
    ItemReport& item = outcome.items.emplace_back();
    item.source = app.run.lasFile.empty() ? session.slots[0].path : app.run.lasFile;
    item.target = app.run.targetFile;
    PassResult result = PassResult::Stopped;
    std::string refusal;
    if (request.rules == FigureRules::trueFigures && session.tables.checked(PrdRow::ApplyTvd)) {
        result = trueVerticalPasses(app, session, request, item, refusal);
    } else {
        PassContext context(app, session, passOptions(app, request, app.run.targetFile));
        result = doitmastnew(context);
        item.pass = context.report;
        refusal = context.report.refusal;
        if (result == PassResult::Done && context.applyTvd)
            if (refusal = makeTvdRegular(app, item); !refusal.empty()) result = PassResult::Stopped;
    }
    if (result == PassResult::Stopped && !app.run.commandMode && request.outputMode == OutputFile::Mode::InPlace)
        app.user.ask({"Problem writing the OutPut File!",
                      "An Error occured while writing the new file. Do not use this file without careful checking! ",
                      Buttons::Ok, Icon::Warning, Answer::Ok});
    if (result != PassResult::Done) outcome.refusal = refusal;
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
        session.slots[slot] = InputSlot();
        session.channels[slot].assign(1, SlotChannel());
        session.opened[slot] = false;
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
