#include "texttools/byte_view.h"

#include <gtest/gtest.h>

#include "support/memory_platform.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

struct ByteView : testing::Test {
    test::ScriptedInterface user;
    test::MemoryPlatform platform;
    App app{user, platform};
    test::TempFolder folder;
    ByteViewState view;

    bool open(std::string_view bytes) { return openByteView(view, folder.write("file.las", bytes)); }
};

TEST_F(ByteView, pagesFilesOfEveryLength) {
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

TEST_F(ByteView, cellsShowTextAndCodesAndPaintIsolatedLineFeeds) {
    ASSERT_TRUE(open(std::string("\nA \x7F\xE9\t\r\n\n", 9)));
    const Table asd = fillAsd(view);
    const std::vector<std::string> codes = {"010", "065", "032", "127", "233", "009", "013", "010", "010"};
    const std::vector<std::string> texts = {"", "A", " ", "\x7F", "", "", "", "", ""};
    ASSERT_EQ(asd.columns(), 9);
    for (int column = 0; column < 9; ++column) {
        SCOPED_TRACE(column);
        const auto at = static_cast<std::size_t>(column);
        EXPECT_EQ(asd.text(static_cast<int>(AsdRow::Text), column), texts[at]);
        EXPECT_EQ(asd.text(static_cast<int>(AsdRow::Code), column), codes[at]);
        EXPECT_EQ(asd.backColour(1, column), column == 0 || column == 8 ? badEndColour : 0U);
    }
    EXPECT_EQ(view.tag(), "Text or Ascii codes for: " + folder.path("file.las"));
}

TEST_F(ByteView, lineEndAcrossThePageBorderIsNoDefect) {
    ASSERT_TRUE(open(std::string(399, 'x') + "\r\n" + std::string(10, 'y')));
    ASSERT_TRUE(nextPage(view));
    EXPECT_FALSE(isolatedLineFeed(view, 0));
}

TEST_F(ByteView, hintsTellWhatACodeIs) {
    EXPECT_EQ(cellHint(' '), "Printable character is Space");
    EXPECT_EQ(cellHint('~'), "Printable character is ~");
    EXPECT_EQ(cellHint('\t'), "Control character is TAB");
    EXPECT_EQ(cellHint(13), "Control character is 13");
    EXPECT_EQ(cellHint(128), "Un-printable");
}

TEST_F(ByteView, rendersAPageForATerminal) {
    ASSERT_TRUE(open("~V\r\nDEPT\nlast line of it\r\n"));
    EXPECT_EQ(
        renderPage(view, true),
        "00000000  126  086  013  010  068  069  080  084  010* 108  097  115  116  032  108  105  |~V..DEPT*last li|"
        "  <- isolated line feed at 8\n"
        "00000010  110  101  032  111  102  032  105  116  013  010                                |ne of it..|\n");
    EXPECT_EQ(renderPage(view, false), "00000000  |~V..DEPT*last line of it..|  <- isolated line feed at 8\n");
}

TEST_F(ByteView, findsEveryIsolatedLineFeed) {
    struct Case {
        std::string bytes;
        std::vector<std::uint64_t> offsets;
    };
    const std::size_t block = std::size_t{1} << 20;
    std::string border(block + 4, 'x');
    border.replace(block - 1, 2, "\r\n");
    std::string broken = border;
    broken[block - 1] = 'x';
    for (const Case& row : {Case{"", {}}, Case{"a\r\nb\rc", {}}, Case{"\n", {0}}, Case{"\r\n\n\n\r\n", {2, 3}},
                            Case{border, {}}, Case{broken, {block}}}) {
        SCOPED_TRACE(row.bytes.substr(0, 20));
        const BadEnds found = findBadEnds(app, folder.write("ends.las", row.bytes));
        EXPECT_TRUE(found.readable);
        EXPECT_EQ(found.count, row.offsets.size());
        EXPECT_EQ(found.offsets, row.offsets);
    }
    const BadEnds many = findBadEnds(app, folder.write("many.las", std::string(5000, '\n')));
    EXPECT_EQ(many.count, 5000U);
    EXPECT_EQ(many.offsets.size(), BadEnds::kept);
    EXPECT_FALSE(findBadEnds(app, folder.path("absent")).readable);
    app.run.cancelRequested = true;
    EXPECT_TRUE(findBadEnds(app, folder.path("many.las")).cancelled);
}

TEST_F(ByteView, movesTwoHundredBytesBehindTheLineFeed) {
    ASSERT_TRUE(open(std::string(100, 'x') + "\n" + std::string(1000, 'y')));
    user.willAnswer(Answer::No);
    EXPECT_FALSE(findBadTermination(app, view));
    EXPECT_EQ(view.pageStart, 0U);
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(findBadTermination(app, view));
    EXPECT_EQ(view.pageStart, 300U);
    EXPECT_EQ(user.asked()[1].title, "Bad Termination Found");
    EXPECT_EQ(user.asked()[1].text,
              "Isolated Line Feed (ASCII 10) found at byte 100. Move grid to this position? (look for red cells)");
    EXPECT_EQ(user.asked()[1].icon, Icon::Stop);
    EXPECT_EQ(user.asked()[1].buttons, Buttons::YesNo);

    ASSERT_TRUE(open("a\r\n"));
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(findBadTermination(app, view));
    EXPECT_EQ(user.asked()[2].title, "Termination Okay");
    EXPECT_EQ(user.asked()[2].text, "No Isolated Line Feeds (ASCII 10) found.");

    ASSERT_TRUE(open(std::string(500, 'x') + "\n"));
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(findBadTermination(app, view));
    EXPECT_EQ(view.pageStart, 101U) << "a place behind the end shows the last page";
}

}  // namespace
}  // namespace welvane
