#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/run_program.h"
#include "support/temp_folder.h"

/// Whole runs of the program held against what they are to print and write. How a folder of tests/golden is laid out
/// stands in its README.md.
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

/// Cuts the first line off `rest`, its line feed included.
inline std::string_view takeLine(std::string_view& rest) {
    const std::string_view line = rest.substr(0, rest.find('\n') == rest.npos ? rest.size() : rest.find('\n') + 1);
    rest.remove_prefix(line.size());
    return line;
}

/// The first line in which two texts differ, line ends shown as \r and \n; empty when they are the same bytes.
inline std::string firstDifference(std::string_view expected, std::string_view actual) {
    const auto show = [](std::string_view line) {
        std::string shown;
        for (const char c : line) shown += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
        return line.empty() ? std::string("(end of text)") : shown;
    };
    for (int number = 1; !expected.empty() || !actual.empty(); ++number)
        if (const std::string_view wanted = takeLine(expected), got = takeLine(actual); wanted != got)
            return "line " + std::to_string(number) + "\n  expected: " + show(wanted) + "\n  got:      " + show(got);
    return {};
}

/// A stream as a transcript shows it: each line indented behind `mark`, what no editor would keep as an escape.
inline std::string shownStream(std::string_view text, std::string_view mark) {
    std::string shown;
    while (!text.empty()) {
        std::string_view line = takeLine(text);
        const bool ended = line.ends_with('\n');
        if (ended) line.remove_suffix(1);
        shown.append("  ").append(mark);
        if (mark.empty() && !line.empty() && std::string_view("$>![").find(line.front()) != std::string_view::npos)
            shown += '\\';
        for (const char c : line)
            if (c == '\\' || c == '\r' || c == '\t')
                shown.append("\\").append(1, c == '\r' ? 'r' : c == '\t' ? 't' : c);
            else if (static_cast<unsigned char>(c) < ' ' || c == 0x7F)
                shown.append("\\x").append(1, "01234567"[c / 16]).append(1, "0123456789ABCDEF"[c % 16]);
            else
                shown += c;
        if (!ended)
            shown += "\\c";
        else if (line.empty() || line.ends_with(' '))
            shown += '\\';
        shown += '\n';
    }
    return shown;
}

/// The transcript with what its commands print now in place of what stands below them. Each command goes to a shell in
/// `folder`; `commands` counts them.
inline std::string transcriptOfNow(std::string_view transcript, const std::string& folder,
                                   const std::vector<std::string>& environment, int& commands) {
    std::string now;
    while (!transcript.empty()) {
        const std::string_view line = takeLine(transcript);
        now += line;
        if (!line.starts_with("  $ ")) continue;
        std::string command(line.substr(4));
        while (transcript.starts_with("  > ")) {
            const std::string_view more = takeLine(transcript);
            now += more;
            command += more.substr(4);
        }
        while (transcript.starts_with("  ") && !transcript.starts_with("  $ ")) takeLine(transcript);
        const ProgramRun run = runProgram({"/bin/sh", "-c", command}, folder, environment);
        now += shownStream(run.out, "") + shownStream(run.err, "! ");
        if (run.timedOut)
            now += "  [killed after the time limit]\n";
        else if (run.status != 0)
            now += "  [" + std::to_string(run.status) + "]\n";
        ++commands;
    }
    return now;
}

/// The files of `folder` that are not the bytes of `inputs`, as `expected/` is to hold them.
inline FileTexts changedFiles(const std::filesystem::path& folder, const FileTexts& inputs) {
    FileTexts actual = textsBelow(folder);
    for (const auto& [name, bytes] : inputs) {
        if (!actual.contains(name)) actual[name] = "(the run deleted this input)\n";
        if (actual[name] == bytes) actual.erase(name);
    }
    return actual;
}

/// Runs the transcript of the folder `golden` with `program` as the command `welvane` and compares; what differs comes
/// back, one entry per file. With `accept` what came out becomes what is expected.
inline std::vector<std::string> judgeGolden(const std::filesystem::path& program, const std::filesystem::path& golden,
                                            bool accept) {
    const TempFolder base;
    const std::filesystem::path work = base.path("work"), home = base.path("home_of_program"), bin = base.path("bin");
    const FileTexts inputs = textsBelow(golden / "inputs");
    for (const std::filesystem::path& folder : {work, home, bin}) std::filesystem::create_directories(folder);
    writeTexts(work, inputs);
    writeTexts(home, textsBelow(golden / "reference"));
    std::filesystem::create_symlink(program, bin / "welvane");
    std::vector<std::string> environment = cleanEnvironment(base.path("homes"), home.string());
    environment.front() = "PATH=" + bin.string() + ":/usr/local/bin:/usr/bin:/bin";

    const std::string transcript = TempFolder::readFile((golden / "transcript").string());
    int commands = 0;
    const std::string now = transcriptOfNow(transcript, work.string(), environment, commands);
    const bool comparesFiles = std::filesystem::is_directory(golden / "expected");
    const FileTexts actual = comparesFiles ? changedFiles(work, inputs) : FileTexts{};
    if (accept) {
        writeTexts(golden, {{"transcript", now}});
        if (comparesFiles) std::filesystem::remove_all(golden / "expected");
        writeTexts(golden / "expected", actual);
        return {};
    }

    std::vector<std::string> faults;
    if (commands == 0) faults.push_back("transcript: there is none, or it holds no command");
    if (const std::string difference = firstDifference(transcript, now); !difference.empty())
        faults.push_back("transcript: " + difference);
    const FileTexts expected = textsBelow(golden / "expected");
    for (const auto& [name, bytes] : actual) {
        if (!expected.contains(name))
            faults.push_back(name + ": not expected, first " + firstDifference("", bytes));
        else if (const std::string difference = firstDifference(expected.at(name), bytes); !difference.empty())
            faults.push_back(name + ": " + difference);
    }
    for (const auto& [name, bytes] : expected)
        if (!actual.contains(name)) faults.push_back(name + ": did not come out");
    for (const auto& [name, bytes] : textsBelow(base.path("homes/TMPDIR")))
        faults.push_back(name + ": left behind in the scratch folder");
    return faults;
}

}  // namespace welvane::test
