#include "session/edit_rules.h"

#include "session/session_fixture.h"
#include "shared/failure.h"

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
        int row, column;
        std::string_view list;
    };
    for (const Case& one :
         {Case{at(SrdRow::Mnem), 1, "GR|GRD"}, Case{at(SrdRow::Mnem), 2, ""}, Case{at(SrdRow::Unit), 1, "G/C3|K/M3"},
          Case{8, 1, "<none>|GRC|RHOB"}, Case{8, 0, "..."}, Case{12, 1, ""}, Case{at(SrdRow::Value), 1, ""}})
        EXPECT_EQ(newChannelList(app, session, one.row, one.column), one.list) << one.row << "," << one.column;
    const std::string functions = newChannelList(app, session, at(SrdRow::Function), 1);
    EXPECT_EQ(functions.substr(0, 9), "RES2COND|");
    EXPECT_EQ(functions.substr(functions.size() - 13), "|SCALE|<none>");
    EXPECT_EQ(propertyList(session, at(PrdRow::From), 2), "Min|Max|Fit");
    EXPECT_EQ(propertyList(session, at(PrdRow::FormatDot), 2), "User|File1");
    EXPECT_EQ(propertyList(session, at(PrdRow::HeaderFile), 1), session.slots[0].path);
    EXPECT_EQ(propertyList(session, at(PrdRow::PlainAscii), 2), "");
    checkProperty(app, session, PrdRow::PlainAscii, true);
    EXPECT_EQ(propertyList(session, at(PrdRow::PlainAscii), 3), "Space|Tab|Comma");
    EXPECT_EQ(sectionList(session, 2), "~W|~Well|~Well Information");
    EXPECT_EQ(sectionList(session, 6), "~A|~ASCII|");
}

TEST_F(EditRules, HeaderCellsKeepTheirFirstValue) {
    load(0, {"GR"});
    session.tables.outputs().data(at(SrdRow::Unit), 1).clear();
    editNewChannel(app, session, {at(SrdRow::Mnem), 1, "GAMMA"}, {});
    editNewChannel(app, session, {at(SrdRow::Mnem), 1, "GAMMA2"}, {});
    EXPECT_EQ(cell(at(SrdRow::Mnem), 1), "GAMMA2");
    EXPECT_EQ(session.tables.outputs().data(at(SrdRow::Mnem), 1), "GR");
    editNewChannel(app, session, {linkRow(0, Link::From), 1, "1000.5"}, {});
    EXPECT_EQ(link(0, 1)[2], "1000.5");
    editNewChannel(app, session, {at(SrdRow::Use), 1, "2"}, {});
    EXPECT_EQ(outputs(), Texts{"(GAMMA2)"});
    editNewChannel(app, session, {linkRow(0, Link::Mnem), 1, "<none>", 0}, {});
    EXPECT_EQ(link(0, 1), (Texts{"", "", "", ""}));
    EXPECT_FALSE(canEditNewChannel(session, linkRow(0, Link::Curve), 1));
    EXPECT_THROW(editNewChannel(app, session, {at(SrdRow::Mnem), 7, "X"}, {}), RunTimeFailure);
}

TEST_F(EditRules, functionCell) {
    addGroup("POROSITY", {"DPHI"}, "42 890", "V/V", "PU");
    load(0, {"RHOB"});
    Table& table = session.tables.outputs();
    Texts seen;
    const FunctionDialog dialog = [&](const std::string& old, const std::string& chosen) {
        seen = {old, chosen};
        return std::string("2|2.65|1|0|0|1|DPHI|was :RHOB Matrix=2.65 Fluid=1");
    };
    editNewChannel(app, session, {at(SrdRow::Function), 1, "BULKDEN2PORO", 2}, dialog);
    EXPECT_EQ(seen, (Texts{"", "BULKDEN2PORO"}));
    EXPECT_EQ(cell(at(SrdRow::Function), 1), "BULKDEN2PORO");
    EXPECT_EQ(cell(at(SrdRow::Mnem), 1), "DPHI");
    EXPECT_EQ(cell(at(SrdRow::Value), 1), "42 890");
    EXPECT_EQ(cell(at(SrdRow::Description), 1), "DPHI CURVE was :RHOB Matrix=2.65 Fluid=1");
    EXPECT_EQ(cell(at(SrdRow::Unit), 1), "PU");
    editNewChannel(app, session, {at(SrdRow::Function), 1, "RES2COND", 0}, dialog);
    EXPECT_EQ(cell(at(SrdRow::Function), 1), "<none>");
    EXPECT_EQ(cell(at(SrdRow::Mnem), 1), "RHOB");
    EXPECT_EQ(cell(at(SrdRow::Description), 1), "CURVE RHOB");
    editNewChannel(app, session, {at(SrdRow::Function), 1, "MATH", 10}, [](auto&&...) { return std::string(); });
    EXPECT_EQ(table.data(at(SrdRow::Function), 1), "");
}

