#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/file_document.h"
#include "jobs/each_file.h"

/// Verbs that tell something of each of many files.
namespace welvane {

/// How one result is shown.
template <class Report>
struct FileFace {
    std::function<Json(const std::string& file, const Report& report)> json;
    std::function<std::string(const std::string& file, const Report& report)> text;
    std::string_view between{};  ///< text between the files' texts
    /// False for a result that makes the verdict negative.
    std::function<bool(const Report& report)> good{};
};

/// Does the work for each file and shows its result; a refusal is told and the next one follows. Negative when one was
/// refused or was no good. So many files are worked on at once as `jobs` says, with 0 as many as there are cores;
/// results keep the order of the files.
template <class Report>
ExitCode showEachFile(Console& console, const std::vector<std::string>& files, const FileWork<Report>& work,
                      const FileFace<Report>& face, int jobs = 1) {
    // Of one file alone so many threads read pieces.
    if (jobs > 0) console.bench().app().run.workers.count = static_cast<std::size_t>(jobs);
    FileDocument document(console);
    ExitCode code = ExitCode::Done;
    bool first = true;
    const auto take = [&](const FileResult<Report>& result) {
        if (!result.report) {
            document.add(refusedEntry(result.file, result.fault), result.notes);
            console.say(result.fault);
            code = ExitCode::Negative;
            return;
        }
        if (console.options().json)
            document.add(face.json(result.file, *result.report), result.notes);
        else
            console.print((first ? "" : std::string(face.between)) + face.text(result.file, *result.report));
        first = false;
        if (face.good && !face.good(*result.report)) code = ExitCode::Negative;
    };
    const bool whole = eachFile<Report>(console.bench(), files, workersFor(files.size(), jobs), work, take);
    document.close();
    return whole ? code : ExitCode::Interrupted;
}

}  // namespace welvane
