#include "shared/distinct_names.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

#include "shared/text.h"

namespace welvane {
namespace {

using Names = std::vector<std::string>;

Names distinct(Names names, FigureRules rules) {
    makeDistinct(names, rules);
    return names;
}

/// Each name held against every other one.
Names pushedPlainly(Names names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = 1; j < names.size(); ++j) {
            std::string& name = names[j];
            if (i == j || !sameText(names[i], name)) continue;
            if (name.size() < 2 || name[name.size() - 2] != '_') {
                name += "_1";
            } else if (isDigit(name.back())) {
                const int next = name.back() - '0' + 1;
                name.pop_back();
                name += std::to_string(next);
            }
        }
    }
    return names;
}

Names equalNames(std::size_t count) {
    Names names(count, "GR");
    names.front() = "DEPT";
    return names;
}

TEST(DistinctNames, asLaidDownAreThoseOfThePlainLoop) {
    const Names endings = {"", "_1", "_8", "_9", "_10", "_X", "_1_1", "_"};
    const Names stems = {"GR", "gr", "A", "", "DEPT"};
    std::mt19937 random(7);
    for (int round = 0; round < 400; ++round) {
        Names names{"DEPT"};
        const std::size_t count = random() % 60;
        for (std::size_t i = 0; i < count; ++i)
            names.push_back(stems[random() % stems.size()] + endings[random() % (1 + random() % endings.size())]);
        EXPECT_EQ(distinct(names, FigureRules::asLaidDown), pushedPlainly(names)) << "round " << round;
    }
    EXPECT_EQ(distinct(equalNames(300), FigureRules::asLaidDown), pushedPlainly(equalNames(300)));
}

TEST(DistinctNames, ofTrueFiguresAreAllDifferentAndFewChange) {
    struct Case {
        Names given, expected;
    };
    const std::vector<Case> cases = {
        {{"DEPT", "GR", "GR", "gr"}, {"DEPT", "GR", "GR_1", "gr_2"}},
        {{"DEPT", "GR", "GR", "GR_1"}, {"DEPT", "GR", "GR_2", "GR_1"}},
        {{"DEPT", "dept"}, {"DEPT", "dept_1"}},
        {{"DEPT", "A_X", "A_X"}, {"DEPT", "A_X", "A_X_1"}},
        {{"DEPT", "A_9", "A_9", "A_9"}, {"DEPT", "A_9", "A_9_1", "A_9_2"}},
        {{}, {}},
    };
    for (const Case& row : cases) EXPECT_EQ(distinct(row.given, FigureRules::trueFigures), row.expected);

    const Names many = distinct(equalNames(4001), FigureRules::trueFigures);
    EXPECT_EQ(std::set<std::string>(many.begin(), many.end()).size(), many.size());
    EXPECT_EQ(many.back(), "GR_3999");
}

}  // namespace
}  // namespace welvane
