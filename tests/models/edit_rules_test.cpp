#include "models/new_channels.h"
#include "models/property_rules.h"
#include "models/section_rules.h"
#include "shared/failure.h"
#include "shared/text.h"
#include "support/session_fixture.h"

namespace welvane::test {

using EditRules = SessionTest;

TEST_F(EditRules, CellsOfferTheirPickLists) {
    addGroup("GAMMA", {"GR", "GRC", "GRD"});
    app.reference.units = {{"DEPTH", "M", 1, 0}, {"DENSITY", "G/C3", 1, 0}, {"DENSITY", "K/M3", 1000, 0}};
    LasText las;
    las.curves = "GRC.G/C3 : \nRHOB. : \n";
    las.channels = 2;
    load(0, las);
    struct Case {
        TableIndex row, column;
        std::string_view list;
    };
    for (const Case& one :
         {Case{SrdRow::Mnem, 1, "GR|GRD"}, Case{SrdRow::Mnem, 2, ""}, Case{SrdRow::Unit, 1, "G/C3|K/M3"},
          Case{8, 1, "<none>|GRC|RHOB"}, Case{8, 0, "..."}, Case{12, 1, ""}, Case{SrdRow::Value, 1, ""}})
        EXPECT_EQ(newChannelList(app, session, one.row, one.column), one.list) << one.row << "," << one.column;
    EXPECT_TRUE(endsWith(newChannelList(app, session, SrdRow::Function, 1), "|SCALE|<none>"));
    EXPECT_EQ(propertyList(session, PrdRow::From, 2), "Min|Max|Fit");
    EXPECT_EQ(propertyList(session, PrdRow::FormatDot, 2), "User|File1");
    EXPECT_EQ(propertyList(session, PrdRow::HeaderFile, 1), session.slots[0].path);
    EXPECT_EQ(propertyList(session, PrdRow::PlainAscii, 2), "") << "not while the row is off";
    Texts lists;
    session.tables.ord.text(OrdRow::Name, 5) = "~Tops";
    for (int column = 1; column <= 6; ++column) lists.push_back(sectionList(session, column));
    session.tables.ord.text(OrdRow::Name, 5) = "~other";
    lists.push_back(sectionList(session, 5));
    EXPECT_EQ(lists,
              (Texts{"~V|~Version|~Version Information", "~W|~Well|~Well Information", "~C|~Curve|~Curve Information",
                     "~P|~Parameter|~Parameter Information", "", "~A|~ASCII|", "~O|~Other|~Other Information"}));
}

TEST_F(EditRules, functionCell) {
    addGroup("POROSITY", {"DPHI"}, "42 890", "V/V", "PU");
    load(0, {"RHOB"});
    Table& table = session.tables.outputs();
    Texts seen;
    const FunctionChooser dialog = [&](int column, std::string_view old, std::string_view chosen) {
        seen = {std::to_string(column), std::string(old), std::string(chosen)};
        return FunctionDescriptor::parse("2|2.65|1|0|0|1|DPHI|was :RHOB Matrix=2.65 Fluid=1");
    };
    editNewChannel(app, session, {SrdRow::Function, 1, "BULKDEN2PORO", 2}, dialog);
    EXPECT_EQ(seen, (Texts{"1", "", "BULKDEN2PORO"}));
    EXPECT_EQ(cell(SrdRow::Function, 1), "BULKDEN2PORO");
    EXPECT_EQ(cell(SrdRow::Mnem, 1), "DPHI");
    EXPECT_EQ(cell(SrdRow::Value, 1), "42 890");
    EXPECT_EQ(cell(SrdRow::Description, 1), "DPHI CURVE was :RHOB Matrix=2.65 Fluid=1");
    EXPECT_EQ(cell(SrdRow::Unit, 1), "PU");
    editNewChannel(app, session, {SrdRow::Function, 1, "RES2COND", 0}, dialog);
    EXPECT_EQ(cell(SrdRow::Function, 1), "<none>");
    EXPECT_EQ(cell(SrdRow::Mnem, 1), "RHOB");
    EXPECT_EQ(cell(SrdRow::Description, 1), "CURVE RHOB");
    editNewChannel(app, session, {SrdRow::Function, 1, "MATH", 10}, [](auto&&...) { return std::nullopt; });
    EXPECT_EQ(table.data(SrdRow::Function, 1), "");
}

TEST_F(EditRules, SectionsAskBeforeTheNeededOnesGo) {
    EXPECT_FALSE(includeSection(app, session, 4, false)) << "~Parameter asks nothing";
    user.willAnswer(Answer::No);
    EXPECT_TRUE(includeSection(app, session, 3, false));
    EXPECT_EQ(box(0),
              "Warning!: Choosing not to include this section, ~Curve Information, will produce a LAS Certification "
              "error. Proceed?");
    user.willAnswer(Answer::Yes);
    EXPECT_FALSE(includeSection(app, session, 3, false));
    EXPECT_FALSE(moveSection(session, 6, 1));
    EXPECT_FALSE(moveSection(session, 1, 6));
    EXPECT_FALSE(moveSection(session, 0, 2));
    EXPECT_TRUE(moveSection(session, 2, 1));
    EXPECT_EQ(session.tables.ord.text(OrdRow::Name, 1), "~Well Information");
    EXPECT_EQ(session.tables.ord.text(OrdRow::Order, 1), "1");
}

TEST_F(EditRules, MenusActOnWholeRows) {
    addGroup("GAMMA", {"GR"}, "30 310");
    load(0, {"GR", "X"});
    Table& table = session.tables.outputs();
    useAllChannels(session, false);
    EXPECT_EQ(outputs(), (Texts{"(GR)", "(X)"}));
    table.data(SrdRow::Value, 2) = "99";
    fillEmptyFromLibrary(app, session, SrdRow::Value);
    EXPECT_EQ(cell(SrdRow::Value, 1), "30 310");
    EXPECT_EQ(cell(SrdRow::Value, 2), "99");
    EXPECT_FALSE(channelMenu(session, SrdRow::Mnem, 1)[1].enabled);
    const int added = AddChannel(session, 1);
    EXPECT_TRUE(channelMenu(session, SrdRow::Mnem, added)[1].enabled);
    EXPECT_TRUE(channelMenu(session, 8, 0)[2].enabled);
    EXPECT_FALSE(channelMenu(session, 12, 0)[2].enabled);
}

}  // namespace welvane::test
