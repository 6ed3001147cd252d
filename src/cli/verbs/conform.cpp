#include "jobs/conform.h"

#include <memory>

#include "cli/file_results.h"
#include "cli/reading_options.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "cli/verbs/conform_face.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct ConformChoices {
    std::vector<std::string> files;
    std::string failOn = "error", explain;
    std::string output;
    bool sarif = false, rules = false, fix = false, inPlace = false;
    int jobs = 0, most = 10;
};

/// A finding of this weight makes the verdict negative; None where none does.
Severity limitOf(const std::string& failOn) {
    for (const Severity severity : {Severity::Hint, Severity::Warning, Severity::Error})
        if (sameText(failOn, severityText(severity))) return severity;
    return Severity::None;
}

ExitCode performExplain(Console& console, const std::string& id) {
    const std::optional<Rule> rule = findRule(id);
    if (!rule) throw UsageFault("--explain: there is no rule '" + id + "'; --rules lists them");
    console.print(explainText(ruleOf(*rule)));
    return ExitCode::Done;
}

ExitCode performRules(Console& console) {
    if (!console.options().json) {
        console.print(rulesText());
        return ExitCode::Done;
    }
    console.print(ownDocument({{"rules", rulesJson()}}).dump(2) + "\n");
    return ExitCode::Done;
}

ExitCode showSarif(Console& console, const std::vector<std::string>& files, const FileWork<ConformReport>& work,
                   const FileFace<ConformReport>& face, int jobs) {
    SarifDocument document;
    ExitCode code = ExitCode::Done;
    const auto take = [&](const FileResult<ConformReport>& result) {
        if (!result.report) {
            document.addFailure(result.file, result.fault);
            console.say(result.fault);
            code = ExitCode::Negative;
            return;
        }
        document.add(result.file, *result.report);
        if (!face.good(*result.report)) code = ExitCode::Negative;
    };
    const bool whole = eachFile<ConformReport>(console.bench(), files, workersFor(files.size(), jobs), work, take);
    console.print(document.text());
    return whole ? code : ExitCode::Interrupted;
}

void needSense(const ConformChoices& choices, std::size_t files) {
    if (!choices.fix && (choices.inPlace || !choices.output.empty())) throw UsageFault("-o and --in-place need --fix");
    if (choices.fix && choices.inPlace == !choices.output.empty())
        throw UsageFault("--fix needs either -o OUT or --in-place");
    if (files > 1 && !choices.output.empty()) throw UsageFault("-o takes one file; --in-place takes many");
}

ExitCode performConform(Console& console, const ConformChoices& choices) {
    if (!choices.explain.empty()) return performExplain(console, choices.explain);
    if (choices.rules) return performRules(console);
    if (choices.files.empty()) throw UsageFault("no input is named");
    if (choices.sarif && console.options().json) throw UsageFault("--sarif excludes --json");
    const std::vector<std::string> files = console.expandLists(choices.files);
    needSense(choices, files.size());
    const Severity limit = limitOf(choices.failOn);
    const FileWork<ConformReport> work = [&](Workbench& bench, const std::string& file, std::size_t) {
        const ConformRequest request{
            .file = file, .most = static_cast<std::size_t>(choices.most), .output = choices.output};
        return choices.fix ? mendFile(bench, request) : conformFile(bench, request);
    };
    FileFace<ConformReport> face;
    face.json = conformJson;
    face.text = conformText;
    face.good = [limit](const ConformReport& report) { return limit == Severity::None || !report.has(limit); };
    // A file that is named twice is not mended by two at once, unless somebody says so.
    const int jobs = choices.inPlace && choices.jobs == 0 ? 1 : choices.jobs;
    if (choices.sarif) return showSarif(console, files, work, face, jobs);
    return showEachFile(console, files, work, face, jobs);
}

}  // namespace

VerbSyntax declareConform() {
    constexpr double mostFindings = 1'000'000;
    const auto choices = std::make_shared<ConformChoices>();
    VerbOptions options = {
        {"FILE", &choices->files, "", "LAS files; folders, @LIST for a list of paths, - for standard input"},
        {"--fail-on",
         &choices->failOn,
         "WEIGHT",
         "The least finding that makes the exit status 1: error (the default), warning, hint, or never",
         {.words = {"error", "warning", "hint", "never"}, .anyCase = true}},
        {"--limit",
         &choices->most,
         "N",
         "Findings of one rule that are shown for a file, others are counted (10)",
         {.least = 1, .most = mostFindings}},
        {"--sarif", &choices->sarif, "", "Print one SARIF 2.1.0 document, for editors and build servers"},
        {"--fix", &choices->fix, "", "Mend what needs no choice, and tell what is left; needs -o or --in-place"},
        {"-o,--output", &choices->output, "OUT", "The mended file to write"},
        {"--in-place", &choices->inPlace, "", "Mend the files themselves; a copy of each is kept beside it"},
        {"--explain", &choices->explain, "RULE", "Tell what a rule says, why, and how a breach is mended"},
        {"--rules", &choices->rules, "", "List all rules"}};
    addJobsOption(options, choices->jobs);
    return {options, [choices](Console& console) { return performConform(console, *choices); }};
}

}  // namespace welvane
