#include "engine/placing.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "las/index_spacing.h"
#include "shared/numbers.h"

namespace welvane {
namespace {

/// "0 1 - 1+0.5": the record of each sample, "-" for none, with the share of the way to the next one.
std::string placed(const std::vector<double>& depths, double start, double step, int samples, double shift = 0) {
    InputData data;
    data.channels.columns = {depths};
    data.spacing = judgeSpacing(depths, 2, "");
    PassGrid grid;
    grid.start = start;
    grid.step = step;
    grid.sampleCount = samples;
    grid.stop = start + (samples - 1) * step;
    std::string text;
    for (const Placing::Sample& sample : placeRecords(grid, data, shift).samples) {
        text += text.empty() ? "" : " ";
        text += sample.record < 0 ? "-" : std::to_string(sample.record);
        if (sample.share > 0) text += "+" + stripZeros(formatMask(sample.share, 4));
    }
    return text;
}

TEST(Placing, samplesTakeTheNearestRecord) {
    struct Row {
        const char* what;
        std::vector<double> depths;
        double start, step;
        int samples;
        const char* expected;
        double shift = 0;
    };
    const std::vector<Row> rows = {
        {"the same grid", {1, 2, 3}, 1, 1, 3, "0 1 2"},
        {"from the bottom up", {3, 2, 1}, 1, 1, 3, "2 1 0"},
        {"a longer grid", {2, 3}, 1, 1, 4, "- 0 1 -"},
        {"a record is missing", {1, 2, 4}, 1, 1, 4, "0 1 - 2"},
        {"a coarser grid: of two equally near ones the shallower", {0, 0.5, 1, 1.5, 2}, 0.25, 1, 2, "0 2"},
        {"a coarser grid on the records", {0, 0.5, 1, 1.5, 2}, 0, 1, 3, "0 2 4"},
        {"moved by part of a step", {0, 1, 2}, 0.4, 1, 3, "0 1 2"},
        {"moved by half a step", {0, 1, 2}, 0.5, 1, 3, "0 1 2"},
        {"a finer grid lies between", {0, 1, 2}, 0, 0.25, 9, "0 0+0.25 0+0.5 0+0.75 1 1+0.25 1+0.5 1+0.75 2"},
        {"a finer grid spans no gap and goes beyond no end", {0, 1, 3}, -0.5, 0.5, 9, "- 0 0+0.5 1 - - - 2 -"},
        {"shifted down by a step", {1, 2, 3}, 1, 1, 3, "- 0 1", 1},
        {"no order, of one depth twice the later", {3, 1, 2, 1}, 1, 1, 3, "3 2 0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(placed(row.depths, row.start, row.step, row.samples, row.shift), row.expected) << row.what;
}

}  // namespace
}  // namespace welvane
