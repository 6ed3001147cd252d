#include "models/session_files.h"

#include "support/session_fixture.h"

namespace welvane::test {

using SessionFiles = SessionTest;

TEST_F(SessionFiles, ThePathIsAskedForAndKept) {
    user.willType("");
    EXPECT_FALSE(doOpenFilter(app, session));
    user.willType("some.fil");
    EXPECT_TRUE(browseFilter(app, session));
    EXPECT_EQ(user.askedForText()[1], "Open Filter File");
    EXPECT_EQ(session.filterFile, "some.fil");
    EXPECT_EQ(setting(PrdRow::OpenedFile), "some.fil");
    EXPECT_EQ(platform.settings().get("filFile", ""), "some.fil");
}

TEST_F(SessionFiles, TheButtonAsksBothWays) {
    load(0, {"GR", "SP"});
    app.run.lasFile = session.slots[0].path;
    session.tables.frd.text(1, FrdColumn::Path) = folder.writeLines("f.fil", "~C\nSP. : S\n");
    user.willAnswer(Answer::Cancel);
    EXPECT_FALSE(filBut(app, session, true));
    EXPECT_EQ(user.asked()[0].text, "Are you sure you want to apply this filter to the currently loaded file(s)?");
    user.willAnswer(Answer::Ok);
    EXPECT_TRUE(filBut(app, session, true));
    EXPECT_EQ(outputs(), (Texts{"SP", "(GR)"}));
    EXPECT_TRUE(session.tables.filterInUse());
    EXPECT_EQ(session.tables.prd.caption(), "Settings (from Filter)");
    user.willAnswer(Answer::Cancel);
    EXPECT_TRUE(filBut(app, session, false));
    EXPECT_EQ(box(2),
              "Please Confirm: are you sure you want to remove the filter? All current file settings will be lost. ");
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(filBut(app, session, false));
    EXPECT_EQ(outputs(), (Texts{"GR", "SP"}));
    EXPECT_FALSE(session.tables.filterInUse());
}

TEST_F(SessionFiles, AllSlotsAreLoadedAndThenFiltered) {
    session.slots[0].path = writeLas("one.las", {});
    setFilterInUse(session, folder.writeLines("f.fil", "~C\nX. : | GR\n"));
    EXPECT_FALSE(loadAllSlots(app, session, "").applied);
    EXPECT_EQ(session.tables.outputs().columns(), 1);
    EXPECT_TRUE(loadAllSlots(app, session, " ").applied);
    EXPECT_EQ(outputs(), Texts{"X"});
}

TEST_F(SessionFiles, WhatAFilterCouldNotDoIsListed) {
    Frame frame(app);
    openArea(frame, WorkArea::Session);
    frame.session.slots[0].path = app.run.lasFile = writeLas("one.las", {});
    Open4Files(app, frame.session, 0);
    const auto filter = [&](const std::string& path) {
        frame.session.tables.frd.text(1, FrdColumn::Path) = path;
        return path;
    };
    filter(folder.path("gone.fil"));
    user.willAnswer(Answer::Ok);
    const EditOutcome gone = switchFilter(frame, true);
    EXPECT_FALSE(gone.done);
    EXPECT_NE(gone.why, "");
    EXPECT_EQ(frame.problems.size(), 1U);
    const std::string path = filter(folder.writeLines("f.fil", "~C\nGR. : | GR\nX. : | FUN=NONE,GR\n"));
    user.willAnswer(Answer::Cancel);
    EXPECT_FALSE(switchFilter(frame, true).done);
    EXPECT_EQ(frame.problems.size(), 1U) << "cancelled: nothing else is known";
    user.willAnswer(Answer::Ok);
    const EditOutcome applied = switchFilter(frame, true);
    EXPECT_TRUE(applied.done);
    EXPECT_EQ(applied.why, "1 line of the filter could not be followed: the list of problems tells them");
    EXPECT_EQ(ProblemsModel(frame.problems).placeOf(1).path, path);
    EXPECT_EQ(frame.history.undoText(), "Apply filter");
    user.willAnswer(Answer::Ok);
    EXPECT_TRUE(switchFilter(frame, false).done);
    EXPECT_EQ(frame.problems.size(), 0U);
    EXPECT_TRUE(frame.history.undo(app, frame.session));
    EXPECT_TRUE(frame.session.tables.filterInUse());
    const std::string mine = frame.session.slots[0].path;
    app.run.lasFile = writeLas("selected-since.las", {});
    user.willAnswer(Answer::Ok);
    EXPECT_TRUE(switchFilter(frame, false).done);
    EXPECT_EQ(frame.session.slots[0].path, mine);
}

}  // namespace welvane::test
