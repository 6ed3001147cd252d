#include "conform/decimal.h"

#include <gtest/gtest.h>

#include "conform/index_track.h"

namespace welvane {
namespace {

TEST(Decimal, KeepsWhatIsPrinted) {
    struct Case {
        const char *text, *printed;
    };
    for (const Case& one :
         {Case{"1670", "1670"}, Case{"1670.000", "1670"}, Case{"+.5", "0.5"}, Case{"-0.1250", "-0.125"},
          Case{"5.", "5"}, Case{"-0.0", "0"}, Case{"007", "7"}, Case{"0.000000000000001", "0.000000000000001"}})
        EXPECT_EQ(textOf(decimalOf(one.text).value_or(Decimal{-77, 0})), one.printed) << one.text;
    for (const char* const text : {"", "-", ".", "1.2.3", "1e5", "12a", "--1", "1-2", "1234567890123456"})
        EXPECT_FALSE(decimalOf(text)) << text;
    EXPECT_TRUE(sameValue(*decimalOf("-999.25"), *decimalOf("-999.2500")));
    EXPECT_FALSE(sameValue(*decimalOf("0.1524"), *decimalOf("0.152")));
}

TEST(IndexTrack, TellsRoundingFromAnotherStep) {
    using Kind = IndexTrack::Kind;
    struct Case {
        const char* name;
        const char* step;
        std::vector<const char*> values;
        std::vector<Kind> kinds;
    };
    for (const Case& one : {
             Case{"exact", "0.1524", {"0.1524", "0.3048", "0.4572"}, {Kind::First, Kind::Regular, Kind::Regular}},
             Case{"rounded to three decimals",
                  "0.1524",
                  {"0.152", "0.305", "0.457"},
                  {Kind::First, Kind::Rounded, Kind::Rounded}},
             Case{"rounded as a value needs",
                  "0.1524",
                  {"9.9060", "10.058", "10.211"},
                  {Kind::First, Kind::Rounded, Kind::Rounded}},
             Case{"zeros left out",
                  "0.1524",
                  {"72.695", "72.847", "73", "73.152"},
                  {Kind::First, Kind::Rounded, Kind::Rounded, Kind::Rounded}},
             Case{"each near, together far",
                  "0.1524",
                  {"0", "0.152", "0.304", "0.456", "0.608", "0.760"},
                  {Kind::First, Kind::Rounded, Kind::Rounded, Kind::Other, Kind::Rounded, Kind::Rounded}},
             Case{"a gap", "-0.5", {"3", "2.5", "1", "0.5"}, {Kind::First, Kind::Regular, Kind::Other, Kind::Regular}},
             Case{"turns back, stands still",
                  "1",
                  {"1", "2", "1", "1"},
                  {Kind::First, Kind::Regular, Kind::Back, Kind::Same}},
             Case{"more digits than can be counted",
                  "1",
                  {"1", "0.00000000000001", "123456789012345"},
                  {Kind::First, Kind::Rounded, Kind::Unknown}},
         }) {
        IndexTrack track(decimalOf(one.step));
        for (std::size_t row = 0; row < one.values.size(); ++row)
            EXPECT_EQ(track.take(*decimalOf(one.values[row])), one.kinds[row]) << one.name << ", row " << row;
    }
}

}  // namespace
}  // namespace welvane
