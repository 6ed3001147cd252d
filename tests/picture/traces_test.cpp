#include "picture/traces.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace welvane {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// Samples with stretches of none, from a seed.
std::vector<double> holedSamples(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<double> samples(count);
    for (std::size_t index = 0; index < count; ++index)
        samples[index] = random() % 500 == 0 ? 900 : static_cast<double>(random() % 100);
    for (int hole = 0; hole < 12; ++hole) {
        const std::size_t from = random() % count, length = random() % (count / 20);
        for (std::size_t index = from; index < std::min(count, from + length); ++index) samples[index] = missing;
    }
    return samples;
}

TEST(Extremes, ofBlocksAreThoseOfEverySample) {
    const std::vector<double> samples = holedSamples(5000, 3);
    const Extremes plain(samples), blocks(samples, 0);
    std::mt19937 random(4);
    for (int turn = 0; turn < 3000; ++turn) {
        const std::size_t begin = random() % samples.size(), end = begin + random() % (samples.size() - begin) + 1;
        const Extremes::Found one = plain.over(begin, end), two = blocks.over(begin, end);
        ASSERT_EQ(one.any, two.any) << begin << " " << end;
        ASSERT_TRUE(!one.any || (one.first == two.first && one.last == two.last && one.least == two.least &&
                                 one.greatest == two.greatest))
            << begin << " to " << end;
    }
}

struct TraceTest : ::testing::Test {
    const Area track{100, 0, 200, 400};
    DepthAxis axis{0, 4000, 0, 400};
    Scale scale{0, 1000};

    Trace trace(const std::vector<double>& depths, const std::vector<double>& values) {
        return traceOf(depths, values, pixelRows(depths, axis), axis, scale, track);
    }
};

/// Of each row of pixels what all samples reach must be reached by the curve that is drawn, and not more.
TEST_F(TraceTest, keepsTheExtremesOfEveryPixelRow) {
    constexpr std::size_t count = 100001;
    std::vector<double> depths(count);
    for (std::size_t index = 0; index < count; ++index) depths[index] = static_cast<double>(index) * 0.04;
    const std::vector<double> values = holedSamples(count, 5);
    const Trace drawn = trace(depths, values);
    struct Reach {
        double least = HUGE_VAL, greatest = -HUGE_VAL;
        void add(double x) {
            least = std::min(least, x);
            greatest = std::max(greatest, x);
        }
    };
    std::vector<Reach> wanted(402), reached(402);
    const auto row = [](double y) { return static_cast<std::size_t>(std::floor(y + 1e-9)); };
    for (std::size_t index = 0; index < count; ++index)
        if (!std::isnan(values[index])) wanted[row(axis.place(depths[index]))].add(100 + values[index] / 10);
    std::size_t points = 0;
    for (const auto& piece : drawn.inside.pieces) {
        points += piece.size();
        for (const Point& point : piece) reached[row(point.y)].add(point.x);
    }
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        ASSERT_EQ(reached[index].least, wanted[index].least) << index;
        ASSERT_EQ(reached[index].greatest, wanted[index].greatest) << index;
    }
    EXPECT_LE(points, 4u * 402);
}

TEST_F(TraceTest, gapsStayGapsAndASingleSampleIsADot) {
    const Trace drawn = trace({0, 100, 200, 300, 400, 500, 600}, {1, 2, missing, 4, missing, missing, 7});
    ASSERT_EQ(drawn.inside.pieces.size(), 3u);
    EXPECT_EQ(drawn.inside.pieces[0].size(), 2u);
    EXPECT_EQ(drawn.inside.pieces[1].size(), 1u);
    EXPECT_EQ(drawn.inside.pieces[2].size(), 1u);
    EXPECT_TRUE(trace({0, 1}, {missing, missing}).inside.pieces.empty());
}

TEST_F(TraceTest, aCurveBeyondItsScaleRunsAlongTheEdge) {
    const Trace drawn = trace({0, 100, 200, 300, 400}, {500, 2000, 3000, 500, -1});
    ASSERT_EQ(drawn.inside.pieces.size(), 1u);
    for (const Point& point : drawn.inside.pieces[0]) {
        EXPECT_GE(point.x, track.left);
        EXPECT_LE(point.x, track.right);
    }
    ASSERT_EQ(drawn.beyond.pieces.size(), 2u);
    EXPECT_EQ(drawn.beyond.pieces[0].front().x, track.right);
    EXPECT_EQ(drawn.beyond.pieces[0].back().y, axis.place(200));
    EXPECT_EQ(drawn.beyond.pieces[1].front().x, track.left);
}

TEST_F(TraceTest, aPartOfTheAxisShowsWhatGoesIntoAndOutOfIt) {
    axis = {150, 250, 0, 400};
    const Trace drawn = trace({0, 100, 200, 300, 400}, {1, 2, 3, 4, 5});
    ASSERT_EQ(drawn.inside.pieces.size(), 1u);
    ASSERT_EQ(drawn.inside.pieces[0].size(), 3u) << "one sample on each side, so that the line leaves the picture";
    EXPECT_EQ(drawn.inside.pieces[0].front().y, axis.place(100));
}

}  // namespace
}  // namespace welvane
