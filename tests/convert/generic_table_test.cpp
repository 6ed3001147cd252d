#include "convert/generic_table.h"

#include <gtest/gtest.h>

#include "convert/load_table.h"
#include "shared/failure.h"
#include "support/memory_platform.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

struct Grd : testing::Test {
    test::ScriptedInterface user;
    test::MemoryPlatform platform;
    App app{user, platform};
    test::TempFolder folder;
    GenericTable grd;

    TableLoadResult load(std::string_view text) { return loadTable(app, folder.write("table.txt", text), {}, grd); }
    std::string column(int number) const {
        std::string text;
        for (std::int64_t row = grdHeadRows; row < grd.rows(); ++row) text += grd.cell(row, number) + " ";
        return text;
    }
};

TEST_F(Grd, hasFourHeadingRowsOverTheData) {
    ASSERT_TRUE(load("Depth (m),RT (OHM.M),X\n1,inf,3\n2,-5,NaN\n").done);
    ASSERT_EQ(grd.columns(), 4);
    ASSERT_EQ(grd.rows(), 6);
    const std::vector<std::vector<std::string>> expected = {{"Channels-->", "Chan #1", "Chan #2", "Chan #3"},
                                                            {"Name", "DEPT", "RT", "X"},
                                                            {"Unit", "M", "OHMM", ""},
                                                            {"Use?", "1", "1", "1"},
                                                            {"", "1", "-999.25", "3"},
                                                            {"", "2", "-5", "-999.25"}};
    for (int row = 0; row < 6; ++row)
        for (int at = 0; at < 4; ++at)
            EXPECT_EQ(grd.cell(row, at), expected[static_cast<std::size_t>(row)][static_cast<std::size_t>(at)])
                << row << "," << at;
    for (const auto& [row, at] : std::vector<std::pair<int, int>>{{6, 1}, {-1, 1}, {4, 4}, {4, -1}})
        EXPECT_THROW(grd.cell(row, at), RunTimeFailure);
}

TEST_F(Grd, linesOfAnotherWidthAreSkippedAndToldOnce) {
    user.willAnswer(Answer::Ok);
    const TableLoadResult result = load("D,A\n1,2\n2\n\n3,4,5\n   \n4,5\n");
    EXPECT_EQ(result.skipped, 2);
    EXPECT_EQ(result.dataLine, 2U);
    EXPECT_EQ(column(1), "1 4 ");
    ASSERT_EQ(user.asked().size(), 1U);
    EXPECT_EQ(user.asked()[0].title, "Lines Skipped!");
    EXPECT_EQ(user.asked()[0].text,
              "A total of 2 lines were skipped because the number of columns was different from the one specified as "
              "the starting line. Do "
              "not trust this file!");
}

TEST_F(Grd, furtherBlocksOfAReportJoinTheFirst) {
    EXPECT_EQ(
        load("Depth  GR\n=====  ==\n1 2\n2 3\n\nDepth  GR\n=====  ==\n3 4\n\nMeasured Depth  GR\n=====  ==\n4 5\n")
            .skipped,
        0);
    EXPECT_EQ(column(1), "1 2 3 4 ");
}

TEST_F(Grd, badFilesAreRefusedOrEmpty) {
    struct Case {
        const char* name;
        std::string bytes;
        bool done;
        int columns;
        std::int64_t rows;
    };
    const std::string longLine = "1," + std::string(1 << 20, '7');
    std::string wide = "1";
    for (int field = 0; field < 40000; ++field) wide += ",1";
    for (const Case& row :
         {Case{"empty", "", true, 0, 0}, Case{"blank lines", "\n \n\n", true, 0, 0},
          Case{"binary", std::string("1,2\0", 4), false, 0, 0}, Case{"one column", "1\n2\n3\n", true, 2, 7},
          Case{"a line of a megabyte", longLine + "\n" + longLine, true, 3, 6},
          Case{"too many columns", wide + "\n" + wide, false, 0, 0},
          Case{"byte order mark",
               "\xEF\xBB\xBF"
               "1,2\n3,4\n",
               true, 3, 6},
          Case{"heads only", "DEPT,GR\n", true, 3, 5}}) {
        SCOPED_TRACE(row.name);
        grd = {};
        const TableLoadResult result = load(row.bytes);
        EXPECT_EQ(result.done, row.done) << result.why;
        EXPECT_EQ(result.why.empty(), row.done);
        EXPECT_EQ(grd.columns(), row.columns);
        EXPECT_EQ(grd.rows(), row.rows);
    }
    EXPECT_FALSE(loadTable(app, folder.path("absent"), {}, grd).done);
    EXPECT_FALSE(loadTable(app, folder.path(), {}, grd).done) << "a folder";
}

TEST_F(Grd, editsStayWithTheirCells) {
    ASSERT_TRUE(loadTableText(app, "3 c\n1 a\n2 b\n1 A\n", {}, grd).done);
    grd.setCell(5, 2, " edited ");
    grd.setCell(4, 1, "30");
    grd.setCell(4, 1, "20");
    grd.setCell(1, 2, "LITH");
    grd.setCell(2, 2, "FT3/FT3");
    EXPECT_EQ(grd.cell(2, 2), "V/V");
    grd.sortDepth();
    EXPECT_EQ(column(1), "1 1 2 20 ");
    EXPECT_EQ(column(2), "edited A b c ");
    grd.sortDepth(true);
    EXPECT_EQ(column(1), "20 2 1 1 ");
    EXPECT_EQ(column(2), "c b edited A ");
    EXPECT_EQ(grd.lineNumber(0), 1U);
    EXPECT_EQ(grd.lineNumber(2), 2U);
    grd.removeRow(6);
    EXPECT_EQ(column(2), "c b A ");
    grd.dropColumn(1);
    EXPECT_EQ(grd.columns(), 2);
    EXPECT_EQ(column(1), "c b A ");
    EXPECT_EQ(grd.name(1), "LITH");
}

TEST_F(Grd, oneThatWasMovedAwayIsEmpty) {
    load("1 A\n2 b\n");
    const GenericTable taken = std::move(grd);
    grd.sortDepth();  // NOLINT(bugprone-use-after-move): a run has the rows while it works on them
    EXPECT_EQ(grd.dataRows(), 0);
    EXPECT_EQ(taken.dataRows(), 2);
}

TEST_F(Grd, setUpRaisesTheSizeAndNeverLowersIt) {
    grd.setUp(6, 3, "F");
    EXPECT_EQ(grd.rows(), 6);
    EXPECT_EQ(grd.columns(), 3);
    EXPECT_EQ(grd.name(1), "DEPT");
    EXPECT_EQ(grd.unit(1), "F");
    grd.setCell(5, 2, "x");
    grd.setUp(2, 2, "M");
    EXPECT_EQ(grd.rows(), 6);
    EXPECT_EQ(grd.unit(1), "F");
    grd.setUp(7, 4, "M");
    EXPECT_EQ(column(2), " x  ");
    EXPECT_EQ(grd.lineNumber(1), 0U);
}

TEST_F(Grd, loadCanBeCancelled) {
    app.run.cancelRequested = true;
    std::string text;
    for (int row = 0; row < 5000; ++row) text += "1 2\n";
    const TableLoadResult result = load(text);
    EXPECT_TRUE(result.cancelled);
    EXPECT_FALSE(result.done);
    EXPECT_EQ(grd.rows(), 0);
}

}  // namespace
}  // namespace welvane
