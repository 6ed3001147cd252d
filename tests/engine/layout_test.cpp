#include "engine/layout.h"

#include <gtest/gtest.h>

namespace welvane {
namespace {

TEST(LayoutTest, overflowTextIsNinesBehindABlank) {
    EXPECT_EQ(overflowText(13, 5), " 999999.99999");
    EXPECT_EQ(overflowText(8, 5), " 9.99999");
    EXPECT_EQ(overflowText(6, 0), " 9999.");
    EXPECT_EQ(overflowText(0, 5), "");
}

TEST(LayoutTest, recordsBreakAtColumns) {
    const auto lines = [](std::size_t perLine, int count) {
        std::string text;
        eachWrappedLine("  1.0  2.0  3.0  4.0  5.0  6.0", 5, perLine, count,
                        [&text](std::string_view line) { text.append(line).append("|"); });
        return text;
    };
    EXPECT_EQ(lines(2, 3), "  1.0|  2.0  3.0|  4.0  5.0|  6.0|");
    EXPECT_EQ(lines(2, 4), "  1.0|  2.0  3.0|  4.0  5.0|  6.0|  6.0|") << "a count too high repeats the rest";
    EXPECT_EQ(lines(5, 1), "  1.0|  2.0  3.0  4.0  5.0  6.0|");
}

TEST(LayoutTest, wrappedTitleHasItsLeadOnEachLine) {
    EXPECT_EQ(wrapTitle(" DEPT   GR RHOB", 5, "#"), "#DEPT\r\n#  GR RHOB");
    EXPECT_EQ(wrapTitle("DEPT GR RHOB NPHI", 30, "#"),
              "#                         DEPT\r\n#                           GR                          RHOB\r\n#     "
              "                    NPHI")
        << "a title of no whole columns is laid out anew";
    EXPECT_EQ(wrapTitle(" DEPT   GR", 5, ""), " DEPT\r\n   GR");
}

}  // namespace
}  // namespace welvane
