#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "functions/functions.h"

namespace welvane {
namespace {

using Values = std::vector<std::optional<double>>;
constexpr std::nullopt_t unset = std::nullopt;

TEST(ParseFunction, CoefficientsFollowTheParameters) {
    const struct {
        const char* name;
        const char* descriptor;
        Values expected;
    } cases[] = {
        {"reciprocal", "0|||||1|CILD|x", {1000, 0, -1, 1}},
        // phi = (ma - rho) / (ma - fl): slope -1 / 1.65, intercept 2.65 / 1.65
        {"density to porosity", "2|2.65|1.0", {-1 / 1.65, 2.65 / 1.65, 0, 1}},
        // rho = ma - (ma - fl) phi
        {"porosity to density", "3|2.65|1.0", {-1.65, 2.65, 0, 1}},
        // phi = (dt - ma) / (fl - ma): 189 - 55.5 = 133.5
        {"sonic to porosity", "5|55.5|189", {1 / 133.5, -55.5 / 133.5, 0, 1}},
        {"porosity to sonic", "6|55.5|189", {133.5, 55.5, 0, 1}},
        {"matrix to itself", "4|||1|1", {1, 0, 0, 1}},
        {"sand to lime", "4|||0|1", {1, 0, 1, 1}},
        {"sand to dolo", "7|||0|2", {1, 0, 2, 1}},
        {"lime to sand", "8|||1|0", {1, 0, 3, 1}},
        {"lime to dolo", "8|||1|2", {1, 0, 4, 1}},
        {"dolo to sand", "7|||2|0", {1, 0, 5, 1}},
        {"dolo to lime", "4|||2|1", {1, 0, 6, 1}},
        {"no such matrix", "4|||5|1", {1, 0, 0, 1}},
        {"power law", "10|1.5|2|-3x|0.5", {1.5, 2, -3, 0.5}},
        {"both limits", "11|0|100", {0, 100, 0, 0}},
        {"no limits", "11||", {-999.25, -999.25, 0, 0}},
        {"stale average", "12|DPHI|NPHI", {0, 0, 0, 0}},
        {"replace", "13|0|-999.25", {0, -999.25, 0, 0}},
        {"smoothing", "14|2|5", {2, 5, 0, 0}},
        {"scale", "15|0.2|2000|3.25|-5.75", {0.2, 2000, 3.25, -5.75}},
        {"matrix equals fluid", "2|1|1", {unset, unset, unset, unset}},
        {"sonic matrix equals fluid", "5|189|189", {unset, unset, unset, unset}},
        {"equal count rates", "9|100|100|0.3|0.1", {unset, unset, unset, unset}},
    };
    for (const auto& one : cases) {
        const ParsedFunction parsed = parseFunction(one.descriptor, stockMatrixTable);
        EXPECT_TRUE(parsed.code) << one.name;
        const CoefficientSet& set = parsed.coefficients;
        const Values found = {set.a1, set.a2, set.a3, set.a4};
        for (std::size_t place = 0; place < 4; ++place) {
            ASSERT_EQ(found[place].has_value(), one.expected[place].has_value()) << one.name << " a" << place + 1;
            EXPECT_NEAR(found[place].value_or(0), one.expected[place].value_or(0), 1e-12)
                << one.name << " a" << place + 1;
        }
    }
}

TEST(ParseFunction, CountRateLinePassesThroughBothPoints) {
    const CoefficientSet set = parseFunction("9|1900|850|0.26|0.019", stockMatrixTable).coefficients;
    EXPECT_NEAR(std::pow(10, *set.a1 * 1900 + *set.a2), 0.019, 1e-9);
    EXPECT_NEAR(std::pow(10, *set.a1 * 850 + *set.a2), 0.26, 1e-9);
    // A low porosity of 0 has no logarithm; 0 stands in its place, as if the porosity were 1.
    const CoefficientSet zero = parseFunction("9|1000|100|0.1|0", stockMatrixTable).coefficients;
    EXPECT_NEAR(*zero.a1, -1.0 / -900, 1e-15);
    EXPECT_NEAR(*zero.a2, -1000.0 / 900, 1e-12);
}

TEST(ParseFunction, countRateInterceptTakesTheTextOfTheSlope) {
    // log 10 - log 1 over 0 - 3,000,000: the slope's text has fifteen 3s, and 3,000,000 times that is not quite 1.
    const CoefficientSet set = parseFunction("9|3e6|0|10|1", stockMatrixTable).coefficients;
    EXPECT_EQ(*set.a1, 1.0 / -3e6);
    EXPECT_EQ(*set.a2, 3e6 * 3.33333333333333e-7);
    EXPECT_NE(*set.a2, 1.0);
}

TEST(ParseFunction, fromLogReadsAsZero) {
    const CoefficientSet word = parseFunction("9|From_Log|850|0.26|0.019", stockMatrixTable).coefficients;
    const CoefficientSet zero = parseFunction("9|0|850|0.26|0.019", stockMatrixTable).coefficients;
    EXPECT_EQ(*word.a1, *zero.a1);
    EXPECT_EQ(*word.a2, *zero.a2);
}

TEST(ParseFunction, CodeMustBeAnIntegerAndUnknownOnesSetNothing) {
    for (const char* text : {"", "MATH|1", "1e|2", "70000|1"})
        EXPECT_THROW(parseFunction(text, stockMatrixTable), RunTimeFailure) << text;
    for (const char* text : {"16|1|2", "-1|1|2", "32000"}) {
        const ParsedFunction parsed = parseFunction(text, stockMatrixTable);
        EXPECT_FALSE(parsed.code) << text;
        EXPECT_FALSE(parsed.coefficients.a1 || parsed.coefficients.a2 || parsed.coefficients.a3 ||
                     parsed.coefficients.a4)
            << text;
    }
}

TEST(ParseFunction, notes) {
    const struct {
        const char* descriptor;
        const char* note;
    } cases[] = {
        {"0", "( was . Conductivity computed from Resistivity)"},
        {"1", "( was . Resistivity computed from Conductivity)"},
        {"2|2.65|1", "( was  )"},
        {"3|2.65|1", "( was  )"},
        {"4|||0|1", "(was . Matrix was=SAND-2.650 : Matrix is=LIME-2.710 )"},
        {"7|||2|0", "(was . Matrix was=DOLO-2.870 : Matrix is=SAND-2.650 CP-1e )"},
        {"8|||1|2", "(was . Matrix was=LIME-2.710 : Matrix is=DOLO-2.870 CP-1c )"},
        {"4|||3|1", ""},
        {"5|55.5|189", "( was  Matrix=55.5 Fluid=189)"},
        {"6|55.50|189", "( was . Matrix=55.5 Fluid=189)"},
        {"9|1900|850|0.26|0.019", "( was . Low_Phi=0.019Hi_CR=1900 Hi_Phi=0.26 Low_CR=850)"},
        {"10|1|0|-0.5|0.333333333333333333", "( was . A=1B=0C=-0.5n=0.333333333333333)"},
        {"11|0|100", "( was . Min=0Max=100)"},
        {"12", "( was . Average Porosity computed from)"},
        {"13|0|-999.25", "( was . Replaced 0 with =-999.25)"},
        {"14|2|3", "( was . Averaged over 2 points"},
        {"15|0.2|2000|3.25|-5.75",
         "( was . New Left Scale=0.2New Right Scale=2000. Old Left Track=3.25Old Right Track=-5.75"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(parseFunction(one.descriptor, stockMatrixTable).note, one.note) << one.descriptor;
}

TEST(FunctionCatalogue, RowsStandAtTheirCodes) {
    for (int code = 0; code < functionCount; ++code) {
        const FunctionEntry& entry = functionCatalogue()[static_cast<std::size_t>(code)];
        EXPECT_EQ(static_cast<int>(entry.code), code);
        EXPECT_EQ(findFunction(entry.key), &entry);
        EXPECT_LE(entry.firstField - 1 + static_cast<int>(entry.arguments.size()), 5) << entry.key;
        EXPECT_EQ(std::string(entry.example).find("FUN=" + std::string(entry.key) + ","), 0U) << entry.example;
    }
    EXPECT_EQ(findFunction("nphicp1C")->code, FunctionCode::NphiCp1c);
    EXPECT_EQ(findFunction("NPHI"), nullptr);
}

TEST(FunctionDescriptor, CutsAndJoinsEightFields) {
    const FunctionDescriptor parsed = FunctionDescriptor::parse("10|1|0||2|3|GR|was :GR A=1|more");
    EXPECT_EQ(parsed.code(), FunctionCode::Math);
    EXPECT_EQ(parsed.parameters, (std::array<std::string, 4>{"1", "0", "", "2"}));
    EXPECT_EQ(parsed.sourcePosition, "3");
    EXPECT_EQ(parsed.resultMnem, "GR");
    EXPECT_EQ(parsed.note, "was :GR A=1");
    EXPECT_EQ(parsed.text(), "10|1|0||2|3|GR|was :GR A=1");
    EXPECT_EQ(FunctionDescriptor::parse("7").text(), "7|||||||");
}

}  // namespace
}  // namespace welvane
