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
    const auto whyNot = [](const auto& act) -> std::string {
        try {
            act();
        } catch (const std::exception& failure) {
            return failure.what();
        }
        return "done";
    };
    const auto keep = [&](const std::string& path) { return whyNot([&] { keepSession(app, frame->session, path); }); };
    EXPECT_EQ(keep(folder.path("none.wsn")), "no file is open in this session");
    ASSERT_TRUE(open("kestrel-7-run1.las"));
    EXPECT_NE(keep(folder.path("absent/one.wsn")).find("absent/one.wsn"), npos);
    EXPECT_EQ(keep(folder.path("one.wsn")), "done");
    frame->currentSlot = 2;
    ASSERT_TRUE(open("kestrel-7-run2.las"));
    EXPECT_EQ(keep(folder.path("one.wsn")),
              "File 3 stands behind a free one: a session is kept with its files in a row");
    EXPECT_NE(folder.read("one.wsn").find("[input 1]"), npos) << "what was kept before stays";
    const std::string bad = folder.write("bad.wsn", "no session");
    EXPECT_NE(whyNot([&] { restoreKeptSession(app, bad); }).find(bad), npos);
}

}  // namespace
}  // namespace welvane
