#include "shared/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "shared/failure.h"
#include "shared/numbers_fast.h"

namespace welvane {
namespace {

constexpr double largest = std::numeric_limits<double>::max();

TEST(Numbers, readLeniently) {
    struct Case {
        const char* name;
        std::string text;
        double value;
        std::size_t length;
    };
    const std::string nines(400, '9');
    const std::string zeros(400, '0');
    // Half way between 1 and the next double, exactly (ties to 1) and with one more digit far behind (goes up).
    const std::string tie = "1.00000000000000011102230246251565404236316680908203125";
    const std::vector<Case> cases = {
        {"null of a log", "-999.25000", -999.25, 10},
        {"blanks and tabs in front", " \t 12.5 7", 12.5, 7},
        {"plus sign", "+3", 3, 2},
        {"no digit before the dot", "-.5", -0.5, 3},
        {"no digit behind the dot", "7.", 7, 2},
        {"second dot ends it", "1.2.3", 1.2, 3},
        {"letters end it", "12abc", 12, 2},
        {"date", "12-05-1998", 12, 2},
        {"E exponent", "1.5E+3", 1500, 6},
        {"small d exponent", "25d-1,", 2.5, 5},
        {"D exponent of the long road", "123456789012345678901D-20", 1.23456789012345678901, 25},
        {"exponent letter alone", "5E", 5, 1},
        {"exponent sign alone", "5.25d+", 5.25, 4},
        {"exponent letter and more text in a longer line", "5.25Elevation  of KB", 5.25, 4},
        {"exponent in a longer line", "5.25E1 and some more text", 52.5, 6},
        {"empty", "", 0, 0},
        {"blanks only", "   ", 0, 0},
        {"sign only", "-", 0, 0},
        {"dot only", ".", 0, 0},
        {"dot and exponent", ".E5                   ", 0, 0},
        {"two signs", "--5", 0, 0},
        {"word", "abc", 0, 0},
        {"no infinity", "inf", 0, 0},
        {"no NaN", "nan", 0, 0},
        {"no hex", "0x10", 0, 1},
        {"LF does not belong to the blanks", "\n5", 0, 0},
        {"too large", "1E999", largest, 5},
        {"too large, negative", "-" + nines, -largest, 401},
        {"too small", "1E-999", 0, 6},
        {"exponent beyond any integer", "1e99999999999999999999999999", largest, 28},
        {"zero with an endless exponent", "0e99999999999999999999999999", 0, 28},
        {"smallest denormal", "4.9406564584124654E-324", 4.9406564584124654e-324, 23},
        {"rounds up to infinity", "1.7976931348623159E308", largest, 22},
        {"leading zeros do not count", zeros + "." + zeros + "25E400", 0.25, 807},
        {"long and scaled back", nines + "E-400", 1, 405},
        {"tie to even", tie, 1, tie.size()},
        {"a digit far behind a tie", tie + zeros + zeros + "1", 1.0000000000000002, tie.size() + 801},
        {"eight and more digits", "12345678.123456789", 12345678.123456789, 18},
        {"all of 2^53 and one", "9007199254740993", 9007199254740992, 16},
    };
    for (const Case& test : cases) {
        const ParsedNumber number = parseNumber(test.text);
        EXPECT_EQ(number.value, test.value) << test.name;
        EXPECT_EQ(number.length, test.length) << test.name;
    }
    EXPECT_EQ(val("  8.5 ft"), 8.5);
}

TEST(Numbers, fastReadingStaysInsideItsText) {
    const std::string line = "-1234.56789 1234.56789E5";
    for (std::size_t length = 0; length <= line.size(); ++length) {
        // A block of just this size, so that the address check sees a look behind it.
        const std::vector<char> exact(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(length));
        double value = -1;
        const char* const end = parseNumberFast(exact.data(), exact.data() + exact.size(), value);
        const std::size_t used = length < 2 ? 0 : std::min<std::size_t>(length, 11);
        EXPECT_EQ(value, used == 0 ? 0 : std::strtod(line.substr(0, used).c_str(), nullptr)) << length;
        EXPECT_EQ(end - exact.data(), static_cast<std::ptrdiff_t>(used)) << length;
    }
}

TEST(Numbers, strictReadingTakesTheWholeField) {
    for (const char* text : {"12", " 12.5\t", "-3E2", ".5"}) {
        EXPECT_TRUE(isNumeric(text)) << text;
        EXPECT_EQ(strictDouble(text), val(text)) << text;
    }
    for (const char* text : {"", " ", "abc", "12 13", "12m", "1E", "1.2.3", "-"}) {
        EXPECT_FALSE(isNumeric(text)) << text;
        EXPECT_THROW(strictDouble(text), RunTimeFailure) << text;
    }
    try {
        strictDouble("abc");
    } catch (const RunTimeFailure& failure) {
        EXPECT_STREQ(failure.what(), "\"abc\" is not a number");
    }
    EXPECT_EQ(strictInt16("2.5"), 2);
    EXPECT_EQ(strictInt16("-32768.5"), -32768);
    EXPECT_THROW(strictInt16("32767.5"), RunTimeFailure);
    EXPECT_THROW(strictInt16("x"), RunTimeFailure);
}

TEST(Numbers, conversionsRoundTiesToEvenAndRefuseWhatDoesNotFit) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    struct Case {
        double value;
        double rounded;
        double floored;
    };
    for (const Case& test : std::vector<Case>{{0.5, 0, 0},
                                              {1.5, 2, 1},
                                              {2.5, 2, 2},
                                              {-0.5, 0, -1},
                                              {-1.5, -2, -2},
                                              {-7, -7, -7},
                                              {0.49999999999999994, 0, 0},
                                              {2.5000000000000004, 3, 2},
                                              {32766.5, 32766, 32766}}) {
        EXPECT_EQ(roundToEven(test.value), test.rounded) << test.value;
        EXPECT_EQ(toInt16(test.value), test.rounded) << test.value;
        EXPECT_EQ(floorToInt32(test.value), test.floored) << test.value;
    }
    EXPECT_EQ(roundToEven(2147483647.4), 2147483647);
    EXPECT_EQ(roundToEven(-2147483648.5), -2147483647 - 1);
    EXPECT_EQ(floorToInt32(2147483647.9), 2147483647);
    EXPECT_EQ(floorToInt32(-2147483648.0), -2147483647 - 1);
    EXPECT_EQ(toInt32(-2147483648LL), -2147483647 - 1);
    EXPECT_EQ(toSingle(-0.1), -0.1F);
    EXPECT_EQ(toSingle(3.4028235e38), std::numeric_limits<float>::max());

