#include "session/session_setup.h"

#include <random>

#include "session/db_value.h"
#include "shared/failure.h"
#include "support/session_fixture.h"

namespace welvane::test {

using SessionSetup = SessionTest;

TEST_F(SessionSetup, TablesStartAtTheirDefaults) {
    const SessionTables& tables = session.tables;
    for (const Table& table : tables.srd) EXPECT_EQ(table.columns(), 1);
    EXPECT_EQ(tables.outputs().text(SrdRow::Function, 0), "Function");
    EXPECT_EQ(tables.outputs().text(linkRow(3, Link::Mnem), 0), "File 4 :");
    EXPECT_TRUE(tables.outputs().rowHidden(linkRow(2, Link::Curve)));
    EXPECT_EQ(tables.prd.rows(), prdRowCount);
    EXPECT_EQ(tables.setting(PrdRow::DepthOffset), "0");
    EXPECT_EQ(tables.setting(PrdRow::FormatColon), "60");
    EXPECT_EQ(tables.setting(PrdRow::DataWidth), "13");
    EXPECT_EQ(tables.setting(PrdRow::ParsingOptions), "Auto (preferred)");
    EXPECT_TRUE(tables.checked(PrdRow::RenameDuplicates));
    EXPECT_FALSE(tables.checked(PrdRow::FillEmpty));
    EXPECT_FALSE(tables.filterInUse());
    EXPECT_EQ(tables.ord.text(OrdRow::Name, 4), "~Parameter Information");
    Texts included;
    for (int column = 1; column <= 6; ++column)
        included.push_back(tables.ord.checked(OrdRow::Include, column) ? "1" : "2");
    EXPECT_EQ(included, (Texts{"1", "1", "1", "1", "2", "1"}));
}

TEST_F(SessionSetup, StoredSettingsReachTheTables) {
    platform.settings().put("renamedups", "2");
    platform.settings().put("filFile", "old.fil");
    openSession(app, session);
    EXPECT_FALSE(session.tables.checked(PrdRow::RenameDuplicates));
    EXPECT_EQ(session.filterFile, "old.fil");
    EXPECT_EQ(session.tables.frd.text(1, FrdColumn::Path), "old.fil");
    EXPECT_FALSE(session.tables.filterInUse()) << "named, but not to be applied";
}

TEST_F(SessionSetup, addKeepsTheSlotsColumns) {
    load(0, {"GR", "RHOB", "NPHI"});
    EXPECT_EQ(AddChannel(session, 1), 2);
    EXPECT_EQ(outputs(), (Texts{"GR", "Added", "RHOB", "NPHI"}));
    EXPECT_EQ(session.tables.srd[0].text(SlotRow::Mnem, 2), "RHOB");
    EXPECT_EQ(session.tables.srd[0].text(SlotRow::Mnem, 4), "");
    EXPECT_EQ(link(0, 2), (Texts{"", "", "1000", "1001"}));
    EXPECT_TRUE(DeleteChannel(session, 1));
    EXPECT_EQ(outputs(), (Texts{"Added", "RHOB", "NPHI"}));
    EXPECT_FALSE(DeleteChannel(session, 0)) << "the labels are no channel";
}

TEST_F(SessionSetup, TheFiveTablesKeepEqualColumnCounts) {
    load(0, {"GR", "RHOB", "NPHI"});
    load(2, {"GR", "SP"});
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int turn = 0; turn < 500; ++turn) {
        const int columns = session.tables.outputs().columns();
        const int current = static_cast<int>(random() % static_cast<unsigned>(columns + 1));
        if (random() % 2 == 0)
            DeleteChannel(session, current);
        else if (current < columns)
            AddChannel(session, current);
        for (const Table& table : session.tables.srd) ASSERT_EQ(table.columns(), session.tables.outputs().columns());
    }
    while (DeleteChannel(session, session.tables.outputs().columns() - 1)) {
    }
    EXPECT_EQ(session.tables.outputs().columns(), 1);
    EXPECT_EQ(AddChannel(session, 0), 1);
}

