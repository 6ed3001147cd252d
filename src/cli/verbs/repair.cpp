#include "jobs/repair.h"

#include <memory>

#include "cli/file_results.h"
#include "cli/output_document.h"
#include "cli/reading_options.h"
#include "jobs/folder_outputs.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

struct RepairChoices {
    RepairRequest request;
    std::vector<std::string> files;
    std::string folder;
    int jobs = 0;
    bool inPlace = false;
};

Json repairedAsJson(const RepairReport& report) {
    if (!report.written) return {};
    Json output = Json::object({{"path", utf8Text(report.target)}});
    if (!report.kept.empty()) output.add("kept", utf8Text(report.kept));
    return output;
}

void tellRepaired(Console& console, const RepairReport& report) {
    if (report.written)
        console.user().note(report.target + ": written" +
                            (report.kept.empty() ? "" : "; the file as it was is kept as " + report.kept));
}

ExitCode repairOne(Console& console, const RepairChoices& choices, const std::string& file) {
    RepairRequest request = choices.request;
    request.file = file;
    tellRepaired(console, workAndShow(
                              console, console.options().json, {file},
                              [&] { return repairFile(console.bench(), request); }, repairedAsJson));
    return ExitCode::Done;
}

ExitCode repairMany(Console& console, const RepairChoices& choices, const std::vector<std::string>& files) {
    const std::vector<OutputPlace> places = choices.inPlace ? ownPlaces(files) : placesInFolder(choices.folder, files);
    const FileWork<RepairReport> work = [&](Workbench& bench, const std::string& file, std::size_t item) {
        if (!places[item].why.none()) throw Refusal({.file = file, .reason = places[item].why});
        RepairRequest request = choices.request;
        request.file = file;
        if (!choices.inPlace) request.output = places[item].path;
        return repairFile(bench, request);
    };
    FileFace<RepairReport> face;
    face.json = [&](const std::string& file, const RepairReport& report) {
        tellRepaired(console, report);
        return fileEntry(file, {{"output", repairedAsJson(report)}});
    };
    face.text = [&](const std::string&, const RepairReport& report) {
        tellRepaired(console, report);
        return std::string();
    };
    return showEachFile(console, files, work, face, choices.jobs);
}

ExitCode performRepair(Console& console, const RepairChoices& choices) {
    const bool one = !choices.request.output.empty(), folder = !choices.folder.empty();
    if (one + folder + choices.inPlace != 1) throw UsageFault("either -o OUT, --out-dir DIR or --in-place is needed");
    const std::vector<std::string> files = console.expandLists(choices.files);
    if (files.empty()) throw UsageFault("no input is named");
    if (!one) return repairMany(console, choices, files);
    if (files.size() > 1) throw UsageFault("-o takes one file; --out-dir and --in-place take many");
    return repairOne(console, choices, files.front());
}

}  // namespace

VerbSyntax declareRepair() {
    const auto choices = std::make_shared<RepairChoices>();
    VerbOptions options = {
        {"FILE",
         &choices->files,
         "",
         "LAS files; folders, @LIST for a list of paths, - for standard input",
         {.required = true}},
        {"-o,--output", &choices->request.output, "OUT", "The file to write"},
        {"--out-dir", &choices->folder, "DIR", "Folder of the outputs, each under its input's name; made when missing"},
        {"--in-place", &choices->inPlace, "", "Repair the files themselves; a copy of each is kept beside it"},
        {"--line-ends", &choices->request.lineEnds, "", "Turn each LF without CR before it into CR LF"},
        {"--curve-title", &choices->request.curveTitle, "",
         "Give a ~Curve title that stands on a ~Well line a line of its own"},
        {"--rebuild", &choices->request.rebuild, "",
         "Write a clean LAS 2.0 from a file whose header breaks the standard"}};
    addJobsOption(options, choices->jobs);
    return {options, [choices](Console& console) { return performRepair(console, *choices); },
            "Without any of --line-ends, --curve-title and --rebuild: what 'welvane check' finds wrong."};
}

}  // namespace welvane