TEST_F(EditRules, SampleRate) {
    struct Case {
        std::string_view typed, unit, kept;
    };
    for (const Case& one : {Case{"0.5", "F", "0.5"}, Case{"\" 0.25   f ( 0.0762 m)", "M", "0.0762"},
                            Case{"\" 0.25   f ( 0.0762 m)", "F", "0.25"}, Case{"-0.5", "M", "-0.5"}}) {
        session.tables.setting(PrdRow::DepthUnits) = one.unit;
        editProperty(app, session, {at(PrdRow::SampleRate), 1, std::string(one.typed)});
        EXPECT_EQ(setting(PrdRow::SampleRate), one.kept) << one.typed;
    }
    for (const std::string typed : {"0", "", "abc", "0.000"}) {
        user.willAnswer(Answer::Ok);
        editProperty(app, session, {at(PrdRow::SampleRate), 1, typed});
        EXPECT_EQ(setting(PrdRow::SampleRate), "") << typed;
    }
    EXPECT_EQ(user.asked()[0].title, "Invalid STEP Value");
    EXPECT_EQ(user.asked()[0].text,
              "Please enter a STEP that is not zero. Welvane can only produce LAS files with a non-zero step.");
}

TEST_F(EditRules, ANewDepthUnitKeepsTheStepsLength) {
    session.tables.setting(PrdRow::SampleRate) = "0.5";
    session.tables.prd.data(at(PrdRow::DepthUnits), 1) = "F";
    editProperty(app, session, {at(PrdRow::DepthUnits), 1, "M"});
    EXPECT_EQ(setting(PrdRow::SampleRate), "0.1524");
    app.reference.units = {{"DEPTH", "M", 1, 0}, {"DEPTH", "F", 3.280839895, 0}};
    editProperty(app, session, {at(PrdRow::DepthUnits), 1, "F"});
    EXPECT_EQ(setting(PrdRow::SampleRate), "0.5000");
    EXPECT_EQ(session.tables.prd.data(at(PrdRow::DepthUnits), 1), "F");
}

TEST_F(EditRules, LimitsByMinMaxAndFit) {
    load(0, {"GR"});
    struct Case {
        std::string_view before, choice, after;
    };
    for (const Case& one :
         {Case{"5", "Min", "1000"}, Case{"5", "Max", "1001"}, Case{"1000.3", "Fit", "1000.5"},
          Case{"1000.25", "Fit", "1000"}, Case{"-0.3", "Fit", "-0.5"}, Case{"1000.5", "Fit", "1000.5"}}) {
        session.tables.setting(PrdRow::From) = one.before;
        editProperty(app, session, {at(PrdRow::From), 2, std::string(one.choice)});
        EXPECT_EQ(setting(PrdRow::From), one.after) << one.before << " " << one.choice;
        EXPECT_EQ(session.tables.option(PrdRow::From), "");
    }
}

TEST_F(EditRules, formatRowsFromAFile) {
    load(1, {"GR"});
    session.slots[1].dotColumn = 8;
    session.slots[1].valueColumn = 20;
    session.slots[1].colonColumn = 70;
    editProperty(app, session, {at(PrdRow::FormatDot), 1, "7"});
    EXPECT_THROW(editProperty(app, session, {at(PrdRow::FormatDot), 1, "70000"}), RunTimeFailure);
    EXPECT_THROW(editProperty(app, session, {at(PrdRow::FormatDot), 1, "x"}), RunTimeFailure);
    EXPECT_EQ(app.settings.format.dotColumn, 7);
    EXPECT_EQ(propertyList(session, at(PrdRow::FormatDot), 2), "User|File2");
    editProperty(app, session, {at(PrdRow::FormatDot), 2, "File2", 1});
    EXPECT_EQ(app.settings.format.dotColumn, session.slots[0].dotColumn) << "item 1 is taken for slot 0";
    editProperty(app, session, {at(PrdRow::FormatDot), 2, "File2", 2});
    EXPECT_EQ(setting(PrdRow::FormatColon), "70");
    EXPECT_EQ(app.settings.format.valueColumn, 20);
    editProperty(app, session, {at(PrdRow::FormatDot), 2, "User", 0});
    EXPECT_EQ(setting(PrdRow::FormatDot), "7");
    EXPECT_EQ(app.settings.format.colonColumn, 60);
    session.slots[3].dotColumn = 9;
    editProperty(app, session, {at(PrdRow::FormatDot), 2, "File4", 4});
    EXPECT_EQ(setting(PrdRow::FormatDot), "7") << "index 4 is not followed";
}

