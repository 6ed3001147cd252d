#include "models/byte_pages.h"

#include "models/byte_grid.h"
#include "support/app_fixture.h"

namespace welvane {
namespace {

struct BytePages : test::AppTest {
    ByteViewState view;

    bool open(std::string_view bytes) { return openByteView(view, folder.write("file.las", bytes)); }
};

TEST_F(BytePages, pagesFilesOfEveryLength) {
    struct Case {
        std::size_t length;
        std::uint64_t pages, lastStart, lastLength;
    };
    for (const Case& row : {Case{0, 0, 0, 0}, Case{1, 1, 0, 1}, Case{399, 1, 0, 399}, Case{400, 1, 0, 400},
                            Case{401, 2, 400, 1}, Case{1000, 3, 800, 200}}) {
        SCOPED_TRACE(row.length);
        ASSERT_TRUE(open(std::string(row.length, 'x')));
        EXPECT_EQ(view.pageCount(), row.pages);
        while (nextPage(view)) {
        }
        EXPECT_EQ(view.pageStart, row.lastStart);
        EXPECT_EQ(view.pageLength(), row.lastLength);
        while (previousPage(view)) {
        }
        EXPECT_EQ(view.pageStart, 0U);
        EXPECT_FALSE(goToPage(view, 0));
        EXPECT_FALSE(goToPage(view, row.pages + 1));
        EXPECT_EQ(goToPage(view, row.pages), row.pages > 0);
    }
    EXPECT_FALSE(openByteView(view, folder.path("absent.las")));
    EXPECT_FALSE(openByteView(view, folder.path())) << "a folder";
    EXPECT_TRUE(view.bytes.empty());
}

TEST_F(BytePages, cellsShowTextAndCodesAndPaintIsolatedLineFeeds) {
    ASSERT_TRUE(open(std::string("\nA \x7F\xE9\t\r\n\n", 9)));
    const Table asd = fillAsd(view);
    const std::vector<std::string> codes = {"010", "065", "032", "127", "233", "009", "013", "010", "010"};
    const std::vector<std::string> texts = {"", "A", " ", "\x7F", "", "", "", "", ""};
    ASSERT_EQ(asd.columns(), 9);
    for (int column = 0; column < 9; ++column) {
        SCOPED_TRACE(column);
        const auto at = static_cast<std::size_t>(column);
        EXPECT_EQ(asd.text(AsdRow::Text, column), texts[at]);
        EXPECT_EQ(asd.text(AsdRow::Code, column), codes[at]);
        EXPECT_EQ(asd.backColour(1, column), column == 0 || column == 8 ? badEndColour : 0U);
    }
    EXPECT_EQ(view.tag(), "Text or Ascii codes for: " + folder.path("file.las"));
}

TEST_F(BytePages, blockOfTwentyInARowTellsEachByte) {
    ASSERT_TRUE(open(std::string(400, 'x') + std::string(20, 'y') + "A\n"));
    ASSERT_TRUE(nextPage(view));
    ByteGrid grid(view);
    EXPECT_EQ(grid.rows(), 3) << "heads, a full row, and the rest";
    EXPECT_EQ(grid.text(2, 0), "420");
    EXPECT_EQ(grid.text(2, 1), "A");
    EXPECT_EQ(grid.hint(2, 1), "Byte 420: Printable character is A");
    EXPECT_EQ(grid.backColour(2, 2), badEndColour);
    EXPECT_EQ(grid.text(2, 3) + grid.hint(2, 3) + grid.hint(0, 1) + grid.hint(2, 0), "") << "no byte there";
    grid.showCodes(true);
    EXPECT_EQ(grid.text(2, 2), "010");
    EXPECT_FALSE(grid.mayEdit(2, 2));
}

TEST_F(BytePages, lineEndAcrossThePageBorderIsNoDefect) {
    ASSERT_TRUE(open(std::string(399, 'x') + "\r\n" + std::string(10, 'y')));
    ASSERT_TRUE(nextPage(view));
    EXPECT_FALSE(isolatedLineFeed(view, 0));
}

TEST_F(BytePages, hintsTellWhatACodeIs) {
    EXPECT_EQ(cellHint(' '), "Printable character is Space");
    EXPECT_EQ(cellHint('~'), "Printable character is ~");
    EXPECT_EQ(cellHint('\t'), "Control character is TAB");
    EXPECT_EQ(cellHint(13), "Control character is 13");
    EXPECT_EQ(cellHint(128), "Un-printable");
}

TEST_F(BytePages, movesTwoHundredBytesBehindTheLineFeed) {
    ASSERT_TRUE(open(std::string(100, 'x') + "\n" + std::string(1000, 'y')));
    user.willAnswer(Answer::No);
    EXPECT_FALSE(findBadTermination(app, view));
    EXPECT_EQ(view.pageStart, 0U);
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(findBadTermination(app, view));
    EXPECT_EQ(view.pageStart, 300U);
    EXPECT_EQ(box(1),
              "Bad Termination Found: Isolated Line Feed (ASCII 10) found at byte 100. Move grid to this position? "
              "(look for red cells)");
    EXPECT_EQ(user.asked()[1].icon, Icon::Stop);
    EXPECT_EQ(user.asked()[1].buttons, Buttons::YesNo);

    ASSERT_TRUE(open("a\r\n"));
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(findBadTermination(app, view));
    EXPECT_EQ(box(2), "Termination Okay: No Isolated Line Feeds (ASCII 10) found.");

    ASSERT_TRUE(open(std::string(500, 'x') + "\n"));
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(findBadTermination(app, view));
    EXPECT_EQ(view.pageStart, 101U) << "a place behind the end shows the last page";
}

}  // namespace
}  // namespace welvane
