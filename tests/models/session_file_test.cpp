#include "jobs/session_file.h"

#include <random>

#include "jobs/session_parts.h"
#include "models/channels_tab.h"
#include "models/header_rows.h"
#include "session/matching.h"
#include "support/session_fixture.h"

namespace welvane::test {

/// Texts that a careless writer would take for something else.
const Texts oddTexts = {"",
                        " ",
                        "@input1",
                        "\"quoted\" \\x41",
                        "a # b",
                        "line\nend\r\ttab",
                        "\xC3\xA9t\xC3\xA9",
                        "\xE9t\xE9",
                        "[table well]",
                        "x",
                        std::string("\0\x7F", 2)};

class SessionFile : public SessionTest {
  protected:
    std::vector<Input> loadInputs() {
        load(0, {"GR", "RHOB", "NPHI"});
        load(1, {"NPHI", "GR"});
        std::vector<Input> inputs;
        for (int slot = 0; slot < 2; ++slot)
            inputs.push_back({session.slots[slot].path, session.slots[slot].path, session.slots[slot].file});
        return inputs;
    }
    std::size_t below(std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(random); }
    const std::string& oddText() { return oddTexts[below(oddTexts.size())]; }
    Table& anyTable() {
        SessionTables& tables = session.tables;
        Table* const all[] = {&tables.srd[0], &tables.srd[1], &tables.outputs(), &tables.prd, &tables.frd,
                              &tables.ord,    &tables.wrd,    &tables.parg[0],   &tables.trd};
        return *all[below(std::size(all))];
    }
    void editCell() {
        Table& table = anyTable();
        SessionCell& cell = table.cell(below(table.rows()), below(table.columns()));
        cell.text = oddText();
        cell.data = oddText();
        cell.check = static_cast<Check>(below(3));
        cell.backColour = static_cast<std::uint32_t>(below(3)) * 0x55;
    }
    void step() {
        const int column = 1 + static_cast<int>(below(session.tables.outputs().columns() - 1));
        SlotChannels& channels = session.channels[below(2)];
        switch (below(11)) {
            case 0:
                AddChannel(session, column);
                break;
            case 1:
                if (session.tables.outputs().columns() > 3) DeleteChannel(session, column);
                break;
            case 2:
                moveNewChannel(session, 1, column);
                break;
            case 3:
                spliceGuess(app, session);
                break;
            case 4:
                addHeaderLine(session.tables.wrd, 1 + static_cast<int>(below(4)));
                break;
            case 5:
                deleteHeaderLine(session.tables.parg[0], 1);
                break;
            case 6:
                channels[below(channels.size())].channelOffset = 0.1F * static_cast<float>(below(9));
                break;
            case 7:
                session.inclinometry.rows.push_back({1.1F, 2, 1e-7F, 3e9F});
                break;
            case 8:
                session.tables.otherText = oddText();
                break;
            case 9:
                anyTable().setCaption(oddText());
                break;
            default:
                editCell();
        }
    }

    std::mt19937 random;
};

/// sessionText reads back what it wrote and refuses where that gives another session.
TEST_F(SessionFile, WhateverWasDoneToASessionComesBack) {
    const std::vector<Input> inputs = loadInputs();
    const Session fresh = session;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        random.seed(seed);
        session = fresh;
        for (std::size_t steps = below(25); steps > 0; --steps) step();
        session.filterFile = oddText();
        session.tvdFile = oddText();
        std::string text;
        ASSERT_NO_THROW(text = sessionText(app, session, fresh, inputs, {}, folder.path("s"))) << "seed " << seed;
        for (int cut = 0; cut < 20; ++cut)
            EXPECT_THROW(readSessionParts(text.substr(0, below(text.rfind("end ")))), RunTimeFailure)
                << "seed " << seed;
        std::string damaged = text;
        damaged[below(text.size())] ^= 4;
        EXPECT_THROW(readSessionParts(damaged), RunTimeFailure) << "seed " << seed;
    }
}

TEST_F(SessionFile, AMovedChannelIsToldInAWord) {
    loadInputs();
    Table moved = session.tables.outputs();
    moved.moveColumn(5, 1);
    EXPECT_EQ(tableChanges(session.tables.outputs(), moved, TableKey::FirstLink, Telling::Changes, {}),
              "columns 0 5 1-4\n");
    Table shorter = session.tables.wrd;
    shorter.removeRow(2);
    EXPECT_EQ(tableChanges(session.tables.wrd, shorter, TableKey::LineMnem, Telling::Changes, {}),
              "size 6 6\nrows 0-1 3-6\n");
}

}  // namespace welvane::test
