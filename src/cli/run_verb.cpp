#include <CLI/CLI.hpp>
#include <memory>

#include "cli/pass_options.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "engine/driver.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct RunChoices {
    std::vector<std::string> files;
    std::string output;
    bool dryRun = false;
    PassChoices pass;
};

std::string counted(std::int64_t number, const std::string& thing) { return std::to_string(number) + " " + thing + (number == 1 ? "" : "s"); }

std::string memoryText(std::uint64_t bytes) {
    if (bytes < 1000000) return formatMask(static_cast<double>(bytes) / 1e3, 1) + " kB";
    return formatMask(static_cast<double>(bytes) / 1e6, 1) + " MB";
}

std::string planText(const PassPlan& plan, const std::string& unit) {
    const PassGrid& grid = plan.grid;
    std::string text = "Grid      " + plainNumber(grid.start) + " to " + plainNumber(grid.stop) + " " + unit + ", step " + plainNumber(grid.step) +
                       (grid.direction < 0 ? ", written from the deep end" : "") + "\n";
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

/// What was left out on the way, in a line each.
void tellItem(TerminalInterface& user, const ItemReport& item) {
    const PassReport& pass = item.pass;
    if (pass.overflowCount != 0)
        user.note(item.target + ": " + counted(static_cast<std::int64_t>(pass.overflowCount), "value") + " too wide for the data column");
    for (const SkippedStep& step : pass.failures.first) user.note(item.target + ": skipped " + step.what + ": " + step.why);
    if (pass.failures.count > pass.failures.first.size())
        user.note(item.target + ": " + std::to_string(pass.failures.count) + " steps skipped in all");
}

ExitCode writeRun(Workbench& bench, Session& session, const RunChoices& choices, std::uint64_t inputBytes) {
    App& app = bench.app();
    app.run.targetFile = choices.output;
    bench.user().bar().setTotal(inputBytes);
    RunRequest request;
    request.outputMode = OutputFile::Mode::Beside;
    request.filterApplied = true;
    const RunOutcome outcome = processMMM(app, session, request);
    bench.user().bar().clear();
    for (const ItemReport& item : outcome.items) tellItem(bench.user(), item);
    if (!outcome.completed) throw Refusal(choices.output, outcome.refusal.empty() ? "not written" : outcome.refusal);
    for (const ItemReport& item : outcome.items) {
        bench.user().note(item.target + ": " + counted(item.pass.records, "sample") + " of " + counted(item.pass.columns, "channel") + ", " +
                          item.pass.firstDepth + " to " + item.pass.lastDepth + " " + session.tables.setting(PrdRow::DepthUnits));
    }
    return ExitCode::Done;
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
    Session session;
    prepareSession(bench, session, inputs, choices.pass);
    if (!choices.dryRun) return writeRun(bench, session, choices, bytes);
    const PassPlan plan = planPass(bench.app(), session);
    if (!plan.refusal.empty()) throw Refusal(choices.output, plan.refusal);
    bench.print(planText(plan, session.tables.setting(PrdRow::DepthUnits)));
    return ExitCode::Done;
}

}  // namespace

VerbRun declareRun(CLI::App& command) {
    const auto choices = std::make_shared<RunChoices>();
    command.add_option("FILE", choices->files, "One to four LAS files; @LIST or - for a list of paths")->required()->type_name("");
    command.add_option("-o,--output", choices->output, "The file to write")->type_name("OUT");
    command.add_flag("--dry-run", choices->dryRun, "Print what the run would do, write nothing");
    declarePassOptions(command, choices->pass);
    return [choices](Workbench& bench) { return performRun(bench, *choices); };
}

}  // namespace welvane
