#include "models/table_models.h"

#include "listing/listing_options.h"
#include "listing/price.h"
#include "models/listing_window.h"
#include "session/tvd.h"
#include "support/session_fixture.h"

namespace welvane::test {

class TableModels : public SessionTest {
  protected:
    /// Tells whether the cell takes an edit, and tries it.
    static bool edited(TableModel& model, std::int64_t row, int column, const std::string& text, int item = -1) {
        const bool may = model.mayEdit(row, column);
        const EditOutcome outcome = model.edit(row, column, text, item);
        EXPECT_TRUE(may || !outcome.done) << row << "," << column;
        return outcome.done;
    }
};

TEST_F(TableModels, NewChannelsFollowTheirRules) {
    load(0, {"GR", "RHOB"});
    const std::unique_ptr<TableModel> model =
        std::make_unique<CellTableModel>(newChannelsModel(app, session, [](auto&&...) { return std::nullopt; }));
    EXPECT_EQ(model->rows(), srdRowCount);
    EXPECT_EQ(model->columns(), 3);
    EXPECT_TRUE(model->rowHidden(at(SrdRow::InputUnit)));
    EXPECT_EQ(model->pickList(linkRow(0, Link::Mnem), 1), "<none>|GR|RHOB");
    EXPECT_EQ(model->backColour(linkRow(1, Link::Mnem), 1), colours::slots[1]);
    for (const char* name : {"GAMMA", "GAMMA2"}) EXPECT_TRUE(edited(*model, at(SrdRow::Mnem), 1, name));
    EXPECT_EQ(model->text(at(SrdRow::Mnem), 1), "GAMMA2");
    EXPECT_EQ(session.tables.outputs().data(SrdRow::Mnem, 1), "GR") << "the first value is kept";
    EXPECT_TRUE(edited(*model, linkRow(0, Link::From), 1, "1000.5"));
    EXPECT_EQ(link(0, 1)[2], "1000.5");
    EXPECT_TRUE(edited(*model, linkRow(0, Link::Mnem), 2, "<none>", 0)) << "other cells follow";
    EXPECT_EQ(model->check(at(SrdRow::Use), 2), Check::Unchecked);
    EXPECT_TRUE(model->setCheck(at(SrdRow::Use), 2, true).done);
    EXPECT_EQ(outputs(), (Texts{"GAMMA2", "RHOB"}));
    EXPECT_FALSE(edited(*model, linkRow(0, Link::Curve), 1, "2"));
    EXPECT_FALSE(edited(*model, at(SrdRow::Number), 1, "7"));
    EXPECT_FALSE(edited(*model, linkRow(0, Link::Mnem), 0, "x"));
    EXPECT_FALSE(edited(*model, at(SrdRow::Mnem), 3, "behind the end"));
    EXPECT_FALSE(edited(*model, -1, 1, ""));
    CellTableModel input = inputChannelsModel(session, 0);
    EXPECT_EQ(input.text(at(SlotRow::Mnem), 2), "RHOB");
    EXPECT_FALSE(edited(input, at(SlotRow::Mnem), 2, "X"));
}

TEST_F(TableModels, PropertiesTakeEditsWhereTheyApply) {
    CellTableModel model = propertiesModel(app, session);
    const auto mayEdit = [&](PrdRow row, PrdColumn column) { return model.mayEdit(at(row), at(column)); };
    EXPECT_FALSE(mayEdit(PrdRow::Head, PrdColumn::Setting));
    EXPECT_FALSE(mayEdit(PrdRow::Blank, PrdColumn::Setting));
    EXPECT_FALSE(mayEdit(PrdRow::Wrap, PrdColumn::Label));
    EXPECT_FALSE(mayEdit(PrdRow::Wrap, PrdColumn::Option));
    EXPECT_TRUE(mayEdit(PrdRow::From, PrdColumn::Option));
    EXPECT_TRUE(mayEdit(PrdRow::DataWidth, PrdColumn::Option));
    EXPECT_FALSE(mayEdit(PrdRow::DivideFile, PrdColumn::Option));
    EXPECT_TRUE(edited(model, at(PrdRow::DivideFile), 1, "By Curve", 2));
    EXPECT_TRUE(mayEdit(PrdRow::DivideFile, PrdColumn::Option));
    EXPECT_FALSE(mayEdit(PrdRow::PlainAscii, PrdColumn::SecondOption));
    EXPECT_TRUE(model.setCheck(at(PrdRow::PlainAscii), 1, true).done);
    EXPECT_EQ(model.pickList(at(PrdRow::PlainAscii), 3), "Space|Tab|Comma");
    EXPECT_TRUE(mayEdit(PrdRow::PlainAscii, PrdColumn::SecondOption));
    const EditOutcome refused = model.edit(at(PrdRow::DataWidth), 1, "wide");
    EXPECT_FALSE(refused.done);
    EXPECT_EQ(refused.why, "\"wide\" is not a number");
    user.willAnswer(Answer::Ok);
    EXPECT_TRUE(model.edit(at(PrdRow::SampleRate), 1, "0").done) << "the box has told it";
    EXPECT_EQ(model.text(at(PrdRow::SampleRate), 1), "");
    EXPECT_EQ(box(),
              "Invalid STEP Value: Please enter a STEP that is not zero. Welvane can only produce LAS files with a "
              "non-zero step.");
}

TEST_F(TableModels, SectionsAndFieldsAndRuns) {
    load(0, {"GR"});
    CellTableModel sections = sectionsModel(app, session);
    EXPECT_EQ(sections.pickList(at(OrdRow::Name), 4), "~P|~Parameter|~Parameter Information");
    EXPECT_EQ(sections.pickList(at(OrdRow::Name), 0), "");
    user.willAnswer(Answer::No);
    EXPECT_TRUE(sections.setCheck(at(OrdRow::Include), 1, false).done);
    EXPECT_EQ(sections.check(at(OrdRow::Include), 1), Check::Checked) << "the user kept it";
    EXPECT_TRUE(edited(sections, at(OrdRow::Name), 2, "~W"));
    EXPECT_FALSE(edited(sections, at(OrdRow::Order), 2, "6"));
    CellTableModel well = fieldsModel(session.tables.wrd);
    EXPECT_TRUE(edited(well, 1, at(FieldColumn::Value), "X-2"));
    EXPECT_FALSE(edited(well, 1, at(FieldColumn::Colon), ";"));
    EXPECT_FALSE(edited(well, 0, at(FieldColumn::Value), "head"));
    Table vrd(2, 2);
    CellTableModel runs = runValuesModel(app, vrd);
    user.willAnswer(Answer::No);
    EXPECT_TRUE(runs.edit(1, at(VrdColumn::Run), "2").done);
    EXPECT_EQ(runs.text(1, at(VrdColumn::Run)), "") << "the user declined";
}

TEST_F(TableModels, WhatWouldBreakTheFileIsRefused) {
    session.rules = FigureRules::trueFigures;
    load(0, {"GR"});
    CellTableModel channels = newChannelsModel(app, session, {}), properties = propertiesModel(app, session),
                   sections = sectionsModel(app, session), well = fieldsModel(session.tables.wrd);
    const int value = at(FieldColumn::Value), unit = at(FieldColumn::Unit), set = at(PrdColumn::Setting);
    struct Case {
        TableModel& table;
        std::int64_t row;
        int column;
        const char *text, *why;
    };
    const Case cases[] = {{channels, at(SrdRow::Mnem), 1, "~GR", "\"~GR\" would begin a section or a comment"},
                          {channels, at(SrdRow::Mnem), 1, "G.R", "a mnemonic holds no dot and no colon: \"G.R\""},
                          {channels, at(SrdRow::Unit), 1, "G API", "a unit holds no blank: \"G API\""},
                          {channels, at(SrdRow::Description), 1, "one\r\ntwo", "a field is one line"},
                          {channels, linkRow(0, Link::From), 1, "top", "\"top\" is not a number"},
                          {channels, linkRow(0, Link::From), 1, "", ""},
                          {well, 1, value, "X\nY", "a field is one line"},
                          {well, 1, at(FieldColumn::Mnem), "#WELL", "\"#WELL\" would begin a section or a comment"},
                          {well, 1, unit, "deg c", "a unit holds no blank: \"deg c\""},
                          {well, 1, value, "12:30 | [x]", ""},
                          {sections, at(OrdRow::Name), 6, "", "the section of the data is called ~A"},
                          {sections, at(OrdRow::Name), 6, "~ascii", ""},
                          {sections, at(OrdRow::Name), 4, "Tops", "the name of a section begins with ~ and a letter"},
                          {sections, at(OrdRow::Name), 4, "", "a section has a name"},
                          {sections, at(OrdRow::Name), 4, "~Tops", "\"~Tops\" is another section than ~PARAMETER"},
                          {sections, at(OrdRow::Name), 4, "~p", ""},
                          {properties, at(PrdRow::From), set, "top", "\"top\" is no depth"},
                          {properties, at(PrdRow::From), set, ">=1000.5", ""},
                          {properties, at(PrdRow::To), set, "", ""},
                          {properties, at(PrdRow::Null), set, "none", "\"none\" is not a number"},
                          {properties, at(PrdRow::Null), set, "-9999", ""},
                          {properties, at(PrdRow::Wrap), set, "perhaps", "\"perhaps\" is none of No, Yes"},
                          {properties, at(PrdRow::Wrap), set, "yes", ""},
                          {properties, at(PrdRow::DepthUnits), set, "KM", "\"KM\" is none of F, M, FT"},
                          {properties, at(PrdRow::DivideFile), set, "by depth", ""},
                          {properties, at(PrdRow::DivideFile), at(PrdColumn::Option), "ten", "\"ten\" is not a number"},
                          {properties, at(PrdRow::DivideFile), at(PrdColumn::Option), "10", ""}};
    for (const Case& one : cases) {
        const std::string before = one.table.text(one.row, one.column);
        const EditOutcome outcome = one.table.edit(one.row, one.column, one.text);
        EXPECT_EQ(outcome.why, one.why) << one.text;
        EXPECT_EQ(outcome.done, *one.why == '\0') << one.text;
        EXPECT_EQ(one.table.text(one.row, one.column), outcome.done ? one.text : before);
    }
    session.rules = FigureRules::asLaidDown;
    EXPECT_TRUE(properties.edit(at(PrdRow::Wrap), set, "perhaps").done) << "as typed";
    EXPECT_TRUE(channels.edit(linkRow(0, Link::From), 1, "top").done);
}

TEST_F(TableModels, SurveysAndPricesFollowUp) {
    CellTableModel survey = surveyModel(session);
    EXPECT_FALSE(edited(survey, at(TrdRow::Unit), 1, "M"));
    EXPECT_TRUE(edited(survey, at(TrdRow::FirstSurvey), 1, "100"));
    EXPECT_TRUE(trdChanged(session.tables.trd));
    Table ord = makeListingOrd(app);
    CellTableModel prices = listingOptionsModel(app, ord);
    EXPECT_TRUE(edited(prices, at(PriceRow::CurveFeet), at(OrdColumn::Price), "10000"));
    EXPECT_TRUE(edited(prices, at(PriceRow::PricePerFoot), at(OrdColumn::Price), "0.5"));
    EXPECT_EQ(prices.text(at(PriceRow::Total), at(OrdColumn::Price)), "$5000.00");
    EXPECT_EQ(platform.settings().get("pricepercurvefoot", ""), "0.5");
    EXPECT_FALSE(edited(prices, at(PriceRow::Total), at(OrdColumn::Price), "0"));
    EXPECT_TRUE(edited(prices, at(PriceRow::Comments), at(OrdColumn::Price), "as agreed"));
    EXPECT_TRUE(prices.setCheck(at(OptionRow::Intervals), at(OrdColumn::Value), true).done);
    EXPECT_TRUE(optionOn(ord, OptionRow::Intervals));
    EXPECT_TRUE(edited(prices, at(OptionRow::Intervals), at(OrdColumn::Value), "text"));
    EXPECT_EQ(prices.text(at(OptionRow::Intervals), at(OrdColumn::Value)), "") << "a check, no text";
    EXPECT_EQ(prices.pickList(at(OptionRow::FirstMnemonic), at(OrdColumn::Value)).substr(0, 10), "STRT|STOP|");
    EXPECT_TRUE(edited(prices, at(OptionRow::FirstMnemonic), at(OrdColumn::Value), "UWI"));
    EXPECT_EQ(listedMnemonics(ord).front(), "UWI");
}

TEST_F(TableModels, AGenericTableIsOneToo) {
    GenericTable grd;
    GenericTableModel model(grd);
    EXPECT_EQ(model.rows(), 0);
    EXPECT_FALSE(edited(model, 1, 1, "DEPT"));
    grd.setUp(6, 3, "M");
    EXPECT_EQ(model.rows(), 6);
    EXPECT_EQ(model.columns(), 3);
    EXPECT_EQ(model.headRows(), 1) << "names, units and checks are cells";
    EXPECT_EQ(model.text(0, 2), "Chan #2");
    EXPECT_EQ(model.text(at(GrdRow::Use), 0), "Use?");
    EXPECT_EQ(model.text(at(GrdRow::Use), 1), "") << "a check, no text";
    EXPECT_EQ(model.check(at(GrdRow::Use), 1), Check::Checked);
    EXPECT_EQ(model.check(at(GrdRow::Unit), 1), Check::None);
    EXPECT_EQ(model.backColour(at(GrdRow::Unit), 1), grdHeadColour);
    EXPECT_FALSE(edited(model, at(GrdRow::Name), 2, "A.B"));
    EXPECT_FALSE(edited(model, at(GrdRow::Unit), 2, "deg c"));
    EXPECT_FALSE(edited(model, 5, 2, "1\n2"));
    EXPECT_TRUE(edited(model, at(GrdRow::Unit), 2, "ohm.m"));
    EXPECT_EQ(model.text(at(GrdRow::Unit), 2), "OHMM");
    EXPECT_TRUE(edited(model, 5, 2, "NaN"));
    EXPECT_EQ(model.text(5, 2), "-999.25") << "cleaned as it is shown";
    EXPECT_TRUE(model.setCheck(at(GrdRow::Use), 2, false).done);
    EXPECT_FALSE(grd.used(2));
    EXPECT_FALSE(edited(model, at(GrdRow::Use), 2, "1"));
    EXPECT_FALSE(edited(model, 0, 2, "x"));
    EXPECT_FALSE(edited(model, 5, 0, "x"));
    EXPECT_FALSE(edited(model, 6, 1, "x"));
}

TEST_F(TableModels, StatisticsAreCutIntoTheirColumns) {
    StatisticsGrid grid;
    grid.rows = {"Well 1\tGR.GAPI\t1.0000\t\t3.0000\t4.0000\t5.0000\t6.0000\t7.0000", "short"};
    StatisticsModel model(grid);
    EXPECT_EQ(model.rows(), 3);
    EXPECT_EQ(model.columns(), 9);
    EXPECT_EQ(model.text(0, 0), "WellName");
    EXPECT_EQ(model.text(0, 8), "Max @");
    EXPECT_EQ(model.text(1, 0), "Well 1");
    EXPECT_EQ(model.text(1, 3), "");
    EXPECT_EQ(model.text(1, 8), "7.0000");
    EXPECT_EQ(model.text(2, 0), "short");
    EXPECT_EQ(model.text(2, 1), "");
    EXPECT_EQ(StatisticsModel::meaning(6), "None Null Curve Feet");
    EXPECT_FALSE(edited(model, 1, 0, "x"));
}

}  // namespace welvane::test
