#include "cli/workbench.h"

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <optional>

#include "app/startup.h"
#include "cli/las_check.h"
#include "las/classify.h"
#include "las/repair.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "platform/terminal.h"
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

ShowProgress progressOf(const std::string& name) {
    return name == "always" ? ShowProgress::Always : name == "never" ? ShowProgress::Never : ShowProgress::Auto;
}

}  // namespace

Workbench::Workbench(const CommonOptions& options) : options_(options), platform_(makeSystemPlatform()) {
    user_.configure(options.yes  ? Ask::AlwaysYes
                    : options.no ? Ask::AlwaysNo
                                 : Ask::AtTerminal,
                    progressOf(options.progress), options.quiet);
    app_ = std::make_unique<App>(user_, *platform_);
    user_.watch(app_->run);
    cancelOnInterrupt(&app_->run.cancelRequested);
    // What start-up tells of missing reference files is for the desktop; a verb that needs one says so itself.
    user_.mute(true);
    if (!loadProcess(*app_)) throw Refusal("", "start-up failed");
    user_.mute(false);
    // The file last selected in a window is nothing to a verb.
    app_->run.lasFile.clear();
}

std::vector<std::string> Workbench::expandLists(const std::vector<std::string>& named) const {
    std::vector<std::string> paths;
    for (const std::string& name : named) {
        if (name == "-") {
            appendLines(std::string(std::istreambuf_iterator<char>(std::cin), {}), paths);
        } else if (name.size() > 1 && name.front() == '@' && !fileExists(name)) {
            std::string why;
            const std::optional<MappedFile> list = MappedFile::open(name.substr(1), &why);
            if (!list) throw Refusal(name.substr(1), why);
            appendLines(list->bytes(), paths);
        } else {
            paths.push_back(name);
        }
    }
    return paths;
}

std::string Workbench::repairedCopy(const std::string& named) {
    // In a folder of its own, so that the copy keeps the file's name.
    const std::string folder = platform_->scratchFolder() + std::to_string(++copies_) + "/";
    std::filesystem::create_directory(folder);
    std::string copy = folder + fileNameOf(named);
    if (repairLineEnds(named, copy, app_->run, user_) != StepResult::Done)
        throw Refusal(named, "its line ends could not be repaired");
    return copy;
}

Input Workbench::openInput(const std::string& named) {
    if (const auto known = copyOf_.find(named); known != copyOf_.end()) return {named, known->second};
    if (const std::string why = whyUnreadable(named); !why.empty()) throw Refusal(named, why);
    if (lineEndKind(named) == LineEnds::Good || !hasLoneLineFeed(named)) return {named, resolvePath(named)};
    if (options_.strict) throw Refusal(named, "lines end in LF without CR");
    Input input{named, repairedCopy(named)};
    copyOf_[named] = input.path;
    user_.note(named + ": lines end in LF without CR; read through a repaired copy");
    return input;
}

void Workbench::release(const Input& input) {
    const auto known = copyOf_.find(input.given);
    if (known == copyOf_.end()) return;
    std::error_code ignored;
    std::filesystem::remove_all(dirOf(known->second), ignored);
    copyOf_.erase(known);
}

Input Workbench::openLas(const std::string& named, bool loose) {
    Input input = openInput(named);
    if (const std::string why = whyNoLas(input.path, loose); !why.empty()) throw Refusal(named, why);
    return input;
}

void Workbench::checkOutput(const std::string& output, const std::vector<Input>& inputs, bool tried) const {
    for (const Input& input : inputs) {
        if (samePath(output, input.given)) throw Refusal(output, "is one of the inputs");
    }
    if (folderExists(output)) throw Refusal(output, "Is a directory");
    const std::string folder = dirOf(output);
    if (!folder.empty() && !folderExists(folder)) throw Refusal(output, "its folder does not exist");
    if (fileExists(output) && !options_.force) throw Refusal(output, "exists already (--force replaces it)");
    if (!tried) return;
    // Opened and given up again: whatever stands against the file is told before any work is done.
    const OutputFile trial(output, OutputFile::Mode::Beside);
}

void Workbench::print(std::string_view text) {
    user_.bar().clear();
    std::fwrite(text.data(), 1, text.size(), stdout);
}

}  // namespace welvane
