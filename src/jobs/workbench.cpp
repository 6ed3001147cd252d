#include "jobs/workbench.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <utility>

#include "jobs/las_check.h"
#include "las/repair.h"
#include "platform/leftovers.h"
#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A list is written by people and programs of any system: any line end ends a line. NUL bytes part names that may hold
/// those.
void appendLines(std::string_view text, std::vector<std::string>& paths) {
    if (text.find('\0') != npos) {
        for (std::string& path : split(text, '\0'))
            if (!path.empty()) paths.push_back(std::move(path));
        return;
    }
    for (const std::string& line : split(text, '\n')) {
        for (const std::string& piece : split(line, '\r')) {
            if (const std::string_view path = trimBreaks(piece); !path.empty()) paths.emplace_back(path);
        }
    }
}

/// What a list holds; "-" is the standard input.
std::string listText(Workbench& bench, const std::string& list, std::istream& standardInput) {
    if (list == "-") return {std::istreambuf_iterator<char>(standardInput), {}};
    std::string why;
    const std::optional<MappedFile> file = MappedFile::open(list, &why);
    if (!file) throw Refusal(list, why);
    bench.willRead(list);
    return std::string(file->bytes());
}

/// The LAS files of a folder in the order of their names; links to folders are not followed, so no loop is.
template <class Walk>
void appendFiles(const std::string& folder, std::vector<std::string>& paths) {
    std::error_code failed;
    Walk walk(folder, failed);
    for (; !failed && walk != Walk(); walk.increment(failed)) {
        std::error_code unknown;
        const std::string path = walk->path().string();
        if (endsWith(path, ".las") && walk->is_regular_file(unknown)) paths.push_back(path);
    }
    if (failed) throw Refusal(folder, failed.message());
}

void appendFolder(Workbench& bench, const std::string& folder, bool recursive, std::vector<std::string>& paths) {
    std::vector<std::string> found;
    if (recursive)
        appendFiles<std::filesystem::recursive_directory_iterator>(folder, found);
    else
        appendFiles<std::filesystem::directory_iterator>(folder, found);
    if (found.empty()) bench.note(NoteKind::Dropped, folder, "holds no *.las file");
    std::sort(found.begin(), found.end());
    std::move(found.begin(), found.end(), std::back_inserter(paths));
}

/// The file of an input, opened under a path.
Input openAs(const std::string& named, std::string path) {
    try {
        LasFilePointer file = openLasFile(path);
        const LineEnds ends = file->lineEnds();
        return {named, std::move(path), std::move(file), ends};
    } catch (const FileFailure& failure) {
        throw Refusal(named, failure.reason());
    }
}

}  // namespace

Workbench::Workbench(App& app, const FileRules& rules, std::function<bool()> stopWanted)
    : app_(app), rules_(rules), stopWanted_(std::move(stopWanted)) {}

void Workbench::note(Note note) {
    user().tell(note);
    notes_.push_back(std::move(note));
}

std::vector<Note> Workbench::takeNotes() {
    return std::exchange(notes_, {});
}

std::string Workbench::repairedCopy(const std::string& named) {
    // In a folder of its own, so that the copy keeps the file's name.
    const std::string folder = app_.platform.scratchFolder() + std::to_string(++copies_) + "/";
    std::filesystem::create_directory(folder);
    std::string copy = folder + fileNameOf(named);
    std::string why;
    if (repairLineEnds(named, copy, app_.run, user(), OutputFile::Mode::Beside, &why) != StepResult::Done)
        throw Refusal(named, why.empty() ? "stopped" : "its line ends could not be repaired: " + why);
    return copy;
}

Input Workbench::openInput(const std::string& named) {
    if (const auto known = copyOf_.find(named); known != copyOf_.end()) return known->second;
    Input input = openAs(named, resolvePath(named));
    const std::string_view bytes = input.file->bytes();
    if (const std::string why = whyNoText(bytes); !why.empty()) throw Refusal(named, why);
    if (input.ends == LineEnds::Good || !hasLoneLineFeed(bytes)) return input;
    if (rules_.strict) throw Refusal(named, "lines end in LF without CR");
    const LineEnds ends = input.ends;
    input = openAs(named, repairedCopy(named));
    input.ends = ends;
    copyOf_[named] = input;
    note(NoteKind::LineEnds, named, "lines end in LF without CR; read through a repaired copy");
    return input;
}

void Workbench::release(const Input& input) {
    const auto known = copyOf_.find(input.given);
    if (known == copyOf_.end()) return;
    std::error_code ignored;
    std::filesystem::remove_all(dirOf(known->second.path), ignored);
    copyOf_.erase(known);
}

Input Workbench::openLas(const std::string& named, bool loose) {
    Input input = openInput(named);
    if (const Reason why = whyNoLas(*input.file, loose); !why.none()) throw Refusal(named, why);
    return input;
}

void Workbench::needOwnFile(const std::string& output, const std::vector<Input>& inputs) const {
    // What is read is there: it is another file than one that is not, unless it has the very name.
    const bool there = fileExists(output);
    const auto same = [&](const std::string& read) { return there ? samePath(output, read) : sameName(output, read); };
    for (const Input& input : inputs)
        if (same(input.given)) throw Refusal(output, "is one of the inputs");
    for (const std::string& file : alsoRead_)
        if (same(file)) throw Refusal(output, "is a file that this work reads");
    const std::string folder = dirOf(output);
    if (endsWith(output, ".ini") && samePath(folder.empty() ? "." : folder, app_.platform.programFolder()))
        throw Refusal(output, "is a reference file of the program");
}

void Workbench::checkOutput(const std::string& output, const std::vector<Input>& inputs, bool tried) const {
    needOwnFile(output, inputs);
    if (folderExists(output)) throw Refusal(output, "Is a directory");
    const std::string folder = dirOf(output);
    if (!folder.empty() && !folderExists(folder)) throw Refusal(output, "its folder does not exist");
    if (fileExists(output) && !rules_.force) throw Refusal(output, "exists already", Remedy::Force);
    if (!tried) return;
    sweepPartFiles(resolvePath(folder));
    app_.platform.sweepLeftovers();
    // Opened and given up again: whatever stands against the file is told before any work is done.
    const OutputFile trial(output, outputMode());
}

std::vector<std::string> expandLists(Workbench& bench, const std::vector<std::string>& named,
                                     std::istream& standardInput, bool recursive) {
    std::vector<std::string> paths;
    for (const std::string& name : named) {
        std::vector<std::string> listed{name};
        if (name.size() > 1 && name.front() == '@' && !fileExists(name)) {
            listed.clear();
            appendLines(listText(bench, name.substr(1), standardInput), listed);
        }
        for (std::string& path : listed)
            if (folderExists(path))
                appendFolder(bench, path, recursive, paths);
            else
                paths.push_back(std::move(path));
    }
    return paths;
}

}  // namespace welvane
