#include "shared/table.h"

#include <gtest/gtest.h>
#include <string>

#include "shared/failure.h"

namespace welvane {
namespace {

std::string rowText(const Table& table, int row) {
    std::string text;
    for (int column = 0; column < table.columns(); ++column) text += table.text(row, column) + "|";
    return text;
}

TEST(Table, keepsCellsWhenResized) {
    Table table(1, 2);
    table.text(0, 1) = "b";
    table.data(0, 1) = "hidden";
    table.setCheck(0, 1, Check::Checked);
    table.setBackColour(0, 1, 7);
    table.resize(3, 3);
    EXPECT_EQ(table.text(0, 1), "b");
    EXPECT_EQ(table.data(0, 1), "hidden");
    EXPECT_TRUE(table.checked(0, 1));
    EXPECT_EQ(table.backColour(0, 1), 7U);
    EXPECT_EQ(table.text(2, 2), "");
    EXPECT_EQ(table.check(2, 2), Check::None);
    table.resize(3, 1);
    table.resize(3, 2);
    EXPECT_EQ(table.text(0, 1), "") << "a cell that was cut off comes back empty";
}

TEST(Table, rowsComeAndGo) {
    Table table;
    EXPECT_EQ(table.addRow({"a", "b"}), 0);
    EXPECT_EQ(table.addRow({"c", "d", "e"}), 1);
    EXPECT_EQ(table.addRow({"f"}), 2);
    table.setRowHidden(2, true);
    EXPECT_EQ(rowText(table, 0), "a|b||") << "widened by the longer row";
    table.removeRow(1);
    EXPECT_EQ(table.rows(), 2);
    EXPECT_EQ(rowText(table, 1), "f|||");
    EXPECT_TRUE(table.rowHidden(1)) << "the hiding moves with its row";
    EXPECT_FALSE(table.rowHidden(0));
    table.clear();
    EXPECT_EQ(table.rows() + table.columns(), 0);
}

TEST(Table, columnsMove) {
    struct Case {
        int from, to;
        const char* row;
    };
    for (const Case& test : {Case{0, 2, "b|c|a|d|"}, Case{3, 1, "a|d|b|c|"}, Case{1, 1, "a|b|c|d|"}}) {
        Table table;
        table.addRow({"a", "b", "c", "d"});
        table.moveColumn(test.from, test.to);
        EXPECT_EQ(rowText(table, 0), test.row) << test.from << " to " << test.to;
    }
}

TEST(Table, refusesWhatIsOutside) {
    Table table(2, 3);
    const Table& constant = table;
    EXPECT_THROW(table.text(2, 0), RunTimeFailure);
    EXPECT_THROW(table.text(0, 3), RunTimeFailure);
    EXPECT_THROW(constant.text(-1, 0), RunTimeFailure);
    EXPECT_THROW(constant.data(0, -1), RunTimeFailure);
    EXPECT_THROW(table.removeRow(2), RunTimeFailure);
    EXPECT_THROW(table.moveColumn(0, 3), RunTimeFailure);
    EXPECT_THROW(table.setRowHidden(-1, true), RunTimeFailure);
    EXPECT_THROW(table.resize(-1, 1), RunTimeFailure);
    try {
        table.text(9, 9);
    } catch (const RunTimeFailure& failure) {
        EXPECT_STREQ(failure.what(), "subscript out of range");
    }
}

TEST(Failures, stepsAreDroppedAndCounted) {
    FailureList failures;
    int reached = 0;
    EXPECT_TRUE(attempt(failures, "fine", [&] { ++reached; }));
    for (std::size_t step = 0; step < 2 * FailureList::kept; ++step)
        EXPECT_FALSE(attempt(failures, "bad", [&] {
            Table().text(0, 0) = "x";
            ++reached;
        }));
    EXPECT_EQ(reached, 1);
    EXPECT_EQ(failures.count, 2 * FailureList::kept);
    ASSERT_EQ(failures.first.size(), FailureList::kept) << "the rest is counted, not kept";
    EXPECT_EQ(failures.first[0].what, "bad");
    EXPECT_EQ(failures.first[0].why, "subscript out of range");
}

}  // namespace
}  // namespace welvane
