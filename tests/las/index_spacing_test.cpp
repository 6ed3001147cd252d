#include "las/index_spacing.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace welvane {
namespace {

using Kind = IndexSpacing::Kind;

struct Row {
    const char* what;
    std::vector<double> depths;
    std::size_t decimals;
    const char* header;
    Kind kind;
    double step;
    bool own;
    std::size_t missing, misfit;
};

TEST(IndexSpacing, stepsAreThoseOfTheData) {
    const std::vector<Row> rows = {
        {"as told", {100, 100.5, 101}, 1, "0.5", Kind::Regular, 0.5, false, 0, 0},
        {"from the bottom up, told without its sign", {101, 100.5, 100}, 1, "0.5", Kind::Regular, 0.5, false, 0, 0},
        {"told as 0", {100, 100.5, 101}, 1, "0", Kind::Regular, 0.5, true, 0, 0},
        {"not told", {100, 100.5, 101}, 1, "", Kind::Regular, 0.5, true, 0, 0},
        {"another is told", {100, 100.25, 100.5, 100.75}, 2, "0.152", Kind::Regular, 0.25, true, 0, 0},
        {"half of it is told", {100, 101, 102, 103}, 0, "0.5", Kind::Regular, 1, true, 0, 0},
        {"rounded to fewer decimals than it has",
         {100, 100.15, 100.3, 100.46},
         2,
         "0.1524",
         Kind::Regular,
         0.1524,
         false,
         0,
         0},
        {"by singles", {3877.1, 3877, 3876.9004, 3876.8004}, 4, "-0.1", Kind::Regular, 0.1, false, 0, 0},
        {"records are missing", {1, 2, 5, 6, 7}, 0, "1", Kind::Gaps, 1, false, 2, 0},
        {"records are missing, none is told", {1, 2, 5, 6, 7}, 0, "", Kind::Gaps, 1, true, 2, 0},
        {"the last is beside the grid", {1, 2, 3, 3.4}, 1, "1", Kind::Irregular, 0, false, 0, 3},
        {"the second is no rounding of any grid", {1, 2, 3.7}, 1, "1", Kind::Irregular, 0, false, 0, 2},
        {"to and fro", {1, 2, 3, 2.5, 4}, 1, "1", Kind::Irregular, 0, false, 0, 3},
        {"one depth twice", {1, 2, 2, 3}, 0, "1", Kind::Irregular, 0, false, 0, 2},
        {"one record", {7}, 0, "0.5", Kind::Regular, 0.5, false, 0, 0},
    };
    for (const Row& row : rows) {
        const IndexSpacing spacing = judgeSpacing(row.depths, row.decimals, row.header);
        EXPECT_EQ(spacing.kind, row.kind) << row.what;
        EXPECT_DOUBLE_EQ(spacing.step, row.step) << row.what;
        EXPECT_EQ(spacing.ownStep, row.own) << row.what;
        EXPECT_EQ(spacing.missing, row.missing) << row.what;
        EXPECT_EQ(spacing.misfit, row.misfit) << row.what;
        EXPECT_EQ(spacing.direction, row.depths.back() < row.depths.front() ? -1 : 1) << row.what;
    }
}

}  // namespace
}  // namespace welvane
