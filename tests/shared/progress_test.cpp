#include "shared/progress.h"

#include <cmath>
#include <gtest/gtest.h>

namespace welvane {
namespace {

TEST(Progress, rateAndTimeLeftFollowTheStep) {
    ProgressMeter meter;
    meter.setTotal(100'000'000, 10);
    EXPECT_EQ(rateText(meter.read("Reading", 0, 10)), "") << "nothing is known at the begin";
    const ProgressReading half = meter.read("Reading", 0.5, 14);
    EXPECT_EQ(half.percent, 50);
    EXPECT_EQ(rateText(half), "  12.5 MB/s  0:04 left");
    EXPECT_EQ(rateText(meter.read("Writing", 0.5, 20)), "") << "another status is another step";
    EXPECT_EQ(rateText(meter.read("Writing", 0.75, 30)), "  7.5 MB/s  0:03 left");
    EXPECT_EQ(rateText(meter.read("Writing", 0.25, 31)), "") << "less than before: the next file";
    meter.setTotal(0, 40);
    meter.read("Writing", 0, 40);
    EXPECT_EQ(rateText(meter.read("Writing", 0.01, 47)), "  11:33 left");
}

TEST(Progress, aFractionIsHeldToWhatABarCanShow) {
    const struct {
        double given, held;
        int percent;
    } cases[] = {{-1, 0, 0}, {NAN, 0, 0}, {1.5, 1, 100}, {INFINITY, 1, 100}, {0.999, 0.999, 99}};
    for (const auto& row : cases) {
        const ProgressReading reading = ProgressMeter().read("", row.given, 1);
        EXPECT_EQ(reading.fraction, row.held) << row.given;
        EXPECT_EQ(reading.percent, row.percent) << row.given;
    }
    RunState run;
    run.statusText = "Writing ...";
    run.sourceLabel = "a.las";
    run.targetLabel = "b.las";
    for (const auto& [given, percent, stored] : {std::tuple{1.5F, 100, 1.0F}, std::tuple{-0.5F, 0, 0.0F},
                                                 std::tuple{NAN, 0, 0.0F}, std::tuple{0.996F, 100, 0.996F}}) {
        run.progressFraction = given;
        const ProgressLabels labels = progressLabels(run);
        EXPECT_EQ(labels.percent, percent) << given;
        EXPECT_EQ(run.progressFraction, stored) << "stored back";
        EXPECT_EQ(labels.status + labels.source + labels.target, "Writing ...a.lasb.las");
    }
}

TEST(Progress, spansOfTimeAreReadable) {
    for (const auto& [seconds, text] :
         {std::pair{0.4, "0:00"}, std::pair{59.6, "1:00"}, std::pair{3599.0, "59:59"}, std::pair{3723.0, "1:02:03"},
          std::pair{1e12, "99:59:59"}, std::pair{-3.0, "0:00"}})
        EXPECT_EQ(clockText(seconds), text);
}

}  // namespace
}  // namespace welvane
