#include "las/statistics.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "las/channel_statistics.h"
#include "las/well.h"
#include "shared/text.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::ScriptedInterface;
using test::smallWell;
using test::TempFolder;

LasStatistics statisticsOf(const std::string& path, const std::string& formation = "") {
    ScriptedInterface user;
    RunState run;
    LasStatistics result;
    EXPECT_EQ(readLasStatistics(LasFile(path), formation, result, run, user), StepResult::Done);
    return result;
}

TEST(Statistics, smallWell) {
    const TempFolder folder;
    const LasStatistics result = statisticsOf(folder.writeLines("a.las", smallWell()));
    EXPECT_EQ(result.depthUnit, "M");
    EXPECT_EQ(result.top, 1669.375);
    EXPECT_EQ(result.bottom, 1670);
    ASSERT_EQ(result.channels.size(), 3U);
    EXPECT_EQ(result.channels[0].count, 0) << "the index has no statistics";
    const ChannelStatistics& gr = result.channels[1];
    EXPECT_EQ(gr.field.desc, "GAMMA RAY");
    EXPECT_EQ(gr.minimum, 10);
    EXPECT_EQ(gr.minimumDepth, 1670);
    EXPECT_EQ(gr.maximum, 60);
    EXPECT_EQ(gr.maximumDepth, 1669.375);
    EXPECT_EQ(gr.count, 5);
    EXPECT_EQ(gr.mean, 36);
    EXPECT_NEAR(gr.standardDeviation, std::sqrt(430.0), 1e-12);
    EXPECT_EQ(gr.footageText, "0.3750");
    EXPECT_EQ(gr.intervalText, "1669.9- 1670.0 /1669.4- 1669.6");
    ASSERT_EQ(gr.intervals.size(), 2U);
    EXPECT_EQ(gr.intervals[0].top, 1669.875);
    EXPECT_EQ(gr.intervals[1].bottom, 1669.625);
    EXPECT_EQ(result.channels[2].intervalText, "1669.4- 1670.0");
    EXPECT_EQ(result.channels[2].footage, 0.625);
}

TEST(Statistics, formationOfTheTopsBlock) {
    const TempFolder folder;
    const std::string path = folder.writeLines("a.las", smallWell());
    // The block tells feet: 5478.0 is 1669.694 m, 5478.6 is 1669.877 m.
    const LasStatistics upper = statisticsOf(path, "upper");
    EXPECT_TRUE(upper.formationFound);
    EXPECT_NEAR(upper.top, 1669.6944, 1e-9);
    EXPECT_NEAR(upper.bottom, 1669.87728, 1e-9);
    EXPECT_EQ(upper.channels[1].count, 1);
    EXPECT_EQ(upper.channels[1].standardDeviation, 0);
    EXPECT_EQ(upper.channels[2].count, 2);
    EXPECT_EQ(statisticsOf(path, "Lower").channels[2].count, 1) << "no next top: to the data's end";
    const LasStatistics none = statisticsOf(path, "Mid");
    EXPECT_FALSE(none.formationFound);
    EXPECT_EQ(none.formation, "Mid ");
    EXPECT_EQ(none.channels[2].count, 6);
}

TEST(Statistics, wrappedReadsLikeUnwrapped) {
    const TempFolder folder;
    const std::string path = folder.writeLines("a.las", smallWell());
    ScriptedInterface user;
    RunState run;
    std::string state;
    ASSERT_EQ(convertWrap(LasFile(path), folder.path("w.las"), state, run, user), StepResult::Done);
    const LasStatistics plain = statisticsOf(path);
    const LasStatistics wrapped = statisticsOf(folder.path("w.las"));
    ASSERT_EQ(plain.channels.size(), wrapped.channels.size());
    EXPECT_EQ(plain.top, wrapped.top);
    for (std::size_t index = 0; index < plain.channels.size(); ++index) {
        EXPECT_EQ(plain.channels[index].mean, wrapped.channels[index].mean);
        EXPECT_EQ(plain.channels[index].intervalText, wrapped.channels[index].intervalText);
        EXPECT_EQ(plain.channels[index].minimumDepth, wrapped.channels[index].minimumDepth);
    }
}

TEST(Statistics, columnsThatTouchAreCutByPlace) {
    const TempFolder folder;
    const std::string head = "~W\nSTRT.F 1 : x\nNULL. -999.2500 : x\n~C\nDEPT.F : x\nA. : x\nB. : x\n~A\n";
    const LasStatistics result =
        statisticsOf(folder.writeLines("a.las", head + "    1.00   10.00    5.00\n    2.00 -999.25-1000.00\n"
                                                       "    3.00   30.00    7.00\n    4.00   40.00    8.00\n"));
    EXPECT_EQ(result.channels[1].count, 3) << "-999.25 is the null that the header writes as -999.2500";
    EXPECT_EQ(result.channels[2].minimum, -1000);
    // The length of a line divides by the channels, but its words do not stand in even columns.
    const LasStatistics loose =
        statisticsOf(folder.writeLines("b.las", head + "1.0 200.25 3.0\n2.0 100.25 4.0\n3.0 300.25 5.0\n"));
    EXPECT_EQ(loose.channels[1].maximum, 300.25);
    EXPECT_EQ(loose.channels[2].minimum, 3);
}

