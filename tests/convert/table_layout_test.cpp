#include "convert/table_layout.h"

#include <gtest/gtest.h>

namespace welvane {
namespace {

TEST(TableText, linesEndInAnyWay) {
    for (const std::string text : {"a\nbb\n\nc", "a\r\nbb\r\n\r\nc\r\n", "a\rbb\r\rc", "a\r\nbb\n\nc\n"}) {
        SCOPED_TRACE(text);
        TableLines lines(text);
        std::vector<std::string> seen;
        std::vector<std::size_t> places;
        std::string_view line;
        for (std::size_t start = lines.position(); lines.next(line); start = lines.position()) {
            seen.emplace_back(line);
            places.push_back(start);
            EXPECT_EQ(lines.lineAt(start), line);
        }
        EXPECT_EQ(seen, (std::vector<std::string>{"a", "bb", "", "c"}));
        EXPECT_EQ(lines.numberAt(places[3]), 4U);
    }
}

TEST(TableText, fieldsOfALine) {
    struct Case {
        const char* line;
        Delimiter delimiter;
        std::vector<std::string> fields;
    };
    for (const Case& row : {
             Case{"  1  2\t3 ", Delimiter::Blanks, {"1", "2", "3"}},
             Case{" \t ", Delimiter::Blanks, {}},
             Case{"1, 2 ,,4,", Delimiter::Comma, {"1", "2", "", "4", ""}},
             Case{"  ", Delimiter::Comma, {}},
             Case{"1\t\t 3", Delimiter::Tab, {"1", "", "3"}},
             Case{"\t1", Delimiter::Tab, {"", "1"}},
             Case{"1;2", Delimiter::Semicolon, {"1", "2"}},
             Case{"\"a,b\" , \"c\",\"\"", Delimiter::Comma, {"a,b", "c", ""}},
             Case{"\"say \"\"so\"\", then\",2", Delimiter::Comma, {"say \"\"so\"\", then", "2"}},
             Case{"\"open,2", Delimiter::Comma, {"\"open", "2"}},
             Case{"\"", Delimiter::Comma, {"\""}},
         }) {
        SCOPED_TRACE(row.line);
        std::vector<std::string_view> fields;
        splitFields(row.line, row.delimiter, fields);
        EXPECT_EQ(std::vector<std::string>(fields.begin(), fields.end()), row.fields);
        EXPECT_EQ(countFields(row.line, row.delimiter), row.fields.size());
    }
}

TEST(TableLayout, isFoundInTablesOfManyPrograms) {
    struct Case {
        const char *name, *text;
        Delimiter delimiter;
        std::size_t dataLine;
        std::vector<std::string> names, units;
    };
    for (const Case& row : {
             Case{"comma with a head",
                  "DEPTH,GR,RHOB\n100,1,2\n101,1,2\n",
                  Delimiter::Comma,
                  2,
                  {"DEPTH", "GR", "RHOB"},
                  {"", "", ""}},
             Case{"names and units", "DEPTH,GR\nM,GAPI\n100,1\n", Delimiter::Comma, 3, {"DEPTH", "GR"}, {"M", "GAPI"}},
             Case{"units in brackets",
                  "Depth (m);Rt ( OHM.M );Phi(M3/M3)\n1;2;3\n",
                  Delimiter::Semicolon,
                  2,
                  {"Depth", "Rt", "Phi"},
                  {"m", "OHMM", "V/V"}},
             Case{"blank runs, units apart",
                  "  Depth (ft)   GR (API units)  X\n 1 2 3\n 2 3 4\n",
                  Delimiter::Blanks,
                  2,
                  {"Depth", "GR", "X"},
                  {"ft", "API units", ""}},
             Case{"tab with empty cells", "\t\t\n1\t\t3\n2\t2\t3\n", Delimiter::Tab, 2, {"", "", ""}, {"", "", ""}},
             Case{"comma and blank", "1, 2, 3\n2, 3, 4\n", Delimiter::Comma, 1, {"", "", ""}, {"", "", ""}},
             Case{"title before, number in it",
                  "Report 7\nrun 2\n\nDEPT GR\n1 2\n2 3\n",
                  Delimiter::Blanks,
                  5,
                  {"DEPT", "GR"},
                  {"", ""}},
             Case{"marked names", "# DEPT GR\n1 2\n2 3\n", Delimiter::Blanks, 2, {"DEPT", "GR"}, {"", ""}},
             Case{"a title of ~A", "~A DEPT GR\n1 2\n2 3\n", Delimiter::Blanks, 2, {"DEPT", "GR"}, {"", ""}},
             Case{"rules",
                  "Well report\n\nDepth (m)  GR (API)\n=========  ========\n 1 2\n 2 3\n",
                  Delimiter::Blanks,
                  5,
                  {"Depth", "GR"},
                  {"m", "API"}},
             Case{"one long rule",
                  "Depth (m)  GR (API)\n===================\n 1 2\n 2 3\n",
                  Delimiter::Blanks,
                  3,
                  {"Depth", "GR"},
                  {"m", "API"}},
             Case{"names with blanks over rules",
                  "Meas Depth (m)  Gamma Ray (API)\n==============  ===============\n 1 2\n 2 3\n",
                  Delimiter::Blanks,
                  3,
                  {"Meas Depth", "Gamma Ray"},
                  {"m", "API"}},
             Case{"text in a column", "DEPT,LITH\n1,sand\n2,lime\n", Delimiter::Comma, 2, {"DEPT", "LITH"}, {"", ""}},
             Case{"text in the first row alone",
                  "DEPT,GR\n1,none\n2,5\n3,5\n",
                  Delimiter::Comma,
                  2,
                  {"DEPT", "GR"},
                  {"", ""}},
             Case{"text as depth", "DEPT,GR\nabc,1\n", Delimiter::Comma, 2, {"DEPT", "GR"}, {"", ""}},
             Case{"no numbers but nan", "A,B\nnan,-inf\n1,2\n", Delimiter::Comma, 2, {"A", "B"}, {"", ""}},
         }) {
        SCOPED_TRACE(row.name);
        const std::string_view text = row.text;
        const TableLayout layout = findTableLayout(text, Delimiter::Guess, 0);
        EXPECT_EQ(layout.delimiter, row.delimiter);
        EXPECT_EQ(TableLines(text).numberAt(layout.dataPosition), row.dataLine);
        EXPECT_EQ(layout.names, row.names);
        EXPECT_EQ(layout.units, row.units);
    }
}

TEST(TableLayout, startsWhereTheUserSays) {
    const TableLayout layout = findTableLayout("1 2\nA B C\n3 4 5\n", Delimiter::Guess, 3);
    EXPECT_EQ(layout.columns, 3U);
    EXPECT_EQ(layout.names, (std::vector<std::string>{"A", "B", "C"}));
    EXPECT_EQ(findTableLayout("1 2\n", Delimiter::Guess, 9).columns, 0U);
    EXPECT_EQ(findTableLayout("", Delimiter::Guess, 0).columns, 0U);
    EXPECT_EQ(findTableLayout("1,2 3\n", Delimiter::Blanks, 0).columns, 2U);
}

}  // namespace
}  // namespace welvane
