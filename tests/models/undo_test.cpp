#include "models/undo.h"

#include <utility>

#include "models/other_text.h"
#include "models/table_models.h"
#include "session/tvd.h"
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

TEST_F(Undo, SettingsThatWereChosenHold) {
    load(0, {"GR"});
    UndoableModel properties = over(propertiesModel(app, session), SessionGrid::Properties);
    {
        const UndoHistory::Step step(history, app, session, "Edit Function of channel 1");
        app.settings.matrix[4] = 2.66F;
        session.tables.output(SrdRow::Mnem, 1) = "DPHI";
    }
    EXPECT_TRUE(history.undo(app, session));
    EXPECT_EQ(app.settings.matrix, stockMatrixTable) << "a density that its dialog changed";
    EXPECT_TRUE(history.redo(app, session));
    EXPECT_TRUE(properties.edit(at(PrdRow::Null), 1, "-99999").done);
    app.settings.matrix[4] = 2.7F;
    app.settings.format.dataWidth = 17;
    history.settingsHold(app, "The preferences stay");
    EXPECT_FALSE(history.undo(app, session));
    EXPECT_TRUE(history.undo(app, session) && history.undo(app, session));
    EXPECT_EQ(outputs(), Texts{"GR"});
    EXPECT_EQ(app.settings.matrix[4], 2.7F);
    EXPECT_EQ(app.settings.format.dataWidth, 17);
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

TEST_F(Undo, WhatStaysIsPassedOverAndNothingBeforeItIsLost) {
    load(0, {"GR"});
    UndoableModel model = channels();
    EXPECT_TRUE(model.edit(at(SrdRow::Mnem), 1, "SGR").done);
    history.cannotUndo("Deleted files do not come back: a.las");
    EXPECT_TRUE(history.canUndo() && history.lastStays());
    EXPECT_EQ(history.undoText(), "Deleted files do not come back: a.las");
    EXPECT_FALSE(history.undo(app, session));
    EXPECT_EQ(outputs(), Texts{"SGR"}) << "told, and nothing else";
    EXPECT_TRUE(history.undo(app, session));
    EXPECT_EQ(outputs(), Texts{"GR"});
    EXPECT_FALSE(history.canUndo() || history.undo(app, session));
    EXPECT_EQ(history.redoText(), "Edit Mnem of channel 1");
    history.clear();
    EXPECT_FALSE(history.canRedo());
}

TEST_F(Undo, ATextIsTakenBackInOneGo) {
    load(0, {"GR"});
    const std::string before = shownOtherText(session);
    for (const char* text : {"a", "ab", "ab\nc"}) typeOtherText(history, app, session, text);
    EXPECT_EQ(session.tables.otherText, "ab\r\nc");
    EXPECT_EQ(history.steps(), 1U);
    EXPECT_TRUE(channels().edit(at(SrdRow::Mnem), 1, "SGR").done);
    typeOtherText(history, app, session, "d");
    EXPECT_EQ(history.steps(), 3U) << "another step stands between";
    EXPECT_TRUE(history.undo(app, session));
    EXPECT_EQ(shownOtherText(session), "ab\nc");
    EXPECT_TRUE(history.undo(app, session) && history.undo(app, session));
    EXPECT_EQ(shownOtherText(session), before);
    EXPECT_TRUE(history.redo(app, session));
    EXPECT_EQ(shownOtherText(session), "ab\nc");
    typeOtherText(history, app, session, "ab\ncd");
    EXPECT_FALSE(history.canRedo()) << "a step that goes on takes another way too";
}

TEST_F(Undo, WhatStandsBesideTheSessionFindsItsWayBack) {
    load(0, {"GR"});
    std::string beside = "one";
    const auto change = [&](const std::string& text) {
        history.did(
            "To " + text, [&beside, other = std::exchange(beside, text)]() mutable { std::swap(beside, other); }, 1);
    };
    change("two");
    {
        const UndoHistory::Step step(history, app, session, "Both");
        change("three");
        session.tables.output(SrdRow::Mnem, 1) = "SGR";
        change("four");
    }
    EXPECT_EQ(history.steps(), 2U);
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(history.undo(app, session));
        EXPECT_EQ(beside + outputs()[0], "twoGR");
        EXPECT_TRUE(history.undo(app, session));
        EXPECT_EQ(beside, "one");
        EXPECT_TRUE(history.redo(app, session) && history.redo(app, session));
        EXPECT_EQ(beside + outputs()[0], "fourSGR");
    }
    EXPECT_TRUE(channels().edit(at(SrdRow::Mnem), 1, "X").done);
    history.forgetTurns();
    EXPECT_EQ(history.steps(), 1U);
    UndoHistory small(100);
    for (int step = 0; step < 9; ++step)
        small.did(
            "x", [] {}, 30);
    EXPECT_EQ(small.steps(), 1U) << "they need room too";
}

TEST_F(Undo, EveryGridHasItsWords) {
    load(0, {"GR"});
    LasText many;
    many.parameters = "A. 1 : a\nB. 2 : b\nC. 3 : c\n";
    load(1, many);
    struct Case {
        CellTableModel table;
        SessionGrid grid;
        TableIndex row, column;
        std::string_view text;
    };
    for (const Case& one :
         {Case{newChannelsModel(app, session, {}), SessionGrid::NewChannels, linkRow(2, Link::From), 1,
               "Edit From of File 3 in channel 1"},
          Case{sectionsModel(app, session), SessionGrid::Sections, OrdRow::Name, 2, "Edit section ~WELL"},
          Case{fieldsModel(session.tables.wrd), SessionGrid::Well, 1, 3, "Edit line STRT of ~Well"},
          Case{fieldsModel(session.tables.parg[1]), SessionGrid::Parameters, 3, 3, "Edit line C of ~Parameter"},
          Case{filterModel(app, session), SessionGrid::Filter, 1, at(FrdColumn::Path), "Edit filter"},
          Case{surveyModel(session), SessionGrid::Survey, 4, TrdColumn::Md, "Edit MD of survey row 4"}}) {
        EXPECT_EQ(editText(one.table, one.grid, one.row, one.column), one.text);
        const EditOutcome outcome = over(one.table, one.grid).edit(one.row, one.column, "");
        EXPECT_TRUE(outcome.done) << one.text << ": " << outcome.why;
    }
}

}  // namespace welvane::test
