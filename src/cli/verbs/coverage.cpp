#include "jobs/coverage.h"

#include <memory>

#include "cli/json_document.h"
#include "cli/picture_options.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct CoverageChoices {
    std::vector<std::string> files;
    bool loose = false;
    PictureChoices picture;
};

Json linesOf(const Coverage& coverage, int slot) {
    Json lines = Json::array();
    for (const CoverageLine& line : coverage.lines) {
        if (line.slot != slot) continue;
        lines.push(Json::object({{"x1", line.x1}, {"x2", line.x2}, {"depth", line.depth}}));
    }
    return lines;
}

Json entryOf(const CoverageReport& report, int slot, const std::string& file) {
    Json entry = fileEntry(file, {{"slot", slot}});
    for (const CoverageBox& box : report.coverage.boxes) {
        if (box.slot != slot) continue;
        entry.add({{"left", box.left}, {"right", box.right}, {"top", box.top}, {"bottom", box.bottom}});
        entry.add("lines", linesOf(report.coverage, slot));
    }
    if (const auto& fault = report.faults[slot]) entry.add("error", utf8Text(fault->reason.text));
    return entry;
}

Json asJson(const CoverageReport& report, const std::vector<std::string>& names) {
    Json files = Json::array();
    for (std::size_t place = 0; place < names.size(); ++place)
        files.push(entryOf(report, static_cast<int>(place), names[place]));
    return ownDocument({{"files", std::move(files)}, {"depthUnit", utf8Text(report.depthUnit)}}, report.notes);
}

std::string asText(const CoverageReport& report) {
    if (report.coverage.empty()) return {};
    TextTable table("lrrl");
    table.add({"File", "Top", "Bottom", "Unit"});
    for (const CoverageBox& box : report.coverage.boxes)
        table.add({shownText(report.files[box.slot]->path), coverageDepth(box.top), coverageDepth(box.bottom),
                   shownText(report.depthUnit)});
    table.add({"Shallowest and deepest", coverageDepth(report.coverage.shallowest),
               coverageDepth(report.coverage.deepest), shownText(report.depthUnit)});
    return table.text();
}

ExitCode performCoverage(Console& console, const CoverageChoices& choices) {
    const CoverageRequest request{console.expandLists(choices.files), pictureRequest(choices.picture), choices.loose};
    const std::size_t count = request.files.size();
    if (count == 0) throw UsageFault("no input is named");
    if (count > slotCount) throw UsageFault(std::to_string(count) + " inputs; a coverage shows one to four");
    const CoverageReport report = showCoverage(console.bench(), request);
    ExitCode code = ExitCode::Done;
    for (const std::optional<Fault>& fault : report.faults) {
        if (!fault) continue;
        console.say(*fault);
        code = ExitCode::Negative;
    }
    if (console.options().json)
        console.print(asJson(report, request.files).dump(2) + "\n");
    else if (choices.picture.output == "-")
        console.print(report.svg);
    else if (choices.picture.output.empty())
        console.print(asText(report));
    else
        console.user().note(choices.picture.output + ": " + counted(report.coverage.boxes.size(), "file"));
    return code;
}

}  // namespace

VerbSyntax declareCoverage() {
    const auto choices = std::make_shared<CoverageChoices>();
    VerbOptions options = {{"FILE",
                            &choices->files,
                            "",
                            "One to four LAS files; folders, @LIST for a list of paths, - for standard input",
                            {.required = true}},
                           {"--loose", &choices->loose, "", "Accept data of no regular shape"}};
    addPictureOptions(options, choices->picture);
    return {options, [choices](Console& console) { return performCoverage(console, *choices); }};
}

}  // namespace welvane
