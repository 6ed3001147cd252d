#include "session/tvd.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "shared/numbers.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

constexpr double radians = 0.0174532778;  // the program's own, not pi / 180

class TvdTest : public testing::Test {
  protected:
    TvdTest() { setupTVD(trd()); }
    Table& trd() { return session_.tables.trd; }
    /// Rows of MD, TVD, deviation, azimuth from the tie point on.
    void fill(const std::vector<std::vector<std::string>>& rows) {
        setupTVD(trd());
        for (std::size_t row = 0; row < rows.size(); ++row)
            for (std::size_t place = 0; place < rows[row].size(); ++place)
                trd().text(2 + row, 1 + place) = rows[row][place];
    }
    std::string row(int number) {
        std::string result;
        for (int place = 1; place <= 4; ++place) result += (place > 1 ? " " : "") + trd().text(number, place);
        return result;
    }
    std::vector<SurveyRow>& survey() { return session_.inclinometry.rows; }

    Session session_;
    test::ScriptedInterface user_;
    test::TempFolder folder_;
};

TEST_F(TvdTest, SetUpShowsHeadsUnitsAndATiePointOfZeros) {
    EXPECT_EQ(row(0), "MD TVD Deviation  Azimuth ");
    EXPECT_EQ(row(1), "F F (Deg) (Deg)");
    EXPECT_EQ(row(2), "0.00 0.00 0.00 0.00");
    EXPECT_EQ(trd().text(2, 0), "Tie Point >");
    EXPECT_EQ(trd().backColour(2, 1), 0x80FFFFU);
    setSurveyUnit(trd(), SurveyUnit::Metres);
    EXPECT_EQ(row(1), "M M (Deg) (Deg)");
    EXPECT_EQ(row(2), "0.00 0.00 0.00 0.00");
    setupTVD(trd());
    EXPECT_EQ(surveyUnit(trd()), SurveyUnit::Metres);
}

TEST(TvdStep, constantDeviation) {
    for (const double angle : {0.0, 10.0, 45.0, 89.0, 90.0})
        EXPECT_NEAR(TVD_C(1000, 1100, angle, angle), 100 * std::cos(angle * radians), 1e-12) << angle;
    EXPECT_EQ(TVD_C(500, 500, 1, 80), 0);
    // The constant is not pi / 180: a horizontal step of 100 gains 0.7e-4 less than nothing.
    EXPECT_NEAR(TVD_C(0, 1e6, 90, 90), 1e6 * std::cos(90 * radians), 1e-9);
    EXPECT_GT(std::fabs(TVD_C(0, 1e6, 90, 90)), 1);
}

TEST(TvdStep, ConstantBuildIsAnArc) {
    // On an arc of radius R the vertical gain is R (sin b - sin a), with R = length / (b - a).
    for (const auto& [from, to] : {std::pair{0.0, 3.0},
                                   {0.0, 1.9},
                                   {10.0, 11.9999},
                                   {10.0, 12.0},
                                   {30.0, 75.0},
                                   {80.0, 95.0},
                                   {40.0, 10.0},
                                   {0.0, 90.0}}) {
        const double radius = 100 / ((to - from) * radians);
        EXPECT_NEAR(TVD_C(2000, 2100, from, to), radius * (std::sin(to * radians) - std::sin(from * radians)), 1e-9)
            << from << " to " << to;
    }
    // The closed form is used from two degrees on, the series below; both are the same there.
    EXPECT_NEAR(TVD_C(0, 100, 20, 22), TVD_C(0, 100, 20, 22 - 1e-9), 1e-8);
}

TEST(TvdStep, stepBackwardsSwapsTheDepthsOnly) {
    EXPECT_EQ(TVD_C(1100, 1000, 0, 3), TVD_C(1000, 1100, 0, 3));
}

TEST_F(TvdTest, ComputesDownFromTheTiePoint) {
    fill({{"1000", "990", "0", "0"}, {"1200", "", "30", "10"}, {"1100", "", "0", "10"}});
    ASSERT_TRUE(buildTVDTable(session_, user_));
    EXPECT_EQ(row(3), "1100.00 1090.00 0.00 10.00");
    // 100 (sin 30) / (pi / 6) = 95.493
    EXPECT_EQ(row(4), "1200.00 1185.49 30.00 10.00");
    ASSERT_EQ(survey().size(), 3U);
    EXPECT_EQ(survey()[2].tvd, 1185.49F);
    EXPECT_EQ(survey()[2].azimuth, 10);
}

