// Whole runs through the built program, each held against expected files byte for byte.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/golden_run.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;

TEST(Golden, everyRunComesOutAsExpected) {
    const char* wish = std::getenv("WELVANE_ACCEPT");
    const bool accept = wish != nullptr && std::string(wish) == "1";
    std::vector<fs::path> folders;
    for (const auto& entry : fs::directory_iterator(fs::path(WELVANE_SOURCE_DIR) / "tests/golden"))
        if (fs::is_regular_file(entry.path() / "command")) folders.push_back(entry.path());
    if (folders.empty()) GTEST_SKIP() << "tests/golden holds no runs";
    std::sort(folders.begin(), folders.end());
    for (const fs::path& folder : folders)
        for (const std::string& fault : judgeGolden(WELVANE_PROGRAM, folder, accept))
            ADD_FAILURE()
                << "tests/golden/" << folder.filename().string() << ": " << fault
                << "\n  To accept what came out: WELVANE_ACCEPT=1 ctest --preset dev -R golden; then read the change.";
}

// The runner itself, against a shell in place of the program.
TEST(Golden, runnerSeesWhatDiffers) {
    struct Case {
        const char* name;
        const char* script;
        FileTexts expected;
        std::vector<std::string> faults;
    };
    const Case cases[] = {
        {"all as expected",
         "cat in.las > out.las; echo said; exit 3",
         {{"out.las", "a\r\nb\r\n"}, {"stdout", "said\n"}, {"status", "3\n"}},
         {}},
        {"other line",
         "printf 'a\\r\\nc\\r\\n' > out.las",
         {{"out.las", "a\r\nb\r\n"}},
         {"out.las: line 2\n  expected: b\\r\\n\n  got:      c\\r\\n"}},
        {"shorter",
         "printf 'a\\r\\n' > out.las",
         {{"out.las", "a\r\nb\r\n"}},
         {"out.las: line 2\n  expected: b\\r\\n\n  got:      (end of text)"}},
        {"no file", "true", {{"out.las", "a"}}, {"out.las: did not come out"}},
        {"file too many",
         "echo x > y",
         {},
         {"y: not expected, first line 1\n  expected: (end of text)\n  got:      x\\n"}},
        {"input changed",
         "echo x > in.las",
         {},
         {"in.las: not expected, first line 1\n  expected: (end of text)\n  got:      x\\n"}},
        {"input deleted",
         "rm in.las",
         {},
         {"in.las: not expected, first line 1\n  expected: (end of text)\n  got:      (the run deleted this "
          "input)\\n"}},
        {"status", "exit 2", {}, {"status: not expected, first line 1\n  expected: (end of text)\n  got:      2\\n"}},
        {"complaint",
         "echo oh >&2",
         {},
         {"stderr: not expected, first line 1\n  expected: (end of text)\n  got:      oh\\n"}},
        {"reference files are found", "cat $WELVANE_HOME/units.ini", {{"stdout", "M\r\n"}}, {}},
        {"nothing of the user", "test -z \"$(ls -A $HOME; ls -A $XDG_CONFIG_HOME)$USER\"", {}, {}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const TempFolder golden;
        writeTexts(golden.path(), {{"command", "-c\n" + std::string(one.script) + "\n"},
                                   {"inputs/in.las", "a\r\nb\r\n"},
                                   {"reference/units.ini", "M\r\n"}});
        writeTexts(golden.path("expected"), one.expected);
        EXPECT_EQ(judgeGolden("/bin/sh", golden.path(), false), one.faults);
        EXPECT_EQ(judgeGolden("/bin/sh", golden.path(), true), std::vector<std::string>{});
        EXPECT_EQ(judgeGolden("/bin/sh", golden.path(), false), std::vector<std::string>{})
            << "what was accepted is not what is expected now";
    }
}

// A folder of further cases may stand beside the checkout; it brings its own judge.
TEST(Golden, casesBesideTheCheckout) {
    const fs::path judge = fs::path(WELVANE_SOURCE_DIR) / "../shared/cases/run.py";
    if (!fs::exists(judge)) GTEST_SKIP() << "there are no cases beside this checkout";
    const TempFolder folder;
    const std::vector<std::string> environment = {std::string("PATH=") + std::getenv("PATH"),
                                                  "PYTHONDONTWRITEBYTECODE=1"};
    if (runProgram({"/usr/bin/env", "python3", "--version"}, folder.path(), environment).status != 0)
        GTEST_SKIP() << "there is no python3 to judge the cases";
    const ProgramRun run = runProgram({"/usr/bin/env", "python3", judge.string(), "--program", WELVANE_PROGRAM},
                                      folder.path(), environment, 240);
    EXPECT_EQ(run.status, 0) << run.out << run.err;
    std::cout << run.out;
}

}  // namespace
}  // namespace welvane::test
