#include "certify/checker_log.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace welvane {
namespace {

TEST(CheckerLog, isJudgedByTwoWords) {
    struct Case {
        const char *log, *verdict;
        std::vector<std::string> lines;
    };
    for (const Case& row : {
             Case{"", "Check Incomplete", {}},
             Case{"all well\r\n", "Passed", {}},
             Case{"Failed: 3 tests", "Failed", {"Failed: 3 tests"}},
             Case{"ok\nsome error: x\r\nok\rTEST FAILED: y", "Failed", {"some error: x", "TEST FAILED: y"}},
             Case{"Failed : 1\nErrors: none\nError\n:", "Passed", {}},
             Case{"Error: a Failed: b\nError:", "Failed", {"Error: a Failed: b", "Error:"}},
         }) {
        SCOPED_TRACE(row.log);
        EXPECT_EQ(verdictText(verdictOf(row.log)), row.verdict);
        EXPECT_EQ(failureLines(row.log), row.lines);
        EXPECT_EQ(verdictColour(verdictOf(row.log)), std::string_view(row.verdict) == "Passed" ? 65280U : 255U);
    }
}

TEST(CheckerLog, ofAnyLengthIsReadWithoutFillingMemory) {
    const test::TempFolder folder;
    EXPECT_EQ(readWholeFile(folder.path("absent.log")), "");
    EXPECT_EQ(readWholeFile(folder.path()), "");
    EXPECT_EQ(readWholeFile(folder.write("short.log", "a\r\nb")), "a\r\nb");

    const std::string flood(3 * longestLog, 'x');
    struct Case {
        const char* name;
        std::string log;
        Verdict verdict;
        std::string shown;
    };
    std::string lines;
    while (lines.size() < 2 * longestLog) lines += "line 17 is well\r\n";
    std::string acrossTheCut = lines;
    acrossTheCut.replace(longestLog - 3, 6, "Error:");
    std::string faults;
    while (faults.size() < 3 * longestLog) faults += "Failed: again\n";
    for (const Case& row :
         {Case{"no line ends", flood, Verdict::Passed, "further bytes"},
          Case{"a keyword at the end of one line", flood + "Failed: late", Verdict::Failed, "Failed: late"},
          Case{"a short keyword in front of it", flood + "\nError:" + flood, Verdict::Failed, "Error:x"},
          Case{"a late line", lines + "Error: late\r\n", Verdict::Failed, "\r\nError: late\r\n"},
          Case{"across the cut", acrossTheCut, Verdict::Failed, "Error:"},
          Case{"faults without end", faults, Verdict::Failed, "Failed: again"}}) {
        SCOPED_TRACE(row.name);
        const std::string text = readWholeFile(folder.write("long.log", row.log));
        EXPECT_EQ(verdictOf(text), row.verdict);
        EXPECT_NE(text.find(row.shown), std::string::npos);
        EXPECT_LT(text.size(), longestLog + longestLog / 2);
    }
}

}  // namespace
}  // namespace welvane
