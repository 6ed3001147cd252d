// The treatment of input columns on the grid: null filling, clip and depth offset.
#include <gtest/gtest.h>
#include <random>

#include "engine/null_fill.h"
#include "engine/resampling.h"
#include "support/memory_platform.h"

namespace welvane {
namespace {

constexpr double null = lasNull;
using Samples = std::vector<double>;

TEST(NullFillTest, gapsCloseByMode) {
    struct Case {
        const char* name;
        Samples given, linear, flatTop;
    };
    const std::vector<Case> cases = {
        {"inner gap", {5, null, null, 8}, {5, 6, 7, 8}, {5, 5, 5, 8}},
        {"gap of one", {10, null, 20}, {10, 15, 20}, {10, 10, 20}},
        {"only nulls", {null, null, null}, {null, null, null}, {null, null, null}},
        {"leading and trailing", {null, 4, null}, {null, 4, null}, {null, 4, 4}},
        {"two gaps", {1, null, 3, null, 7}, {1, 2, 3, 5, 7}, {1, 1, 3, 3, 7}},
        {"no gap", {1, 2}, {1, 2}, {1, 2}},
        {"one sample", {null}, {null}, {null}},
    };
    for (const Case& row : cases) {
        Samples linear = row.given, flat = row.given, none = row.given;
        fillColumn(linear, NullFill::Linear);
        fillColumn(flat, NullFill::FlatTop);
        fillColumn(none, NullFill::None);
        EXPECT_EQ(linear, row.linear) << row.name;
        EXPECT_EQ(flat, row.flatTop) << row.name;
        EXPECT_EQ(none, row.given) << row.name;
    }
}

/// The plain scan that the linear fill must equal: gap start, gap end, line between them, once more.
Samples fillLinearSlowly(Samples samples) {
    const int U = static_cast<int>(samples.size());
    const auto at = [&](int index) -> double& { return samples[static_cast<std::size_t>(index - 1)]; };
    int position = 1;
    while (true) {
        int a = -1, b = -1;
        for (int i = position; i <= U - 1 && a < 0; ++i)
            if (at(i) != null && at(i + 1) == null) a = i;
        if (a < 0) return samples;
        for (int i = a; i <= U - 1 && b < 0; ++i)
            if (at(i) == null && at(i + 1) != null) b = i;
        if (b < 0 || b == U) return samples;
        const double above = at(a), below = at(b + 1);
        for (int i = a + 1; i <= b; ++i) at(i) = (static_cast<double>(i - a) / ((b - a) + 1)) * (below - above) + above;
        position = b;
    }
}

TEST(NullFillTest, linearEqualsThePlainScanOnRandomColumns) {
    std::mt19937 random(20240607);
    for (int round = 0; round < 2000; ++round) {
        Samples samples(random() % 40);
        for (double& sample : samples) sample = random() % 3 == 0 ? static_cast<double>(random() % 1000) / 8 : null;
        Samples fast = samples;
        fillColumn(fast, NullFill::Linear);
        ASSERT_EQ(fast, fillLinearSlowly(samples)) << "round " << round;
    }
}

class ColumnTest : public ::testing::Test {
  protected:
    test::MemoryPlatform platform;
    SilentInterface silent;
    App app{silent, platform};
    Session session;

    /// Samples 1 to 6 on the grid 0, 1, ... 5, treated as one spliced channel.
    Samples treat(float offset, float top, float bottom, double step = 1, bool spliced = true) {
        PassContext context(app, session, {});
        context.grid.stop = 5 * step;
        context.grid.step = step;
        context.grid.sampleCount = 6;
        context.inputMatrix = Matrix(1, 6);
        for (int i = 0; i < 6; ++i) context.inputMatrix.column(0)[static_cast<std::size_t>(i)] = i + 1;
        SlotChannels channels(2);
        channels[1].spliced = spliced;
        channels[1].channelOffset = offset;
        channels[1].channelTop = top;
        channels[1].channelBottom = bottom;
        clipChannels(context, channels);
        offsetChannels(context, channels);
        const auto column = context.inputMatrix.column(0);
        return {column.begin(), column.end()};
    }
};

TEST_F(ColumnTest, offsetMovesWholeStepsAndRepeatsTheEdge) {
    EXPECT_EQ(treat(2, 0, 0), (Samples{1, 1, 1, 2, 3, 4}));
    EXPECT_EQ(treat(-2, 0, 0), (Samples{3, 4, 5, 6, 6, 6}));
    EXPECT_EQ(treat(2.5F, 0, 0), (Samples{1, 1, 1, 2, 3, 4})) << "a positive rest is dropped";
    EXPECT_EQ(treat(-2.5F, 0, 0), (Samples{4, 5, 6, 6, 6, 6})) << "a negative rest moves one more";
    EXPECT_EQ(treat(0.4F, 0, 0), (Samples{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(treat(-0.4F, 0, 0), (Samples{2, 3, 4, 5, 6, 6}));
    EXPECT_EQ(treat(1, 0, 0, 0.5), (Samples{1, 1, 1, 2, 3, 4})) << "two half steps";
    EXPECT_EQ(treat(2, 0, 0, 1, false), (Samples{1, 2, 3, 4, 5, 6})) << "a channel not spliced stays";
}

TEST_F(ColumnTest, clippedSamplesBecomeZero) {
    EXPECT_EQ(treat(0, 2, 0), (Samples{0, 0, 3, 4, 5, 6}));
    EXPECT_EQ(treat(0, 0, 3), (Samples{1, 2, 3, 4, 0, 0}));
    EXPECT_EQ(treat(0, 1, 4), (Samples{0, 2, 3, 4, 5, 0}));
    EXPECT_EQ(treat(1, 1, 4), (Samples{0, 2, 2, 3, 4, 0})) << "the offset works inside the limits";
    EXPECT_EQ(treat(0, 90, 0), (Samples{0, 0, 0, 0, 0, 0})) << "a limit beyond the grid";
}

TEST_F(ColumnTest, anOffsetBeyondTheGridSkipsOnlyItself) {
    EXPECT_EQ(treat(100, 0, 0).size(), 6U);
    EXPECT_EQ(treat(-100, 0, 0).size(), 6U);
}

}  // namespace
}  // namespace welvane
