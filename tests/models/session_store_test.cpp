#include "models/session_store.h"

#include "app/startup.h"
#include "jobs/run.h"
#include "session/matching.h"
#include "session/session_setup.h"
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
    EXPECT_EQ(frame->history.undoText(), "Open session one.wsn");
}

TEST_F(SessionStore, opensOverAnotherOneAndGivesThatBack) {
    ASSERT_TRUE(open("kestrel-7-run1.las"));
    const std::string path = folder.path("one.wsn");
    keepSession(app, frame->session, path);
    ASSERT_TRUE(open("kestrel-7-run2.las"));
    frame->session.tables.setting(PrdRow::From) = "1100";
    RestoredSession restored = restoreKeptSession(app, path);
    const bool keepBadLines = app.settings.keepBadLines = !restored.settings.keepBadLines;
    takeSession(*frame, std::move(restored), path);
    EXPECT_FALSE(frame->session.loaded(1));
    EXPECT_TRUE(frame->history.undo(app, frame->session));
    EXPECT_TRUE(frame->session.loaded(1));
    EXPECT_EQ(frame->session.tables.setting(PrdRow::From), "1100");
    EXPECT_EQ(app.settings.keepBadLines, keepBadLines);
}

/// Also without a first file: the output is what the same files in a row give.
TEST_F(SessionStore, keepsFreeSlotsBetweenItsFiles) {
    std::string inARow;
    for (const auto& [first, second] : {std::pair{0, 1}, {1, 3}}) {
        closeArea(*frame, WorkArea::Session);
        app.run.lasFile.clear();
        openArea(*frame, WorkArea::Session);
        for (const auto& [slot, name] : {std::pair{first, "kestrel-7-run1.las"}, {second, "kestrel-7-run2.las"}}) {
            frame->currentSlot = slot;
            ASSERT_TRUE(open(name));
        }
        Session& session = frame->session;
        session.tables.setting(PrdRow::From) = "1100";
        setChannelShift(session, second, 1, 0.5);
        const Session before = session;
        const std::string path = folder.path("one.wsn");
        keepSession(app, before, path);
        takeSession(*frame, restoreKeptSession(app, path), path);
        EXPECT_TRUE(session.tables == before.tables);
        EXPECT_EQ(session.tables.wrd.text(6, FieldColumn::Mnem), "WELL");
        EXPECT_EQ(session.channels[second][1].channelOffset, 0.5F);
        for (int slot = 0; slot < slotCount; ++slot) EXPECT_EQ(session.slots[slot].path, before.slots[slot].path);
        EXPECT_EQ(app.run.lasFile, before.slots[first].path);
        Workbench bench(app, {.force = true});
        runFiles(bench, {.output = folder.path("out.las"), .session = path});
        const std::string written = folder.read("out.las"), data = written.substr(written.find("~Other"));
        if (inARow.empty()) inARow = data;
        EXPECT_TRUE(data == inARow) << "the numbers of its runs alone differ";
    }
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
    const std::string bad = folder.write("bad.wsn", "no session");
    EXPECT_NE(whyNot([&] { restoreKeptSession(app, bad); }).find(bad), npos);
}

}  // namespace
}  // namespace welvane
