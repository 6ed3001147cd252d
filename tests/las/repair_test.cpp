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

// What replaces in a file is tested with the tool that shows it, search and replace.
TEST(Repair, lineEndsOfALargeFileAreLikeOnesOfATextInMemory) {
    const TempFolder folder;
    SilentInterface user;
    RunState run;
    const unsigned seed = 20;
    std::mt19937 random(seed);
    std::string text(3'000'000, ' ');
    for (char& c : text) c = "aAbB.\r\n "[random() % 8];
    for (const std::size_t place : {1'048'575U, 2'097'151U}) text.replace(place, 2, "\r\n");
    const std::string path = folder.write("a", text);
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
