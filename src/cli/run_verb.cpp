#include <CLI/CLI.hpp>
#include <memory>

#include "certify/certify_after.h"
#include "certify/certify_file.h"
#include "cli/checker_choice.h"
#include "cli/pass_options.h"
#include "cli/run_report.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "engine/driver.h"
#include "session/session_setup.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct RunChoices {
    std::vector<std::string> files;
    std::string output;
    bool dryRun = false, certify = false, open = false;
    PassChoices pass;
};

std::string memoryText(std::uint64_t bytes) {
    if (bytes < 1000000) return formatMask(static_cast<double>(bytes) / 1e3, 1) + " kB";
    return formatMask(static_cast<double>(bytes) / 1e6, 1) + " MB";
}

std::string planText(const PassPlan& plan, const std::string& unit) {
    const PassGrid& grid = plan.grid;
    std::string text = "Grid      " + plainNumber(grid.start) + " to " + plainNumber(grid.stop) + " " + unit +
                       ", step " + plainNumber(grid.step) + (grid.direction < 0 ? ", written from the deep end" : "") +
                       "\n";
    text += "Samples   " + std::to_string(grid.sampleCount) + "\n";
    text += "Memory    " + memoryText(plan.memoryNeeded) + "\n";
    text += "Channels  " + std::to_string(plan.channels.size()) + "\n\n";
    std::size_t names = 4, units = 4;
    for (const PassPlan::Channel& channel : plan.channels) {
        names = std::max(names, characterCount(shownText(channel.mnem)));
        units = std::max(units, characterCount(shownText(channel.unit)));
    }
    text += "  " + padded("Mnem", names) + "  " + padded("Unit", units) + "  Sources\n";
    for (const PassPlan::Channel& channel : plan.channels) {
        text += "  " + padded(shownText(channel.mnem), names) + "  " + padded(shownText(channel.unit), units) + "  " +
                shownText(channel.sources.empty() ? "none" : channel.sources) +
                (channel.function.empty() ? "" : ", function " + shownText(channel.function)) + "\n";
    }
    return text;
}

/// A failure of a file names it already.
[[noreturn]] void refuseRun(const std::string& output, const std::string& why) {
    const bool named = output.empty() || beginsWith(why, output + ": ");
    throw Refusal(named ? "" : output, why.empty() ? "not written" : why);
}

/// An input whose own STEP is 0 needs one from outside.
void needStep(const Session& session, const std::vector<Input>& inputs) {
    const std::string& rate = session.tables.setting(PrdRow::SampleRate);
    if (sampleRateNumber(rate, session.tables.setting(PrdRow::DepthUnits)) != 0) return;
    throw Refusal(inputs.back().given, "its STEP is 0: --step has to name one");
}

/// Whether the output can be checked, and its log written, before any work is done.
void needCertifiable(Workbench& bench, const RunChoices& choices, const std::vector<Input>& inputs) {
    if (!endsWith(choices.output, ".las"))
        throw UsageFault("--certify: only an output whose name ends in .las is checked");
    needChecker(bench.app().settings.certProgram);
    bench.checkOutput(certifyLogPath(choices.output), inputs);
}

/// What follows a written file; the file stays whatever the checker says.
ExitCode followUp(Workbench& bench, const RunChoices& choices, const CertifyAfterResult& checked) {
    const std::string& output = choices.output;
    if (choices.open && !bench.platform().openWithShell(resolvePath(output)))
        bench.user().say(output + ": no program could be started to open it");
    if (!choices.certify) return ExitCode::Done;
    const Verdict verdict = verdictOf(checked.log);
    const std::string told = output + ": " + std::string(verdictText(verdict));
    if (verdict == Verdict::Passed) {
        bench.user().note(told);
        return ExitCode::Done;
    }
    bench.user().say(told);
    for (const std::string& line : firstFaults(checked.log)) bench.user().say(output + ": " + line);
    return ExitCode::Negative;
}

ExitCode writeRun(Workbench& bench, Session& session, const RunChoices& choices, std::uint64_t inputBytes) {
    App& app = bench.app();
    app.run.targetFile = choices.output;
    bench.user().bar().setTotal(inputBytes);
    RunRequest request;
    request.outputMode = OutputFile::Mode::Beside;
    request.filterApplied = true;
    request.wholeInputs = !choices.pass.loose;
    request.exactDepthUnit = true;
    CertifyAfterResult checked;
    request.afterProcess = [&](const std::string& path) {
        if (choices.certify) checked = certifyAfter(app, path, checkerPatience);
    };
    // What the boxes of a run tell stands in its outcome too, and there without the detours; questions are asked all
    // the same.
    bench.user().mute(true);
    const RunOutcome outcome = processMMM(app, session, request);
    bench.user().mute(false);
    bench.user().bar().clear();
    if (!outcome.completed) {
        const bool inputBroke = !outcome.items.empty() && outcome.refusal == outcome.items.back().pass.brokenInput;
        refuseRun(inputBroke ? "" : choices.output, outcome.refusal);
    }
    for (const ItemReport& item : outcome.items) tellLeftOut(bench.user(), item);
    for (const ItemReport& item : outcome.items) {
        bench.user().note(item.target + ": " + counted(item.pass.records, "sample") + " of " +
                          counted(item.pass.columns, "channel") + ", " + item.pass.firstDepth + " to " +
                          item.pass.lastDepth + " " + session.tables.setting(PrdRow::DepthUnits));
    }
    return followUp(bench, choices, checked);
}

ExitCode performRun(Workbench& bench, const RunChoices& choices) {
    const std::vector<std::string> files = bench.expandLists(choices.files);
    if (files.empty()) throw UsageFault("no input is named");
    if (files.size() > slotCount) throw UsageFault(std::to_string(files.size()) + " inputs; a run takes one to four");
    if (choices.output.empty() && !choices.dryRun) throw UsageFault("no output is named (-o OUT)");
    std::vector<Input> inputs;
    std::uint64_t bytes = 0;
    for (const std::string& file : files) {
        inputs.push_back(bench.openLas(file, choices.pass.loose));
        bytes += fileSize(inputs.back().path).value_or(0);
    }
    if (!choices.output.empty()) bench.checkOutput(choices.output, inputs);
    if (choices.certify && !choices.dryRun) needCertifiable(bench, choices, inputs);
    Session session;
    prepareSession(bench, session, inputs, choices.pass);
    needStep(session, inputs);
    if (!choices.dryRun) return writeRun(bench, session, choices, bytes);
    const PassPlan plan = planPass(bench.app(), session);
    if (!plan.refusal.empty()) refuseRun(choices.output, plan.refusal);
    bench.print(planText(plan, session.tables.setting(PrdRow::DepthUnits)));
    return ExitCode::Done;
}

}  // namespace

VerbRun declareRun(CLI::App& command) {
    const auto choices = std::make_shared<RunChoices>();
    command.add_option("FILE", choices->files, "One to four LAS files; @LIST or - for a list of paths")
        ->required()
        ->type_name("");
    command.add_option("-o,--output", choices->output, "The file to write")->type_name("OUT");
    command.add_flag("--dry-run", choices->dryRun, "Print what the run would do, write nothing");
    command.add_flag("--certify", choices->certify, "Run the checker on the output; its log stays beside it");
    command.add_flag("--open", choices->open, "Open the output in its associated program");
    declarePassOptions(command, choices->pass);
    return [choices](Workbench& bench) { return performRun(bench, *choices); };
}

}  // namespace welvane
