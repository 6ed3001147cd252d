#include "las/repair.h"

#include <gtest/gtest.h>
#include <random>

#include "las/well.h"
#include "shared/text.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::ScriptedInterface;
using test::TempFolder;

TEST(Repair, curveTitleFault) {
    const TempFolder folder;
    const std::string faulty = "~W\r\nXWELL. 1 : x YWELL. 2 : y ~Curve\r\nGR. : x\rlone\r\n~A\r\n1 ~C XWELL YWELL\r\n";
    const std::string path = folder.write("a.las", faulty);
    ScriptedInterface user;
    user.willAnswer(Answer::No);
    EXPECT_FALSE(repairCurveTitle(path, user));
    EXPECT_EQ(folder.read("a.las"), faulty);
    EXPECT_EQ(user.asked().at(0).text,
              "LAS found to have a common Plexmore error (XWELL/YWELL/~Curve all on same line). Do you want to repair "
              "it now?");
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(repairCurveTitle(path, user));
    EXPECT_EQ(folder.read("a.las"), "~W\r\n~Curve\r\nGR. : x\rlone\r\n~A\r\n1 ~C XWELL YWELL\r\n");
    EXPECT_FALSE(repairCurveTitle(path, user)) << "nothing to ask any more";
    EXPECT_FALSE(repairCurveTitle(folder.path("none.las"), user));
}

TEST(Repair, replaceInFile) {
    const struct {
        const char *name, *text, *find, *replacement, *result;
    } cases[] = {
        {"single byte", "a\nb\n", "\n", "\r\n", "a\r\nb\r\n"},
        {"every occurrence, also behind a CR", "a\r\nb\n", "\n", "\r\n", "a\r\r\nb\r\n"},
        {"case ignored", "Gr GR gr g", "gR", "X", "X X X g"},
        {"none overlapping", "aaaa", "aa", "b", "bb"},
        {"deleted", "a13b13", "13", "", "ab"},
        {"replacement is not searched again", "ab", "a", "aa", "aab"},
        {"not found", "abc", "x", "y", "abc"},
        {"letters around a plain character", "xA.by a.Bz", "a.b", "-", "x-y -z"},
        {"nothing to find", "abc", "", "y", "abc"},
        {"pattern longer than the file", "ab", "abc", "y", "ab"},
        {"empty file", "", "a", "y", ""},
    };
    const TempFolder folder;
    ScriptedInterface user;
    for (const auto& row : cases) {
        RunState run;
        const std::string path = folder.write("a", row.text);
        EXPECT_EQ(replaceInFile(path, folder.path("b"), row.find, row.replacement, run, user), StepResult::Done)
            << row.name;
        EXPECT_EQ(folder.read("b"), row.result) << row.name;
        EXPECT_EQ(run.statusText, "Doing Search and Replace. Please Wait...");
        EXPECT_EQ(replaceInFile(path, path, row.find, row.replacement, run, user), StepResult::Done) << row.name;
        EXPECT_EQ(folder.read("a"), row.result) << row.name << ", in place";
    }
    RunState run;
    EXPECT_EQ(replaceInFile(folder.path("none"), folder.path("c"), "a", "b", run, user), StepResult::Failed);
    EXPECT_EQ(replaceInFile(folder.path("a"), folder.path("no/such/folder/c"), "a", "b", run, user),
              StepResult::Failed);
    run.cancelRequested = true;
    EXPECT_EQ(replaceInFile(folder.path("a"), folder.path("c"), "a", "b", run, user), StepResult::Cancelled);
    EXPECT_FALSE(std::filesystem::exists(folder.path("c")));
}

// Matches that lie across the blocks a large file is worked in, against the plain replacement of a text in memory.
TEST(Repair, replaceInALargeFileIsLikeOneRead) {
    const TempFolder folder;
    SilentInterface user;
    RunState run;
    const unsigned seed = 20;
    std::mt19937 random(seed);
    std::string text(3'000'000, ' ');
    for (char& c : text) c = "aAbB.\r\n "[random() % 8];
    for (const std::size_t place : {1'048'574U, 1'048'575U, 2'097'150U}) text.replace(place, 4, "a.Ba");
    const std::string path = folder.write("a", text);
    for (const char* find : {"a", "ab", "a.b", "\n", "\r\n", "a.ba"}) {
        ASSERT_EQ(replaceInFile(path, folder.path("b"), find, "<>", run, user), StepResult::Done);
        EXPECT_TRUE(folder.read("b") == replaceAll(text, find, "<>")) << "searching " << find << ", seed " << seed;
    }
    ASSERT_EQ(repairLineEnds(path, folder.path("b"), run, user), StepResult::Done);
    EXPECT_TRUE(folder.read("b") == replaceAll(replaceAll(text, "\r\n", "\n"), "\n", "\r\n")) << "seed " << seed;
}

TEST(Repair, lineEnds) {
    const TempFolder folder;
    SilentInterface user;
    RunState run;
    const std::string path = folder.write("a", "\na\nb\r\nc\rd\n\n");
    ASSERT_EQ(repairLineEnds(path, path, run, user), StepResult::Done);
    EXPECT_EQ(folder.read("a"), "\r\na\r\nb\r\nc\rd\r\n\r\n");
}

}  // namespace
}  // namespace welvane
