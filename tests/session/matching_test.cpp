#include "session/matching.h"

#include <chrono>
#include <random>

#include "session/session_fixture.h"

namespace welvane::test {

using Matching = SessionTest;

TEST_F(Matching, SpliceGuessAlignsAndClosesGaps) {
    struct Case {
        std::string_view name;
        std::vector<Texts> files;
        Texts expected;
    };
    addGroup("GAMMA", {"GR", "GRC", "GRD"});
    addGroup("DENSITY", {"RHOB", "DEN"});
    for (const Case& one : {Case{"same mnemonic, other case", {{"GR", "RHOB"}, {"NPHI", "gr"}}, {"GR", "RHOB", "NPHI"}},
                            Case{"group when there is no equal", {{"GR"}, {"SP", "GRC"}}, {"GR", "SP"}},
                            Case{"equal before group", {{"GR"}, {"GRC", "GR"}}, {"GR", "GRC"}},
                            Case{"first member in table order", {{"GRD"}, {"GRC", "GR"}}, {"GRD", "GRC"}},
                            Case{"four files", {{"GR"}, {"GR"}, {"gr"}, {"GR", "SP"}}, {"GR", "SP"}},
                            Case{"only as far as the first file reaches",
                                 {{"SP"}, {"GR", "DT"}, {"DT", "X"}},
                                 {"SP", "GR", "DT", "DT", "X"}},
                            Case{"nothing in common", {{"A"}, {"B"}}, {"A", "B"}}}) {
        SCOPED_TRACE(one.name);
        openSession(app, session);
        for (InputSlot& slot : session.slots) slot = {};
        for (std::size_t slot = 0; slot < one.files.size(); ++slot) load(static_cast<int>(slot), one.files[slot]);
        spliceGuess(app, session);
        Texts used;
        for (const std::string& name : outputs())
            if (name != "()") used.push_back(name);
        EXPECT_EQ(used, one.expected);
        for (const Table& table : session.tables.srd) EXPECT_EQ(table.columns(), session.tables.outputs().columns());
    }
}

TEST_F(Matching, JoinedChannelsAreLinkedAndMarked) {
    load(0, {"GR", "RHOB"});
    LasText deeper;
    deeper.start = 1001;
    deeper.stop = 1002;
    load(1, {"NPHI", "gr"}, deeper);
    spliceGuess(app, session);
    EXPECT_EQ(link(0, 1), (Texts{"GR", "1", "1000", "1001"}));
    EXPECT_EQ(link(1, 1), (Texts{"gr", "2", "1001", "1002"}));
    EXPECT_EQ(link(1, 3), (Texts{"NPHI", "1", "1001", "1002"}));
    EXPECT_TRUE(session.channels[0][1].spliced);
    EXPECT_TRUE(session.channels[1][2].spliced);
    EXPECT_FALSE(session.channels[0][2].spliced);
    EXPECT_FALSE(session.channels[1][1].spliced);
}

/// A session of four slots with random mnemonics, made without files.
void fillRandomly(Session& session, std::mt19937& random, int most, int names) {
    int total = 0;
    std::array<int, slotCount> counts{};
    for (int slot = 0; slot < slotCount; ++slot) {
        const bool loaded = slot == 0 || random() % 6 != 0;
        counts[slot] = loaded ? static_cast<int>(random() % static_cast<unsigned>(most + 1)) : 0;
        session.slots[slot].path = loaded ? "some.las" : "";
        session.opened[slot] = loaded;
        session.channels[slot].assign(static_cast<std::size_t>(counts[slot] + (loaded ? 1 : 0)), {});
        total += counts[slot];
    }
    for (int slot = 0; slot < slotCount; ++slot) {
        for (std::size_t channel = 1; channel < session.channels[slot].size(); ++channel) {
            std::string name = "N" + std::to_string(random() % static_cast<unsigned>(names));
            if (random() % 3 == 0) name[0] = 'n';
            if (random() % 20 == 0) name.clear();
            session.channels[slot][channel].field.mnem = name;
        }
        fillSlotTable(session, slot, total, session.columnBase(slot));
    }
}

TEST_F(Matching, FastAlignmentEqualsThePlainScan) {
    for (int group = 0; group < 6; ++group)
        for (int member = 0; member < 5; ++member)
            app.reference.curves.push_back(
                {"G" + std::to_string(group), "N" + std::to_string((group * 7 + member * 3) % 24), ""});
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    for (int turn = 0; turn < 3000; ++turn) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " turn " + std::to_string(turn));
        fillRandomly(session, random, 1 + turn % 12, 1 + turn % 30);
        for (const bool wide : {false, true}) {
            ColumnOrder plain = columnOrder(session), fast = columnOrder(session);
            alignPlainly(app.reference, session, wide, plain);
            alignFast(app.reference, session, wide, fast);
            ASSERT_EQ(plain.origin, fast.origin);
            ASSERT_EQ(plain.mnems, fast.mnems);
        }
    }
}

