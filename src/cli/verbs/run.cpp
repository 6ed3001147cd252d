#include "jobs/run.h"

#include <memory>

#include "cli/output_document.h"
#include "cli/pass_options.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "jobs/checker.h"
#include "shared/numbers.h"
#include "shared/text.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

constexpr double mostJobs = 64;

struct RunChoices {
    RunFilesRequest request;
    bool dryRun = false;
    int jobs = 0;  ///< 0: as many as there are cores
    PassTexts pass;
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
    text += plan.whyInMemory.empty()
                ? "Memory    a few blocks: the input is streamed where its records follow each other\n"
                : "Memory    " + memoryText(plan.memoryNeeded) + ": " + plan.whyInMemory + "\n";
    text += "Channels  " + std::to_string(plan.channels.size()) + "\n\n";
    TextTable table("lll", TextTable::Ends::Kept);
    table.add({"Mnem", "Unit", "Sources"});
    for (const PassPlan::Channel& channel : plan.channels)
        table.add({shownText(channel.mnem), shownText(channel.unit),
                   shownText(channel.sources.empty() ? "none" : channel.sources) +
                       (channel.function.empty() ? "" : ", function " + shownText(channel.function))});
    return text + table.text();
}

RunFilesRequest requestOf(Console& console, const RunChoices& choices) {
    RunFilesRequest request = choices.request;
    request.pass = passRequest(choices.pass);
    request.files = console.expandLists(request.files);
    const std::size_t count = request.files.size();
    if (count == 0 && request.session.empty()) throw UsageFault("no input is named");
    if (count > slotCount) throw UsageFault(std::to_string(count) + " inputs; a run takes one to four");
    if (choices.dryRun && !request.saveSession.empty())
        throw UsageFault("--dry-run writes nothing, --save-session a file");
    const bool onlySaved = !request.saveSession.empty() && !request.certify && !request.open;
    if (request.output.empty() && !choices.dryRun && !onlySaved) throw UsageFault("no output is named (-o OUT)");
    return request;
}

ExitCode tellCheck(Console& console, const std::string& output, const OutputCheck& check) {
    const std::string told = output + ": " + std::string(verdictText(check.verdict));
    if (check.verdict == Verdict::Passed) {
        console.user().note(told);
        return ExitCode::Done;
    }
    console.user().say(told);
    for (const std::string& line : firstFaults(check.log)) console.user().say(output + ": " + line);
    return ExitCode::Negative;
}

/// A plain table has no header whose first and last depth could be told.
std::string depthsText(const PassReport& pass, const std::string& unit) {
    if (pass.firstDepth.empty()) return {};
    return ", " + pass.firstDepth + " to " + pass.lastDepth + " " + unit;
}

Json outputAsJson(const RunFilesReport& report) {
    if (report.items.empty()) return {};
    const ItemReport& item = report.items.back();
    const auto depth = [](const std::string& text) { return text.empty() ? Json() : Json(val(text)); };
    Json output = Json::object({{"path", utf8Text(item.target)},
                                {"records", item.pass.records},
                                {"channels", item.pass.columns},
                                {"start", depth(item.pass.firstDepth)},
                                {"stop", depth(item.pass.lastDepth)},
                                {"depthUnit", utf8Text(report.depthUnit)}});
    if (report.check) output.add("verdict", std::string(verdictText(report.check->verdict)));
    return output;
}

ExitCode performRun(Console& console, const RunChoices& choices) {
    const RunFilesRequest request = requestOf(console, choices);
    if (choices.jobs > 0) console.bench().app().run.workers.count = static_cast<std::size_t>(choices.jobs);
    if (choices.dryRun) {
        if (console.options().json) throw UsageFault("--dry-run tells a plan, and --json what was written");
        const PlanReport report = planRun(console.bench(), request);
        console.print(planText(report.plan, report.depthUnit));
        return ExitCode::Done;
    }
    std::vector<std::string> inputs = request.files;
    const auto work = [&] {
        RunFilesReport report = runFiles(console.bench(), request);
        inputs = report.inputs;
        return report;
    };
    const RunFilesReport report = workAndShow(console, console.options().json, inputs, work, outputAsJson);
    if (!request.saveSession.empty()) console.user().note(request.saveSession + ": the session");
    for (const ItemReport& item : report.items) {
        console.user().note(item.target + ": " + counted(item.pass.records, "sample") + " of " +
                            counted(item.pass.columns, "channel") + depthsText(item.pass, report.depthUnit));
    }
    if (!report.opened) console.user().say(request.output + ": no program could be started to open it");
    return report.check ? tellCheck(console, request.output, *report.check) : ExitCode::Done;
}

}  // namespace

VerbSyntax declareRun() {
    const auto choices = std::make_shared<RunChoices>();
    VerbOptions options = {
        {"FILE", &choices->request.files, "",
         "One to four LAS files; folders, @LIST for a list of paths, - for standard input"},
        {"-o,--output", &choices->request.output, "OUT", "The file to write"},
        {"--dry-run", &choices->dryRun, "", "Print what the run would do, write nothing"},
        {"--session", &choices->request.session, "FILE",
         "Begin with a saved session, on its own inputs where none are named; options go on top"},
        {"--save-session", &choices->request.saveSession, "FILE", "Save the session for --session"},
        {"--certify", &choices->request.certify, "", "Run the checker on the output; its log stays beside it"},
        {"--open", &choices->request.open, "", "Open the output in its associated program"},
        {"--jobs", &choices->jobs, "N", "Threads that read and print (the cores)", {.least = 1, .most = mostJobs}}};
    addPassOptions(options, choices->pass);
    return {options, [choices](Console& console) { return performRun(console, *choices); }};
}

}  // namespace welvane
