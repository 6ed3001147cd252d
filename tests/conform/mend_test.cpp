#include "conform/mend.h"

#include <gtest/gtest.h>

#include "conform/breaches.h"
#include "conform/mend_data.h"

namespace welvane::test {
namespace {

std::string mended(const std::string& text) {
    std::string made;
    EXPECT_TRUE(mendText(text, judged(text), [&](std::string_view part) { made += part; }, {}));
    return made;
}

/// Rules that a mend may bring along: a line or a description that was added is empty, a
/// number written out has other decimals.
bool mayCome(Rule rule) {
    return rule == Rule::W018 || rule == Rule::H010 || rule == Rule::D014;
}

TEST(Mend, LeavesNothingThatNeedsNoChoiceAndBringsNothing) {
    for (const Breach& one : breaches()) {
        const std::string text = edited(one.base, one.edits);
        const Judgement before = judged(text);
        if (!canMend(before)) continue;
        const std::string made = mended(text);
        const Judgement after = judged(made);
        for (const Finding& found : before.findings.sorted())
            if (found.mendable) {
                EXPECT_LT(after.findings.count(found.rule), before.findings.count(found.rule))
                    << ruleOf(found.rule).id << "\n"
                    << text << "\n---\n"
                    << made;
            }
        for (const ConformRule& rule : conformRules())
            if (!before.findings.has(rule.rule) && !mayCome(rule.rule)) {
                EXPECT_FALSE(after.findings.has(rule.rule)) << one.rules << " brings " << rule.id << "\n" << made;
            }
        EXPECT_FALSE(canMend(after)) << one.rules << "\n" << made;
        EXPECT_EQ(mended(made), made) << one.rules;
    }
}

TEST(Mend, ChangesTheLineAndNothingElse) {
    struct Case {
        const std::string& base;
        Edits broken, whole;
    };
    for (const Case& one : std::vector<Case>{
             {plain20, {{"STRT.M 100.0", "STRT.M 99.5"}}, {}},
             {plain20, {{"STEP.M 0.5", "STEP.M 0.25"}}, {}},
             {plain20, {{"STEP.M 0.5", "STEP.M -0.5"}}, {}},
             {plain20,
              {{"STOP.M 101.5 : STOP\n", ""}},
              {{"STRT.M 100.0 : START\nSTOP.M 101.5 : STOP\n", "STOP.M 101.5 : STOP\nSTRT.M 100.0 : START\n"}}},
             {plain20, {{"101.0   51.25   2.67\n", ""}}, {{"101.0   51.25   2.67\n", ""}, {"STEP.M 0.5", "STEP.M 0"}}},
             {plain20, {{"~Version", "\xEF\xBB\xBF~Version"}, {"~Curve", "~curve"}}, {}},
             {plain20, {{"COMP. ANY OIL : COMPANY", "COMP. COMPANY : ANY OIL"}}, {}},
             {plain12, {{"COMP. COMPANY : ANY OIL", "COMP. ANY OIL : COMPANY"}}, {}},
             {plain20, {{"-999.25   2.66", "    NaN   2.66"}}, {}},
             {plain20,
              {{"  50.25   2.65", "0.5025e2 2.65"}},
              {{"  50.25   2.65", "  50.25 2.65"},
               {"25   2.66", "25 2.66"},
               {"25   2.67", "25 2.67"},
               {"25   2.68", "25 2.68"}}},
             {plain20, {{"100.5 -999.25   2.66", "100.5-999.25    2.66"}}, {}},
             {plain20, {{"~A\n", "~A\nDEPT GR RHOB\n"}}, {{"~A\n", "~A  DEPT GR RHOB\n"}}},
             {plain20, {{"101.0   51", "# here\n\n101.0   51"}}, {{"~A\n", "# here\n~A\n"}}},
             {plain20,
              {{"~Version", "~Other\ntext\n~Version"}},
              {{"~Well", "~Well"}, {"~Curve", "~Other\ntext\n~Curve"}}},
             {plain20,
              {{"2.68\n", "2.68\n~Parameter\nBS.M 1 : BIT SIZE\n"}},
              {{"~A\n", "~Parameter\nBS.M 1 : BIT SIZE\n~A\n"}}},
             {wrapped20, {{"WRAP. YES", "WRAP. NO"}}, {}},
             {wrapped20,
              {{"100.0\n   50.25   2.65\n", "100.0 50.25\n2.65\n"}},
              {{"   50.25   2.65", "50.25 2.65"},
               {"   51.25   2.66", "51.25 2.66"},
               {"   52.25   2.67", "52.25 2.67"},
               {"   53.25   2.68", "53.25 2.68"}}},
             {plain20,
              {{"STRT.M", "STRT.FEET"}, {"STOP.M", "STOP.F"}, {"STEP.M", "STEP.feet"}, {"DEPT.M", "DEPT.FEET"}},
              {{"STRT.M", "STRT.FT"}, {"STOP.M", "STOP.FT"}, {"STEP.M", "STEP.FT"}, {"DEPT.M", "DEPT.FT"}}},
         }) {
        const std::string broken = edited(one.base, one.broken), whole = edited(one.base, one.whole);
        ASSERT_FALSE(broken.empty() || whole.empty()) << "an edit found nothing";
        EXPECT_EQ(mended(broken), whole);
        EXPECT_EQ(mended(replaceAll(broken, "\r\n", "\n")), whole);
    }
}

TEST(Mend, LeavesAloneWhatWouldLoseByIt) {
    std::string wide;
    for (const char c : edited(plain20, {})) wide.append({c, '\0'});
    EXPECT_FALSE(canMend(judged(wide)));
    EXPECT_EQ(brokenRules(judged(wide)), "F004");
    EXPECT_FALSE(canMend(judged("no log\n")));
    // The index shows fewer digits than the header: taking them over would lose some.
    const std::string rounded =
        edited(plain20, {{"STOP.M 101.5", "STOP.M 101.504"}, {"STRT.M 100.0", "STRT.M 99.996"}});
    EXPECT_EQ(brokenRules(judged(rounded)), "W007 W008 W012");
    EXPECT_FALSE(canMend(judged(rounded)));
}

TEST(Mend, NumbersWrittenOut) {
    struct Case {
        const char *number, *digits;
    };
    for (const Case& one :
         {Case{"1e3", "1000"}, Case{"-1.25E-2", "-0.0125"}, Case{"2.5e+1", "25"}, Case{"+.5e0", "0.5"},
          Case{"12.345e1", "123.45"}, Case{"0e5", "0"}, Case{"1e-3", "0.001"}, Case{"5.", "5."}, Case{"1e400", ""}})
        EXPECT_EQ(writtenOut(one.number), one.digits) << one.number;
}

TEST(Mend, LosesNoCellOfRowsThatDoNotFit) {
    const std::string text =
        edited(plain20, {{"101.0   51.25   2.67", "101.0,7-8 x 51.25   2.67 9"}, {"100.5 -999.25", "100.5 \t-999.25"}});
    EXPECT_NE(mended(text).find("101.0,7-8 x 51.25   2.67 9\r\n"), npos) << mended(text);
}

}  // namespace
}  // namespace welvane::test
