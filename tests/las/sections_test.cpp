#include "las/sections.h"

#include <gtest/gtest.h>

#include "las/well.h"
#include "platform/mapped_file.h"

namespace welvane {
namespace {

using test::smallWell;
using test::TempFolder;

TEST(Sections, seekStopsAtTheData) {
    const struct {
        const char *name, *text;
        char letter;
        std::size_t position;
    } cases[] = {
        {"behind its title", "~V\r\nx\r\n~Well\r\ny\r\n", 'W', 15},
        {"case ignored", "  ~well x\r\ny", 'W', 12},
        {"lone CR ends a line", "~V\rx", 'V', 4},
        {"behind ~A is too late", "~V\r\n~A\r\n~W\r\n", 'W', 0},
        {"a comment with ~A ends the search", "# see ~A\r\n~W\r\n", 'W', 0},
        {"behind the wanted title it does not", "~W\r\n# see ~A\r\n", 'W', 5},
        {"the data itself", "# see ~A\r\n~ascii\r\n1", 'A', 19},
        {"absent", "~V\r\n", 'C', 0},
        {"lone LF ends no line", "~V\n~W\n", 'W', 0},
    };
    for (const auto& row : cases) {
        LineReader file(row.text, 1);
        EXPECT_EQ(seekSection(file, row.letter), row.position) << row.name;
        EXPECT_EQ(file.position(), row.position == 0 ? 0 : row.position - 1) << row.name;
    }
}

TEST(Sections, textOfASection) {
    const TempFolder folder;
    const std::string path = folder.write("a.las", "~V\r\nx\r\n~Other\r\nfirst\r\nsecond\r\n~A\r\n1 2");
    EXPECT_EQ(getSectionText(path, 'o'), "first\r\nsecond");
    EXPECT_EQ(getSectionText(path, 'A'), "1 2");
    EXPECT_EQ(getSectionText(path, 'C'), "");
    EXPECT_EQ(getSectionText(folder.write("b.las", "~Other\r\n~A\r\n"), 'O'), "");
    EXPECT_EQ(getSectionText(folder.write("c.las", ""), 'O'), "");
    EXPECT_EQ(getSectionText(folder.path("none.las"), 'O'), "");
}

TEST(Sections, valueByVersionOfTheFile) {
    const TempFolder folder;
    const auto well = [&](const std::string& version) {
        return getLasValue(folder.writeLines("a.las", smallWell(version)), "well", 'w').text;
    };
    EXPECT_EQ(well("1.2"), "ASH 2");
    EXPECT_EQ(well("1.9"), "ASH 2");
    EXPECT_EQ(well("2.0"), "BEECH 1");
    EXPECT_EQ(well("3.0"), "BEECH 1");

    const std::string old = folder.writeLines("old.las", smallWell("1.2"));
    const LasValue start = getLasValue(old, "STRT", 'W');
    EXPECT_EQ(start.text, "1670.0000");
    EXPECT_EQ(start.unit, "M");
    EXPECT_EQ(getLasValue(old, "BHT", 'P').text, "35.5");
    EXPECT_EQ(getFileValue(old, "WELL"), "ASH 2");
    EXPECT_EQ(getFileValue(old, "VERS"), "1.2");
}

TEST(Sections, valueThatIsNotThere) {
    const TempFolder folder;
    const std::string path = folder.writeLines("a.las", smallWell());
    const LasValue none = getLasValue(path, "UWI", 'W');
    EXPECT_EQ(none.text, " ");
    EXPECT_EQ(none.marker, "NOT");
    EXPECT_EQ(getLasValue(path, "BHT", 'W').text, " ") << "other section";
    EXPECT_EQ(getLasValue(path, "BHT", 'X').text, "35.5") << "unknown section searches all";
    EXPECT_EQ(getFileValue(path, "UWI"), " ");
    EXPECT_EQ(getLasValue(folder.path("none.las"), "WELL", 'W').text, "");

    const std::string noVersion = folder.writeLines("b.las", "~V\n WRAP. NO : x\n~W\n WELL. A : B\n~A\n");
    EXPECT_EQ(getLasValue(noVersion, "WELL", 'W').text, "");
    EXPECT_EQ(getLasValue(noVersion, "VERS", 'W').text, " ");
    EXPECT_EQ(getLasValue(noVersion, "WRAP", 'V').text, "NO");
    EXPECT_EQ(getFileValue(noVersion, "WELL"), "A");
}

TEST(Sections, valueOfAnOpenFile) {
    LineReader file("~V\r\nVERS. 1.2 : x\r\n~W\r\nWELL. a:b : desc\r\n~P\r\nCN.\tX Y : z\r\n~A\r\nLATE. 1 : x\r\n");
    EXPECT_EQ(getOpenValue(file, " well ", 'W'), "ab");
    EXPECT_EQ(getOpenValue(file, "CN", 'W'), "X Y") << "sections behind are searched too";
    EXPECT_EQ(getOpenValue(file, "WELL", 'P'), "");
    EXPECT_EQ(getOpenValue(file, "LATE", 'W'), "");
    EXPECT_EQ(getOpenValue(file, "WELL", 'C'), "");
}

TEST(Sections, depthHeader) {
    const TempFolder folder;
    const DepthHeader header = getDepthHeader(folder.writeLines("a.las", smallWell()));
    EXPECT_EQ(header.indexName, "DEPT");
    EXPECT_EQ(header.strt().value, "1670.0000");
    EXPECT_EQ(header.strt().unit, "M");
    EXPECT_EQ(header.stop().value, "1669.3750");
    EXPECT_EQ(header.step().value, "-0.1250");
    EXPECT_EQ(header.null().value, "-999.25");
    EXPECT_EQ(header.layout.dot, 6);
    EXPECT_EQ(header.layout.value, 16);
    EXPECT_EQ(header.layout.colon, 31);

    const DepthHeader bare = getDepthHeader(folder.writeLines("b.las", "~W\nSTRTX.M : x\n#~ \nSTOP.M 5 : x\n"));
    EXPECT_EQ(bare.indexName, "DEPT");
    EXPECT_EQ(bare.strt().unit, "M");
    EXPECT_EQ(bare.layout.value, 15) << "no value in its line";
    EXPECT_EQ(bare.stop().value, "") << "a tilde ends the section";
    EXPECT_EQ(getDepthHeader(folder.path("none.las")).indexName, "");
}

TEST(Sections, tablesOfASection) {
    const TempFolder folder;
    const std::string path =
        folder.writeLines("a.las",
                          "~W\n~Curve\n#c\nDept.m : Depth\n\n Gr.gapi\t7 : ray\nno data line\nDT. : a ~ b\nNPHI. : x\n"
                          "~P\n# none\n~A\n");
    SectionTable table = {{"OLD", "", "", ""}};
    EXPECT_EQ(readSection(table, path, 'X'), 0);
    EXPECT_EQ(table.size(), 1U) << "an absent section leaves the table alone";
    ASSERT_EQ(readSection(table, path, 'C'), 2) << "a tilde in a description ends it";
    EXPECT_EQ(table[0].mnem, "DEPT");
    EXPECT_EQ(table[1].unit, "GAPI");
    EXPECT_EQ(table[1].value, "7");
    EXPECT_EQ(table[1].desc, "RAY");
    EXPECT_EQ(appendSection(table, path, 'C'), 3) << "only a tilde at the start ends it";
    EXPECT_EQ(table[2].desc, "A ~ B");
    EXPECT_EQ(appendSection(table, path, 'P'), -1);
    EXPECT_EQ(appendSection(table, path, 'O'), 0);
    EXPECT_EQ(readSection(table, path, 'P'), 0);
    EXPECT_EQ(readSectionLines(path, 'C').at(0).desc, "Depth");
    EXPECT_EQ(readSections(path), (std::vector<std::string>{"~W", "~Curve", "~P", "~A"}));
}

TEST(Sections, unitApartFromTheDot) {
    const TempFolder folder;
    const std::string path = folder.writeLines(
        "a.las", "~P\nA. m 15.5 : x\nB. m 0 : x\nC. m none : x\nD. m 1 2 : x\nE.ft m 1 : x\nF. 7 : x\n");
    SectionTable table;
    ASSERT_EQ(readSectionLoose(table, path, 'P'), 6);
    const char* const expected[][2] = {{"M", "15.5"}, {"M", "0"},    {"", "M NONE"},
                                       {"", "M 1 2"}, {"FT", "M 1"}, {"", "7"}};
    for (std::size_t row = 0; row < table.size(); ++row) {
        EXPECT_EQ(table[row].unit, expected[row][0]) << table[row].mnem;
        EXPECT_EQ(table[row].value, expected[row][1]) << table[row].mnem;
    }
}

}  // namespace
}  // namespace welvane
