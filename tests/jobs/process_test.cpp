#include "jobs/process.h"

#include <gtest/gtest.h>

#include "jobs/after_process.h"
#include "shared/text.h"
#include "support/session_fixture.h"

namespace welvane::test {
namespace {

class Process : public SessionTest {
  protected:
    Process() {
        app.settings.certifyAfter = app.settings.editAfter = false;
        std::filesystem::create_directory(folder.path("in"));
        std::filesystem::create_directory(folder.path("out"));
        request.sessionOpen = true;
        request.pattern = "*.las";
        app.settings.outDir = folder.path("out/");
    }
    void select(const Texts& names) {
        request.browserOpen = true;
        request.selection = {folder.path("in/"), folder.path("out/"), names};
    }
    bool written(const std::string& name) { return std::filesystem::exists(folder.path(name)); }

    ProcessRequest request;
};

TEST_F(Process, whatIsOpenDecidesWhatRuns) {
    const struct {
        bool certify, session, tab, listing, browser;
        std::size_t selected;
        const char* pattern;
        ProcessKind kind;
    } cases[] = {{true, true, true, true, true, 2, "*.txt", ProcessKind::Certify},
                 {false, true, false, true, true, 2, "*.txt", ProcessKind::Pass},
                 {false, true, true, true, true, 2, "*.txt", ProcessKind::MakeManyLas},
                 {false, true, true, false, true, 2, "*.LAS", ProcessKind::MakeLas},
                 {false, true, true, false, true, 1, "*.txt", ProcessKind::MakeLas},
                 {false, true, true, false, false, 2, "*.txt", ProcessKind::MakeLas},
                 {false, false, true, true, true, 2, "*.txt", ProcessKind::Listing},
                 {false, false, false, false, true, 1, "*.las", ProcessKind::Nothing}};
    for (const auto& row : cases) {
        ProcessRequest given;
        given.certifyOpen = row.certify;
        given.sessionOpen = row.session;
        given.makeLasTab = row.tab;
        given.listingOpen = row.listing;
        given.browserOpen = row.browser;
        given.selection.names.resize(row.selected);
        given.pattern = row.pattern;
        EXPECT_EQ(processKind(given), row.kind) << &row - cases;
    }
}

TEST_F(Process, theNameOfOneFileIsAskedFor) {
    load(0, {"GR"});
    app.run.lasFile = folder.path("file1.las");
    user.willType("");
    EXPECT_FALSE(settleTarget(app, session, request));
    EXPECT_EQ(user.filePrompts().back().title, "Specify New LAS File Name");
    EXPECT_EQ(user.filePrompts().back().defaultName, folder.path("out/file1.las"));
    EXPECT_TRUE(user.filePrompts().back().save);

    session.tables.setChecked(PrdRow::PlainAscii, true);
    user.willType(folder.path("out/plain.las"));
    user.willAnswer(Answer::Cancel);
    EXPECT_FALSE(settleTarget(app, session, request));
    EXPECT_EQ(user.filePrompts().back().title, "Specify New Generic ASCII File Name");
    EXPECT_EQ(
        box(),
        "LAS Name Not Appropriate!: Extension must NOT be LAS for a non-LAS file! Click Okay to proceed anyway or "
        "Cancel to supply a new filename.");
    EXPECT_EQ(user.asked().back().safe(), Answer::Cancel);
    user.willType(folder.path("out/plain.txt"));
    EXPECT_TRUE(settleTarget(app, session, request));
    EXPECT_EQ(app.run.targetFile, folder.path("out/plain.txt"));

    select({"a.las", "b.las"});
    EXPECT_TRUE(settleTarget(app, session, request)) << "many files have their names";
    request.certifyOpen = true;
    request.browserOpen = false;
    EXPECT_TRUE(settleTarget(app, session, request));
}

TEST_F(Process, onePassWritesItsFileAndWhatFollowsIsDone) {
    load(0, {"GR"});
    app.settings.editAfter = app.settings.viewAfter = true;
    app.settings.logProgram = "viewer";
    app.run.targetFile = folder.path("out/new.las");
    app.run.progressFraction = 7;
    bool refreshed = false;
    request.toolsOpen = true;
    request.refreshTools = [&] { refreshed = true; };
    const ProcessOutcome outcome = process(app, session, request);
    EXPECT_TRUE(outcome.completed) << outcome.refusal;
    EXPECT_EQ(outcome.written, Texts{folder.path("out/new.las")});
    EXPECT_EQ(platform.opened, (Texts{folder.path("out/new.las"), "viewer " + folder.path("out/new.las")}));
    EXPECT_TRUE(refreshed);
    EXPECT_EQ(app.run.progressFraction, 0);
    EXPECT_FALSE(app.run.batchRunning);
}

TEST_F(Process, aPassThatStopsLeadsToTheProperties) {
    load(0, {"GR"});
    app.run.targetFile = folder.path("file1.las");
    user.willAnswer(Answer::Ok);
    ProcessOutcome outcome = process(app, session, request);
    EXPECT_EQ(user.asked().back().title, "Duplicate File Name!");
    EXPECT_FALSE(outcome.completed);

    app.run.targetFile = folder.path("out/new.las");
    session.tables.setting(PrdRow::SampleRate) = "0";
    user.willAnswer(Answer::Ok);
    user.willAnswer(Answer::Ok);
    outcome = process(app, session, request);
    EXPECT_EQ(user.asked()[1].title, "Invalid STEP Value");
    EXPECT_EQ(box(), ": Error in doitmastnew was , #=0");
    EXPECT_FALSE(outcome.completed || outcome.cancelled);
    EXPECT_TRUE(outcome.showProperties);

    load(0, {"GR"});
    app.run.targetFile = folder.path("none/new.las");
    user.willAnswer(Answer::Ok);
    user.willAnswer(Answer::Ok);
    outcome = process(app, session, request);
    EXPECT_EQ(box(),
              "Problem writing the OutPut File!: An Error occured while writing the new file. Do not use this file "
              "without careful checking! ");
    EXPECT_FALSE(outcome.completed);
    EXPECT_TRUE(outcome.showProperties);
    EXPECT_FALSE(written("out/new.las"));
}

TEST_F(Process, aWishToStopEndsTheRunWithoutAFile) {
    load(0, {"GR"});
    app.run.targetFile = folder.path("out/new.las");
    user.willAnswer(Answer::Cancel);
    app.run.cancelRequested = true;
    askCancel(user, app.run);
    EXPECT_FALSE(app.run.cancelRequested) << "Cancel takes the wish back";
    EXPECT_EQ(box(), "Cancel Process?: User has selected to CANCEL this process. Please Confirm. ");
    EXPECT_EQ(user.asked().back().safe(), Answer::Cancel);
    user.willAnswer(Answer::Ok);
    askCancel(user, app.run);
    user.willAnswer(Answer::Ok);
    const ProcessOutcome outcome = process(app, session, request);
    EXPECT_TRUE(outcome.cancelled);
    EXPECT_FALSE(outcome.completed);
    EXPECT_FALSE(written("out/new.las"));
    EXPECT_FALSE(app.run.cancelRequested);
}

TEST_F(Process, eachSelectedFileBecomesOne) {
    for (const char* name : {"a.las", "b.las"}) folder.writeLines(std::string("in/") + name, LasText{}.text());
    select({"a.las", "b.las"});
    app.settings.editAfter = true;
    ProcessOutcome outcome = process(app, session, request);
    EXPECT_TRUE(outcome.completed) << outcome.refusal;
    EXPECT_EQ(outcome.written, (Texts{folder.path("out/a.las"), folder.path("out/b.las")}));
    EXPECT_EQ(app.run.targetLabel, folder.path("out/b.las"));
    EXPECT_TRUE(platform.opened.empty()) << "nothing follows a run of many";

    request.selection.destinationFolder = folder.path("in");
    user.willAnswer(Answer::Ok);
    outcome = process(app, session, request);
    EXPECT_EQ(box(),
              "Can't Continue: Source and Destination Folders are the same. They must be different to process multiple "
              "files. Change Destination folder and try again.");
    EXPECT_FALSE(outcome.completed);
}

TEST_F(Process, tablesOfReportsBecomeLas) {
    std::string report = "PrimaryIndex GR[A\n";
    for (int row = 0; row < 200; ++row)
        report += " " + std::to_string(100 + row) + ".0  " + std::to_string(row) + ".5\n";
    folder.writeLines("in/a.txt", report);
    folder.writeLines("in/b.txt", report);
    folder.writeLines("in/c.txt", "1 2 3\n");
    select({"a.txt", "c.txt", "b.txt"});
    request.makeLasTab = true;
    request.pattern = "*.txt";
    const ProcessOutcome outcome = process(app, session, request);
    EXPECT_TRUE(outcome.completed);
    EXPECT_EQ(outcome.written, (Texts{folder.path("out/a.las"), folder.path("out/b.las")}));
    ASSERT_EQ(outcome.leftOut.size(), 1U);
    EXPECT_EQ(outcome.leftOut[0].path, folder.path("in/c.txt"));
    EXPECT_NE(folder.read("out/b.las").find("GR"), npos);
}

TEST_F(Process, whatFollowsAFile) {
    const struct {
        bool edit, certify, view;
        const char* path;
        Texts opened;
        bool checked;
    } cases[] = {{true, true, true, "a.las", {"a.las", "viewer a.las"}, true},
                 {true, true, true, "a.txt", {"a.txt"}, false},
                 {false, false, true, "a.txt", {"viewer a.txt"}, false},
                 {false, false, false, "a.las", {}, false}};
    app.settings.logProgram = "viewer";
    app.settings.certProgram = "corvant";
    platform.onRun = [](const Texts&) {
        ProcessResult ended;
        ended.started = true;
        ended.exitCode = 0;
        return ended;
    };
    for (const auto& row : cases) {
        app.settings.editAfter = row.edit;
        app.settings.certifyAfter = row.certify;
        app.settings.viewAfter = row.view;
        platform.opened.clear();
        platform.started.clear();
        afterProcess(app, row.path);
        EXPECT_EQ(platform.opened, row.opened) << row.path;
        EXPECT_EQ(!platform.started.empty(), row.checked) << row.path;
    }
    app.settings = {};
    app.settings.certifyAfter = false;
    app.settings.viewAfter = true;
    platform.startsPrograms = false;
    user.willAnswer(Answer::Ok);
    user.willAnswer(Answer::Ok);
    afterProcess(app, "a.las");
    EXPECT_EQ(box(0), "Can't Open File: No program could be started for a.las");
    EXPECT_EQ(user.asked()[1].title, "No Log Viewer");
}

}  // namespace
}  // namespace welvane::test
