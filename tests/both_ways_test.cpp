// `run --rules as-laid-down` against the headless line, over every input of the golden runs and the examples.

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/golden_run.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;

/// One run, as both ways name it.
struct BothWays {
    std::vector<std::string> inputs;  ///< names in the work folder
    std::string filter{};
    bool splice = false;

    std::vector<std::string> headless() const {
        std::vector<std::string> words;
        for (std::size_t slot = 0; slot < inputs.size(); ++slot)
            words.push_back("/File" + std::to_string(slot + 1) + "=" + inputs[slot]);
        if (splice) words.emplace_back("/Dowhat=splice");
        if (!filter.empty()) words.insert(words.end(), {"/Dowhat=merge", "/Filter=" + filter});
        words.emplace_back("/Output=made.las");
        return words;
    }
    std::vector<std::string> verb() const {
        std::vector<std::string> words{"run"};
        words.insert(words.end(), inputs.begin(), inputs.end());
        if (splice) words.emplace_back("--splice");
        if (!filter.empty()) words.insert(words.end(), {"--filter", filter});
        words.insert(words.end(), {"--rules", "as-laid-down", "-qo", "made.las"});
        return words;
    }
};

/// Lines that end in CR LF, the only ones that the headless line takes.
std::string withCrLf(const std::string& text) {
    std::string lines;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text[place] == '\n' && (place == 0 || text[place - 1] != '\r')) lines += '\r';
        lines += text[place];
    }
    return lines;
}

FileTexts inputsOf(const fs::path& folder) {
    FileTexts texts;
    for (auto& [name, bytes] : textsBelow(folder))
        if (name.find('/') == std::string::npos) texts[name] = withCrLf(bytes);
    return texts;
}

/// The file that a run makes of the inputs, and what the program said; no file is "".
std::pair<std::string, std::string> made(const std::vector<std::string>& words, const FileTexts& inputs,
                                         const FileTexts& reference) {
    const TempFolder base;
    const fs::path work = base.path("work"), home = base.path("program");
    for (const fs::path& folder : {work, home}) fs::create_directories(folder);
    writeTexts(work, inputs);
    writeTexts(home, reference);
    std::vector<std::string> command{WELVANE_PROGRAM};
    command.insert(command.end(), words.begin(), words.end());
    const ProgramRun run = runProgram(command, work.string(), cleanEnvironment(base.path("homes"), home.string()));
    EXPECT_LT(run.status, 128) << run.err;
    const fs::path output = work / "made.las";
    return {fs::exists(output) ? TempFolder::readFile(output.string()) : std::string(), run.err};
}

std::vector<BothWays> runsOver(const FileTexts& inputs) {
    std::vector<std::string> logs, filters;
    for (const auto& [name, bytes] : inputs) {
        if (name.ends_with(".las")) logs.push_back(name);
        if (name.ends_with(".fil")) filters.push_back(name);
    }
    std::vector<BothWays> runs;
    for (std::size_t place = 0; place < logs.size(); ++place) {
        runs.push_back({{logs[place]}});
        if (place > 0) runs.push_back({{logs[place - 1], logs[place]}, "", true});
        for (const std::string& filter : filters) runs.push_back({{logs[place]}, filter});
    }
    if (!logs.empty()) runs.push_back({{logs.front(), "none.las"}});
    return runs;
}

TEST(AsLaidDown, isTheHeadlessLineByteForByte) {
    std::vector<fs::path> folders{WELVANE_SOURCE_DIR "/examples"};
    for (const auto& entry : fs::directory_iterator(WELVANE_SOURCE_DIR "/tests/golden"))
        if (fs::is_directory(entry.path() / "inputs")) folders.push_back(entry.path());
    int compared = 0;
    for (const fs::path& folder : folders) {
        const FileTexts inputs = inputsOf(fs::is_directory(folder / "inputs") ? folder / "inputs" : folder);
        const FileTexts reference = textsBelow(folder / "reference");
        for (const BothWays& run : runsOver(inputs)) {
            const auto [line, silence] = made(run.headless(), inputs, reference);
            const auto [verb, said] = made(run.verb(), inputs, reference);
            EXPECT_EQ(firstDifference(line, verb), "")
                << folder.filename() << ", " << run.inputs.back() << " " << run.filter << "\n"
                << said;
            if (!line.empty()) ++compared;
        }
    }
    EXPECT_GT(compared, 60) << "too few runs wrote a file for this to prove anything";
}

}  // namespace
}  // namespace welvane::test
