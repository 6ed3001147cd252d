#include "picture/scales.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <optional>
#include <vector>

#include "picture/axis.h"

namespace welvane {
namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

/// The stock library: what the scales are chosen by.
const ReferenceTables& stock() {
    static const ReferenceTables tables = [] {
        ReferenceTables read;
        readCurves(read, WELVANE_SOURCE_DIR "/data/curves.ini");
        readUnits(read, WELVANE_SOURCE_DIR "/data/units.ini");
        return read;
    }();
    return tables;
}

TEST(Scales, areThoseOfTheCurveGroupAndItsUnit) {
    struct Case {
        const char *mnem, *unit;
        std::vector<double> values;
        double left, right;
        bool logarithmic;
    };
    for (const Case& row : {Case{"GR", "GAPI", {40, 90}, 0, 150, false},
                            {"GRC", "API", {40, 90}, 0, 150, false},
                            {"ZDEN", "G/CC", {2.2, 2.6}, 1.95, 2.95, false},
                            {"RHOB", "KG/M3", {2200, 2600}, 1950, 2950, false},
                            {"NPHI", "V/V", {0.1, 0.3}, 0.45, -0.15, false},
                            {"CNC", "PU", {10, 30}, 45, -15, false},
                            {"NPHI", "%", {10, 30}, 45, -15, false},
                            {"DT", "US/FT", {60, 100}, 140, 40, false},
                            {"DT", "US/M", {200, 300}, 500, 100, false},
                            {"CALI", "MM", {210, 230}, 150, 400, false},
                            {"ILD", "OHM.M", {3, 40}, 0.2, 2000, true},
                            {"MYSTERY", "OHMM", {3, 40}, 0.2, 2000, true},
                            {"NPHI", "V/V", {10, 11, 30}, 10, 30, false},
                            {"ILD", "OHMM", {3e5, 4e6}, 1e5, 1e7, true},
                            {"MYSTERY", "FURLONG", {3.2, 47}, 0, 50, false},
                            {"MYSTERY", "", {7, 7, none}, 5.5, 8.5, false},
                            {"MYSTERY", "", {0, 0}, -1, 1, false},
                            {"MYSTERY", "", {none, none}, 0, 1, false},
                            {"MYSTERY", "", {-1e38, 1e38}, -1e38, 1e38, false}}) {
        const Scale scale = usualScale(stock(), {row.mnem, row.unit, row.values}).scale;
        const std::string name = std::string(row.mnem) + " " + row.unit;
        EXPECT_NEAR(scale.left, row.left, std::abs(row.left) * 1e-9) << name;
        EXPECT_NEAR(scale.right, row.right, std::abs(row.right) * 1e-9) << name;
        EXPECT_EQ(scale.logarithmic, row.logarithmic) << name;
    }
}

TEST(Scales, percentilesPassOverSpikes) {
    std::vector<double> values(1000);
    std::iota(values.begin(), values.end(), 1);
    values[3] = 1e30;
    values[700] = -1e30;
    const Scale scale = percentileScale(values);
    EXPECT_EQ(scale.left, 0);
    EXPECT_EQ(scale.right, 1000);
}

TEST(Scales, shareFallsWhereAValueLies) {
    struct Case {
        const char* name;
        Scale scale;
        double value, share;
    };
    for (const Case& row : {Case{"linear", {0, 150}, 75, 0.5},
                            {"turned round", {0.45, -0.15}, 0.3, 0.25},
                            {"beyond", {0, 150}, 300, 2},
                            {"decade", {0.2, 2000, true}, 20, 0.5},
                            {"decade turned round", {2000, 0.2, true}, 200, 0.25},
                            {"zero has no logarithm", {0.2, 2000, true}, 0, -HUGE_VAL},
                            {"nor has less, on the small side", {2000, 0.2, true}, -5, HUGE_VAL}}) {
        const double share = row.scale.share(row.value);
        if (std::isinf(row.share))
            EXPECT_EQ(share, row.share) << row.name;
        else
            EXPECT_NEAR(share, row.share, 1e-12) << row.name;
    }
}

TEST(Scales, gridHasDecadesWithTheirLines) {
    const GridLines grid = gridOf({0.2, 2000, true});
    ASSERT_EQ(grid.main.size(), 4u) << "1, 10, 100, 1000";
    EXPECT_EQ(grid.main[3], 1000);
    EXPECT_EQ(grid.fine.size(), 7u + 3 * 8) << "0.3 to 0.9, and 2 to 9 of three decades; 2000 is the edge";
    const GridLines linear = gridOf({0, 150});
    EXPECT_EQ(linear.main, std::vector<double>{75});
    EXPECT_EQ(linear.fine.size(), 8u);
    EXPECT_TRUE(gridOf({1e-300, 1e300, true}).fine.empty()) << "no thicket";
}

TEST(Axis, stepsAreRoundAndNumbersShowThem) {
    struct Case {
        double least, step;
        const char* number;
    };
    for (const Case& row :
         {Case{0.11, 0.2, "1000.2"}, {3, 5, "1005"}, {50, 50, "1050"}, {0, 1, "1001"}, {0.004, 0.005, "1000.005"}}) {
        EXPECT_NEAR(roundStep(row.least), row.step, 1e-12);
        EXPECT_EQ(axisNumber(1000 + row.step, row.step), row.number);
    }
    EXPECT_EQ(multiplesOf(0.1, 0.25, 0.6), (std::vector<double>{0.30000000000000004, 0.4, 0.5, 0.6000000000000001}));
    EXPECT_TRUE(multiplesOf(1e-9, 0, 1).empty());
}

}  // namespace
}  // namespace welvane
