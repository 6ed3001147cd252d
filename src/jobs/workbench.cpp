#include "jobs/workbench.h"

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

/// A list is written by people and programs of any system: any line end ends a line.
void appendLines(std::string_view text, std::vector<std::string>& paths) {
    for (const std::string& line : split(text, '\n')) {
        for (const std::string& piece : split(line, '\r')) {
            if (const std::string_view path = trimBreaks(piece); !path.empty()) paths.emplace_back(path);
        }
    }
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
    for (const Input& input : inputs)
        if (samePath(output, input.given)) throw Refusal(output, "is one of the inputs");
    for (const std::string& file : alsoRead_)
        if (samePath(output, file)) throw Refusal(output, "is a file that this work reads");
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
                                     std::istream& standardInput) {
    std::vector<std::string> paths;
    for (const std::string& name : named) {
        if (name == "-") {
            appendLines(std::string(std::istreambuf_iterator<char>(standardInput), {}), paths);
        } else if (name.size() > 1 && name.front() == '@' && !fileExists(name)) {
            std::string why;
            const std::optional<MappedFile> list = MappedFile::open(name.substr(1), &why);
            if (!list) throw Refusal(name.substr(1), why);
            appendLines(list->bytes(), paths);
            bench.willRead(name.substr(1));
        } else {
            paths.push_back(name);
        }
    }
    return paths;
}

}  // namespace welvane
