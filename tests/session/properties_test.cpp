#include "session/properties.h"

#include "session/property_edits.h"
#include "session/step_text.h"
#include "shared/failure.h"
#include "support/session_fixture.h"

namespace welvane::test {

using PropertyEdits = SessionTest;

template <class Choice>
void itemsComeBack() {
    for (const auto& item : PickList<Choice>::items)
        EXPECT_EQ(decode<Choice>(upper(item.text)), item.choice) << item.text;
    EXPECT_FALSE(decode<Choice>("")) << "an empty cell is no choice";
}

TEST(Properties, PickListsReadWhatTheyShow) {
    itemsComeBack<DepthUnit>();
    itemsComeBack<Direction>();
    itemsComeBack<Wrap>();
    itemsComeBack<LasVersion>();
    itemsComeBack<NullFill>();
    itemsComeBack<Parsing>();
    itemsComeBack<Divide>();
    itemsComeBack<TitleStyle>();
    itemsComeBack<Separator>();
    itemsComeBack<DepthPick>();
}

TEST(Properties, StandInOrderOfTheirRowsAndTheirWordsInTheirLists) {
    int row = 0;
    for (const Property& property : properties()) {
        EXPECT_GE(at(property.row), row) << property.label;
        row = at(property.row);
        EXPECT_EQ(findProperty(property.row, property.column), &property) << property.label << ": a cell told twice";
        const std::string list = property.list == nullptr ? "" : "|" + property.list() + "|";
        for (const PropertyWord& word : property.words)
            EXPECT_TRUE(holdsText(list, "|" + std::string(word.text) + "|")) << property.option << " " << word.word;
    }
}

/// What docs/properties.md says of one property.
std::string documented(const Property& property) {
    const auto code = [](std::string_view text) {
        std::string shown;
        for (const char c : text) shown += c == '|' ? std::string("` `") : std::string(1, c);
        return text.empty() ? std::string() : "`" + shown + "`";
    };
    const std::string list = property.list == nullptr ? std::string() : property.list();
    return "| " + std::string(property.label.empty() ? "(beside it)" : property.label) + " | " +
           code(property.isCheck ? "a check" : property.initial) + " | " +
           code(beginsWith(list, "|") ? list.substr(1) : list) + " | " + code(property.option) + " | " +
           std::string(property.help) + " |";
}

TEST(Properties, TheirPageTellsTheTable) {
    std::string rows;
    for (const Property& property : properties()) {
        const bool isHead = property.row == PrdRow::Head || property.row == PrdRow::ProcessingHead;
        if (!isHead && property.row != PrdRow::OpenedFile) rows += documented(property) + "\n";
    }
    const std::string page = TempFolder::readFile(std::string(WELVANE_SOURCE_DIR) + "/docs/properties.md");
    const std::string head = "|---|---|---|---|---|\n";
    EXPECT_EQ(page.substr(page.find(head) + head.size()), rows) << "the page holds another table";
}

TEST(StepText, TheUnitChoosesTheNumber) {
    struct Case {
        const char *text, *unit;
        double step;
    };
    for (const Case& one : {Case{"\" 0.5    f ( 0.1524 m)", "F", 0.5}, Case{"\" 0.5    f ( 0.1524 m)", "FT", 0.5},
                            Case{"\" 0.5    f ( 0.1524 m)", "M", 0.1524}, Case{"\" 0.5    f ( 0.1524 m)", "S", 0.1524},
                            Case{"0.25", "M", 0.25}, Case{"-0.5", "F", -0.5}, Case{"abc", "F", 0}, Case{"", "M", 0},
                            Case{"\"", "F", 0}, Case{"(", "M", 0}, Case{"fm(", "M", 0}, Case{"m(f", "F", 0}})
        EXPECT_EQ(stepNumber(one.text, one.unit), one.step) << one.text << " " << one.unit;
}

TEST_F(PropertyEdits, SampleRate) {
    struct Case {
        std::string_view typed, unit, kept;
    };
    for (const Case& one : {Case{"0.5", "F", "0.5"}, Case{"\" 0.25   f ( 0.0762 m)", "M", "0.0762"},
                            Case{"\" 0.25   f ( 0.0762 m)", "F", "0.25"}, Case{"-0.5", "M", "-0.5"}}) {
        session.tables.setting(PrdRow::DepthUnits) = one.unit;
        EXPECT_TRUE(setProperty(app, session, PrdRow::SampleRate, PrdColumn::Setting, std::string(one.typed)));
        EXPECT_EQ(setting(PrdRow::SampleRate), one.kept) << one.typed;
    }
    for (const std::string typed : {"0", "", "abc", "0.000"}) {
        EXPECT_FALSE(setProperty(app, session, PrdRow::SampleRate, PrdColumn::Setting, typed));
        EXPECT_EQ(setting(PrdRow::SampleRate), "") << typed;
    }
}

TEST_F(PropertyEdits, ANewDepthUnitKeepsTheStepsLength) {
    session.tables.setting(PrdRow::SampleRate) = "0.5";
    session.tables.prd.data(PrdRow::DepthUnits, 1) = "F";
    setProperty(app, session, PrdRow::DepthUnits, PrdColumn::Setting, "M");
    EXPECT_EQ(setting(PrdRow::SampleRate), "0.1524");
    app.reference.units = {{"DEPTH", "M", 1, 0}, {"DEPTH", "F", 3.280839895, 0}};
    setProperty(app, session, PrdRow::DepthUnits, PrdColumn::Setting, "F");
    EXPECT_EQ(setting(PrdRow::SampleRate), "0.5000");
    EXPECT_EQ(session.tables.prd.data(PrdRow::DepthUnits, 1), "F");
}

TEST_F(PropertyEdits, ByTrueFiguresTheSampleRateCountsInTheInputsUnit) {
    session.rules = FigureRules::trueFigures;
    load(0, {"GR"});
    const std::string rate = setting(PrdRow::SampleRate);
    setProperty(app, session, PrdRow::DepthUnits, PrdColumn::Setting, "F");
    EXPECT_EQ(setting(PrdRow::SampleRate), rate) << "the pass carries it over";
    setProperty(app, session, PrdRow::SampleRate, PrdColumn::Setting, "\" 0.5    f ( 0.1524 m)");
    EXPECT_EQ(setting(PrdRow::SampleRate), "0.1524");
}

TEST_F(PropertyEdits, LimitsByMinMaxAndFit) {
    load(0, {"GR"});
    struct Case {
        std::string_view before, choice, after;
    };
    for (const Case& one :
         {Case{"5", "Min", "1000"}, Case{"5", "Max", "1001"}, Case{"1000.3", "Fit", "1000.5"},
          Case{"1000.25", "Fit", "1000"}, Case{"-0.3", "Fit", "-0.5"}, Case{"1000.5", "Fit", "1000.5"}}) {
        session.tables.setting(PrdRow::From) = one.before;
        setProperty(app, session, PrdRow::From, PrdColumn::Option, std::string(one.choice));
        EXPECT_EQ(setting(PrdRow::From), one.after) << one.before << " " << one.choice;
        EXPECT_EQ(session.tables.option(PrdRow::From), "");
    }
}

TEST_F(PropertyEdits, formatRowsFromAFile) {
    load(1, {"GR"});
    session.slots[1].dotColumn = 8;
    session.slots[1].valueColumn = 20;
    session.slots[1].colonColumn = 70;
    setProperty(app, session, PrdRow::FormatDot, PrdColumn::Setting, "7");
    EXPECT_THROW(setProperty(app, session, PrdRow::FormatDot, PrdColumn::Setting, "70000"), RunTimeFailure);
    EXPECT_THROW(setProperty(app, session, PrdRow::FormatDot, PrdColumn::Setting, "x"), RunTimeFailure);
    EXPECT_EQ(app.settings.format.dotColumn, 7);
    setProperty(app, session, PrdRow::FormatDot, PrdColumn::Option, "File2", 1);
    EXPECT_EQ(app.settings.format.dotColumn, session.slots[0].dotColumn) << "item 1 is taken for slot 0";
    setProperty(app, session, PrdRow::FormatDot, PrdColumn::Option, "File2", 2);
    EXPECT_EQ(setting(PrdRow::FormatColon), "70");
    EXPECT_EQ(app.settings.format.valueColumn, 20);
    setProperty(app, session, PrdRow::FormatDot, PrdColumn::Option, "User", 0);
    EXPECT_EQ(setting(PrdRow::FormatDot), "7");
    EXPECT_EQ(app.settings.format.colonColumn, 60);
    session.slots[3].dotColumn = 9;
    setProperty(app, session, PrdRow::FormatDot, PrdColumn::Option, "File4", 4);
    EXPECT_EQ(setting(PrdRow::FormatDot), "7") << "index 4 is not followed";
}

TEST_F(PropertyEdits, ProcessingOptionsSetTheirNeighbours) {
    checkProperty(app, session, PrdRow::RenameDuplicates, false);
    EXPECT_EQ(platform.settings().get("renamedups", ""), "2");
    checkProperty(app, session, PrdRow::FillEmpty, true);
    EXPECT_TRUE(app.settings.fillCurveValue && app.settings.fillCurveDescription);
    checkProperty(app, session, PrdRow::PlainAscii, true);
    EXPECT_EQ(session.tables.option(PrdRow::PlainAscii), "No Header");
    EXPECT_EQ(session.tables.secondOption(PrdRow::PlainAscii), "Space");
    checkProperty(app, session, PrdRow::PlainAscii, false);
    EXPECT_EQ(session.tables.option(PrdRow::PlainAscii), "");
    setProperty(app, session, PrdRow::ParsingOptions, PrdColumn::Setting, "Column width of:");
    EXPECT_EQ(session.tables.option(PrdRow::ParsingOptions), "13");
    setProperty(app, session, PrdRow::DivideFile, PrdColumn::Setting, "By Curve");
    EXPECT_EQ(session.tables.option(PrdRow::DivideFile), "1");
    setProperty(app, session, PrdRow::DivideFile, PrdColumn::Setting, "None");
    EXPECT_EQ(session.tables.option(PrdRow::DivideFile), "");
}

}  // namespace welvane::test
