#include "models/session_store.h"

#include "app/startup.h"
#include "session/matching.h"
#include "support/app_fixture.h"

namespace welvane {
namespace {

class StockFolder : public test::MemoryPlatform {
  public:
    std::string programFolder() const override { return WELVANE_SOURCE_DIR "/data/"; }
};

struct SessionStore : ::testing::Test {
    test::TempFolder folder;
    StockFolder platform;
    test::ScriptedInterface user;
    App app{user, platform};
    std::unique_ptr<Frame> frame;

    SessionStore() {
        for (const char* key : {"inDir", "outDir"}) platform.settings().put(key, folder.path());
        EXPECT_TRUE(loadProcess(app));
        frame = std::make_unique<Frame>(app);
        openArea(*frame, WorkArea::Session);
    }
    bool open(const char* name) { return openInSession(*frame, std::string(WELVANE_SOURCE_DIR "/examples/") + name); }
};

TEST_F(SessionStore, comesBackAsItWasLeft) {
    ASSERT_TRUE(open("kestrel-7-run1.las"));
    ASSERT_TRUE(open("kestrel-7-run2.las"));
    spliceGuess(app, frame->session);
    frame->session.tables.output(SrdRow::Mnem, 1) = "GAMMA";
    frame->session.tables.setting(PrdRow::From) = "1100";
    frame->session.tables.otherText = "kept\r\n";
    const SessionTables tables = frame->session.tables;
    const std::string path = folder.path("one.wsn");
    keepSession(app, frame->session, path);
    takeSession(*frame, restoreKeptSession(app, path), path);
    const SessionTables& restored = frame->session.tables;
    EXPECT_EQ(restored.srd[newChannels].text(SrdRow::Mnem, 1), "GAMMA");
    EXPECT_EQ(restored.otherText, "kept\r\n");
    EXPECT_TRUE(restored.srd == tables.srd) << "channels and their links";
    EXPECT_TRUE(restored.prd == tables.prd);
    EXPECT_TRUE(restored.ord == tables.ord);
    EXPECT_TRUE(restored.wrd == tables.wrd);
    EXPECT_FALSE(frame->history.canUndo());
}

TEST_F(SessionStore, tellsWhatCannotBeKept) {
    EXPECT_ANY_THROW(keepSession(app, frame->session, folder.path("none.wsn"))) << "nothing is open";
    ASSERT_TRUE(open("kestrel-7-run1.las"));
    EXPECT_ANY_THROW(keepSession(app, frame->session, folder.path("absent/one.wsn")));
    EXPECT_ANY_THROW(restoreKeptSession(app, folder.write("bad.wsn", "no session")));
}

}  // namespace
}  // namespace welvane
