// Whole passes from files to a file.
#include <functional>
#include <thread>

#include "engine/pass_fixture.h"
#include "las/sections.h"
#include "session/filters.h"
#include "session/matching.h"

namespace welvane {
namespace {

using Rows = std::vector<std::vector<double>>;
using test::lasText;

class WholePassTest : public test::PassTest {};

TEST_F(WholePassTest, oneFileIsCopiedWithItsHeaderLaidOutAnew) {
    load(0, folder.writeLines(
                "a.las", lasText("GR.GAPI   : GAMMA RAY\n", "1000.0 1.5\n1000.5 -999.25\n1001.0 3\n", "1000", "1001",
                                 "0.5", "NO", "~PARAMETER\nMATR.  SAND : MATRIX\n~OTHER\nnote\n#kept\n")));
    const RunOutcome outcome = run();
    ASSERT_TRUE(outcome.completed) << outcome.refusal;
    EXPECT_EQ(outcome.items[0].pass.records, 3);
    const std::string expected =
        "~VERSION\r\n"
        " VERS.        2.00                                         :CWLS LOG ASCII STANDARD\r\n"
        " WRAP.        NO                                           :WRAP MODE\r\n"
        "~WELL\r\n"
        " STRT.M       1000.00000                                                                                     "
        ":START\r\n";
    EXPECT_EQ(folder.read("out.las").substr(0, expected.size()), expected);
    const std::string curves =
        "~CURVE\r\n"
        "#MNEM.UNIT    VALUE                                        :DESCRIPTION\r\n"
        "#----.----    ---------------                              :-------------------\r\n"
        " DEPT.M       00 001 00 00                                 :Depth Index\r\n"
        "   GR.GAPI                                                 :GAMMA RAY\r\n";
    EXPECT_NE(folder.read("out.las").find(curves), std::string::npos) << folder.read("out.las");
    const std::string tail =
        "~OTHER\r\n#note\r\n #kept\r\n"
        "~ASCII   DEPT           GR\r\n"
        "   1000.00000      1.50000\r\n   1000.50000   -999.25000\r\n   1001.00000      3.00000\r\n";
    const std::string written = folder.read("out.las");
    EXPECT_EQ(written.substr(written.size() - tail.size()), tail);
}

TEST_F(WholePassTest, headerSaysWhatWasWritten) {
    load(0, folder.writeLines(
                "a.las", lasText("GR.GAPI   : GAMMA RAY\n", "1000.0 1\n1000.5 2\n1001.0 3\n", "0", "9999", "0.25")));
    session.tables.setting(PrdRow::From) = "1000";
    session.tables.setting(PrdRow::To) = "1001";
    session.tables.setting(PrdRow::SampleRate) = "0.5";
    session.tables.setting(PrdRow::Direction) = "Deep to Shallow";
    session.tables.setting(PrdRow::DepthOffset) = "2";
    session.tables.setting(PrdRow::Null) = "-9999";
    ASSERT_TRUE(run().completed);
    EXPECT_EQ(rows(), (Rows{{1003, 3}, {1002.5, 2}, {1002, 1}}));
    const LasFile out(folder.path("out.las"));
    EXPECT_EQ(out.value("STRT").text, "1003.00000");
    EXPECT_EQ(out.value("STOP").text, "1002.00000");
    EXPECT_EQ(out.value("STEP").text, "-0.50000");
    EXPECT_EQ(out.value("NULL").text, "-9999.00000");
}

TEST_F(WholePassTest, aFunctionOfAResultReadsTheResultAlsoWhereThatIsNotWritten) {
    load(0, folder.writeLines("a.las", lasText("GR.GAPI : G\nRHOB.G/C3 : R\n", "1000 1 2.1\n1001 2 2.2\n1002 3 2.3\n",
                                               "1000", "1002", "1")));
    applyCurveLines(session,
                    {"A. : | FUN=MATH,GR,2,0,0,1", "B. : | FUN=MATH,A,3,0,0,1", "RHOB. : | FUN=MATH,B,1,0,1,1"},
                    FigureRules::trueFigures);
    ASSERT_TRUE(selectChannels(session, {"RHOB", "GR"}).empty());
    ASSERT_TRUE(run().completed);
    EXPECT_EQ(rows(), (Rows{{1000, 7, 1}, {1001, 13, 2}, {1002, 19, 3}}));
}

TEST_F(WholePassTest, aFirstInputWithoutChannelsHasItsRateChecked) {
    // Its coarser step starts the filling of gaps, which then goes on with the inputs behind.
    load(0, folder.writeLines("a.las", lasText("", "1\n2\n3\n", "1", "3", "1")));
    load(1, folder.writeLines("b.las", lasText("GR.   :\n", "1 1\n1.5 -999.25\n2 3\n2.5 4\n3 5\n", "1", "3", "0.5")));
    ASSERT_EQ(session.channelCount(0), 0);
    session.tables.setting(PrdRow::SampleRate) = "0.5";
    ASSERT_TRUE(run().completed);
    EXPECT_EQ(rows(), (Rows{{1, 1}, {1.5, 2}, {2, 3}, {2.5, 4}, {3, 5}}));
}

TEST_F(WholePassTest, aLaterSlotOverwritesWithItsNullsIncluded) {
    load(0, folder.writeLines("a.las", lasText("GR.   :\n", "1 1\n2 2\n3 3\n4 4\n", "1", "4", "1")));
    load(1, folder.writeLines("b.las", lasText("GR.   :\n", "3 30\n4 -999.25\n5 50\n", "3", "5", "1")));
    Table& outputs = session.tables.outputs();
    // Hand-made link: slot 1's channel feeds the first column, the second column is left out.
    outputs.text(linkRow(1, Link::Mnem), 1) = "GR";
    outputs.text(linkRow(1, Link::Curve), 1) = "1";
    outputs.text(linkRow(1, Link::From), 1) = "3";
    outputs.text(linkRow(1, Link::To), 1) = "5";
    outputs.setCheck(SrdRow::Use, 2, Check::Unchecked);
    ASSERT_TRUE(run().completed);
    EXPECT_EQ(rows(), (Rows{{1, 1}, {2, 2}, {3, 30}, {4, lasNull}, {5, 50}}));
    // A link that rounds to one sample copies nothing.
    outputs.text(linkRow(1, Link::From), 1) = "5";
    ASSERT_TRUE(run("single.las").completed);
    EXPECT_EQ(rows("single.las")[4], (std::vector<double>{5, lasNull}));
}

TEST_F(WholePassTest, aCoarserInputFillsLinearlyAndSoDoTheOnesBehindIt) {
    load(0, folder.writeLines("a.las", lasText("A.   :\n", "0.5 1\n2.5 5\n", "0.5", "2.5", "1")));
    load(1, folder.writeLines("b.las", lasText("B.   :\n", "0.5 1\n1.0 -999.25\n1.5 3\n", "0.5", "1.5", "0.5")));
    session.tables.setting(PrdRow::From) = "0.5";
    session.tables.setting(PrdRow::To) = "2.5";
    ASSERT_TRUE(run().completed);
    EXPECT_EQ(rows(), (Rows{{0.5, 1, 1}, {1, 2, 2}, {1.5, 3, 3}, {2, 4, lasNull}, {2.5, 5, lasNull}}));
}

TEST_F(WholePassTest, plainAsciiHasItsOwnHeadsAndSeparators) {
    load(0, folder.writeLines("a.las", lasText("GR.GAPI   :\n", "1 1.5\n2 -999.25\n", "1", "2", "1")));
    session.tables.setChecked(PrdRow::PlainAscii, true);
    struct Case {
        const char *style, *separator, *expected;
    };
    const std::vector<Case> cases = {
        {"No Header", "Comma", "1.00000,1.50000\r\n2.00000,-999.25000\r\n"},
        {"MNEM", "Tab", "         DEPT           GR\r\n1.00000\t1.50000\r\n2.00000\t-999.25000\r\n"},
        {"MNEM.UNIT", "Space",
         "       DEPT.M      GR.GAPI\r\n      1.00000      1.50000\r\n      2.00000   -999.25000\r\n"},
        {"One line each", "Space",
         "         DEPT           GR\r\n            M         GAPI\r\n      1.00000      1.50000\r\n      2.00000   "
         "-999.25000\r\n"},
    };
    for (const Case& row : cases) {
        session.tables.option(PrdRow::PlainAscii) = row.style;
        session.tables.secondOption(PrdRow::PlainAscii) = row.separator;
        ASSERT_TRUE(run("plain.txt").completed);
        EXPECT_EQ(folder.read("plain.txt"), row.expected) << row.style;
    }
}

TEST_F(WholePassTest, manyThreadsWriteTheBytesOfOne) {
    std::string data;
    for (int line = 0; line < 120; ++line) {
        data += formatMask(1000 + line * 0.5 + (line == 60 ? 0.5 : 0), 1);
        for (int channel = 0; channel < 4; ++channel)
            data += " " + formatMask(line % 7 == 6 ? -999.25 : line * 1234567.0 * channel / 3, channel);
        data += "\n";
    }
    load(0, folder.writeLines("a.las", lasText("A.M :\nB.FT :\nC. :\nD. :\n", data, "1000", "1060", "0.5")));
    const struct {
        const char* name;
        std::function<void()> set;
    } cases[] = {{"as it is", [] {}},
                 {"deep to shallow", [&] { session.tables.setting(PrdRow::Direction) = "Deep to Shallow"; }},
                 {"another unit", [&] { session.tables.outputs().text(SrdRow::Unit, 2) = "M"; }},
                 {"wrapped", [&] { session.tables.setting(PrdRow::Wrap) = "YES"; }},
                 {"resampled", [&] { session.tables.setting(PrdRow::SampleRate) = "0.25"; }},
                 {"separated", [&] {
                      session.tables.setChecked(PrdRow::PlainAscii, true);
                      session.tables.secondOption(PrdRow::PlainAscii) = "Comma";
                  }}};
    for (const auto& row : cases) {
        row.set();
        app.run.workers = {};
        const RunOutcome outcome = run("one.las");
        ASSERT_TRUE(outcome.completed) << row.name << outcome.refusal;
        for (const Workers workers : {Workers{1, 300}, Workers{3, 40}, Workers{2, 1500}}) {
            app.run.workers = workers;
            const RunOutcome again = run("many.las");
            EXPECT_EQ(folder.read("many.las"), folder.read("one.las")) << row.name << ", " << workers.pieceBytes;
            EXPECT_EQ(again.items.at(0).pass.overflowCount, outcome.items.at(0).pass.overflowCount) << row.name;
            EXPECT_EQ(again.items.at(0).pass.records, outcome.items.at(0).pass.records) << row.name;
        }
    }
}

TEST_F(WholePassTest, failuresWriteNothingAndSayWhy) {
    const std::string input = folder.writeLines("a.las", lasText("GR.   :\n", "1 1\n2 2\n", "1", "2", "1"));
    load(0, input);
    app.run.targetFile = input;
    const std::string before = folder.read("a.las");
    RunOutcome outcome = processMMM(app, session, {});
    EXPECT_FALSE(outcome.completed);
    EXPECT_EQ(outcome.refusal, "input and output are the same file");
    EXPECT_EQ(folder.read("a.las"), before);

    app.run.targetFile = folder.path("missing/out.las");
    outcome = processMMM(app, session, {});
    EXPECT_FALSE(outcome.completed);
    EXPECT_FALSE(outcome.refusal.empty());

    folder.write("old.las", "old");
    app.run.targetFile = folder.path("old.las");
    app.run.cancelRequested = true;
    RunRequest beside;
    beside.outputMode = OutputFile::Mode::Beside;
    EXPECT_FALSE(processMMM(app, session, beside).completed);
    EXPECT_EQ(folder.read("old.las"), "old") << "a cancelled run leaves the old file";
}

TEST_F(WholePassTest, sameFolderForManyFilesIsRefused) {
    app.run.commandMode = false;
    BrowserSelection selection{folder.path(), folder.path(), {"a.las", "b.las"}};
    RunRequest request;
    request.browser = &selection;
    EXPECT_EQ(processMMM(app, session, request).refusal, "source and destination folder are the same");
    EXPECT_TRUE(app.run.batchRunning) << "stays set until the next run clears it";
}

TEST(TwoProcessesTest, runSideBySideWithoutKnowingEachOther) {
    const auto oneRun = [](int base, std::string* written) {
        test::TempFolder folder;
        test::MemoryPlatform platform;
        SilentInterface silent;
        App app(silent, platform);
        app.run.commandMode = true;
        Session session;
        openSession(app, session);
        std::string data;
        for (int line = 0; line < 500; ++line) data += std::to_string(base + line) + " " + std::to_string(line) + "\n";
        session.slots[0].path = folder.writeLines(
            "a.las", lasText("GR.   :\n", data, std::to_string(base), std::to_string(base + 499), "1"));
        Open4Files(app, session, 0);
        app.run.targetFile = folder.path("out.las");
        processMMM(app, session, {});
        *written = folder.read("out.las");
    };
    std::string one, other, alone;
    std::thread first(oneRun, 1000, &one), second(oneRun, 5000, &other);
    first.join();
    second.join();
    oneRun(1000, &alone);
    EXPECT_EQ(one, alone);
    EXPECT_NE(one, other);
    EXPECT_NE(one.find("1499.00000    499.00000"), std::string::npos);
}

}  // namespace
}  // namespace welvane
