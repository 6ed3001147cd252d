#include "models/clipboard.h"

#include "models/header_rows.h"
#include "models/table_models.h"
#include "models/undo.h"
#include "shared/failure.h"
#include "support/session_fixture.h"

namespace welvane::test {

using Cells = std::vector<Texts>;

TEST(Cells, AreCutAtTabsAndLineEndsOutsideOfQuotes) {
    struct Case {
        std::string_view text;
        Cells cells;
    };
    for (const Case& one : {Case{"", {}}, Case{"a", {{"a"}}}, Case{"a\tb\r\nc\t\n", {{"a", "b"}, {"c", ""}}},
                            Case{"\r\rx", {{""}, {""}, {"x"}}}, Case{"\"a\tb\r\n\"\"c\"\td", {{"a\tb\r\n\"c", "d"}}},
                            Case{"\"1 f\td", {{"\"1 f", "d"}}}, Case{"\"a\"b\tc", {{"\"a\"b", "c"}}},
                            Case{"\"\"", {{""}}}, Case{"5\"\t6", {{"5\"", "6"}}}})
        EXPECT_EQ(splitCells(one.text), one.cells) << one.text;
}

class Clipboard : public SessionTest {
  protected:
    CellTableModel channels() {
        return newChannelsModel(app, session, [](auto&&...) { return std::nullopt; });
    }
};

TEST_F(Clipboard, WhatIsCopiedComesBackTheSame) {
    Table table(3, 3);
    table.text(1, 1) = "tab\there";
    table.text(1, 2) = "say \"5\"\r\n";
    table.text(2, 1) = "hidden";
    table.setRowHidden(2, true);
    CellTableModel from = fieldsModel(table);
    EXPECT_EQ(copyCells(from, {1, 1, 99, 99}), "\"tab\there\"\t\"say \"\"5\"\"\r\n\"\r\n");
    EXPECT_EQ(splitCells(copyCells(from, {1, 1, 1, 2})), (Cells{{"tab\there", "say \"5\"\r\n"}}));
    load(0, {"GR", "RHOB"});
    CellTableModel model = channels();
    const CellArea all{at(SrdRow::Mnem), 1, srdRowCount - 1, 2};
    const Session before = session;
    const std::string text = copyCells(model, all);
    for (const SrdRow row : {SrdRow::Mnem, SrdRow::Unit, SrdRow::Description})
        session.tables.output(row, 2) = "changed";
    EXPECT_TRUE(model.edit(linkRow(0, Link::Mnem), 1, "<none>", 0).done);
    EXPECT_TRUE(pasteCells(model, at(SrdRow::Mnem), 1, text).clean());
    EXPECT_EQ(copyCells(model, all), text) << "links bring headers, which give way to those of the block";
    EXPECT_EQ(link(0, 1), (Texts{"GR", "1", "1000", "1001"}));
}

TEST_F(Clipboard, OneRefusedCellIsToldAndNoneIsLost) {
    load(0, {"GR", "RHOB"});
    CellTableModel model = channels();
    const PasteReport links = pasteCells(model, linkRow(0, Link::Mnem), 1, "RHOB\tNPHI\n1000.5\t1000.5");
    EXPECT_EQ(cell(linkRow(0, Link::Mnem), 1), "RHOB");
    ASSERT_EQ(links.refused.size(), 1U);
    EXPECT_EQ(links.summary(),
              "1 cell kept what stood there; \"NPHI\" in row 8, column 2: not one of the texts that this cell offers");
    EXPECT_EQ(links.changed, 3U) << "the rows behind a hidden one take the block's too";
    EXPECT_EQ(link(0, 1)[2], "1000.5");
    CellTableModel well = fieldsModel(session.tables.wrd);
    const PasteReport fields = pasteCells(well, 1, 0, "STRT\t;\tF\t1\t:\ttop");
    EXPECT_EQ(fields.summary(), "1 cell kept what stood there; \";\" in row 1, column 1: this cell takes no edit");
    EXPECT_EQ(session.tables.wrd.text(1, FieldColumn::Desc), "top");
    CellTableModel properties = propertiesModel(app, session);
    const PasteReport mixed = pasteCells(properties, at(PrdRow::DataWidth), 1, "wide\r\n3\r\n");
    EXPECT_EQ(mixed.summary(), "1 cell kept what stood there; \"wide\" in row 15, column 1: \"wide\" is not a number");
    EXPECT_EQ(setting(PrdRow::DataDecimals), "3");
    const PasteReport check = pasteCells(properties, at(PrdRow::ApplyTvd), 1, "perhaps");
    EXPECT_EQ(check.refused.at(0).why, "this cell is a check: 1 or 0");
    EXPECT_TRUE(pasteCells(properties, at(PrdRow::DovranFilter), 1, "1").clean());
    EXPECT_TRUE(session.tables.checked(PrdRow::DovranFilter));
}

TEST_F(Clipboard, ABlockIsTakenBackAsOneStep) {
    load(0, {"GR", "RHOB"});
    UndoHistory history;
    UndoableModel model(std::make_unique<CellTableModel>(channels()), SessionGrid::NewChannels, history, app, session);
    EXPECT_EQ(pasteCells(model, at(SrdRow::Mnem), 1, "A\tB\nX\tY\n").changed, 4U);
    EXPECT_EQ(history.undoText(), "Paste cells");
    clearCells(model, {at(SrdRow::Value), 1, at(SrdRow::Description), 2});
    EXPECT_EQ(history.steps(), 2U);
    EXPECT_TRUE(history.undo(app, session) && history.undo(app, session));
    EXPECT_EQ(outputs(), (Texts{"GR", "RHOB"}));
    EXPECT_FALSE(pasteCells(model, at(SrdRow::Mnem), 2, "A\tB").clean());
    EXPECT_EQ(history.steps(), 0U);
}

TEST_F(Clipboard, ABlockThatIsTooLargeChangesNothing) {
    load(0, {"GR"});
    CellTableModel model = channels();
    const SessionTables before = session.tables;
    struct Case {
        std::int64_t row;
        int column;
        std::string_view text;
    };
    for (const Case& one :
         {Case{1, 1, "A\tB"}, Case{srdRowCount - 1, 1, "1\n2"}, Case{-1, 1, "A"}, Case{1, -1, "A"}, Case{1, 99, "A"}}) {
        const PasteReport report = pasteCells(model, one.row, one.column, one.text);
        EXPECT_TRUE(report.why.starts_with("nothing was pasted: ")) << report.why;
        EXPECT_FALSE(report.clean());
        EXPECT_TRUE(session.tables == before) << one.text;
    }
}

TEST_F(Clipboard, ClearingSparesChecksHeadsAndHiddenRows) {
    load(0, {"GR"});
    CellTableModel model = channels();
    EXPECT_TRUE(clearCells(model, {at(SrdRow::Value), 0, at(SrdRow::Use), 9}).clean());
    EXPECT_EQ(cell(SrdRow::Description, 1), "");
    EXPECT_EQ(cell(SrdRow::Description, 0), "Description");
    EXPECT_EQ(outputs(), Texts{"GR"});
}

TEST_F(Clipboard, HeaderLinesAreAddedAndTakenAway) {
    load(0, {"GR"});
    Table& well = session.tables.wrd;
    const int lines = well.rows();
    well.setRowHidden(3, true);
    const std::string third = well.text(3, FieldColumn::Mnem);
    EXPECT_EQ(addHeaderLine(well, 2), 2);
    EXPECT_EQ(well.text(2, FieldColumn::Dot), ".");
    EXPECT_EQ(well.text(2, FieldColumn::Mnem), "");
    EXPECT_EQ(well.text(4, FieldColumn::Mnem), third);
    EXPECT_TRUE(well.rowHidden(4) && !well.rowHidden(3)) << "a hidden line takes its mark along";
    EXPECT_EQ(addHeaderLine(well, 999), lines + 1);
    EXPECT_THROW(addHeaderLine(well, 0), RunTimeFailure);
    EXPECT_TRUE(deleteHeaderLine(well, lines + 1).done);
    EXPECT_EQ(deleteHeaderLine(well, 1).why, "every file needs its line STRT");
    EXPECT_EQ(deleteHeaderLine(well, 4).why, "only a filter reads this line");
    EXPECT_FALSE(deleteHeaderLine(well, 0).done || deleteHeaderLine(well, 999).done);
    EXPECT_TRUE(deleteHeaderLine(well, 2).done);
    EXPECT_EQ(well.rows(), lines);
    EXPECT_EQ(well.text(3, FieldColumn::Mnem), third);
}

}  // namespace welvane::test