TEST_F(EditRules, ProcessingOptionsSetTheirNeighbours) {
    EXPECT_TRUE(checkProperty(app, session, PrdRow::ApplyTvd, true).sortSurvey);
    checkProperty(app, session, PrdRow::RenameDuplicates, false);
    EXPECT_EQ(platform.settings().get("renamedups", ""), "2");
    checkProperty(app, session, PrdRow::FillEmpty, true);
    EXPECT_TRUE(app.settings.fillCurveValue && app.settings.fillCurveDescription);
    checkProperty(app, session, PrdRow::PlainAscii, true);
    EXPECT_EQ(session.tables.option(PrdRow::PlainAscii), "No Header");
    EXPECT_EQ(session.tables.secondOption(PrdRow::PlainAscii), "Space");
    checkProperty(app, session, PrdRow::PlainAscii, false);
    EXPECT_EQ(session.tables.option(PrdRow::PlainAscii), "");
    editProperty(app, session, {at(PrdRow::ParsingOptions), 1, "Column width of:"});
    EXPECT_EQ(session.tables.option(PrdRow::ParsingOptions), "13");
    editProperty(app, session, {at(PrdRow::DivideFile), 1, "By Curve"});
    EXPECT_EQ(session.tables.option(PrdRow::DivideFile), "1");
    editProperty(app, session, {at(PrdRow::DivideFile), 1, "None"});
    EXPECT_EQ(session.tables.option(PrdRow::DivideFile), "");
}

TEST_F(EditRules, SectionsAskBeforeTheNeededOnesGo) {
    EXPECT_FALSE(includeSection(app, session, 4, false)) << "~Parameter asks nothing";
    user.willAnswer(Answer::No);
    EXPECT_TRUE(includeSection(app, session, 3, false));
    EXPECT_EQ(
        user.asked()[0].text,
        "Choosing not to include this section, ~Curve Information, will produce a LAS Certification error. Proceed?");
    EXPECT_EQ(user.asked()[0].title, "Warning!");
    user.willAnswer(Answer::Yes);
    EXPECT_FALSE(includeSection(app, session, 3, false));
    EXPECT_FALSE(moveSection(session, 6, 1));
    EXPECT_FALSE(moveSection(session, 1, 6));
    EXPECT_FALSE(moveSection(session, 0, 2));
    EXPECT_TRUE(moveSection(session, 2, 1));
    EXPECT_EQ(session.tables.ord.text(at(OrdRow::Name), 1), "~Well Information");
    EXPECT_EQ(session.tables.ord.text(at(OrdRow::Order), 1), "1");
}

TEST_F(EditRules, MenusActOnWholeRows) {
    addGroup("GAMMA", {"GR"}, "30 310");
    load(0, {"GR", "X"});
    Table& table = session.tables.outputs();
    useAllChannels(session, false);
    EXPECT_EQ(outputs(), (Texts{"(GR)", "(X)"}));
    table.data(at(SrdRow::Value), 2) = "99";
    fillEmptyFromLibrary(app, session, SrdRow::Value);
    EXPECT_EQ(cell(at(SrdRow::Value), 1), "30 310");
    EXPECT_EQ(cell(at(SrdRow::Value), 2), "99");
    EXPECT_FALSE(channelMenu(session, at(SrdRow::Mnem), 1)[1].enabled);
    const int added = AddChannel(session, 1);
    EXPECT_TRUE(channelMenu(session, at(SrdRow::Mnem), added)[1].enabled);
    EXPECT_TRUE(channelMenu(session, 8, 0)[2].enabled);
    EXPECT_FALSE(channelMenu(session, 12, 0)[2].enabled);
}

}  // namespace welvane::test
