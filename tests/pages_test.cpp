// The commands of the pages for users: each prints what the page says, in a folder with the example wells.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "support/golden_run.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

/// A command of a page and the lines below it.
struct PageCommand {
    std::string command;
    Lines shown;
};

/// Lines of a page that are set in by four blanks or stand between fences, without either; none for those of its prose.
std::vector<std::optional<std::string>> blocksOf(std::string_view page) {
    std::vector<std::optional<std::string>> lines;
    bool fenced = false;
    while (!page.empty()) {
        std::string_view line = takeLine(page);
        if (line.ends_with('\n')) line.remove_suffix(1);
        const bool isFence = line.starts_with("```");
        const bool isIn = !isFence && (fenced || line.starts_with("    "));
        fenced = fenced != isFence;
        lines.emplace_back();
        if (isIn) lines.back() = line.substr(fenced ? 0 : 4);
    }
    return lines;
}

std::vector<PageCommand> commandsOf(std::string_view page) {
    std::vector<PageCommand> commands;
    bool goesOn = false, isOutput = false;
    for (const std::optional<std::string>& line : blocksOf(page)) {
        const bool begins = line && line->starts_with("$ ");
        goesOn = begins || (goesOn && line);
        isOutput = goesOn && !begins && (isOutput || !line->starts_with("> "));
        if (begins)
            commands.push_back({line->substr(2), {}});
        else if (isOutput)
            commands.back().shown.push_back(*line);
        else if (goesOn)
            commands.back().command += "\n" + line->substr(2);
    }
    return commands;
}

/// In any order, as a terminal mixes two streams, without what changes from run to run or cannot be seen.
Lines comparable(Lines lines) {
    for (std::string& line : lines) {
        line = std::regex_replace(line, std::regex(" +[0-9.]+ +((?:[0-9]+ )?written)$"), " $1");
        line = std::regex_replace(line, std::regex("Date : .*"), "Date");
        line.erase(line.find_last_not_of(" \r") + 1);
    }
    std::erase(lines, "");
    std::ranges::sort(lines);
    return lines;
}

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        std::string_view line = takeLine(text);
        if (line.ends_with('\n')) line.remove_suffix(1);
        lines.emplace_back(line);
    }
    return lines;
}

/// A page shows a file of the reader's own by `cat NAME`: it is made as it is shown.
bool makeShownFile(const fs::path& work, const PageCommand& command) {
    if (!command.command.starts_with("cat ") || fs::exists(work / command.command.substr(4))) return false;
    std::string bytes;
    for (const std::string& line : command.shown) bytes += line + "\n";
    const fs::path file = work / command.command.substr(4);
    writeTexts(work, {{file.filename().string(), bytes}});
    fs::permissions(file, fs::perms::owner_all);
    return true;
}

class Pages : public testing::TestWithParam<const char*> {};

TEST_P(Pages, commandsPrintWhatIsShown) {
    const TempFolder base;
    const fs::path work = base.path("work"), bin = base.path("bin");
    for (const fs::path& folder : {work, bin}) fs::create_directories(folder);
    fs::copy(WELVANE_SOURCE_DIR "/examples", work / "examples");
    fs::create_symlink(WELVANE_PROGRAM, bin / "welvane");
    std::vector<std::string> environment = cleanEnvironment(base.path("homes"), WELVANE_SOURCE_DIR "/data");
    environment.front() = "PATH=" + bin.string() + ":/usr/local/bin:/usr/bin:/bin";

    const auto commands = commandsOf(TempFolder::readFile(std::string(WELVANE_SOURCE_DIR "/") + GetParam()));
    EXPECT_FALSE(commands.empty());
    for (const PageCommand& command : commands) {
        if (makeShownFile(work, command)) continue;
        const ProgramRun run = runProgram({"/bin/sh", "-c", command.command}, work.string(), environment);
        EXPECT_EQ(comparable(linesOf(run.out + "\n" + run.err)), comparable(command.shown)) << command.command;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Pages,
                         testing::Values("README.md", "docs/guide.md", "docs/figures.md", "docs/office.md"));

}  // namespace
}  // namespace welvane::test
