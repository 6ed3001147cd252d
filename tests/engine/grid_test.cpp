#include "engine/grid.h"

#include "engine/depth_limit.h"
#include "engine/pass_fixture.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

TEST(DepthLimitTest, signsBoundTheHeaderDepth) {
    struct Case {
        const char* text;
        double header, expected;
    };
    const std::vector<Case> cases = {
        {"1000", 1200, 1000},
        {">=1000", 1200, 1200},
        {">=1000", 800, 1000},
        {"=>1000", 800, 1000},
        {"<=1000", 1200, 1000},
        {"<=1000", 800, 800},
        {">1000", 1000, 1000},
        {">1000", 900, 1000},
        {"<1000", 900, 900},
        {"<1000", 1100, 1000},
        {"=1000", 1200, 1000},
        {"abc", 5, 0},
        {"", 5, 0},
        {"> =1000", 800, 1000},
    };
    for (const Case& row : cases)
        EXPECT_DOUBLE_EQ(depthLimit(row.text, row.header), row.expected) << row.text << " against " << row.header;
}

TEST(StepTest, isPositiveWithFourDecimals) {
    EXPECT_EQ(gridStep("-0.5", "F"), 0.5);
    EXPECT_EQ(gridStep("0.15244", "M"), 0.1524);
    EXPECT_EQ(gridStep("0.00004", "M"), 0);
}

class PassGridTest : public test::PassTest {
  protected:
    PassContext context{app, session, {}};
    void set(const char* from, const char* to, const char* step) {
        session.tables.setting(PrdRow::From) = from;
        session.tables.setting(PrdRow::To) = to;
        session.tables.setting(PrdRow::SampleRate) = step;
    }
};

TEST_F(PassGridTest, startAndStopAreOrderedAndDirectionIsItsOwn) {
    set("1010", "1000", "0.5");
    session.tables.setting(PrdRow::Direction) = "Deep to Shallow";
    ASSERT_TRUE(deriveGrid(context));
    EXPECT_EQ(context.grid.start, 1000);
    EXPECT_EQ(context.grid.stop, 1010);
    EXPECT_EQ(context.grid.sampleCount, 21);
    EXPECT_EQ(context.grid.direction, -1);
    EXPECT_EQ(context.grid.firstIndex, 21);
    EXPECT_EQ(context.grid.lastIndex, 1);
}

TEST_F(PassGridTest, stepOfZeroCancelsAndEmptiesTheRow) {
    set("0", "10", "0");
    EXPECT_FALSE(deriveGrid(context));
    EXPECT_EQ(session.tables.setting(PrdRow::SampleRate), "");
    EXPECT_TRUE(app.run.cancelRequested);
}

TEST_F(PassGridTest, decimalsGrowToTheStepInCommandMode) {
    set("1000", "1010", "0.1524");
    app.settings.format.dataDecimals = 2;
    ASSERT_TRUE(deriveGrid(context));
    EXPECT_EQ(app.settings.format.dataDecimals, 4);
    EXPECT_EQ(session.tables.setting(PrdRow::DataDecimals), "4");
}

TEST_F(PassGridTest, narrowFormatKeepsDataWidth) {
    set("1000", "1010", "0.1524");
    app.settings.format.dataWidth = 5;
    app.settings.format.dataDecimals = 4;
    ASSERT_TRUE(deriveGrid(context));
    EXPECT_EQ(app.settings.format.dataWidth, 5);
}

TEST_F(PassGridTest, gridsThatDoNotFitAreRefusedBeforeMemoryIsTaken) {
    set("0", "1000000000", "0.0001");
    EXPECT_FALSE(deriveGrid(context));
    EXPECT_NE(context.report.refusal.find("32 bits"), std::string::npos) << context.report.refusal;
    session.channels[0].resize(11);
    session.opened[0] = true;
    session.slots[0].path = "a.las";
    platform.memory = 1 << 20;
    set("0", "100000", "0.5");
    context.report.refusal.clear();
    EXPECT_FALSE(deriveGrid(context));
    EXPECT_NE(context.report.refusal.find("MB of memory"), std::string::npos) << context.report.refusal;
}

TEST_F(PassGridTest, theUserIsAskedOutsideCommandMode) {
    test::ScriptedInterface user;
    App asked{user, platform};
    Session own;
    openSession(asked, own);
    own.tables.setting(PrdRow::From) = "1000";
    own.tables.setting(PrdRow::To) = "1010";
    own.tables.setting(PrdRow::SampleRate) = "0.1524";
    asked.settings.format.dataDecimals = 2;
    user.willAnswer(Answer::Cancel);
    PassContext refused(asked, own, {});
    EXPECT_FALSE(deriveGrid(refused));
    EXPECT_TRUE(asked.run.cancelRequested);
    ASSERT_EQ(user.asked().size(), 1U);
    EXPECT_EQ(user.asked()[0].title, "Format Too Narrow!");
    EXPECT_EQ(user.asked()[0].text,
              "The specified number of decimal places (2), cannot display the full precision of the specified STEP "
              "(0.1524).  Press OK to make this "
              "change and continue.");
}

}  // namespace
}  // namespace welvane
