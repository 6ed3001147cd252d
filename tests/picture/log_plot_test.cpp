#include "picture/log_plot.h"

#include <gtest/gtest.h>
#include <limits>

#include "picture/log_drawing.h"
#include "picture/svg.h"
#include "shared/failure.h"

namespace welvane {
namespace {

/// Sources of three samples, the values of every channel the same.
struct LogPlotTest : ::testing::Test {
    std::vector<double> depths{1000, 1001, 1002}, values{1, 2, 3};
    ReferenceTables reference;
    std::vector<PlotSource> sources;

    LogPlotTest() {
        for (const char* mnem : {"GR", "GRC"}) reference.curves.push_back({"GR", mnem, ""});
        reference.units = {{"Density", "G/C3", 1, 0}, {"Density", "K/M3", 1000, 0}};
    }
    void add(const std::string& name, const std::vector<std::pair<std::string, std::string>>& channels) {
        PlotSource source{.name = name,
                          .extent = {},
                          .title = {"Heron 4"},
                          .indexName = "DEPT",
                          .indexUnit = "M",
                          .depths = depths,
                          .channels = {}};
        for (const auto& [mnem, unit] : channels) source.channels.push_back({mnem, unit, values});
        sources.push_back(std::move(source));
    }
    /// The tracks of a plan, "GR+GRC,CALI;ILD", panels between "|".
    std::string planned(const PlotWishes& wishes) const {
        std::string text;
        for (const PlottedPanel& panel : planPlot(reference, sources, wishes).panels) {
            text += text.empty() ? "" : "|";
            for (std::size_t track = 0; track < panel.tracks.size(); ++track) {
                text += track == 0 ? "" : ";";
                for (std::size_t place = 0; place < panel.tracks[track].size(); ++place) {
                    text += place == 0 ? "" : ",";
                    const auto& channels = panel.tracks[track][place].channels;
                    for (std::size_t at = 0; at < channels.size(); ++at)
                        text += (at == 0 ? "" : "+") + sources[channels[at].source].channels[channels[at].channel].mnem;
                }
            }
        }
        return text;
    }
};

TEST_F(LogPlotTest, tracksAreByCustomOrAsWished) {
    add("a.las",
        {{"DT", "US/F"}, {"ILD", "OHMM"}, {"GR", "GAPI"}, {"X", "V"}, {"RHOB", "G/C3"}, {"Y", "V"}, {"ILM", "OHMM"}});
    add("b.las", {{"GRC", "GAPI"}, {"Z", "V"}, {"ILD", "OHMM"}});
    struct Case {
        const char* name;
        PlotWishes wishes;
        const char* tracks;
    };
    for (const Case& row : {Case{"custom", {}, "GR;ILD,ILM;RHOB;DT;X,Y|GRC;ILD;Z"},
                            {"over", {.layout = PlotLayout::Over}, "GR+GRC;ILD+ILD,ILM;RHOB;DT;X,Y,Z"},
                            {"some", {.curves = {readCurveChoice("y"), readCurveChoice("gr")}}, "GR;Y|GRC"},
                            {"one by two names", {.curves = {readCurveChoice("gr"), readCurveChoice("GRC")}}, "GR|GRC"},
                            {"wished", {.tracks = readTracks("ILD,RHOB; GRC")}, "ILD,RHOB;GR|ILD;GRC"},
                            {"wished over", {.tracks = readTracks("Z;GR"), .layout = PlotLayout::Over}, "Z;GR+GRC"}})
        EXPECT_EQ(planned(row.wishes), row.tracks) << row.name;
}

TEST_F(LogPlotTest, whatCannotBeFollowedIsTold) {
    add("a.las", {{"GR", "GAPI"}, {"ILD", "OHMM"}});
    struct Case {
        const char *tracks, *why;
    };
    for (const Case& row : {Case{"GR;XYZ", "there is no channel XYZ; there are GR, ILD"},
                            {"GR:log:-1:10", "GR: a logarithmic scale lies above 0"},
                            {"GR:5:5", "GR: both ends of its scale are 5"},
                            {"GR,,ILD", "'' is not of the form CURVE[:log|lin][:LEFT:RIGHT]"},
                            {"GR:logarithmic", "'GR:logarithmic' is not of the form CURVE[:log|lin][:LEFT:RIGHT]"},
                            {"GR:0", "'GR:0' is not of the form CURVE[:log|lin][:LEFT:RIGHT]"}}) {
        try {
            planPlot(reference, sources, {.tracks = readTracks(row.tracks)});
            ADD_FAILURE() << row.tracks;
        } catch (const RunTimeFailure& failure) {
            EXPECT_STREQ(failure.what(), row.why);
        }
    }
}

TEST_F(LogPlotTest, aScaleIsTheSameLengthInAnotherUnit) {
    add("a.las", {{"RHOB", "G/C3"}});
    add("b.las", {{"RHOB", "K/M3"}});
    const LogPlot plot =
        planPlot(reference, sources, {.tracks = readTracks("RHOB:1.9:2.9"), .layout = PlotLayout::Over});
    const auto& channels = plot.panels[0].tracks[0][0].channels;
    EXPECT_NEAR(channels[1].scale.left, 1900, 1e-9);
    EXPECT_NEAR(channels[1].scale.right, 2900, 1e-9);
}

TEST_F(LogPlotTest, logarithmOfWhatIsNotAboveZeroIsCounted) {
    values = {-1, 0, 5};
    add("a.las", {{"RT", "OHMM"}});
    const LogPlot plot = planPlot(reference, sources, {});
    ASSERT_EQ(plot.belowZero.size(), 1u);
    EXPECT_EQ(plot.belowZero[0].count, 2u);
}

TEST_F(LogPlotTest, channelsBeyondTheTracksAreTold) {
    std::vector<std::pair<std::string, std::string>> channels;
    for (int number = 1; number <= 14; ++number) channels.emplace_back("X" + std::to_string(number), "");
    add("a.las", channels);
    EXPECT_EQ(planPlot(reference, sources, {}).leftOut,
              (std::vector<std::string>{"X11 of a.las", "X12 of a.las", "X13 of a.las", "X14 of a.las"}));
}

/// Titles of the groups that are clipped to a track: the curves.
std::vector<std::string> curveTitles(const Drawing& drawing) {
    std::vector<std::string> titles;
    for (const Shape& shape : drawing.shapes)
        if (const auto* group = std::get_if<GroupStart>(&shape); group != nullptr && group->clip)
            titles.push_back(group->title);
    return titles;
}

TEST_F(LogPlotTest, everyShapeOfADifficultPictureLiesOnThePage) {
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN(), huge = 1e38;
    for (const std::vector<double>& samples : {std::vector<double>{nothing, nothing, nothing},
                                               {7, 7, 7},
                                               {-huge, huge, 1},
                                               {-1, 0, nothing},
                                               {1.7e308, -1.7e308, 0}}) {
        values = samples;
        sources.clear();
        add("a.las", {{"GR", "GAPI"}, {"RT", "OHMM"}, {"X", ""}});
        const LogPlot plot = planPlot(reference, sources, {});
        PlotPage page = wholePage(sources);
        page.width = 600;
        page.height = 500;
        const Drawing drawing = logDrawing(plot, sources, page);
        EXPECT_EQ(curveTitles(drawing), (std::vector<std::string>{"GR", "RT", "X"}));
        EXPECT_NEAR(drawing.width, 600, 1e-9);
        for (const Shape& shape : drawing.shapes) {
            const auto* line = std::get_if<Polyline>(&shape);
            if (line == nullptr) continue;
            for (const auto& piece : line->pieces)
                for (const Point& point : piece)
                    ASSERT_TRUE(point.x >= 0 && point.x <= 600 && point.y >= 0 && point.y <= 500)
                        << point.x << " " << point.y << " of " << samples[0];
        }
    }
}

TEST_F(LogPlotTest, oneSampleAndNoChannelMakePictures) {
    depths = values = {5};
    add("a.las", {{"GR", "GAPI"}});
    EXPECT_NE(
        svgText(logDrawing(planPlot(reference, sources, {}), sources, wholePage(sources)), Theme::Light).find("l0 0"),
        std::string::npos)
        << "a dot";
    sources.clear();
    add("a.las", {});
    EXPECT_TRUE(curveTitles(logDrawing(planPlot(reference, sources, {}), sources, wholePage(sources))).empty());
}

TEST_F(LogPlotTest, aPageThatIsTooSmallIsRefused) {
    add("a.las", {{"GR", "GAPI"}, {"RT", "OHMM"}});
    const LogPlot plot = planPlot(reference, sources, {});
    EXPECT_THROW(logDrawing(plot, sources, {.top = 1000, .bottom = 1002, .width = 130, .height = 500}), RunTimeFailure);
    EXPECT_THROW(logDrawing(plot, sources, {.top = 1000, .bottom = 1002, .width = 500, .height = 120}), RunTimeFailure);
}

}  // namespace
}  // namespace welvane
