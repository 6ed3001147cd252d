#include "session/matching.h"

#include <random>

#include "shared/text.h"
#include "support/session_fixture.h"

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

/// The splice as it is told, by plain scans that move whole columns.
class PlainSplice {
  public:
    PlainSplice(const ReferenceTables& reference, Session& session, bool wide)
        : reference_(reference), session_(session), wide_(wide), last_(session.tables.srd[0].columns() - 1) {}

    void align() {
        const int lastTarget = wide_ ? last_ : session_.channelCount(0);
        for (int slot = 0; slot + 1 < slotCount; ++slot) {
            if (!session_.loaded(slot) || !session_.loaded(slot + 1)) continue;
            for (int target = 1; target <= lastTarget; ++target)
                for (int other = slot + 1; other < slotCount && !mnem(slot, target).empty(); ++other)
                    if (session_.loaded(other) && !matchExactly(other, target, mnem(slot, target)))
                        matchByGroup(other, target, mnem(slot, target));
        }
    }
    void compact() {
        int guard = 0;
        for (int place = 1; place <= last_;) {
            if (++guard > 2 * (last_ + 1)) return;
            bool empty = true;
            for (int slot = 0; slot < slotCount; ++slot) empty = empty && mnem(slot, place).empty();
            if (!empty || place == last_) {
                ++place;
                continue;
            }
            for (int slot = 0; slot < slotCount; ++slot)
                if (session_.loaded(slot)) session_.tables.srd[slot].moveColumn(place, last_);
        }
    }

  private:
    const std::string& mnem(int slot, int column) const {
        return session_.tables.srd[slot].text(SlotRow::Mnem, column);
    }
    int first(int slot) const { return wide_ ? 1 : session_.columnBase(slot) + 1; }
    int last(int slot) const { return wide_ ? last_ : session_.columnBase(slot) + session_.channelCount(slot); }
    bool matchExactly(int slot, int target, std::string_view wanted) {
        for (int place = first(slot); place <= last(slot); ++place) {
            if (!sameText(mnem(slot, place), wanted)) continue;
            session_.tables.srd[slot].moveColumn(place, target);
            return true;
        }
        return false;
    }
    void matchByGroup(int slot, int target, std::string_view wanted) {
        for (const std::string& member : groupMembers(reference_, wanted))
            for (int place = first(slot); place <= last(slot); ++place) {
                if (!sameText(mnem(slot, place), member)) continue;
                if (!wide_ && !mnem(slot, target).empty()) continue;
                session_.tables.srd[slot].moveColumn(place, target);
                return;
            }
    }

    const ReferenceTables& reference_;
    Session& session_;
    bool wide_;
    int last_;
};

/// Mnemonic and index of every input channel by column.
Texts arrangement(const Session& session) {
    Texts cells;
    for (int slot = 0; slot < slotCount; ++slot)
        for (int column = 1; column < session.tables.srd[0].columns(); ++column) {
            const Table& table = session.tables.srd[slot];
            cells.push_back(table.text(SlotRow::Mnem, column) + "." + table.text(SlotRow::Index, column));
        }
    return cells;
}

