#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/run_program.h"
#include "support/temp_folder.h"

/// Whole runs held against expected files, byte for byte. How a folder of tests/golden is laid out stands in its
/// README.md.
namespace welvane::test {

using FileTexts = std::map<std::string, std::string>;  ///< bytes by path below a folder

inline FileTexts textsBelow(const std::filesystem::path& folder) {
    FileTexts texts;
    if (!std::filesystem::is_directory(folder)) return texts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            texts[std::filesystem::relative(entry.path(), folder).generic_string()] =
                TempFolder::readFile(entry.path().string());
    return texts;
}

inline void writeTexts(const std::filesystem::path& folder, const FileTexts& texts) {
    for (const auto& [name, bytes] : texts) {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }
}

/// The first line in which two texts differ, line ends shown as \r and \n; empty when they are the same bytes.
inline std::string firstDifference(std::string_view expected, std::string_view actual) {
    int number = 0;
    while (!expected.empty() || !actual.empty()) {
        ++number;
        const auto take = [](std::string_view& rest) {
            const std::string_view line =
                rest.substr(0, rest.find('\n') == std::string_view::npos ? rest.size() : rest.find('\n') + 1);
            rest.remove_prefix(line.size());
            return line;
        };
        const auto show = [](std::string_view line) {
            std::string shown;
            for (const char c : line) shown += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
            return line.empty() ? std::string("(end of text)") : shown;
        };
        const std::string_view wanted = take(expected), got = take(actual);
        if (wanted != got)
            return "line " + std::to_string(number) + "\n  expected: " + show(wanted) + "\n  got:      " + show(got);
    }
    return {};
}

/// Runs `program` as the folder `golden` tells and compares; what differs comes back, one entry per file. With `accept`
/// the expected files are rewritten by what came out, and nothing comes back.
inline std::vector<std::string> judgeGolden(const std::string& program, const std::filesystem::path& golden,
                                            bool accept) {
    std::vector<std::string> arguments = {program};
    const std::string command = TempFolder::readFile((golden / "command").string());
    for (std::size_t at = 0; at < command.size();) {
        const std::size_t end = std::min(command.find('\n', at), command.size());
        if (end > at) arguments.push_back(command.substr(at, end - at));
        at = end + 1;
    }

    const TempFolder base;
    const std::filesystem::path work = base.path("work"), home = base.path("home_of_program");
    const FileTexts inputs = textsBelow(golden / "inputs");
    std::filesystem::create_directories(work);
    std::filesystem::create_directories(home);
    writeTexts(work, inputs);
    writeTexts(home, textsBelow(golden / "reference"));
    const ProgramRun run = runProgram(arguments, work.string(), cleanEnvironment(base.path("homes"), home.string()));

    FileTexts actual = textsBelow(work);
    for (const auto& [name, bytes] : inputs) {
        if (!actual.contains(name)) actual[name] = "(the run deleted this input)\n";
        if (actual[name] == bytes) actual.erase(name);
    }
    if (!run.out.empty()) actual["stdout"] = run.out;
    if (!run.err.empty()) actual["stderr"] = run.err;
    if (run.status != 0)
        actual["status"] = run.timedOut ? "killed after the time limit\n" : std::to_string(run.status) + "\n";

    if (accept) {
        std::filesystem::remove_all(golden / "expected");
        writeTexts(golden / "expected", actual);
        return {};
    }
    std::vector<std::string> faults;
    FileTexts expected = textsBelow(golden / "expected");
    for (const auto& [name, bytes] : actual) {
        if (!expected.contains(name))
            faults.push_back(name + ": not expected, first " + firstDifference("", bytes));
        else if (const std::string difference = firstDifference(expected[name], bytes); !difference.empty())
            faults.push_back(name + ": " + difference);
    }
    for (const auto& [name, bytes] : expected)
        if (!actual.contains(name)) faults.push_back(name + ": did not come out");
    return faults;
}

}  // namespace welvane::test