TEST_F(TvdTest, TiePointMustBeComplete) {
    for (const std::vector<std::string>& tie :
         {std::vector<std::string>{"", "0", "0"}, {"0", "", "0"}, {"0", "0", ""}}) {
        fill({tie, {"100", "", "0"}});
        user_.willAnswer(Answer::Ok);
        EXPECT_FALSE(buildTVDTable(session_, user_));
        EXPECT_EQ(user_.asked().back().title, "Tie Point Data Incomplete!");
        EXPECT_EQ(user_.asked().back().text,
                  "You must enter a tie point MD, TVD and Deviation angle in first Tie Point row.");
        EXPECT_EQ(trd().text(3, 2), "");
    }
}

TEST_F(TvdTest, incompleteRowIsTold) {
    fill({{"0", "0", "0", "0"},
          {"100", "", "0", ""},
          {"200", "", "", "5"},
          {"", "", "", ""},
          {"300", "", "0", "5"},
          {"", "", "7", ""}});
    user_.willAnswer(Answer::Ok);
    user_.willAnswer(Answer::Ok);
    EXPECT_TRUE(buildTVDTable(session_, user_));
    ASSERT_EQ(user_.asked().size(), 2U);
    EXPECT_EQ(user_.asked()[0].title, "TVD Data Table Incomplete!");
    EXPECT_EQ(
        user_.asked()[0].text,
        "Incomplete data found at row 4. You must have a Measured depth and Deviation for every row you want to use.");
    EXPECT_EQ(user_.asked()[1].text.substr(0, 31), "Incomplete data found at row 6.");
    EXPECT_EQ(trd().text(3, 2), "100.00");
    EXPECT_EQ(trd().text(5, 2), "100.00");  // from the empty TVD of row 4
}

TEST_F(TvdTest, SortsByNumberAndKeepsEmptyRowsBehind) {
    fill({{"5", "5", "0", "0"}, {"1000", "", "2", ""}, {"", "", "", ""}, {"99.999", "", "1", ""}, {"", "", "9", ""}});
    sortGrd(session_);
    EXPECT_EQ(row(3), "100.00  1.00 ");
    EXPECT_EQ(row(4), "1000.00  2.00 ");
    EXPECT_EQ(row(5), "  9.00 ");
    EXPECT_EQ(row(6), "   ");
}

TEST_F(TvdTest, TableIsHeldInFeetAndShownInItsUnit) {
    fill({{"1000", "999.5", "1", "2"}, {"2000", "1999", "3", "4"}});
    setSurveyUnit(trd(), SurveyUnit::Metres);
    EXPECT_EQ(trd().text(2, 1), "1000");
    copyTrdToInclinometry(session_);
    EXPECT_NEAR(survey()[1].md, 2000 / 0.3048, 1e-3);
    EXPECT_EQ(survey()[1].deviation, 3);
    survey().push_back({-999.25F, 0, 0, 0});
    survey().push_back({1, 1, 1, 1});
    copyInclinometryToTrd(session_);
    EXPECT_EQ(row(3), "2000.00 1999.00 3.00 4.00");
    EXPECT_EQ(row(4), "   ");
}

TEST_F(TvdTest, ChangesAreMarkedUntilTheyAreCopied) {
    fill({{"1", "1", "0", "0"}, {"2", "2", "0", "0"}});
    EXPECT_FALSE(trdChanged(trd()));
    updateInclinometry(session_);
    EXPECT_TRUE(survey().empty());
    markTrdChanged(trd());
    updateInclinometry(session_);
    EXPECT_EQ(survey().size(), 2U);
    EXPECT_FALSE(trdChanged(trd()));
    pasteIntoTrd(trd(), 3, 1, "10\t\t1\r\n20\t\t2\n");
    EXPECT_EQ(row(3), "10  1 0");
    EXPECT_EQ(row(4), "20  2 ");
}

struct FileCase {
    const char* name;
    const char* text;
    bool survey;
};

