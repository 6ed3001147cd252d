#include <memory>

#include "cli/file_results.h"
#include "cli/output_document.h"
#include "cli/reading_options.h"
#include "jobs/folder_outputs.h"
#include "jobs/rewrite.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

struct WrapChoices {
    std::vector<std::string> files;
    std::string output, folder;
    int jobs = 0;
};

Json wrappedAsJson(const std::string& output, const WrapReport& report) {
    return Json::object({{"path", utf8Text(output)}, {"wrapped", report.wrapped}});
}

void tellWrapped(Console& console, const std::string& output, const WrapReport& report) {
    console.user().note(output + ": " +
                        (report.wrapped ? "wrapped, multiple lines per depth step" : "one line per depth step"));
}

ExitCode wrapOne(Console& console, const std::string& file, const std::string& output) {
    const WrapReport report = workAndShow(
        console, console.options().json, {file}, [&] { return wrapFile(console.bench(), file, output); },
        [&](const WrapReport& made) { return wrappedAsJson(output, made); });
    tellWrapped(console, output, report);
    return ExitCode::Done;
}

/// A file that was wrapped, and the name of the other.
struct WrappedInto : WrapReport {
    std::string output;
};

ExitCode wrapMany(Console& console, const WrapChoices& choices, const std::vector<std::string>& files) {
    const std::vector<OutputPlace> places = placesInFolder(choices.folder, files);
    const FileWork<WrappedInto> work = [&](Workbench& bench, const std::string& file, std::size_t item) {
        if (!places[item].why.none()) throw Refusal({.file = file, .reason = places[item].why});
        return WrappedInto{wrapFile(bench, file, places[item].path), places[item].path};
    };
    FileFace<WrappedInto> face;
    face.json = [&](const std::string& file, const WrappedInto& report) {
        tellWrapped(console, report.output, report);
        return fileEntry(file, {{"output", wrappedAsJson(report.output, report)}});
    };
    face.text = [&](const std::string&, const WrappedInto& report) {
        tellWrapped(console, report.output, report);
        return std::string();
    };
    return showEachFile(console, files, work, face, choices.jobs);
}

ExitCode performWrap(Console& console, const WrapChoices& choices) {
    if (choices.output.empty() == choices.folder.empty()) throw UsageFault("either -o OUT or --out-dir DIR is needed");
    const std::vector<std::string> files = console.expandLists(choices.files);
    if (files.empty()) throw UsageFault("no input is named");
    if (!choices.folder.empty()) return wrapMany(console, choices, files);
    if (files.size() > 1) throw UsageFault("-o takes one file; --out-dir takes many");
    return wrapOne(console, files.front(), choices.output);
}

}  // namespace

VerbSyntax declareWrap() {
    const auto choices = std::make_shared<WrapChoices>();
    VerbOptions options = {
        {"FILE",
         &choices->files,
         "",
         "LAS files; folders, @LIST for a list of paths, - for standard input",
         {.required = true}},
        {"-o,--output", &choices->output, "OUT", "The file to write: wrapped when FILE is not, and the other way"},
        {"--out-dir", &choices->folder, "DIR",
         "Folder of the outputs, each under its input's name; made when missing"}};
    addJobsOption(options, choices->jobs);
    return {options, [choices](Console& console) { return performWrap(console, *choices); }};
}

}  // namespace welvane
