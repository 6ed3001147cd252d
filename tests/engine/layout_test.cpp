#include "engine/layout.h"

#include <gtest/gtest.h>

#include "engine/curve_table.h"

namespace welvane {
namespace {

TEST(LayoutTest, overflowTextIsNinesBehindABlank) {
    EXPECT_EQ(overflowText(13, 5), " 999999.99999");
    EXPECT_EQ(overflowText(8, 5), " 9.99999");
    EXPECT_EQ(overflowText(6, 0), " 9999.");
    EXPECT_EQ(overflowText(0, 5), "");
}

TEST(LayoutTest, recordsBreakAtColumns) {
    const std::string record = "  1.0  2.0  3.0  4.0  5.0  6.0";
    EXPECT_EQ(wrapRecord(record, 5, 2, 3), "  1.0\r\n  2.0  3.0\r\n  4.0  5.0\r\n  6.0");
    EXPECT_EQ(wrapRecord(record, 5, 2, 4), "  1.0\r\n  2.0  3.0\r\n  4.0  5.0\r\n  6.0\r\n  6.0")
        << "a count too high repeats the rest";
    EXPECT_EQ(wrapRecord(record, 5, 5, 1), "  1.0\r\n  2.0  3.0  4.0  5.0  6.0");
}

TEST(LayoutTest, wrappedTitleHasItsLeadOnEachLine) {
    EXPECT_EQ(wrapTitle(" DEPT   GR RHOB", 5, "#"), "#DEPT\r\n#  GR RHOB");
    EXPECT_EQ(wrapTitle("DEPT GR RHOB NPHI", 30, "#"),
              "#                         DEPT\r\n#                           GR                          RHOB\r\n#     "
              "                    NPHI")
        << "a title of no whole columns is laid out anew";
    EXPECT_EQ(wrapTitle(" DEPT   GR", 5, ""), " DEPT\r\n   GR");
}

TEST(CurveTableTest, duplicatesAreNumbered) {
    struct Case {
        std::vector<std::string> given, expected;
    };
    const std::vector<Case> cases = {
        {{"DEPT", "GR", "GR"}, {"DEPT", "GR", "GR_1"}}, {{"DEPT", "GR", "gr", "GR"}, {"DEPT", "GR", "gr_1", "GR_2"}},
        {{"DEPT", "DEPT"}, {"DEPT", "DEPT_1"}},         {{"DEPT", "A_X", "A_X"}, {"DEPT", "A_X", "A_X"}},
        {{"DEPT", "A", "B"}, {"DEPT", "A", "B"}},
    };
    for (const Case& row : cases) {
        OutputCurveTable table;
        for (const std::string& mnem : row.given) table.push_back({mnem, "", "", ""});
        renameDuplicates(table);
        for (std::size_t entry = 0; entry < table.size(); ++entry)
            EXPECT_EQ(table[entry].mnem, row.expected[entry]) << "entry " << entry;
    }
}

}  // namespace
}  // namespace welvane
