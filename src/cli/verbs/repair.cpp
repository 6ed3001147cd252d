#include "jobs/repair.h"

#include <memory>

#include "cli/verbs.h"

namespace welvane {

namespace {

struct RepairChoices {
    RepairRequest request;
    bool inPlace = false;
};

ExitCode performRepair(Console& console, const RepairChoices& choices) {
    if (choices.request.inPlace() == !choices.inPlace) throw UsageFault("either -o OUT or --in-place is needed");
    const RepairReport report = repairFile(console.bench(), choices.request);
    if (report.written)
        console.user().note(report.target + ": written" +
                            (report.kept.empty() ? "" : "; the file as it was is kept as " + report.kept));
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareRepair() {
    const auto choices = std::make_shared<RepairChoices>();
    return {{{"FILE", &choices->request.file, "", "A LAS file", {.required = true}},
             {"-o,--output", &choices->request.output, "OUT", "The file to write"},
             {"--in-place",
              &choices->inPlace,
              "",
              "Repair the file itself; a copy of it is kept beside it",
              {.excludes = "--output"}},
             {"--line-ends", &choices->request.lineEnds, "", "Turn each LF without CR before it into CR LF"},
             {"--curve-title", &choices->request.curveTitle, "",
              "Give a ~Curve title that stands on a ~Well line a line of its own"},
             {"--rebuild", &choices->request.rebuild, "",
              "Write a clean LAS 2.0 from a file whose header breaks the standard"}},
            [choices](Console& console) { return performRepair(console, *choices); },
            "Without any of the three: what 'welvane check' finds wrong."};
}

}  // namespace welvane