TEST_F(TvdTest, TellsASurveyOfTheAcquisitionSystem) {
    const FileCase cases[] = {
        {"metres", "\n M 1000.0 999.5\n1100 2 30\n-1 -1 -1\n\n", true},
        {"feet, commas and tabs", "f,10\t10\n-1,-1.0\t-1\n", true},
        {"unit X", "X 1 2\n1100 2 30\n-1 -1 -1\n", false},
        {"four fields", "M 1 2 3\n-1 -1 -1\n", false},
        {"no end", "M 1 2\n1100 2 30\n", false},
        {"end with another number", "M 1 2\n-1 -1 -12\n", false},
        {"end not the last line", "M 1 2\n-1 -1 -1\n5 5 5\n", false},
        {"empty", "", false},
    };
    for (const FileCase& one : cases) {
        EXPECT_EQ(isTavirTVD(folder_.write("s.txt", one.text)), one.survey) << one.name;
    }
    EXPECT_FALSE(isTavirTVD(folder_.path("none")));
}

TEST_F(TvdTest, ReadsASurveyAndAsksToCompute) {
    const std::string path = folder_.writeLines(
        "s.txt", "M 1000 999.5\n\n1100.126 2.5 30\nremark line here\n1200 4 31\n-1 -1 -1\n9 9 9\n-1 -1 -1\n");
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        setSurveyUnit(trd(), SurveyUnit::Feet);
        user_.willAnswer(answer);
        ASSERT_TRUE(readTVDFile(path, session_, user_));
        EXPECT_EQ(user_.asked().back().title, "Tavir TVD Data File Detected!");
        EXPECT_EQ(user_.asked().back().text,
                  "\r\nFile was detected as a TAVIR inclinometry data file. Compute TVD depths now?\r\n"
                  "(If you select No, review the data, then click 'Compute TVD' button before leaving the window)");
        EXPECT_EQ(trd().data(0, 0), "M");
        EXPECT_EQ(surveyUnit(trd()), SurveyUnit::Metres);
        EXPECT_EQ(row(2), answer == Answer::No ? "1000.00 999.50 2.5 30" : "1000.00 999.50 2.50 30.00");
        EXPECT_EQ(row(3), answer == Answer::No ? "1100.13  2.5 30" : "1100.13 1099.53 2.50 30.00");
        EXPECT_EQ(trd().text(5, 1), "");
    }
}

TEST_F(TvdTest, ReadsAPlainTableAsItStandsAndWritesItBack) {
    const std::string path = folder_.writeLines("p.txt", "1000,999.5,2,30,extra,more\n\n1100.5\t1100\t3\t31\n");
    ASSERT_TRUE(readTVDFile(path, session_, user_));
    EXPECT_EQ(row(2), "1000 999.5 2 30");
    EXPECT_EQ(trd().text(2, 6), "more");
    EXPECT_EQ(row(3), "1100.5 1100 3 31");
    trd().text(4, 1) = "1200";
    trd().text(4, 3) = "4";
    ASSERT_TRUE(saveTVDFile(folder_.path("saved.txt"), session_));
    EXPECT_EQ(folder_.read("saved.txt"), "1000\t999.5\t2\t30\textra\tmore\r\n1100.5\t1100\t3\t31\r\n1200\t\t4\r\n");
    ASSERT_TRUE(readTVDFile(folder_.path("saved.txt"), session_, user_));
    EXPECT_EQ(row(4), "1200  4 ") << "an empty cell keeps its column";
    EXPECT_FALSE(saveTVDFile(folder_.path("no/folder.txt"), session_));
    EXPECT_FALSE(readTVDFile(folder_.path("none"), session_, user_));
    EXPECT_EQ(row(2), "0.00 0.00 0.00 0.00");
}

