#include <memory>

#include "cli/output_document.h"
#include "jobs/rewrite.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

struct WrapChoices {
    std::string file, output;
};

ExitCode performWrap(Console& console, const WrapChoices& choices) {
    const WrapReport report = workAndShow(
        console, console.options().json, {choices.file},
        [&] { return wrapFile(console.bench(), choices.file, choices.output); },
        [&](const WrapReport& made) {
            return Json::object({{"path", utf8Text(choices.output)}, {"wrapped", made.wrapped}});
        });
    console.user().note(choices.output + ": " +
                        (report.wrapped ? "wrapped, multiple lines per depth step" : "one line per depth step"));
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareWrap() {
    const auto choices = std::make_shared<WrapChoices>();
    return {{{"FILE", &choices->file, "", "A LAS file", {.required = true}},
             {"-o,--output",
              &choices->output,
              "OUT",
              "The file to write: wrapped when FILE is not, and the other way",
              {.required = true}}},
            [choices](Console& console) { return performWrap(console, *choices); }};
}

}  // namespace welvane
