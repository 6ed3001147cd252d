#include <memory>

#include "cli/verbs.h"
#include "jobs/rewrite.h"

namespace welvane {

namespace {

struct ReplaceChoices {
    SearchRequest request;
    std::string output;
    bool codes = false;
};

ExitCode performReplace(Console& console, ReplaceChoices choices) {
    if (choices.request.search.empty()) throw UsageFault("nothing to search for (--search S)");
    if (choices.codes) choices.request.form = SearchForm::Codes;
    const ReplaceBytesReport report = replaceBytes(console.bench(), choices.request, choices.output);
    console.user().note(choices.output + ": " + std::to_string(report.replacements) + " replaced");
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareReplace() {
    const auto choices = std::make_shared<ReplaceChoices>();
    return {{{"FILE", &choices->request.sourcePath, "", "A file of any kind", {.required = true, .anyBytes = true}},
             {"-o,--output", &choices->output, "OUT", "The file to write", {.required = true}},
             {"--search",
              &choices->request.search,
              "S",
              "What to look for; the case of letters does not matter",
              {.required = true}},
             {"--replace", &choices->request.replacement, "R",
              "What to put in its place; without it what is found is taken out"},
             {"--codes", &choices->codes, "",
              "S and R are ASCII codes from 1 to 255 with blanks between them, such as \"13 10\""}},
            [choices](Console& console) { return performReplace(console, *choices); }};
}

}  // namespace welvane
