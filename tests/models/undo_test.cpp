#include "models/undo.h"

#include "models/header_rows.h"
#include "models/table_models.h"
#include "support/session_fixture.h"

namespace welvane::test {

class Undo : public SessionTest {
  protected:
    UndoableModel over(CellTableModel table, SessionGrid grid) {
        return {std::make_unique<CellTableModel>(std::move(table)), grid, history, app, session};
    }
    UndoableModel channels() {
        return over(newChannelsModel(app, session, [](auto&&...) { return std::nullopt; }), SessionGrid::NewChannels);
    }
    UndoHistory history;
};

TEST_F(Undo, EachEditIsAStepWithItsWords) {
    load(0, {"GR", "RHOB", "NPHI"});
    UndoableModel model = channels();
    EXPECT_FALSE(history.undo(app, session));
    EXPECT_TRUE(model.edit(at(SrdRow::Mnem), 3, "TNPH").done);
    EXPECT_EQ(history.undoText(), "Edit Mnem of channel 3");
    EXPECT_TRUE(model.edit(linkRow(0, Link::Mnem), 1, "<none>", 0).done);
    EXPECT_EQ(history.undoText(), "Edit link of File 1 in channel 1");
    EXPECT_TRUE(model.setCheck(at(SrdRow::Use), 2, false).done);
    EXPECT_EQ(history.undoText(), "Edit Use? of channel 2");
    EXPECT_FALSE(model.edit(at(SrdRow::Number), 1, "7").done);
    EXPECT_TRUE(model.edit(at(SrdRow::Mnem), 3, "TNPH").done) << "taken, but nothing came of it";
    EXPECT_EQ(history.steps(), 3U);
    EXPECT_TRUE(history.undo(app, session) && history.undo(app, session));
    EXPECT_EQ(outputs(), (Texts{"GR", "RHOB", "TNPH"}));
    EXPECT_EQ(link(0, 1)[0], "GR") << "with all that followed from the edit";
    EXPECT_EQ(history.redoText(), "Edit link of File 1 in channel 1");
    EXPECT_TRUE(history.redo(app, session));
    EXPECT_EQ(link(0, 1)[0], "");
    EXPECT_TRUE(history.undo(app, session) && history.undo(app, session));
    EXPECT_EQ(outputs(), (Texts{"GR", "RHOB", "NPHI"}));
    EXPECT_TRUE(model.edit(at(SrdRow::Mnem), 1, "SGR").done);
    EXPECT_FALSE(history.canRedo()) << "a new step takes another way";
}

TEST_F(Undo, WhatAnEditWritesBesideTheTablesComesBackToo) {
    load(0, {"GR"});
    UndoableModel properties = over(propertiesModel(app, session), SessionGrid::Properties);
    const std::int16_t width = app.settings.format.dataWidth;
    EXPECT_TRUE(properties.edit(at(PrdRow::DataWidth), 1, "21").done);
    EXPECT_EQ(history.undoText(), "Edit Data Width");
    EXPECT_TRUE(properties.setCheck(at(PrdRow::FillEmpty), 1, true).done);
    EXPECT_TRUE(app.settings.fillCurveValue);
    EXPECT_TRUE(history.undo(app, session) && history.undo(app, session));
    EXPECT_FALSE(app.settings.fillCurveValue);
    EXPECT_EQ(app.settings.format.dataWidth, width);
    {
        const UndoHistory::Step step(history, app, session, "Shift");
        session.channels[0][1].channelOffset = 2;
    }
    EXPECT_EQ(history.undoText(), "Shift");
    {
        const UndoHistory::Step step(history, app, session, "Open a file");
        load(1, {"SP"});
    }
    EXPECT_TRUE(history.undo(app, session));
    EXPECT_FALSE(session.loaded(1));
    EXPECT_EQ(outputs(), Texts{"GR"});
}

TEST_F(Undo, StepsInsideOfAnotherBelongToIt) {
    load(0, {"GR"});
    UndoableModel model = channels();
    {
        const UndoHistory::Step paste(history, app, session, "Paste");
        for (const SrdRow row : {SrdRow::Mnem, SrdRow::Unit, SrdRow::Value}) model.edit(at(row), 1, "X");
    }
    EXPECT_EQ(history.steps(), 1U);
    EXPECT_EQ(history.undoText(), "Paste");
    EXPECT_TRUE(history.undo(app, session));
    EXPECT_EQ(outputs(), Texts{"GR"});
}

TEST_F(Undo, RoomIsCountedButOneStepIsAlwaysThere) {
    load(0, {"GR", "RHOB"});
    UndoHistory small(3 * SessionState::of(app, session).bytes());
    const auto edit = [&](UndoHistory& steps, const std::string& text) {
        const UndoHistory::Step step(steps, app, session, text);
        session.tables.output(SrdRow::Mnem, 1) = text;
    };
    for (const char* text : {"a", "b", "c", "d", "e"}) edit(small, text);
    EXPECT_GE(small.steps(), 2U);
    EXPECT_LE(small.steps(), 3U);
    while (small.undo(app, session)) {
    }
    EXPECT_NE(session.tables.output(SrdRow::Mnem, 1), "GR") << "the oldest went";
    UndoHistory none(0);
    edit(none, "f");
    edit(none, "g");
    EXPECT_EQ(none.steps(), 1U);
    EXPECT_TRUE(none.undo(app, session));
    EXPECT_EQ(session.tables.output(SrdRow::Mnem, 1), "f");
}

TEST_F(Undo, WhatCannotBeTakenBackSaysSo) {
    load(0, {"GR"});
    {
        const UndoHistory::Step step(history, app, session, "Add line");
        addHeaderLine(session.tables.wrd, 1);
    }
    history.cannotUndo("A deleted file does not come back");
    EXPECT_FALSE(history.canUndo() || history.undo(app, session));
    EXPECT_EQ(history.undoText(), "A deleted file does not come back");
    history.clear();
    EXPECT_EQ(history.undoText(), "");
}

TEST_F(Undo, EveryGridHasItsWords) {
    load(0, {"GR"});
    struct Case {
        SessionGrid grid;
        TableIndex row, column;
        std::string_view text;
    };
    for (const Case& one :
         {Case{SessionGrid::NewChannels, linkRow(2, Link::From), 1, "Edit From of File 3 in channel 1"},
          Case{SessionGrid::Sections, OrdRow::Include, 2, "Edit section ~WELL"},
          Case{SessionGrid::Well, 1, 3, "Edit line STRT of ~Well"},
          Case{SessionGrid::Parameters, 1, 3, "Edit line BHT of ~Parameter"},
          Case{SessionGrid::Filter, 1, 1, "Edit filter"},
          Case{SessionGrid::Survey, 4, TrdColumn::Md, "Edit MD of survey row 4"}})
        EXPECT_EQ(editText(session, one.grid, one.row, one.column), one.text);
}

}  // namespace welvane::test
