#include "las/sections.h"

#include <gtest/gtest.h>

#include "las/well.h"

namespace welvane {
namespace {

using test::smallWell;
using test::withLineEnds;

/// A text that lives as long as what is asked of it.
struct Text {
    explicit Text(std::string_view lines) : bytes(withLineEnds(lines)), las(bytes) {}
    std::string bytes;
    LasText las;
};

TEST(LasText, sectionsAreFoundInFrontOfTheData) {
    const struct {
        const char *name, *bytes;
        char letter;
        std::optional<std::size_t> place;
    } cases[] = {
        {"behind its title", "~V\r\nx\r\n~Well\r\ny\r\n", 'W', 14},
        {"case ignored", "  ~well x\r\ny", 'W', 11},
        {"the first of two", "~W\r~W\r", 'w', 3},
        {"lone CR ends a line", "~V\rx", 'V', 3},
        {"behind ~A is too late", "~V\r\n~A\r\n~W\r\n", 'W', std::nullopt},
        {"a comment with ~A ends the search", "# see ~A\r\n~W\r\n", 'W', std::nullopt},
        {"so does a title that holds it", "~W as in ~A\r\n", 'W', std::nullopt},
        {"behind the wanted title it does not", "~W\r\n# see ~A\r\n", 'W', 4},
        {"the data itself", "# see ~A\r\n~ascii\r\n1", 'A', 18},
        {"absent", "~V\r\n", 'C', std::nullopt},
        {"lone LF ends no line", "~V\n~W\n", 'W', std::nullopt},
    };
    for (const auto& row : cases) EXPECT_EQ(LasText(row.bytes).seekSection(row.letter), row.place) << row.name;
    EXPECT_EQ(LasText(" ~W x \r\n~\r\n#~C\r\n~A \r\n~P\r\n").titles(),
              (std::vector<std::string_view>{"~W x", "~", "~A"}));
}

TEST(Sections, textOfASection) {
    const auto text = [](const char* bytes, char letter) { return getSectionText(LasText(bytes), letter); };
    const char* const whole = "~V\r\nx\r\n~Other\r\nfirst\r\nsecond\r\n~A\r\n1 2";
    EXPECT_EQ(text(whole, 'o'), "first\r\nsecond");
    EXPECT_EQ(text(whole, 'A'), "1 2");
    EXPECT_EQ(text(whole, 'C'), "");
    EXPECT_EQ(text("~Other\r\n~A\r\n", 'O'), "");
    EXPECT_EQ(text("", 'O'), "");
}

TEST(Sections, valueByVersionOfTheFile) {
    for (const auto& [version, value] :
         {std::pair{"1.2", "ASH 2"}, {"1.9", "ASH 2"}, {"2.0", "BEECH 1"}, {"3.0", "BEECH 1"}})
        EXPECT_EQ(getLasValue(Text(smallWell(version)).las, "well", 'w').text, value) << version;

    const Text old(smallWell("1.2"));
    EXPECT_EQ(getLasValue(old.las, "STRT", 'W').text, "1670.0000");
    EXPECT_EQ(getLasValue(old.las, "STRT", 'W').unit, "M");
    EXPECT_EQ(getLasValue(old.las, "BHT", 'P').text, "35.5");
    EXPECT_EQ(getFileValue(old.las, "WELL").text, "ASH 2");
    EXPECT_EQ(getLasValue(old.las, "WELL", 'X').text, "BEECH 1") << "a search of all sections asks for no version";
}

TEST(Sections, valueThatIsNotThere) {
    using End = LasValue::End;
    const Text well(smallWell());
    const Text noVersion("~V\n WRAP. NO : x\n~W\n WELL. A : B\n~A\n");
    const Text noData("~V\n~W\n");
    const struct {
        const char* name;
        LasValue value;
        End end;
        const char* text;
    } cases[] = {
        {"no such line", getLasValue(well.las, "UWI", 'W'), End::ReachedData, ""},
        {"in another section", getLasValue(well.las, "BHT", 'W'), End::ReachedData, ""},
        {"an unknown section searches all", getLasValue(well.las, "BHT", 'X'), End::Found, "35.5"},
        {"over all sections", getFileValue(well.las, "UWI"), End::ReachedData, ""},
        {"~Version breaks off without VERS", getLasValue(noVersion.las, "WELL", 'W'), End::NotFound, ""},
        {"which only ~Well asks for", getLasValue(noVersion.las, "WRAP", 'V'), End::Found, "NO"},
        {"nor does the search over all", getFileValue(noVersion.las, "WELL"), End::Found, "A"},
        {"the text ends", getFileValue(noData.las, "WELL"), End::NotFound, ""},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(row.value.end, row.end) << row.name;
        EXPECT_EQ(row.value.text, row.text) << row.name;
    }
}

TEST(Sections, valueOfABrokenHeader) {
    const Text text("~V\nVERS. 1.2 : x\n~W\nWELL. a:b : desc\n~P\nCN.\tX Y : z\n~A\nLATE. 1 : x\n");
    EXPECT_EQ(getOpenValue(text.las, " well ", 'W'), "ab");
    EXPECT_EQ(getOpenValue(text.las, "CN", 'W'), "X Y") << "sections behind are searched too";
    EXPECT_EQ(getOpenValue(text.las, "WELL", 'P'), "");
    EXPECT_EQ(getOpenValue(text.las, "LATE", 'W'), "");
    EXPECT_EQ(getOpenValue(text.las, "WELL", 'C'), "");
}

TEST(Sections, depthHeader) {
    const DepthHeader header = getDepthHeader(Text(smallWell()).las);
    EXPECT_EQ(header.strt().value, "1670.0000");
    EXPECT_EQ(header.strt().unit, "M");
    EXPECT_EQ(header.stop().value, "1669.3750");
    EXPECT_EQ(header.step().value, "-0.1250");
    EXPECT_EQ(header.null().value, "-999.25");
    EXPECT_EQ(header.layout.dot, 6);
    EXPECT_EQ(header.layout.value, 14);
    EXPECT_EQ(header.layout.colon, 24);

    const DepthHeader bare = getDepthHeader(Text("~W\nSTRTX.M : x\n#~ \nSTOP.M 5 : x\n").las);
    EXPECT_EQ(bare.strt().unit, "M");
    EXPECT_EQ(bare.layout.value, 15) << "no value in its line";
    EXPECT_EQ(bare.stop().value, "") << "a tilde ends the section";
}

TEST(Sections, tablesOfASection) {
    const Text text(
        "~W\n~Curve\n#c\nDept.m : Depth\n\n Gr.gapi\t7 : ray\nno data line\nDT. : a ~ b\nNPHI. : x\n~P\n# none\n~A\n");
    EXPECT_FALSE(readSection(text.las, 'X'));
    EXPECT_TRUE(readSection(text.las, 'P')->empty());
    const SectionTable table = readSection(text.las, 'C').value();
    ASSERT_EQ(table.size(), 2U) << "a tilde in a description ends it";
    EXPECT_EQ(table[0].mnem, "DEPT");
    EXPECT_EQ(table[1].unit, "GAPI");
    EXPECT_EQ(table[1].value, "7");
    EXPECT_EQ(table[1].desc, "RAY");
    EXPECT_EQ(readSection(text.las, 'C', lettersAsTheyStand)->at(0).desc, "Depth");
    const auto filter = readSection(
        text.las, 'C', {.letters = SectionReading::Letters::AsTheyStand, .end = SectionReading::End::TildeInFront});
    ASSERT_EQ(filter->size(), 4U) << "only a tilde in front ends it";
    EXPECT_EQ(filter->at(2).desc, "a ~ b");
}

TEST(Sections, unitApartFromTheDot) {
    const Text text("~P\nA. m 15.5 : x\nB. m 0 : x\nC. m none : x\nD. m 1 2 : x\nE.ft m 1 : x\nF. 7 : x\n");
    const SectionTable table = readSection(text.las, 'P', {.unitApart = true}).value();
    const char* const expected[][2] = {{"M", "15.5"}, {"M", "0"},    {"", "M NONE"},
                                       {"", "M 1 2"}, {"FT", "M 1"}, {"", "7"}};
    ASSERT_EQ(table.size(), std::size(expected));
    for (std::size_t row = 0; row < table.size(); ++row) {
        EXPECT_EQ(table[row].unit, expected[row][0]) << table[row].mnem;
        EXPECT_EQ(table[row].value, expected[row][1]) << table[row].mnem;
    }
}

}  // namespace
}  // namespace welvane
