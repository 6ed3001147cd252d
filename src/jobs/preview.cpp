#include "jobs/preview.h"

#include <utility>

#include "engine/pass.h"
#include "jobs/pass_notes.h"
#include "jobs/passing_folder.h"
#include "jobs/true_input.h"
#include "las/channel_names.h"
#include "session/filters.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

PlotInput throughFile(Workbench& bench, Session& session, RunRequest run, const std::string& name) {
    const PassingFolder folder(bench, "preview");
    RunState& state = bench.app().run;
    const std::string before = std::exchange(state.targetFile, folder.path() + "output.las");
    run.outputMode = OutputFile::Mode::Beside;
    const RunOutcome outcome = processMMM(bench.app(), session, run);
    const std::string written = std::exchange(state.targetFile, before);
    if (!outcome.completed) throw Refusal("", outcome.refusal.empty() ? "not written" : outcome.refusal);
    for (ItemReport item : outcome.items) {
        item.target = name;
        noteLeftOut(bench, item);
    }
    return readPlotInput(bench, written, name, {});
}

PlotInput ofSamples(Workbench& bench, Session& session, const RunRequest& run, const std::string& name) {
    if (!run.filterApplied && session.tables.filterInUse()) {
        const FilterReport filter = openFilter(bench.app(), session, run.rules);
        if (filter.unreadable) throw Refusal(session.filterFile, filter.why);
    }
    PassContext context(
        bench.app(), session,
        {.wholeInputs = run.wholeInputs, .rules = run.rules, .wrapSettled = run.wrapSettled, .strict = run.strict});
    PassPreview preview;
    if (previewPass(context, preview) != PassResult::Done)
        throw Refusal("", context.report.refusal.empty() ? "stopped" : context.report.refusal);
    noteLeftOut(bench, {.source = {}, .target = name, .pass = context.report});
    const LasText text(preview.header, LineRule::Any);
    return plotInputOf(text, std::move(preview.columns), name);
}

}  // namespace

PlotInput previewOutput(Workbench& bench, Session& session, const RunRequest& run, const std::string& name) {
    const SessionTables& tables = session.tables;
    if (tables.checked(PrdRow::PlainAscii)) throw senselessChoice("ascii", "a plot is drawn of a LAS file");
    const bool isSecond = tables.checked(PrdRow::ApplyTvd) || run.rules == FigureRules::asLaidDown;
    const HeldBoxes held(bench.user());
    return isSecond ? throughFile(bench, session, run, name) : ofSamples(bench, session, run, name);
}

}  // namespace welvane
