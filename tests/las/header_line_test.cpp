#include "las/header_line.h"

#include <gtest/gtest.h>

namespace welvane {
namespace {

TEST(HeaderLine, kindOfALine) {
    const struct {
        const char* line;
        LineKind kind;
    } cases[] = {
        {"STRT.M 1 : START", LineKind::Data},
        {"  A.: ", LineKind::Data},
        {"", LineKind::Blank},
        {"   ", LineKind::Blank},
        {"\t", LineKind::Other},
        {"#A.B 1 : C", LineKind::Comment},
        {"  # x", LineKind::Comment},
        {" ~Well", LineKind::Title},
        {".M 1 : X", LineKind::DotFirst},
        {": .X", LineKind::Other},
        {"NO DOT : X", LineKind::Other},
        {"NO.COLON", LineKind::Other},
        {"GR:1.GAPI 1 : X", LineKind::Other},
        {"\t.M 1 : X", LineKind::Data},
    };
    for (const auto& row : cases) EXPECT_EQ(lineKind(row.line), row.kind) << '"' << row.line << '"';
}

TEST(HeaderLine, fieldsOfADataLine) {
    const struct {
        const char *name, *line, *mnem, *unit, *value, *desc;
    } cases[] = {
        {"no value", "DEPT.M       : DEPTH", "DEPT", "M", "", "DEPTH"},
        {"no unit", "NULL.   -999.25 : NULL VALUE", "NULL", "", "-999.25", "NULL VALUE"},
        {"unit and value", "STEP.M 0.1524 : STEP", "STEP", "M", "0.1524", "STEP"},
        {"slashes stay", "DATE.  12/04/99 : LOG DATE", "DATE", "", "12/04/99", "LOG DATE"},
        {"clock time stays whole", "TIME.  12:30:00 : START", "TIME", "", "12:30:00", "START"},
        {"first dot ends the mnemonic", "A.B.C  1 : X", "A", "B.C", "1", "X"},
        {"empty description", "WRAP.   NO:", "WRAP", "", "NO", ""},
        {"colon in the description moves text", "WELL. ABC : one: two", "WELL", "", "ABC : one", "two"},
        {"tabs are blanks", "\tSTRT.M\t100.5\t:\tSTART\t", "STRT", "M", "100.5", "START"},
        {"value of several words", "COMP.  ANY OIL COMPANY : X", "COMP", "", "ANY OIL COMPANY", "X"},
        {"nothing behind the dot", "GR.: X", "GR", "", "", "X"},
        {"bar in a value reads as colon", "LOC.  A|B : X", "LOC", "", "A:B", "X"},
        {"blanks around the mnemonic", "  GR  .GAPI  1 : X ", "GR", "GAPI", "1", "X"},
        {"no data line", ".M 1 : X", "", "", "", ""},
    };
    for (const auto& row : cases) {
        HeaderField fields = {"old", "old", "old", "old"};
        const bool parsed = parseHeaderLine(std::string_view(row.line), fields);
        EXPECT_EQ(parsed, *row.mnem != '\0') << row.name;
        EXPECT_EQ(fields.mnem, row.mnem) << row.name;
        EXPECT_EQ(fields.unit, row.unit) << row.name;
        EXPECT_EQ(fields.value, row.value) << row.name;
        EXPECT_EQ(fields.desc, row.desc) << row.name;
    }
}

TEST(HeaderLine, valueIsCutInTheCallersLine) {
    std::string line = "TIME.\t12:30 : AT: END";
    EXPECT_EQ(getValueField(line), "12:30 : AT");
    EXPECT_EQ(line, "TIME. 12|30 | AT: END");
    EXPECT_EQ(getDescField(line), "END");
    std::string plain = "  no colon\there ";
    EXPECT_EQ(getDescField(plain), "no colon here");
}

TEST(HeaderLine, wordsAreCountedByDelimiter) {
    const struct {
        const char* text;
        char delimiter;
        int count;
    } cases[] = {{"", ' ', 1},       {"   ", ' ', 1},  {"a", ' ', 1}, {" a   b c ", ' ', 3},
                 {"a, b,c", ',', 3}, {"a,,b", ',', 3}, {"a,", ',', 2}};
    for (const auto& row : cases) EXPECT_EQ(countWords(row.text, row.delimiter), row.count) << '"' << row.text << '"';
}

TEST(HeaderLine, fieldsAreLaidOutInColumns) {
    const struct {
        const char* name;
        HeaderField fields;
        int dot, colon, value;
        const char* line;
    } cases[] = {
        {"columns as asked", {"GR", "GAPI", "12", " Gamma "}, 6, 20, 12, "   GR.GAPI 12      :Gamma"},
        {"long mnemonic moves the dot", {"LONGONE", "M", "1", "x"}, 6, 20, 12, "LONGONE.M  1       :x"},
        {"long unit moves the value", {"A", "OHMM/M2", "1", ""}, 3, 20, 6, " A.OHMM/M2 1       :"},
        {"long value moves the colon", {"A", "", "123456", "d"}, 3, 9, 5, " A. 123456  :d"},
        {"value that just fits keeps the colon", {"A", "", "123", "d"}, 3, 9, 5, " A. 123 :d"},
        {"value ends at the colon", {"VERS", "", "2.0", "x"}, 6, 15, 0, " VERS.     2.0:x"},
        {"value at the colon pushes it behind the unit",
         {"VERS", "ABCDEFG", "2.0", "x"},
         6,
         10,
         0,
         " VERS.ABCDEFG 2.0:x"},
        {"comment heads", {"#MNEM", "UNIT", "VALUE", "DESCRIPTION"}, 6, 25, 15, "#MNEM.UNIT    VALUE     :DESCRIPTION"},
        {"no columns at all", {"", "", "", ""}, 0, 0, 0, ". :"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(formatHeaderLine(row.fields, row.dot, row.colon, row.value), row.line) << row.name;

    const HeaderField endless = {std::string(400, 'M'), std::string(400, 'U'), std::string(400, 'V'),
                                 std::string(400, 'D')};
    EXPECT_EQ(formatHeaderLine(endless, 32767, 32767, -32768).size(), 254U);
    EXPECT_EQ(formatHeaderLine({"A", "", "1", std::string(400, 'D')}, 6, 60, 15).size(), 254U);
}

TEST(HeaderLine, commentThatRepeatsTheTitlesIsKnown) {
    const std::vector<std::string> names = {"TIME", "GR", "NPHI", ""};
    const struct {
        const char* line;
        bool kept;
    } cases[] = {{"# DEPT  gr NPHI", false}, {"#GR_1 | NPHI", true}, {"#", false},       {"", false},
                 {"# a note", true},         {"DEPT NPHI", false},   {"#TIME GR", true}, {"# GR # NPHI", true}};
    for (const auto& row : cases) EXPECT_EQ(isNotTitleLine(row.line, names), row.kept) << row.line;
}

}  // namespace
}  // namespace welvane
