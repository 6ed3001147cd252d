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

TEST_F(SessionFiles, AnInputIsAskedForAndOpened) {
    user.willType("");
    EXPECT_FALSE(browseSlotFile(app, session, 0));
    user.willType(folder.path("gone.las"));
    EXPECT_FALSE(browseSlotFile(app, session, 0));
    user.willType(writeLas("one.las", {}));
    EXPECT_TRUE(browseSlotFile(app, session, 1));
    EXPECT_TRUE(session.loaded(1));
    EXPECT_FALSE(browseSlotFile(app, session, slotCount)) << "there is no such slot";
}

}  // namespace welvane::test