    for (const double value : {2147483647.5, -2147483648.6, 1e300, nan, infinity, -infinity})
        EXPECT_THROW(roundToEven(value), RunTimeFailure) << value;
    for (const double value : {2147483648.0, -2147483648.1, 1e300, nan, -infinity})
        EXPECT_THROW(floorToInt32(value), RunTimeFailure) << value;
    for (const double value : {32767.5, -32768.6, 70000.0, nan}) EXPECT_THROW(toInt16(value), RunTimeFailure) << value;
    for (const double value : {3.4028236e38, -1e39, nan, infinity})
        EXPECT_THROW(toSingle(value), RunTimeFailure) << value;
    EXPECT_THROW(toInt32(2147483648LL), RunTimeFailure);
    EXPECT_THROW(toInt32(-2147483649LL), RunTimeFailure);
}

TEST(Numbers, masksRoundHalfAwayFromZeroOnTheShortestDigits) {
    struct Case {
        double value;
        int decimals;
        std::string text;
    };
    const std::vector<Case> cases = {
        {1.005, 2, "1.01"},
        {-1.005, 2, "-1.01"},
        {0.125, 2, "0.13"},
        {2.5, 0, "3"},
        {-2.5, 0, "-3"},
        {0.5, 0, "1"},
        {0.49999999999999994, 0, "0"},
        {-0.001, 2, "0.00"},
        {-0.0, 3, "0.000"},
        {-0.4, 0, "0"},
        {-999.25, 5, "-999.25000"},
        {1234.56785, 4, "1234.5679"},
        {1234.567849, 4, "1234.5678"},
        {9.995, 2, "10.00"},
        {99999999.996, 2, "100000000.00"},
        {123456789012.5, 3, "123456789012.500"},
        {999999999999999.5, 0, "1000000000000000"},
        {1e22, 1, "10000000000000000000000.0"},
        {1e23, 0, "100000000000000000000000"},
        {1e-7, 5, "0.00000"},
        {5e-6, 5, "0.00001"},
        {0.1, 12, "0.100000000000"},
        {0.1, 20, "0.10000000000000000000"},
        {0.0625, 3, "0.063"},
        {5e-324, 3, "0.000"},
        {1.5, -3, "2"},
        {0.25, 400, "0.25" + std::string(298, '0')},
        {-largest, 2, "-17976931348623157" + std::string(292, '0') + ".00"},
        {std::numeric_limits<double>::quiet_NaN(), 2, "0.00"},
        {-std::numeric_limits<double>::infinity(), 1, "0.0"},
    };
    for (const Case& test : cases) {
        EXPECT_EQ(formatMask(test.value, test.decimals), test.text);
        std::vector<char> buffer(formatMaskCapacity(test.decimals));
        const std::size_t length = detail::formatMaskSlowTo(buffer.data(), test.value, test.decimals);
        EXPECT_EQ(std::string(buffer.data(), length), test.text);
    }
}

TEST(Numbers, plainTextsAreShortest) {
    struct Case {
        double value;
        const char* text;
    };
    for (const Case& test : std::vector<Case>{{0, "0"},
                                              {-0.0, "0"},
                                              {1.5, "1.5"},
                                              {-3, "-3"},
                                              {0.25, "0.25"},
                                              {0.1, "0.1"},
                                              {1200, "1200"},
                                              {0.00001, "0.00001"},
                                              {0.0000012, "1.2E-6"},
                                              {123456789012345, "123456789012345"},
                                              {1e15, "1E+15"},
                                              {-1.25e20, "-1.25E+20"},
                                              {5e-324, "5E-324"},
                                              {INFINITY, "0"}})
        EXPECT_EQ(plainNumber(test.value), test.text);
    EXPECT_EQ(plainNumber(0.1F), "0.1");
    EXPECT_EQ(plainNumber(static_cast<double>(0.1F)), "0.10000000149011612");
    EXPECT_EQ(strNumber(2.5), " 2.5");
    EXPECT_EQ(strNumber(-2.5), "-2.5");
    EXPECT_EQ(strNumber(0), " 0");
}

TEST(Numbers, zerosAreStripped) {
    EXPECT_EQ(stripZeros("1.500"), "1.5");
    EXPECT_EQ(stripZeros("100.000"), "100");
    EXPECT_EQ(stripZeros("100"), "100");
    EXPECT_EQ(stripZeros("1.5E+10"), "1.5E+10");
    EXPECT_EQ(stripZeros(""), "");
}

}  // namespace
}  // namespace welvane