TEST_F(TvdTest, TooManyLinesAreToldOnce) {
    std::string text = "F 0 0\n";
    for (int line = 1; line <= 6000; ++line) text += std::to_string(line) + " 1 0\n";
    user_.willAnswer(Answer::Ok);
    user_.willAnswer(Answer::Yes);
    ASSERT_TRUE(readTVDFile(folder_.write("long.txt", text + "-1 -1 -1\n"), session_, user_));
    EXPECT_EQ(user_.asked().front().title, "Too Many Lines!");
    EXPECT_EQ(user_.asked().front().text,
              "There are more lines in the inclinometry data file than the TVD table can handle. Reduce the file to a "
              "max of 450 lines and try again. ");
    EXPECT_EQ(survey().size(), InclinometryTable::capacity);
    ASSERT_TRUE(readTVDFile(folder_.write("plain.txt", text), session_, user_));
    copyTrdToInclinometry(session_);
    EXPECT_EQ(survey().size(), InclinometryTable::capacity);
    // A line of a million commas or of noise may not widen the table without end.
    ASSERT_TRUE(
        readTVDFile(folder_.write("wide.txt", std::string(1'000'000, ',') + "\n" + std::string(100'000, '1') + "\n"),
                    session_, user_));
    EXPECT_LE(trd().columns(), 100);
}

TEST_F(TvdTest, ReadsPeoplesOwnSurveys) {
    const struct {
        const char* name;
        const char* text;
        const char *tie, *next;
    } cases[] = {
        {"heads in another order", "# well\nwellId,azim,inc,md\nA,5,0,0\nA,6,0,100\n", "0.00 0.00 0.00 5.00",
         "100.00 100.00 0.00 6.00"},
        {"MD and deviation", "10 0\n110 0\n", "10.00 10.00 0.00 ", "110.00 110.00 0.00 "},
        {"three columns", "MD\tdev\tazi\n10\t0\t1\n110\t0\t2\n", "10.00 10.00 0.00 1.00", "110.00 110.00 0.00 2.00"},
        {"columns of the table", "10 8 0 1\n110 0 0 2\n", "10.00 8.00 0.00 1.00", "110.00 108.00 0.00 2.00"},
        {"empty cells", "MD,INC,AZI\n10,0,1\n60,,185.3\n110,0,\n", "10.00 10.00 0.00 1.00", "110.00 110.00 0.00 "},
        {"empty cells between tabs, without heads", "10\t8\t0\t1\n60\t\t\t9\n110\t\t0\t\n", "10.00 8.00 0.00 1.00",
         "110.00 108.00 0.00 "},
        {"heads with units", "MD (ft),Inc (deg),Azi (deg)\n10,0,1\n110,0,2\n", "10.00 10.00 0.00 1.00",
         "110.00 110.00 0.00 2.00"},
        {"heads with units between blanks", "Azi [deg]  MD [ft]  Inc [deg]\n1 10 0\n2 110 0\n", "10.00 10.00 0.00 1.00",
         "110.00 110.00 0.00 2.00"},
        {"a short line of the table's columns", "10 8 0 1\n110 0 0\n", "10.00 8.00 0.00 1.00", "110.00 108.00 0.00 "},
        {"commas and blanks", "10, 0, 1\n110 0, 2\n", "10.00 10.00 0.00 1.00", "110.00 110.00 0.00 2.00"},
        {"a comma at the end of each line", "10,0,1,\n110,0,2,\n", "10.00 10.00 0.00 1.00", "110.00 110.00 0.00 2.00"},
        {"acquisition system", "F 10 8\n10 0 1\n110 0 2\n-1 -1 -1\n", "10.00 8.00 0.00 1.00", "10.00 8.00 0.00 1.00"},
    };
    for (const auto& one : cases) {
        ASSERT_TRUE(readSurvey(folder_.write("s.txt", one.text), session_, user_)) << one.name;
        EXPECT_EQ(row(2), one.tie) << one.name;
        EXPECT_EQ(row(3), one.next) << one.name;
        EXPECT_GE(survey().size(), 2U);
    }
    for (const auto& [text, unit] : {std::pair{"MD (m),Inc (deg)\n0,0\n9,0\n", SurveyUnit::Metres},
                                     std::pair{"Inc MD [ft]\n0 0\n0 9\n", SurveyUnit::Feet}}) {
        setSurveyUnit(trd(), unit == SurveyUnit::Feet ? SurveyUnit::Metres : SurveyUnit::Feet);
        ASSERT_TRUE(readSurvey(folder_.write("s.txt", text), session_, user_));
        EXPECT_EQ(surveyUnit(trd()), unit) << text;
    }
    for (const char* text : {"", "no survey\nat all\n"})
        EXPECT_FALSE(readSurvey(folder_.write("s.txt", text), session_, user_)) << text;
}

/// True vertical depth by the minimum curvature method, station by station, for a path in one vertical plane.
double minimumCurvature(const std::vector<std::pair<double, double>>& path, std::size_t station) {
    double depth = path[0].first;
    for (std::size_t i = 1; i <= station; ++i) {
        const double one = path[i - 1].second * M_PI / 180, other = path[i].second * M_PI / 180;
        const double bend = std::fabs(other - one), factor = bend == 0 ? 1 : 2 / bend * std::tan(bend / 2);
        depth += (path[i].first - path[i - 1].first) / 2 * (std::cos(one) + std::cos(other)) * factor;
    }
    return depth;
}

TEST_F(TvdTest, AgreesWithAnotherMethodOnALongWell) {
    // Straight down, built to 60 degrees, held, dropped to 20 and held again.
    std::vector<std::pair<double, double>> path;
    for (double md = 0; md <= 5100; md += 30)
        path.emplace_back(md, md < 600    ? 0
                              : md < 1800 ? (md - 600) / 20
                              : md < 3600 ? 60
                              : md < 4200 ? 60 - (md - 3600) / 15
                                          : 20);
    std::string text = "MD,INC\n";
    for (const auto& [md, deviation] : path) text += plainNumber(md) + "," + plainNumber(deviation) + "\n";
    setSurveyUnit(trd(), SurveyUnit::Metres);
    ASSERT_TRUE(readSurvey(folder_.write("path.csv", text), session_, user_));
    ASSERT_EQ(survey().size(), path.size());
    for (std::size_t station = 0; station < path.size(); ++station) {
        const double feet = mapDepth(session_.inclinometry, path[station].first / 0.3048, 0);
        EXPECT_NEAR(feet * 0.3048, minimumCurvature(path, station), 0.2) << path[station].first;
    }
}

TEST(MapDepth, InsideAndBeyondTheTable) {
    const std::vector<SurveyRow> bend = {{1000, 1000, 0, 0}, {1100, 1100, 0, 0}, {1200, 1150, 0, 0}};
    const std::vector<SurveyRow> repeated = {{1000, 900, 0, 0}, {1000, 900, 0, 0}, {1100, 980, 0, 0}};
    const std::vector<SurveyRow> flat = {{1000, 900, 0, 0}, {1100, 950, 0, 0}, {1200, 950, 0, 0}};
    const std::vector<SurveyRow> upAgain = {{0, 0, 0, 0}, {100, 100, 0, 0}, {200, 90, 0, 0}, {300, 120, 0, 0}};
    const struct {
        const char* name;
        std::vector<SurveyRow> rows;
        int direction;
        double depth, expected;
    } cases[] = {
        {"no rows", {}, 0, 5, 5},
        {"one row", {{1000, 900, 0, 0}}, 0, 1000, 1000},
        {"at a row", bend, 0, 1100, 1100},
        {"between rows", bend, 0, 1150, 1125},
        {"and back", bend, 1, 1125, 1150},
        {"any other direction is back", bend, -1, 1125, 1150},
        {"above, MD equals TVD", bend, 0, 500, 500},
        {"below goes on with the last slope", bend, 0, 1300, 1200},
        {"below and back", bend, 1, 1200, 1300},
        {"above, first station repeats the tie point", repeated, 0, 900, 820},
        {"at the repeated row", repeated, 0, 1000, 900},
        {"above, tie point and station equal in TVD", repeated, 1, 820, 900},
        {"horizontal end", flat, 0, 1300, 950},
        {"horizontal end cannot be mapped back", flat, 1, 1000, 1000},
        {"first pair that encloses the depth", upAgain, 1, 95, 95},
    };
    for (const auto& one : cases) {
        InclinometryTable table;
        table.rows = one.rows;
        EXPECT_NEAR(mapDepth(table, one.depth, one.direction), one.expected, 1e-9) << one.name;
    }
}

TEST(MapDepth, SearchingEqualsWalking) {
    InclinometryTable table;
    for (int row = 0; row < 100; ++row)
        table.rows.push_back({static_cast<float>(30 * row), static_cast<float>(20 * row + row * row * 0.05), 0, 0});
    InclinometryTable piece;
    for (double depth = 0; depth <= 2970; depth += 7.5) {
        const auto row = std::min<std::size_t>(98, static_cast<std::size_t>(depth / 30));
        piece.rows = {table.rows[row], table.rows[row + 1]};
        EXPECT_NEAR(mapDepth(table, depth, 0), mapDepth(piece, depth, 0), 1e-9) << depth;
        EXPECT_NEAR(mapDepth(table, mapDepth(table, depth, 0), 1), depth, 1e-3) << depth;
    }
}

}  // namespace
}  // namespace welvane
