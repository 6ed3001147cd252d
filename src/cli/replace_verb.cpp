#include <CLI/CLI.hpp>
#include <memory>

#include "cli/verbs.h"
#include "platform/mapped_file.h"
#include "texttools/search_command.h"

namespace welvane {

namespace {

struct ReplaceChoices {
    std::string file, output, search, replacement;
    bool codes = false;
};

ExitCode performReplace(Workbench& bench, const ReplaceChoices& choices) {
    if (choices.search.empty()) throw UsageFault("nothing to search for (--search S)");
    std::string why;
    if (!MappedFile::open(choices.file, &why)) throw Refusal(choices.file, why);
    bench.checkOutput(choices.output, {{choices.file, choices.file}});
    const SearchForm form = choices.codes ? SearchForm::Codes : SearchForm::Text;
    // The box says why a field is refused, and so does the result.
    bench.user().mute(true);
    const SearchReplaceResult result =
        searchReplaceTo(bench.app(), {form, choices.file, choices.search, choices.replacement}, choices.output);
    bench.user().mute(false);
    bench.user().bar().clear();
    if (result.cancelled) return ExitCode::Interrupted;
    if (!result.done) throw Refusal(choices.output, result.why.empty() ? "not written" : result.why);
    bench.user().note(choices.output + ": " + std::to_string(result.replacements) + " replaced");
    return ExitCode::Done;
}

}  // namespace

VerbRun declareReplace(CLI::App& command) {
    const auto choices = std::make_shared<ReplaceChoices>();
    command.add_option("FILE", choices->file, "A file of any kind")->required()->type_name("");
    command.add_option("-o,--output", choices->output, "The file to write")->required()->type_name("OUT");
    command.add_option("--search", choices->search, "What to look for; the case of letters does not matter")
        ->required()
        ->type_name("S");
    command
        .add_option("--replace", choices->replacement,
                    "What to put in its place; without it what is found is taken out")
        ->type_name("R");
    command.add_flag("--codes", choices->codes,
                     "S and R are ASCII codes from 1 to 255 with blanks between them, such as \"13 10\"");
    return [choices](Workbench& bench) { return performReplace(bench, *choices); };
}

}  // namespace welvane
