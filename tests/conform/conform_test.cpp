#include <gtest/gtest.h>
#include <set>

#include "conform/breaches.h"
#include "support/temp_folder.h"

namespace welvane::test {
namespace {

/// What a reader of the standard calls lawful, or leaves open.
const std::vector<Breach> lawful = {
    {"", plain20, {}},
    {"", plain12, {}},
    {"", plain30, {}},
    {"", wrapped20, {}},
    {"", plain20, {{"VERS. 2.0", "VERS. 2.00"}, {"STRT.M 100.0", "STRT.M 100.0000"}, {"STEP.M 0.5", "STEP.M +.50"}}},
    {"", plain20, {{"NULL. -999.25", "NULL. -999.2500"}}},
    {"", plain20, {{"~Version", "# a comment\n~V of anything"}, {"~Curve", "#\n~C"}, {"~A", "~A  DEPTH GR RHOB"}}},
    {"", plain20, {{"~Curve", "~Tops\nno dot, no colon\n\n~Curve"}}},
    {"", plain20, {{"~Curve", "~Other\nno dot, no colon\n\nmore\n~Curve"}}},
    {"", plain20, {{"LOC. 12-34", "LOC. 12:34:56"}}},
    {"", plain20, {{"WELL. A-1 : WELL", "WELL. WELL : WELL"}}},
    {"",
     plain20,
     {{"PROV. ALBERTA : PROVINCE", "STAT. TEXAS : STATE"}, {"UWI. 100123401234W500", "API. 42-123-45678"}}},
    {"", plain20, {{"2.68\n", "2.68\n\n\n"}}},
    {"", plain20, {{"2.68\n", "2.68"}}},
    {"", plain20, {{"~Well", "DLM. SPACE : DELIMITER\n~Well"}}},
    {"", plain12, {{"~Curve", "\"# a comment\n~Curve"}}},
    {"", plain12, {{"STRT.M 101.0", "STRT. M 101.0"}}},
    {"",
     wrapped20,
     {{"   50.25   2.65\n", "   50.25\n          2.65\n"},
      {"   51.25   2.66\n", "   51.25\n          2.66\n"},
      {"   52.25   2.67\n", "   52.25\n          2.67\n"},
      {"   53.25   2.68\n", "   53.25\n          2.68\n"}}},
};

TEST(Conform, FindsWhatIsBrokenAndNothingElse) {
    std::set<std::string> seen = {"F001", "F006", "F007"};
    for (const std::vector<Breach>* const table : {&breaches(), &lawful})
        for (const Breach& one : *table) {
            const std::string text = edited(one.base, one.edits);
            ASSERT_FALSE(text.empty()) << one.rules << ": an edit found nothing";
            EXPECT_EQ(brokenRules(judged(text)), one.rules) << text;
            for (const std::string& rule : split(one.rules, ' ')) seen.insert(rule);
        }
    for (const ConformRule& rule : conformRules()) EXPECT_TRUE(seen.count(std::string(rule.id))) << rule.id;
}

TEST(Conform, LineEndsAndNames) {
    struct Case {
        const char *rules, *end, *name, *what;
    };
    for (const Case& one : {Case{"", "\r\n", "a.LAS", ""}, Case{"F001", "\r\n", "a.txt", ""},
                            Case{"F006", "\n", "a.las", "25 lines end in LF alone"},
                            Case{"F007", "\r", "a.las", "25 lines end in CR alone"},
                            Case{"F006", "\r\r\n", "a.las", "line ends are mixed: 0 CR LF, 0 LF, 0 CR, 25 CR CR LF"}}) {
        const std::string text = replaceAll(plain20, "\n", one.end);
        const Judgement judged = judgeText(text, {.name = one.name});
        EXPECT_EQ(brokenRules(judged), one.rules);
        if (*one.what != '\0') {
            EXPECT_EQ(judged.findings.sorted().front().what, one.what);
        }
    }
    const Judgement mixed = judged(edited(plain20, {}) + "# one\n");
    EXPECT_EQ(mixed.findings.sorted().front().place.line, 26U);
    EXPECT_EQ(brokenRules(judged(replaceAll(plain30, "\n", "\n"))), "");
}

TEST(Conform, TellsPlaceTextAndWeight) {
    struct Case {
        const std::string& base;
        Edits edits;
        std::size_t line, column;
        Severity severity;
        const char *text, *what;
    };
    for (const Case& one : std::vector<Case>{
             {plain20,
              {{"STRT.M 100.0", "STRT.M 99.5"}},
              5,
              8,
              Severity::Error,
              "STRT.M 99.5 : START",
              "STRT is 99.5, the first index 100.0"},
             {plain12,
              {{"STRT.M 101.0", "STRT.M 102.0"}},
              5,
              8,
              Severity::Warning,
              "STRT.M 102.0 : START",
              "STRT is 102.0, the first index 101.0"},
             {plain20,
              {{"-999.25   2.66", "-999.25   ERR."}},
              23,
              17,
              Severity::Error,
              "ERR.",
              "a value that is no number"},
             {plain20,
              {{"WRAP. NO", "WRAP. no"}},
              3,
              7,
              Severity::Hint,
              "WRAP. no : ONE LINE PER DEPTH STEP",
              "WRAP in small letters"},
             {plain20,
              {{"STRT.M", "STRT.m"}},
              5,
              6,
              Severity::Warning,
              "STRT.m 100.0 : START",
              "STRT is in m, the index in M"},
             {plain20,
              {{"101.0   51.25   2.67\n", ""}},
              24,
              1,
              Severity::Error,
              "101.5   52.25   2.68",
              "STEP is 0.5, the spacing here is 1"},
             {wrapped20,
              {{"51.25   2.66", "51.25"}},
              24,
              1,
              Severity::Error,
              "100.5",
              "a step of 2 values, ~Curve has 3 lines"},
         }) {
        const std::string text = edited(one.base, one.edits);
        const std::vector<Finding> found = judged(text).findings.sorted();
        ASSERT_EQ(found.size(), 1U) << text;
        EXPECT_EQ(found[0].place.line, one.line) << one.what;
        EXPECT_EQ(found[0].place.column, one.column) << one.what;
        EXPECT_EQ(found[0].severity, one.severity) << one.what;
        EXPECT_EQ(found[0].text, one.text);
        EXPECT_EQ(found[0].what, one.what);
    }
}

TEST(Conform, KeepsNoMoreThanItsLimitOfBadLines) {
    std::string text = edited(plain20, {});
    for (int row = 0; row < 5000; ++row) text += "ERR 12 1-2 9\r\n\r\n";
    const Findings found = judged(text, 3).findings;
    EXPECT_EQ(found.count(Rule::D004), 5000U);
    EXPECT_EQ(found.count(Rule::D003), 5000U);
    EXPECT_EQ(found.notKept(Rule::D008), 4997U);
    EXPECT_LT(found.sorted().size(), 20U);
    for (const Finding& one : found.sorted())
        if (one.rule == Rule::S012) {
            EXPECT_EQ(one.count, 4999U);
        }
}

TEST(Conform, LivesThroughGarbage) {
    const std::string whole = edited(plain20, {}), wrapped = edited(wrapped20, {}), third = edited(plain30, {});
    for (const std::string* const text : {&whole, &wrapped, &third})
        for (std::size_t length = 0; length < text->size(); ++length) {
            (void)judged(std::string_view(*text).substr(0, length));
            std::string flipped = *text;
            flipped[length] = static_cast<char>(flipped[length] ^ (1 << (length % 8)));
            (void)judged(flipped);
        }
    for (const std::string_view text :
         {"", "~", "~A", "~A\n~C\n~A", "\xFF\xFE~\0V", "\x1A", "~V\n.\n:\n~W\n.:\n~C\n:.\n~A\n-\n.\n,\n", "~3\n|"})
        (void)judged(text);
}

/// What docs/conform.md says of one rule.
std::string documented(const ConformRule& rule) {
    std::string row = "| " + std::string(rule.id) + " |";
    for (const StandardVersion version : {StandardVersion::V12, StandardVersion::V20, StandardVersion::V30})
        row += " " + std::string(severityText(rule.in(version))) + " |";
    return row + " " + std::string(rule.what) + " | " + std::string(rule.why) + " | " + std::string(rule.mend) + " |";
}

TEST(Conform, ItsPageTellsTheTable) {
    std::string rows;
    for (const ConformRule& rule : conformRules()) rows += documented(rule) + "\n";
    const std::string page = TempFolder::readFile(std::string(WELVANE_SOURCE_DIR) + "/docs/conform.md");
    const std::string head = "|---|---|---|---|---|---|---|\n";
    ASSERT_NE(page.find(head), npos);
    EXPECT_EQ(page.substr(page.find(head) + head.size()), rows) << "the page holds another table";
}

}  // namespace
}  // namespace welvane::test
