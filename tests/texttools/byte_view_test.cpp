#include "texttools/byte_view.h"

#include "support/app_fixture.h"

namespace welvane {
namespace {

struct ByteView : test::AppTest {
    ByteViewState view;

    bool open(std::string_view bytes) { return openByteView(view, folder.write("file.las", bytes)); }
};

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

}  // namespace
}  // namespace welvane
