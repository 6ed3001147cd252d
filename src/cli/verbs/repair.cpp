#include "jobs/repair.h"

#include <memory>

#include "cli/output_document.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

struct RepairChoices {
    RepairRequest request;
    bool inPlace = false;
};

Json repairedAsJson(const RepairReport& report) {
    if (!report.written) return {};
    Json output = Json::object({{"path", utf8Text(report.target)}});
    if (!report.kept.empty()) output.add("kept", utf8Text(report.kept));
    return output;
}

ExitCode performRepair(Console& console, const RepairChoices& choices) {
    if (choices.request.inPlace() == !choices.inPlace) throw UsageFault("either -o OUT or --in-place is needed");
    const RepairReport report = workAndShow(
        console, console.options().json, {choices.request.file},
        [&] { return repairFile(console.bench(), choices.request); }, repairedAsJson);
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