TEST_F(Matching, LinksByHand) {
    load(0, {"GR", "RHOB"});
    load(1, {"GRC", "SP"});
    std::string units;
    EXPECT_EQ(CurveString(session, 1, &units), "<none>|GRC|SP");
    EXPECT_EQ(units, "|");
    EXPECT_EQ(CurveString(session, 4), "");
    ASSERT_TRUE(linkChannel(session, 1, 1, 1));
    EXPECT_EQ(link(0, 1), (Texts{"GR", "1", "1000", "1001"})) << "the other slots' links stay";
    EXPECT_EQ(link(1, 1), (Texts{"GRC", "1", "1000", "1001"}));
    EXPECT_EQ(outputs(), (Texts{"GRC", "RHOB", "(GRC)", "SP"})) << "one connection only: column 3 lost its link";
    session.multipleConnections = true;
    ASSERT_TRUE(linkChannel(session, 1, 1, 2));
    EXPECT_EQ(link(1, 1)[0], "GRC");
    EXPECT_EQ(link(1, 2)[0], "GRC");
    ASSERT_TRUE(linkChannel(session, 1, -1, 2));
    EXPECT_EQ(link(1, 2)[0], "GRC");
    ASSERT_TRUE(linkChannel(session, 0, 0, 1));
    ASSERT_TRUE(linkChannel(session, 1, 0, 1));
    EXPECT_EQ(outputs()[0], "(GRC)");
    EXPECT_FALSE(linkChannel(session, 0, 3, 1));
    EXPECT_FALSE(linkChannel(session, 0, 1, 99));
}

TEST_F(Matching, linkTakesHeaderFromOriginalColumn) {
    load(0, {"GR", "RHOB"});
    load(1, {"RHOB", "SP"});
    spliceGuess(app, session);
    ASSERT_EQ(outputs(), (Texts{"GR", "RHOB", "SP", "()"}));
    linkChannel(session, 1, 1, 1);
    EXPECT_EQ(cell(at(SrdRow::Mnem), 1), "SP") << "column 3 is where RHOB of the second file stood at first";
    EXPECT_EQ(link(1, 1)[0], "RHOB");
}

TEST_F(Matching, DepthsSnapToTheSlotsGrid) {
    session.slots[0].start = 1000.25;
    session.slots[0].step = 0.5;
    session.slots[0].topDepth = 1000.25;
    session.slots[0].bottomDepth = 1010.25;
    struct Case {
        double depth, nearest;
    };
    for (const Case& one :
         {Case{1001.25, 1001.25}, Case{1001.3, 1001.5}, Case{1001.6, 1001.5}, Case{1, 1000.25}, Case{5000, 1010.25}})
        EXPECT_EQ(computeNearestDepth(session, one.depth, 0), one.nearest) << one.depth;
    session.slots[0].step = 0;
    EXPECT_EQ(computeNearestDepth(session, 1003.3, 0), 1003.3) << "no grid to snap to";
}

TEST_F(Matching, SpliceBoxesAbutAndAreApplied) {
    load(0, {"GR"});
    LasText deeper;
    deeper.start = 1001;
    deeper.stop = 1005;
    deeper.parameters = "CSGL. 1002.5 : CASING\n";
    load(1, {"GR"}, deeper);
    spliceGuess(app, session);
    enterSpliceDepth(session, 1, "1000.6");
    EXPECT_EQ(session.tables.fsL[1], "1000.5");
    EXPECT_EQ(session.tables.fsL[2], "1001");
    applySpliceDepths(session, 0);
    applySpliceDepths(session, 1);
    EXPECT_EQ(link(0, 1), (Texts{"GR", "1", "1000", "1000.5"}));
    EXPECT_EQ(link(1, 1), (Texts{"GR", "1", "1001", "1005"}));
    applyParameterDepths(session, "BHT", "1001.5");
    EXPECT_EQ(link(1, 1), (Texts{"GR", "1", "85", "1001.5"})) << "BHT of the first file";
    applyParameterDepths(session, "", "");
    EXPECT_EQ(link(1, 1), (Texts{"GR", "1", "85", "1001.5"}));
}

TEST_F(Matching, ShiftAndClipMarkTheirChannel) {
    load(0, {"GR", "SP"});
    EXPECT_EQ(findSlotChannel(session, 0, "sp"), 2);
    EXPECT_EQ(findSlotChannel(session, 0, "DEPT"), 0) << "the index line is no channel";
    EXPECT_TRUE(setChannelShift(session, 0, 2, -1.5));
    EXPECT_TRUE(setChannelClip(session, 0, 2, 1000.5, 0));
    EXPECT_TRUE(session.channels[0][2].spliced);
    EXPECT_FALSE(session.channels[0][1].spliced);
    EXPECT_FALSE(setChannelShift(session, 0, 3, 1));
}

TEST_F(Matching, SelectionKeepsTheNamedChannelsInTheirOrder) {
    load(0, {"GR", "RHOB", "NPHI", "GR"});
    EXPECT_EQ(selectChannels(session, {"nphi", "GR", "NONE", "GR"}), Texts{"NONE"});
    EXPECT_EQ(outputs(), (Texts{"NPHI", "GR", "GR", "(RHOB)"}));
    EXPECT_EQ(link(0, 3)[1], "4");
}

TEST_F(Matching, FourFilesOfFiveHundredChannelsTakeMilliseconds) {
    for (int row = 0; row < 3000; ++row)
        app.reference.curves.push_back({"G" + std::to_string(row / 40), "N" + std::to_string(row), ""});
    std::mt19937 random(7);
    fillRandomly(session, random, 1, 10);
    for (int slot = 0; slot < slotCount; ++slot) {
        session.slots[slot].path = "some.las";
        session.opened[slot] = true;
        session.channels[slot].assign(501, {});
        for (std::size_t channel = 1; channel <= 500; ++channel)
            session.channels[slot][channel].field.mnem = "N" + std::to_string(random() % 3000);
    }
    for (int slot = 0; slot < slotCount; ++slot) fillSlotTable(session, slot, 2000, 500 * slot);
    const auto start = std::chrono::steady_clock::now();
    spliceGuess(app, session);
    const auto taken =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
    RecordProperty("milliseconds", static_cast<int>(taken));
    EXPECT_LT(taken, 2000) << "a bound that only a quadratic slip breaks; the measured figure is recorded";
}

}  // namespace welvane::test
