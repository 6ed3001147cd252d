#include "jobs/run.h"

#include "certify/certify_after.h"
#include "certify/certify_file.h"
#include "jobs/certify.h"
#include "jobs/checker.h"
#include "jobs/las_check.h"
#include "jobs/pass_notes.h"
#include "jobs/passing_folder.h"
#include "jobs/prepare_session.h"
#include "jobs/preview.h"
#include "jobs/read.h"
#include "jobs/session_file.h"
#include "jobs/true_input.h"
#include "session/step_text.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A failure of a file names it already.
[[noreturn]] void refuseRun(const std::string& output, const std::string& why) {
    const bool named = output.empty() || beginsWith(why, output + ": ");
    throw Refusal(named ? "" : output, why.empty() ? "not written" : why);
}

/// Whether the output can be checked, and its log written, before any work is done.
void needCertifiable(Workbench& bench, const RunFilesRequest& request, const std::vector<Input>& inputs) {
    if (!endsWith(request.output, ".las"))
        throw senselessChoice("certify", "only an output whose name ends in .las is checked");
    if (noCheckerSet(bench.app().settings.certProgram))
        tellOwnCheck(bench);
    else
        needChecker(bench.app().settings.certProgram);
    bench.checkOutput(certifyLogPath(request.output), inputs);
}

/// The request with what a saved session says for it.
struct SettledRequest {
    RunFilesRequest request;
    std::optional<SavedSession> saved;
    bool filesNamed = false;  ///< by the request and not by the session
};

SettledRequest settle(Workbench& bench, const RunFilesRequest& request) {
    SettledRequest settled{.request = request, .saved = {}, .filesNamed = !request.files.empty()};
    if (request.session.empty()) return settled;
    bench.willRead(request.session);
    settled.saved = readSavedSession(request.session);
    takeReading(*settled.saved, settled.request.pass);
    if (!settled.filesNamed) settled.request.files = findSavedInputs(*settled.saved);
    return settled;
}

void checkOutputs(Workbench& bench, const RunFilesRequest& request, const std::vector<Input>& inputs) {
    if (!request.output.empty()) bench.checkOutput(request.output, inputs);
    if (request.saveSession.empty()) return;
    if (!request.output.empty() && samePath(request.output, request.saveSession))
        throw senselessChoice("save-session", "it is the output's name too");
    bench.checkOutput(request.saveSession, inputs);
}

std::vector<Input> openInputs(Workbench& bench, const RunFilesRequest& request) {
    if (request.files.empty() || request.files.size() > slotCount)
        throw senselessChoice("files", "a run takes one to four inputs");
    for (const std::string& other : {request.pass.filter, request.pass.tvd})
        if (!other.empty()) bench.willRead(other);
    std::vector<Input> inputs;
    for (const std::string& file : request.files) inputs.push_back(openForPass(bench, file, request.pass));
    checkOutputs(bench, request, inputs);
    return inputs;
}

RunMarks marksOf(const SettledRequest& settled) {
    const PassRequest& pass = settled.request.pass;
    RunMarks marks = settled.saved ? settled.saved->marks : RunMarks();
    marks.wrapSettled = marks.wrapSettled || pass.wrap.has_value();
    marks.csv = pass.csv;
    return marks;
}

void prepare(Workbench& bench, Session& session, const std::vector<Input>& inputs, const SettledRequest& settled) {
    const RunFilesRequest& request = settled.request;
    std::optional<Session> fresh;
    SessionStart start{.settled = settled.saved.has_value()};
    if (settled.saved) start.slots = slotsOf(*settled.saved);
    start.loaded = [&] {
        if (!request.saveSession.empty()) fresh = session;
        if (settled.saved) restoreSession(bench, session, inputs, *settled.saved, settled.filesNamed);
    };
    prepareSession(bench, session, inputs, request.pass, start);
    for (const std::string& output : {request.output, request.saveSession})
        if (!output.empty()) bench.needOwnFile(output, inputs);
    if (fresh)
        writeSession(bench, request.saveSession,
                     sessionText(bench.app(), session, *fresh, inputs, marksOf(settled), request.saveSession));
}

/// The headless line goes on without an input, or with what it can read of one; here a person is told.
Input openLaidDown(Workbench& bench, const std::string& file, bool loose) {
    Input input{file, resolvePath(file)};
    Reason why{"no such file"};
    if (fileExists(input.path)) {
        input = bench.openInput(file);
        why = whyNoLas(*input.file, loose);
    }
    if (!why.none()) tellNotes(bench, file, {{.kind = NoteKind::Skipped, .file = file, .text = why.text}});
    return input;
}

std::uint64_t bytesOf(const std::vector<Input>& inputs) {
    std::uint64_t bytes = 0;
    for (const Input& input : inputs) bytes += input.file ? input.file->bytes().size() : 0;
    return bytes;
}

void checkAfter(Workbench& bench, const std::string& path, RunFilesReport& report) {
    App& app = bench.app();
    if (noCheckerSet(app.settings.certProgram)) {
        const Certification made = certifyByRules(bench, path, true);
        report.check = {made.verdict, made.log};
        return;
    }
    const CertifyAfterResult checked = certifyAfter(app, path, checkerPatience);
    report.check = {verdictOf(checked.log), checked.log};
}

}  // namespace

