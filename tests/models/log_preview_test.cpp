#include "models/log_preview.h"

#include <cmath>
#include <filesystem>

#include "engine/driver.h"
#include "las/read_channels.h"
#include "models/byte_place.h"
#include "models/export_picture.h"
#include "models/other_text.h"
#include "models/shown_text.h"
#include "session/loading.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "support/app_fixture.h"

namespace welvane {
namespace {

struct LogPreviews : test::AppTest {
    Session session;
    LogPreview preview;

    LogPreviews() {
        session.rules = FigureRules::trueFigures;
        openSession(app, session);
    }
};

TEST_F(LogPreviews, tellsWhyThereIsNothing) {
    EXPECT_FALSE(preview.message().empty());
    preview.show(readOutputLogs(app, session));
    EXPECT_TRUE(preview.empty());
    EXPECT_FALSE(preview.message().empty());
    EXPECT_TRUE(preview.drawing(800, 600).shapes.empty());
    EXPECT_FALSE(preview.depthAt(300));
}

TEST_F(LogPreviews, zoomsAndScrollsInsideOfTheDepthsAndReadsValues) {
    session.slots[0].path = folder.write(
        "a.las",
        "~V\r\n VERS. 2.0 :\r\n WRAP. NO :\r\n~W\r\n STRT.M 1 :\r\n STOP.M 3 :\r\n STEP.M 1 :\r\n NULL. -999.25 "
        ":\r\n~C\r\n DEPT.M :\r\n GR.GAPI :\r\n~A\r\n 1 10\r\n 2 -999.25\r\n 3 30\r\n");
    ASSERT_TRUE(Open4Files(app, session, 0).done());
    preview.show(readInputLogs(app, session));
    ASSERT_FALSE(preview.empty()) << preview.message();
    EXPECT_EQ(preview.top(), 1);
    EXPECT_EQ(preview.bottom(), 3);
    const Drawing drawing = preview.drawing(800, 600);
    ASSERT_FALSE(drawing.shapes.empty());
    double y = 0;
    while (!preview.depthAt(y)) ++y;
    EXPECT_NEAR(*preview.depthAt(y), 1, 0.01);
    EXPECT_EQ(preview.readout(120, y).substr(0, 12), "1.00 M   GR ");
    EXPECT_NE(preview.readout(120, y).find("GR 10"), std::string::npos);
    while (*preview.depthAt(y) < 2) ++y;
    EXPECT_NE(preview.readout(120, y).find("GR no value"), std::string::npos) << "a null is none";
    preview.zoom(2, y);
    EXPECT_NEAR(preview.bottom() - preview.top(), 1, 1e-9);
    preview.scroll(10);
    EXPECT_EQ(preview.bottom(), 3) << "no further than the last sample";
    preview.zoom(1e-9, y);
    EXPECT_EQ(preview.top(), 1);
    EXPECT_TRUE(preview.drawing(30, 30).shapes.empty()) << "no room";
}

TEST_F(LogPreviews, showsTheOutputAndLeavesNoFile) {
    session.slots[0].path = std::string(WELVANE_SOURCE_DIR "/examples/kestrel-7-run1.las");
    session.slots[1].path = std::string(WELVANE_SOURCE_DIR "/examples/kestrel-7-run2.las");
    app.settings.editAfter = app.settings.certifyAfter = true;  // a preview starts nothing
    ASSERT_TRUE(Open4Files(app, session, 0).done());
    ASSERT_TRUE(Open4Files(app, session, 1).done());
    spliceGuess(app, session);
    const SharedLogs logs = readOutputLogs(app, session);
    EXPECT_EQ(logs->why, "");
    ASSERT_EQ(logs->sources.size(), 1U);
    EXPECT_EQ(logs->sources[0].depths.size(), 2625U);
    EXPECT_FALSE(std::filesystem::exists(app.platform.scratchFolder() + "preview.las"));
}

TEST_F(LogPreviews, theOutputIsWhatARunWrites) {
    session.slots[0].path = std::string(WELVANE_SOURCE_DIR "/examples/kestrel-7-run1.las");
    session.slots[1].path = std::string(WELVANE_SOURCE_DIR "/examples/kestrel-7-run2.las");
    for (const int slot : {0, 1}) ASSERT_TRUE(Open4Files(app, session, slot).done());
    spliceGuess(app, session);
    setChannelShift(session, 1, 1, 0.5);
    session.tables.setting(PrdRow::SampleRate) = "0.0762";
    session.tables.setting(PrdRow::NullFill) = "Linear";
    Session own = session;
    const SharedLogs logs = readOutputLogs(app, own);
    ASSERT_EQ(logs->sources.size(), 1U) << logs->why;
    app.run.targetFile = folder.path("out.las");
    RunRequest run;
    run.outputMode = OutputFile::Mode::Beside;
    run.rules = session.rules;
    ASSERT_TRUE(processMMM(app, session, run).completed);
    const LasFile file(app.run.targetFile, FigureRules::trueFigures);
    RunTurn turn(app.run, user, 1);
    const ChannelData written = *readChannels(file, {}, turn);
    const PlotInput& shown = logs->inputs.front();
    ASSERT_EQ(shown.columns.size(), written.columns.size());
    for (std::size_t column = 0; column < written.columns.size(); ++column) {
        SCOPED_TRACE(written.names.channels[column].mnem);
        ASSERT_EQ(shown.columns[column].size(), written.columns[column].size());
        for (std::size_t sample = 0; sample < written.columns[column].size(); ++sample) {
            const double here = shown.columns[column][sample], there = written.columns[column][sample];
            ASSERT_TRUE(here == there || (std::isnan(here) && std::isnan(there))) << sample;
        }
    }
    EXPECT_EQ(shown.source.channels.front().mnem, written.names.channels[1].mnem);
}

TEST_F(LogPreviews, picturesAndTextsAreFilesOfTheirKind) {
    EXPECT_EQ(pictureKind("a.PNG"), PictureKind::Png);
    EXPECT_EQ(pictureKind("a.png.txt"), PictureKind::Svg);
    const std::string path = folder.path("a.svg");
    EXPECT_EQ(writePictureBytes(path, "<svg/>").why, "Written: " + path);
    EXPECT_EQ(readShownText(path).text, "<svg/>");
    const EditOutcome refused = writePictureBytes(folder.path("none/a.svg"), "x");
    EXPECT_FALSE(refused.done);
    EXPECT_NE(refused.why.find("none/a.svg"), std::string::npos) << refused.why;
    EXPECT_EQ(readShownText(folder.path("gone")).why, folder.path("gone") + " cannot be read");
    const ShownText most = readShownText(folder.write("long", std::string(ShownText::most + 1, 'x')));
    EXPECT_TRUE(most.cut);
    EXPECT_EQ(most.text.size(), ShownText::most);
}

TEST(OtherText, keepsItsBytesWhenNothingWasTyped) {
    Session session;
    session.tables.otherText = "one\r\ntwo\rthree";
    EXPECT_EQ(shownOtherText(session), "one\ntwo\nthree");
    setOtherText(session, "one\ntwo\nthree");
    EXPECT_EQ(session.tables.otherText, "one\r\ntwo\rthree");
    setOtherText(session, "one\n\nfour");
    EXPECT_EQ(session.tables.otherText, "one\r\n\r\nfour");
}

TEST_F(LogPreviews, aLineIsFoundWhateverItEndsWith) {
    const std::string path = folder.write("lines.las", std::string(500, 'x') + "\r\nsecond\rthird\nfourth");
    ByteViewState view;
    for (const auto& [line, start] : {std::pair{0, 0}, {1, 0}, {2, 502}, {3, 509}, {4, 515}, {5, 0}}) {
        SCOPED_TRACE(line);
        ASSERT_TRUE(showLineOfFile(view, path, static_cast<std::size_t>(line)));
        EXPECT_EQ(view.pageStart, static_cast<std::uint64_t>(start));
    }
    EXPECT_FALSE(showLineOfFile(view, folder.path("absent"), 1));
}

}  // namespace
}  // namespace welvane
