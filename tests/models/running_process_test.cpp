#include "models/running_process.h"

#include <gtest/gtest.h>
#include <thread>

#include "app/startup.h"
#include "models/commands.h"
#include "models/table_models.h"
#include "support/session_fixture.h"

namespace welvane::test {
namespace {

class Running : public AppTest {
  protected:
    Running() : frame(app), run(frame, own, {}) {
        app.settings.editAfter = app.settings.certifyAfter = false;
        frame.browser.folder = folder.path();
        frame.browser.outDir = folder.path("out/");
        std::filesystem::create_directory(folder.path("out"));
        frame.actions.startProcess = [this] { started = run.start("*.las"); };
        frame.actions.exit = [this] { ended = true; };
    }
    void openSessionOn(const std::string& name) {
        app.run.lasFile = folder.writeLines(name, LasText{}.text());
        frame.browser.selected = {name};
        perform(frame, "ID_MMM");
    }
    ProcessOutcome waitForEnd() {
        while (run.running()) std::this_thread::yield();
        return run.finish();
    }

    MemoryPlatform own;
    Frame frame;
    RunningProcess run;
    bool started = false, ended = false;
};

TEST_F(Running, theCommandRunsTheSessionBesideTheWindow) {
    openSessionOn("a.las");
    user.willType("");
    perform(frame, "ID_Process");
    EXPECT_FALSE(started);
    EXPECT_FALSE(frame.running);
    user.willType(folder.path("out/new.las"));
    perform(frame, "ID_Save");
    EXPECT_TRUE(started);
    EXPECT_TRUE(frame.running);
    EXPECT_FALSE(commandEnabled(frame, *findCommand("ID_Process")));
    EXPECT_FALSE(run.start("*.las")) << "one at a time";
    const ProcessOutcome outcome = waitForEnd();
    EXPECT_TRUE(outcome.completed) << outcome.refusal;
    EXPECT_TRUE(commandEnabled(frame, *findCommand("ID_Process")));
    EXPECT_TRUE(std::filesystem::exists(folder.path("out/new.las")));
    EXPECT_EQ(app.run.targetLabel, folder.path("out/new.las"));
    EXPECT_TRUE(frame.session.loaded(0));
    EXPECT_EQ(frame.history.undoText(), "What a run wrote stays: new.las");
    EXPECT_TRUE(frame.history.lastStays());
}

TEST_F(Running, anotherDepthUnitKeepsEverySample) {
    openSessionOn("a.las");
    EXPECT_TRUE(propertiesModel(app, frame.session).edit(at(PrdRow::DepthUnits), 1, "F").done);
    user.willType(folder.path("out/feet.las"));
    ASSERT_TRUE(run.start("*.las"));
    EXPECT_TRUE(waitForEnd().completed);
    const std::string written = TempFolder::readFile(folder.path("out/feet.las"));
    for (const char* line : {"3280.83990", "3282.48031", "3284.12073"})
        EXPECT_NE(written.find(line), npos) << line << "\n" << written;
    EXPECT_EQ(frame.history.steps(), 1U) << "what stays alone: a run changes nothing of the session";
}

TEST_F(Running, aPassThatStopsShowsTheProperties) {
    openSessionOn("a.las");
    frame.session.tables.setting(PrdRow::SampleRate) = "0";
    user.willType(folder.path("out/new.las"));
    ASSERT_TRUE(run.start("*.las"));
    Texts titles;
    while (run.running()) {
        if (const auto asked = run.job().desk().pending()) {
            titles.push_back(std::get<Prompt>(*asked).title);
            run.job().desk().answer(Answer::Ok);
        }
        std::this_thread::yield();
    }
    EXPECT_FALSE(run.finish().completed);
    EXPECT_EQ(titles, (Texts{"Invalid STEP Value", ""}));
    EXPECT_EQ(frame.tab, SessionTab::Properties);
}

TEST_F(Running, aListingFillsItsTables) {
    openSessionOn("a.las");
    closeArea(frame, WorkArea::Session);
    perform(frame, "ID_prop");
    user.willType("");
    EXPECT_FALSE(chooseReportPath(app, *frame.listing));
    user.willType(folder.path("out/summary.txt"));
    EXPECT_TRUE(chooseReportPath(app, *frame.listing));
    EXPECT_EQ(platform.settings().get("mwLFile", ""), folder.path("out/summary.txt"));
    ASSERT_TRUE(run.start("*.las"));
    EXPECT_TRUE(waitForEnd().completed);
    EXPECT_EQ(frame.listing->srd.rows.size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(folder.path("out/summary.txt")));
    EXPECT_NE(TempFolder::readFile(frame.listing->listingPath).find("GR"), std::string::npos);
}

TEST_F(Running, theEndWaitsForTheJob) {
    run.wishToExit();
    EXPECT_TRUE(ended) << "nothing runs";
    ended = false;
    frame.open = {WorkArea::Browser};
    openSessionOn("a.las");
    // A question keeps the job at work until it is answered.
    frame.session.tables.setting(PrdRow::SampleRate) = "0";
    user.willType(folder.path("out/new.las"));
    ASSERT_TRUE(run.start("*.las"));
    while (!run.job().desk().pending()) std::this_thread::yield();
    user.willAnswer(Answer::Cancel);
    run.wishToExit();
    user.willAnswer(Answer::Ok);
    run.wishToExit();
    EXPECT_EQ(box(), "Cancel Process?: User has selected to CANCEL this process. Please Confirm. ");
    EXPECT_FALSE(ended);
    run.job().desk().close();
    waitForEnd();
    EXPECT_TRUE(ended);
    EXPECT_TRUE(frame.open.empty());
}

}  // namespace
}  // namespace welvane::test
