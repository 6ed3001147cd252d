#include <CLI/CLI.hpp>
#include <memory>

#include "cli/verbs.h"
#include "las/wrap.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct WrapChoices {
    std::string file, output;
};

ExitCode performWrap(Workbench& bench, const WrapChoices& choices) {
    const Input input = bench.openLas(choices.file, false);
    bench.checkOutput(choices.output, {input});
    App& app = bench.app();
    app.run.statusText = "Converting";
    bench.user().bar().setTotal(fileSize(input.path).value_or(0));
    std::string wrap;
    const StepResult result = convertWrap(input.path, choices.output, wrap, app.run, bench.user());
    bench.user().bar().clear();
    if (result == StepResult::Cancelled) return ExitCode::Interrupted;
    if (result != StepResult::Done) throw Refusal(choices.output, "not written");
    bench.user().note(choices.output + ": " +
                      (sameText(wrap, "YES") ? "one line per depth step" : "wrapped, multiple lines per depth step"));
    return ExitCode::Done;
}

}  // namespace

VerbRun declareWrap(CLI::App& command) {
    const auto choices = std::make_shared<WrapChoices>();
    command.add_option("FILE", choices->file, "A LAS file")->required()->type_name("");
    command
        .add_option("-o,--output", choices->output, "The file to write: wrapped when FILE is not, and the other way")
        ->required()
        ->type_name("OUT");
    return [choices](Workbench& bench) { return performWrap(bench, *choices); };
}

}  // namespace welvane