TEST(Statistics, emptyAndExtremeChannels) {
    const TempFolder folder;
    const LasStatistics result =
        statisticsOf(folder.writeLines("a.las",
                                       "~W\nSTRT.F 1 : x\nNULL. -9 : x\n~C\nDEPT. : x\nA. : x\nB. : x\n~A\n"
                                       "1 -9 2e10\n2 -9 -3e10\n3 -9 1e300\n4 -9 -9\n"));
    EXPECT_EQ(result.channels[1].intervalText, "");
    EXPECT_EQ(result.channels[1].footageText, "0.0000");
    EXPECT_EQ(result.channels[1].maximum, 0);
    EXPECT_EQ(result.channels[1].maximumDepth, 0);
    EXPECT_EQ(result.channels[2].maximum, 1e300);
    EXPECT_EQ(result.channels[2].minimum, -3e10);
    EXPECT_EQ(result.channels[2].count, 3);
}

TEST(Statistics, gapsOfTheHeaderAreTold) {
    const struct {
        const char *well, *title, *text, *unit;
    } cases[] = {
        {"STRT.F 1 : x\n", "Null Value Absent!", "Null Value not specified in header of this LAS. Assuming -999.25.",
         "F"},
        {"STRT. 1 : x\nNULL. -999.25 : x\n", "Depth Units Absent!",
         "Depth Units not specifed in header of this LAS. Assuming FT.", "FT"},
        {"STRT.S 1 : x\nNULL. -999.25 : x\n", "Unusual Depth Units",
         "Depth Units, S, are not as expected (F or M). Using FT", "FT"},
    };
    for (const auto& row : cases) {
        const TempFolder folder;
        ScriptedInterface user;
        user.willAnswer(Answer::Ok);
        RunState run;
        run.commandMode = true;  // these are told in command mode too
        LasStatistics result;
        const std::string path = folder.writeLines(
            "a.las", std::string("~W\n") + row.well + "~C\nDEPT. : x\nA. : x\n~A\n1 2\n2 -999.25\n3 4\n");
        ASSERT_EQ(readLasStatistics(LasFile(path), "", result, run, user), StepResult::Done);
        EXPECT_EQ(user.asked().at(0).title, row.title);
        EXPECT_EQ(user.asked().at(0).text, row.text);
        EXPECT_EQ(result.depthUnit, row.unit);
        EXPECT_EQ(result.channels[1].count, 2);
    }
}

TEST(Statistics, cancelAndFilesWithoutData) {
    const TempFolder folder;
    SilentInterface user;
    RunState run;
    LasStatistics result;
    EXPECT_EQ(readLasStatistics(LasFile(folder.writeLines("a.las", "~C\nDEPT. : x\n")), "", result, run, user),
              StepResult::Failed);
    EXPECT_EQ(readLasStatistics(
                  LasFile(folder.writeLines("b.las", "~V\nWRAP. YES : x\n~C\nDEPT. : x\n~A\n1\n2 3\n4 5 6\n7\n")), "",
                  result, run, user),
              StepResult::Failed);
    run.cancelRequested = true;
    EXPECT_EQ(readLasStatistics(LasFile(folder.writeLines("c.las", smallWell())), "", result, run, user),
              StepResult::Cancelled);
}

/// Blocks of records summed up apart give what one plain walk over all samples gives, also where nulls and intervals
/// cross from block to block and the values are large beside their spread.
TEST(TrueStatistics, manyBlocksGiveWhatOneWalkGives) {
    constexpr unsigned seed = 11;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::string text = "~W\n STRT.M 1 :\n NULL. -9 :\n~C\n DEPT.M :\n A. :\n~A\n";
    std::vector<double> values;
    std::size_t intervals = 0;
    bool inside = false;
    for (int record = 0; record < 9000; ++record) {
        const bool null = random() % 1000 == 0;
        const double value = 1e9 + static_cast<double>(random() % 100);
        text +=
            std::to_string(9000 - record) + (null ? " -9\n" : " " + std::to_string(static_cast<long>(value)) + "\n");
        intervals += !null && !inside ? 1U : 0U;
        inside = !null;
        if (!null) values.push_back(value);
    }
    double mean = 0, squares = 0;
    for (const double value : values) mean += (value - 1e9) / static_cast<double>(values.size());
    for (const double value : values) squares += (value - 1e9 - mean) * (value - 1e9 - mean);
    const TempFolder folder;
    const LasFile file(folder.write("a.las", text), FigureRules::trueFigures);
    ScriptedInterface user;
    RunState run;
    RunTurn turn(run, user, file.bytes().size());
    const auto result = readTrueStatistics(file, {}, "a.las", turn);
    ASSERT_TRUE(result);
    const ChannelStatistics& channel = result->channels.at(1);
    EXPECT_EQ(channel.count, static_cast<std::int64_t>(values.size()));
    EXPECT_NEAR(channel.mean, 1e9 + mean, 1e-6);
    EXPECT_NEAR(channel.standardDeviation, std::sqrt(squares / static_cast<double>(values.size() - 1)), 1e-6);
    EXPECT_EQ(channel.intervals.size(), intervals);
    EXPECT_EQ(result->top, 1);
    EXPECT_EQ(result->bottom, 9000);
    EXPECT_TRUE(result->notes.empty());
}

}  // namespace
}  // namespace welvane