TEST_F(Matching, AlignmentEqualsThePlainScan) {
    for (int group = 0; group < 6; ++group)
        for (int member = 0; member < 5; ++member)
            app.reference.curves.push_back(
                {"G" + std::to_string(group), "N" + std::to_string((group * 7 + member * 3) % 24), ""});
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    for (int turn = 0; turn < 300; ++turn) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " turn " + std::to_string(turn));
        fillRandomly(session, random, 1 + turn % 12, 1 + turn % 30);
        for (const bool wide : {false, true}) {
            Session fast = session, plain = session;
            wide ? spliceGuessNew(app, fast) : spliceGuess(app, fast);
            PlainSplice splice(app.reference, plain, wide);
            splice.align();
            splice.compact();
            ASSERT_EQ(arrangement(fast), arrangement(plain)) << (wide ? "wide" : "narrow");
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
    ASSERT_TRUE(linkChannel(session, 1, 1, 1, FigureRules::asLaidDown));
    EXPECT_EQ(link(0, 1), (Texts{"GR", "1", "1000", "1001"})) << "the other slots' links stay";
    EXPECT_EQ(link(1, 1), (Texts{"GRC", "1", "1000", "1001"}));
    EXPECT_EQ(outputs(), (Texts{"GRC", "RHOB", "(GRC)", "SP"})) << "one connection only: column 3 lost its link";
    session.multipleConnections = true;
    ASSERT_TRUE(linkChannel(session, 1, 1, 2, FigureRules::asLaidDown));
    EXPECT_EQ(link(1, 1)[0], "GRC");
    EXPECT_EQ(link(1, 2)[0], "GRC");
    ASSERT_TRUE(linkChannel(session, 1, -1, 2, FigureRules::asLaidDown));
    EXPECT_EQ(link(1, 2)[0], "GRC");
    ASSERT_TRUE(linkChannel(session, 0, 0, 1, FigureRules::asLaidDown));
    ASSERT_TRUE(linkChannel(session, 1, 0, 1, FigureRules::asLaidDown));
    EXPECT_EQ(outputs()[0], "(GRC)");
    EXPECT_FALSE(linkChannel(session, 0, 3, 1, FigureRules::asLaidDown));
    EXPECT_FALSE(linkChannel(session, 0, 1, 99, FigureRules::asLaidDown));
}

TEST_F(Matching, linkTakesHeaderFromOriginalColumn) {
    load(0, {"GR", "RHOB"});
    load(1, {"RHOB", "SP"});
    spliceGuess(app, session);
    ASSERT_EQ(outputs(), (Texts{"GR", "RHOB", "SP", "()"}));
    linkChannel(session, 1, 1, 1, FigureRules::asLaidDown);
    EXPECT_EQ(cell(SrdRow::Mnem, 1), "SP") << "column 3 is where RHOB of the second file stood at first";
    EXPECT_EQ(link(1, 1)[0], "RHOB");
}

TEST_F(Matching, ByTrueFiguresALinkNamesItsColumnAfterItsChannelWhereverColumnsMoved) {
    LasText first, second;
    first.curves = "GR.GAPI 310 : GAMMA\nRHOB.G/C3 350 : DENSITY\n";
    second.curves = "RHOB.K/M3 351 : LATER DENSITY\nCAL.IN 280 : CALIPER\n";
    first.channels = second.channels = 2;
    load(0, first);
    load(1, second);
    spliceGuess(app, session);
    session.tables.outputs().setCheck(SrdRow::Use, 2, Check::Unchecked);
    ASSERT_TRUE(linkChannel(session, 1, 2, 1, FigureRules::trueFigures));
    EXPECT_EQ(outputs(), (Texts{"CAL", "(RHOB)", "(CAL)", "()"})) << "what nobody touched stays out of use";
    EXPECT_EQ(link(0, 1)[0], "GR");
    EXPECT_EQ(link(1, 1), (Texts{"CAL", "2", "1000", "1001"}));
    for (const auto& [row, text] : {std::pair{SrdRow::InputUnit, "IN"}, std::pair{SrdRow::Unit, "IN"},
                                    std::pair{SrdRow::Value, "280"}, std::pair{SrdRow::Description, "CALIPER"}})
        EXPECT_EQ(cell(row, 1), text);
    session.tables.outputs().data(SrdRow::Function, 2) = "10|2|0|0|1|1||";
    ASSERT_TRUE(linkChannel(session, 1, 1, 2, FigureRules::trueFigures));
    EXPECT_EQ(cell(SrdRow::Unit, 2), "G/C3") << "a function's result keeps its name and unit";
    EXPECT_EQ(session.tables.outputs().data(SrdRow::Unit, 2), "K/M3");
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

}  // namespace welvane::test