TEST_F(SessionSetup, ClearFunctionBringsBackWhatCameFromTheFile) {
    load(0, {"GR"});
    Table& table = session.tables.outputs();
    for (int row = at(SrdRow::Mnem); row <= at(SrdRow::Description); ++row) table.text(row, 1) = "changed";
    table.data(SrdRow::InputUnit, 1) = "API";
    table.data(SrdRow::Function, 1) = "10|1|0|0|1|1|GR|was :GR ";
    clearFunction(session, 1);
    EXPECT_EQ(cell(SrdRow::Mnem, 1), "GR");
    EXPECT_EQ(cell(SrdRow::Unit, 1), "API") << "the unit comes from the input's unit";
    EXPECT_EQ(cell(SrdRow::Description, 1), "CURVE GR");
    EXPECT_EQ(cell(SrdRow::Function, 1), "<none>");
    EXPECT_EQ(table.data(SrdRow::Function, 1), "");
}

TEST_F(SessionSetup, FormatColumnsAreMarkedByTheFirstThatFails) {
    struct Case {
        std::int16_t dot, value, colon;
        PrdRow marked;
        std::uint32_t colour;
    };
    for (const Case& one : {Case{0, 0, 0, PrdRow::FormatDot, 255}, Case{6, 0, 60, PrdRow::FormatValue, 255},
                            Case{6, 15, -1, PrdRow::FormatColon, 255}, Case{6, 7, 60, PrdRow::FormatValue, 255},
                            Case{6, 15, 16, PrdRow::FormatColon, 255}, Case{4, 15, 60, PrdRow::FormatDot, 0x80FFFF},
                            Case{5, 15, 60, PrdRow::Head, 0}}) {
        SCOPED_TRACE(one.dot * 10000 + one.value * 100 + one.colon);
        app.settings.format.dotColumn = one.dot;
        app.settings.format.valueColumn = one.value;
        app.settings.format.colonColumn = one.colon;
        checkFormatSpec(app, session);
        for (int row = at(PrdRow::FormatDot); row <= at(PrdRow::DataDecimals); ++row)
            EXPECT_EQ(session.tables.prd.backColour(row, 1), row == at(one.marked) ? one.colour : 0xFFFFFFU)
                << "row " << row;
    }
}

TEST(DBValue, FindsTheFieldByKeyAndColumn) {
    const TempFolder folder;
    const std::string table =
        folder.write("t.csv",
                     "# a comment\r\nArea, UWI ,Operator,Note\r\n1,A-1,ACME OIL,\"one, \"\"two\"\"\"\r\n"
                     "2,a-1,OTHER,\r\n#3,B-2,HIDDEN,\r\n4,\"B-2\", BETA ,\"x\r\ny\"\r\n5,C-3\r\n6,D,5\" pipe,z\r\n");
    struct Case {
        const char *key, *column, *value;
    };
    for (const Case& one :
         {Case{"A-1", "Operator", "ACME OIL"}, Case{"a-1", "OPERATOR", "ACME OIL"}, Case{"A-1", "uwi", "A-1"},
          Case{"A-1", "Note", "one, \"two\""}, Case{"B-2", "Operator", "BETA"}, Case{"B-2", "Note", "x\r\ny"},
          Case{"C-3", "Operator", ""}, Case{"D", "Operator", "5\" pipe"}, Case{"Z", "Operator", ""},
          Case{"A-1", "Nothing", ""}, Case{"", "Operator", ""}})
        EXPECT_EQ(getDBValue(table, one.key, one.column), one.value) << one.key << " " << one.column;
    EXPECT_EQ(getDBValue(folder.path("missing.csv"), "A", "B"), "");
    EXPECT_EQ(getDBValue(folder.write("empty.csv", ""), "A", "B"), "");
    EXPECT_EQ(getDBValue(folder.write("lf.csv", "a,b,c\n1,k,v\n"), "k", "c"), "v")
        << "line feeds alone end a record too";
    EXPECT_EQ(getDBValue(folder.write("open.csv", "a,b,c\r\n1,k,\"v\r\n2,l,w\r\n"), "l", "c"), "w")
        << "an open quote is text";
}

}  // namespace welvane::test