RunRequest jobRun(const Workbench& bench, const PassRequest& request) {
    RunRequest run;
    run.outputMode = bench.outputMode();
    run.wrapSettled = request.wrap.has_value();
    run.filterApplied = true;
    run.wholeInputs = !request.loose && request.rules == FigureRules::trueFigures;
    run.rules = request.rules;
    run.strict = bench.rules().strict;
    return run;
}

RunOutcome passOnto(Workbench& bench, Session& session, const RunRequest& run, bool csv, const std::string& output) {
    App& app = bench.app();
    app.run.targetFile = output;
    if (!csv) return processMMM(app, session, run);
    // By way of a LAS file, which is then read as any is: the same figures, null and names.
    const PassingFolder folder(bench, "csv");
    app.run.targetFile = folder.path() + "output.las";
    RunOutcome outcome = processMMM(app, session, run);
    if (!outcome.completed) return outcome;
    writeRecords(bench, *openTrue(app.run.targetFile), {.file = app.run.targetFile, .output = output});
    app.run.targetFile = output;
    for (ItemReport& item : outcome.items) item.target = output;
    return outcome;
}

Input openForPass(Workbench& bench, const std::string& file, const PassRequest& request) {
    if (request.rules == FigureRules::asLaidDown) return openLaidDown(bench, file, request.loose);
    Input input{file, resolvePath(file), openTrue(file)};
    if (const Reason why = whyNoLas(*input.file, request.loose); !why.none()) throw Refusal(file, why);
    return input;
}

namespace {

RunRequest settledRun(const Workbench& bench, const Session& session, const SettledRequest& settled) {
    RunRequest run = jobRun(bench, settled.request.pass);
    run.wrapSettled = marksOf(settled).wrapSettled;
    // A window may have kept a session with a filter that its run would have applied.
    run.filterApplied = session.filterApplied || !session.tables.filterInUse();
    return run;
}

RunFilesReport performRun(Workbench& bench, Session& session, const std::vector<Input>& inputs,
                          const SettledRequest& settled) {
    const RunFilesRequest& request = settled.request;
    App& app = bench.app();
    RunFilesReport report;
    const RunRequest run = settledRun(bench, session, settled);
    RunOutcome outcome;
    {
        const WorkInHand work(bench.user(), {.bytes = bytesOf(inputs)});
        // What the boxes of a run tell stands in its outcome too, and there without the detours; questions are asked
        // all the same.
        const HeldBoxes held(bench.user());
        outcome = passOnto(bench, session, run, request.pass.csv, request.output);
        if (outcome.completed && request.certify) checkAfter(bench, request.output, report);
    }
    if (!outcome.completed) {
        const bool inputBroke = !outcome.items.empty() && outcome.refusal == outcome.items.back().pass.brokenInput;
        refuseRun(inputBroke ? "" : request.output, outcome.refusal);
    }
    for (const ItemReport& item : outcome.items) noteLeftOut(bench, item);
    report.inputs = request.files;
    report.items = std::move(outcome.items);
    report.depthUnit = session.tables.setting(PrdRow::DepthUnits);
    if (request.open) report.opened = app.platform.openWithShell(resolvePath(request.output));
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace

RunFilesReport runFiles(Workbench& bench, const RunFilesRequest& given) {
    const SettledRequest settled = settle(bench, given);
    const RunFilesRequest& request = settled.request;
    const std::vector<Input> inputs = openInputs(bench, request);
    if (request.certify) needCertifiable(bench, request, inputs);
    Session session;
    prepare(bench, session, inputs, settled);
    if (request.output.empty()) {
        RunFilesReport report;
        report.inputs = request.files;
        report.notes = bench.takeNotes();
        return report;
    }
    return performRun(bench, session, inputs, settled);
}

PlotInput sampleRun(Workbench& bench, const RunFilesRequest& given) {
    const SettledRequest settled = settle(bench, given);
    const RunFilesRequest& request = settled.request;
    const std::vector<Input> inputs = openInputs(bench, request);
    Session session;
    prepare(bench, session, inputs, settled);
    const RunRequest run = settledRun(bench, session, settled);
    std::vector<std::string> names;
    for (const std::string& file : request.files) names.push_back(fileNameOf(file));
    const WorkInHand work(bench.user(), {.bytes = bytesOf(inputs)});
    return previewOutput(bench, session, run, join(names, " + "));
}

PlanReport planRun(Workbench& bench, const RunFilesRequest& given) {
    const SettledRequest settled = settle(bench, given);
    const RunFilesRequest& request = settled.request;
    const std::vector<Input> inputs = openInputs(bench, request);
    Session session;
    prepare(bench, session, inputs, settled);
    PlanReport report;
    report.plan = planPass(bench.app(), session, request.pass.rules);
    if (!report.plan.refusal.empty()) refuseRun(request.output, report.plan.refusal);
    report.depthUnit = session.tables.setting(PrdRow::DepthUnits);
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
