#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/console.h"
#include "cli/json_document.h"
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
/// refused or was no good. With several `jobs` so many files are worked on at once; results keep the order of the
/// files.
template <class Report>
ExitCode showEachFile(Console& console, const std::vector<std::string>& files, const FileWork<Report>& work,
                      const FileFace<Report>& face, int jobs = 1) {
    Json entries = Json::array();
    std::vector<Note> notes;
    ExitCode code = ExitCode::Done;
    bool first = true;
    const auto take = [&](const FileResult<Report>& result) {
        notes.insert(notes.end(), result.notes.begin(), result.notes.end());
        if (!result.report) {
            entries.push(refusedEntry(result.file, result.fault));
            console.say(result.fault);
            code = ExitCode::Negative;
            return;
        }
        if (console.options().json)
            entries.push(face.json(result.file, *result.report));
        else
            console.print((first ? "" : std::string(face.between)) + face.text(result.file, *result.report));
        first = false;
        if (face.good && !face.good(*result.report)) code = ExitCode::Negative;
    };
    const bool whole =
        eachFile<Report>(console.bench(), files, jobs > 1 ? static_cast<std::size_t>(jobs) : 0, work, take);
    if (console.options().json) console.print(jsonDocument(std::move(entries), notes).dump(2) + "\n");
    return whole ? code : ExitCode::Interrupted;
}

}  // namespace welvane
