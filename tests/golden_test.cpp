// Whole runs through the built program. With a folder of tests/golden as its argument this program judges that folder;
// without one it tests the judge itself.

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

#include "support/golden_run.h"

namespace welvane::test {
namespace {

TEST(GoldenRunner, seesWhatDiffers) {
    struct Case {
        const char *name, *transcript;
        FileTexts expected;
        std::vector<std::string> faults;
    };
    const Case cases[] = {
        {"all as expected",
         "Prose.\n  $ cat in.las > out.las; printf '$ said\\n\\nend '; exit 3\n  \\$ said\n  \\\n  end \\c\n  [3]\n",
         {{"out.las", "a\r\nb\r\n"}},
         {}},
        {"a command of two lines", "  $ cat <<END\n  > a\\b\n  > END\n  a\\\\b\n", {}, {}},
        {"other print", "  $ echo a\n  b\n", {}, {"transcript: line 2\n  expected:   b\\n\n  got:        a\\n"}},
        {"other line",
         "  $ printf 'a\\r\\nc\\r\\n' > out.las\n",
         {{"out.las", "a\r\nb\r\n"}},
         {"out.las: line 2\n  expected: b\\r\\n\n  got:      c\\r\\n"}},
        {"shorter",
         "  $ printf 'a\\r\\n' > out.las\n",
         {{"out.las", "a\r\nb\r\n"}},
         {"out.las: line 2\n  expected: b\\r\\n\n  got:      (end of text)"}},
        {"no file", "  $ true\n", {{"out.las", "a"}}, {"out.las: did not come out"}},
        {"file too many",
         "  $ printf 'a' > out.las; echo x > y\n",
         {{"out.las", "a"}},
         {"y: not expected, first line 1\n  expected: (end of text)\n  got:      x\\n"}},
        {"input changed",
         "  $ printf 'a' > out.las; echo x > in.las\n",
         {{"out.las", "a"}},
         {"in.las: not expected, first line 1\n  expected: (end of text)\n  got:      x\\n"}},
        {"input deleted",
         "  $ printf 'a' > out.las; rm in.las\n",
         {{"out.las", "a"}},
         {"in.las: not expected, first line 1\n  expected: (end of text)\n  got:      (the run deleted this "
          "input)\\n"}},
        {"status", "  $ exit 2\n", {}, {"transcript: line 2\n  expected: (end of text)\n  got:        [2]\\n"}},
        {"complaint",
         "  $ echo oh >&2\n  oh\n",
         {},
         {"transcript: line 2\n  expected:   oh\\n\n  got:        ! oh\\n"}},
        {"reference files are found", "  $ cat $WELVANE_HOME/units.ini\n  M\\r\n", {}, {}},
        {"nothing of the user", "  $ test -z \"$(ls -A $HOME; ls -A $XDG_CONFIG_HOME)$USER\"\n", {}, {}},
        {"the program is found", "  $ welvane -c 'echo run'\n  run\n", {}, {}},
        {"scratch left", "  $ echo x > $TMPDIR/y\n", {}, {"y: left behind in the scratch folder"}},
        {"nothing run", "No command.\n", {}, {"transcript: there is none, or it holds no command"}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const TempFolder golden;
        writeTexts(golden.path(),
                   {{"transcript", one.transcript}, {"inputs/in.las", "a\r\nb\r\n"}, {"reference/units.ini", "M\r\n"}});
        writeTexts(golden.path("expected"), one.expected);
        EXPECT_EQ(judgeGolden("/bin/sh", golden.path(), false), one.faults);
        if (one.faults.empty() || !one.faults.front().starts_with("transcript: line")) continue;
        EXPECT_EQ(judgeGolden("/bin/sh", golden.path(), true), std::vector<std::string>{});
        EXPECT_EQ(judgeGolden("/bin/sh", golden.path(), false), std::vector<std::string>{})
            << "what was accepted is not what is expected now";
    }
}

TEST(GoldenRunner, everyFolderHoldsATranscript) {
    int folders = 0;
    for (const auto& entry : std::filesystem::directory_iterator(WELVANE_SOURCE_DIR "/tests/golden")) {
        if (!entry.is_directory()) continue;
        ++folders;
        EXPECT_TRUE(std::filesystem::is_regular_file(entry.path() / "transcript")) << entry.path();
    }
    EXPECT_GT(folders, 0);
}

int judge(const std::filesystem::path& folder) {
    const char* wish = std::getenv("WELVANE_ACCEPT");
    const std::vector<std::string> faults =
        judgeGolden(WELVANE_PROGRAM, folder, wish != nullptr && std::string(wish) == "1");
    const std::string name = folder.filename().string();
    for (const std::string& fault : faults) std::cout << "tests/golden/" << name << ": " << fault << "\n";
    if (!faults.empty())
        std::cout << "To accept what came out: WELVANE_ACCEPT=1 ctest --preset dev -R golden." << name
                  << "; then read the change.\n";
    return faults.empty() ? 0 : 1;
}

}  // namespace
}  // namespace welvane::test

int main(int argc, char** argv) {
    if (argc == 2 && argv[1][0] != '-') return welvane::test::judge(argv[1]);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
