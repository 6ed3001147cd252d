#include "las/wrap.h"

#include <gtest/gtest.h>

#include "las/tops.h"
#include "las/well.h"
#include "shared/text.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::ScriptedInterface;
using test::smallWell;
using test::TempFolder;

TEST(Wrap, unwrappedBecomesWrappedAndBack) {
    const TempFolder folder;
    const std::string head = "~V\nVERS.  2.0: x\n";
    const std::string nine = "    1.000    2.000    3.000    4.000    5.000    6.000    7.000    8.000    9.000";
    const std::string two = "   10.000 7000.000";
    const std::string source =
        folder.writeLines("a.las", head + "WRAP.             NO: ONE LINE PER DEPTH STEP, REALLY SO\n~A x\n  1.000" +
                                       nine + two + "\n\n  2.000" + nine + two + "\n  3.000" + nine + two + "\n");
    ScriptedInterface user;
    RunState run;
    std::string state;
    ASSERT_EQ(convertWrap(LasFile(source), folder.path("w.las"), state, run, user), StepResult::Done);
    EXPECT_EQ(state, "NO");
    std::string expected = head + "WRAP.            YES: MULTIPLE LINES PER DEPTH STEP     \n~Ascii\n";
    for (const char* depth : {"1", "2", "3"})
        expected += std::string("    ") + depth + ".000\n" + nine + "\n" + two + "\n";
    EXPECT_EQ(folder.read("w.las"), replaceAll(expected, "\n", "\r\n"));

    ASSERT_EQ(convertWrap(LasFile(folder.path("w.las")), folder.path("u.las"), state, run, user), StepResult::Done);
    EXPECT_EQ(state, "YES");
    expected = head + "WRAP.             NO: ONE LINE PER DEPTH STEP           \n~Ascii\n";
    for (const char* depth : {"1", "2", "3"})
        expected += std::string("    ") + depth + ".000 " + nine + " " + two + "\n";
    EXPECT_EQ(folder.read("u.las"), replaceAll(expected, "\n", "\r\n"));
}

TEST(Wrap, wrapLineWithoutRoom) {
    const struct {
        const char *before, *after;
    } cases[] = {
        {"WRAP. NO: x", "WRAP. YES: MULTIPLE LINES PER DEPTH STEP"},
        {"WRAP. NO   :", "WRAP. YES  : MULTIPLE LINES PER DEPTH STEP"},
        {"WRAP.NO:", "WRAP.NO YES: MULTIPLE LINES PER DEPTH STEP"},
        {"WRAP.:", "WRAP. YES: MULTIPLE LINES PER DEPTH STEP"},
        {" WRAP.\tNO : a tab", " WRAP. YES: MULTIPLE LINES PER DEPTH STEP"},
    };
    for (const auto& row : cases) {
        const TempFolder folder;
        ScriptedInterface user;
        RunState run;
        std::string state;
        const std::string path = folder.writeLines("a.las", std::string("~V\n") + row.before + "\n~A\n1 2\n1 2\n");
        ASSERT_EQ(convertWrap(LasFile(path), path, state, run, user), StepResult::Done);
        EXPECT_EQ(folder.read("a.las"), std::string("~V\r\n") + row.after + "\r\n~Ascii\r\n 1\r\n 2\r\n 1\r\n 2\r\n")
            << row.before;
    }
}

TEST(Wrap, wordsThatFillTheirColumnStayApart) {
    const TempFolder folder;
    ScriptedInterface user;
    RunState run;
    std::string state;
    ASSERT_EQ(convertWrap(LasFile(folder.writeLines("a.las", "~A\n1 2 3\n1 2 3\n1000.5 -999.25 -999.25\n")),
                          folder.path("b.las"), state, run, user),
              StepResult::Done);
    EXPECT_EQ(folder.read("b.las"), "~Ascii\r\n 1\r\n 2 3\r\n 1\r\n 2 3\r\n1000.5\r\n-999.25 -999.25\r\n");
}

TEST(Wrap, failureAndCancelLeaveTheTargetAlone) {
    const TempFolder folder;
    ScriptedInterface user;
    RunState run;
    std::string state;
    const std::string target = folder.write("old.las", "old");
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(convertWrap(LasFile(folder.writeLines("odd.las", "~A\n1 2\n1\n1 2 3\n1\n")), target, state, run, user),
              StepResult::Failed);
    EXPECT_EQ(user.asked().at(0).title, "Un-expected Error");
    EXPECT_EQ(user.asked().at(0).text,
              "An unknown error has occured while converting the file. The file conversion is likely incomplete. The "
              "system error message "
              "was: \r\nLines 2 and 3 differ in their number of values.");

    run.cancelRequested = true;
    EXPECT_EQ(convertWrap(LasFile(folder.writeLines("a.las", smallWell())), target, state, run, user),
              StepResult::Cancelled);
    EXPECT_EQ(folder.read("old.las"), "old");
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path())) ++files;
    EXPECT_EQ(files, 3U) << "no scratch file stays";
}

TEST(Tops, blockOfTheHeader) {
    const TempFolder folder;
    const auto topsOf = [&folder](const std::string& text) {
        return readTops(LasFile(folder.writeLines("a.las", text)));
    };
    const std::vector<Top> tops = topsOf(smallWell());
    ASSERT_EQ(tops.size(), 2U);
    EXPECT_EQ(tops[0].depth, "5478.0");
    EXPECT_EQ(tops[0].name, "Upper");
    EXPECT_EQ(tops[1].name, "Lower");
    EXPECT_TRUE(topsOf("~V\n~A\n1\n[TOPS]\n1|A\n").empty());
    EXPECT_EQ(topsOf(" [tops]\n1 | A B \nno bar\n2|\n[X]\n3|C\n~A\n").size(), 2U);
}

}  // namespace
}  // namespace welvane
