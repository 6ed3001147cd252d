#include "texttools/search_replace.h"

#include <random>

#include "shared/text.h"
#include "support/app_fixture.h"
#include "texttools/search_command.h"

namespace welvane {
namespace {

struct SearchReplace : test::AppTest {
    std::string replaced(const std::string& bytes, const std::string& search, const std::string& replacement) {
        const std::string source = folder.write("source.las", bytes);
        const SearchReplaceResult result =
            searchReplaceFile(app, source, folder.path("target.las"), search, replacement);
        EXPECT_TRUE(result.done) << result.why;
        return folder.read("target.las");
    }
};

TEST_F(SearchReplace, replacesFromTheStartWithoutRegardToCase) {
    struct Case {
        const char *name, *bytes, *search, *replacement, *expected;
    };
    for (const Case& row : {
             Case{"line ends", "a\r\nb\r\n", "\r\n", "\n", "a\nb\n"},
             Case{"a byte to two", "a\nb\n", "\n", "\r\n", "a\r\nb\r\n"},
             Case{"a byte removed", "1,2,,3", ",", "", "123"},
             Case{"either case", "Gr gR GR x", "gr", "NPHI", "NPHI NPHI NPHI x"},
             Case{"a letter in either case", "aAbB", "A", "<long text>", "<long text><long text>bB"},
             Case{"none overlapping", "aaaaa", "AA", "b", "bba"},
             Case{"every occurrence, also behind a CR", "a\r\nb\n", "\n", "\r\n", "a\r\r\nb\r\n"},
             Case{"letters around a plain character", "xA.by a.Bz", "a.b", "-", "x-y -z"},
             Case{"a failed start holds the next one", "ababac ababab", "ababac", "!", "! ababab"},
             Case{"the replacement is not searched", "ab", "b", "bb", "abb"},
             Case{"absent", "abc", "xyz", "!", "abc"},
             Case{"longer than the file", "abc", "abcd", "!", "abc"},
             Case{"an unfinished match at the end", "abcab", "abc", "!", "!ab"},
             Case{"nothing searched", "abc", "", "!", "abc"},
             Case{"an empty file", "", "a", "!", ""},
             Case{"letters beyond ASCII keep their case", "\xE9\xC9", "\xE9", "e", "e\xC9"},
         }) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(replaced(row.bytes, row.search, row.replacement), row.expected);
    }
    EXPECT_EQ(app.run.statusText, "Doing Search and Replace. Please Wait...");
}

TEST_F(SearchReplace, largeFilesAreWorkedOnAsOneText) {
    // Few different letters, so that matches, near matches and block borders meet often; against the plain whole-text
    // replacement.
    const unsigned seed = 20240611;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string bytes;
    for (int piece = 0; piece < 300000; ++piece) bytes += "aAb \r\n"[random() % 6];
    const std::size_t border = std::size_t{256} << 10;
    bytes.replace(border - 3, 6, "abcdef");
    for (const auto& [search, replacement] : std::vector<std::pair<std::string, std::string>>{{"a", "x"},
                                                                                              {"\n", "\r\n"},
                                                                                              {" ", ""},
                                                                                              {"b", "123456789"},
                                                                                              {"\r\n", "\n"},
                                                                                              {"abcdef", "-"},
                                                                                              {"aab", "ab"},
                                                                                              {"a a", ""}}) {
        SCOPED_TRACE(search);
        EXPECT_TRUE(replaced(bytes, search, replacement) == replaceAll(bytes, search, replacement));
    }
    std::string sparse(2 * border, 'x');
    sparse[border] = sparse[5] = '\n';
    EXPECT_TRUE(replaced(sparse, "\n", "\r\n") == replaceAll(sparse, "\n", "\r\n"));
}

TEST_F(SearchReplace, failuresLeaveNoTarget) {
    const std::string source = folder.write("source.las", "abc");
    const std::string target = folder.write("target.las", "old");
    EXPECT_FALSE(searchReplaceFile(app, folder.path("absent.las"), target, "a", "b"));
    EXPECT_FALSE(searchReplaceFile(app, source, folder.path("no/such/folder/t.las"), "a", "b"));
    EXPECT_FALSE(searchReplaceFile(app, folder.path(), target, "a", "b")) << "a folder as source";
    app.run.cancelRequested = true;
    const SearchReplaceResult cancelled = searchReplaceFile(app, source, target, "a", "b");
    EXPECT_TRUE(cancelled.cancelled);
    EXPECT_EQ(folder.read("target.las"), "old");
    app.run.cancelRequested = false;
    EXPECT_TRUE(searchReplaceFile(app, source, source, "a", "xyz")) << "onto itself";
    EXPECT_EQ(folder.read("source.las"), "xyzbc");
}

TEST_F(SearchReplace, codesOfAField) {
    struct Case {
        const char *field, *bytes, *box;
    };
    for (const Case& row : {
             Case{"13 10", "\r\n", nullptr},
             Case{"  65   066 ", "AB", nullptr},
             Case{"", "", nullptr},
             Case{"65.2 66:", "AB", nullptr},
             Case{"65,66", nullptr, "INVALID CHARACTERS"},
             Case{"x", nullptr, "INVALID CHARACTERS"},
             Case{"-1", nullptr, "INVALID CHARACTERS"},
             Case{"13;10", nullptr, "INVALID CHARACTERS"},
             Case{"0", nullptr, "INVALID ASCII CODES"},
             Case{"/", nullptr, "INVALID ASCII CODES"},
             Case{"256", nullptr, "INVALID ASCII CODES"},
             Case{"99999999999999999999", nullptr, "INVALID ASCII CODES"},
         }) {
        SCOPED_TRACE(row.field);
        if (row.box != nullptr) user.willAnswer(Answer::Ok);
        const auto bytes = bytesOfCodes(app, row.field);
        ASSERT_EQ(bytes.has_value(), row.box == nullptr);
        if (bytes) {
            EXPECT_EQ(*bytes, row.bytes);
        } else {
            EXPECT_EQ(user.asked().back().title, row.box);
        }
    }
    EXPECT_EQ(user.asked().front().text,
              "Only the space and numbers (0-9) are legal characters when using ASCII codes");
    EXPECT_EQ(user.asked().back().text, "All ASCII code numbers must be between 1-255");
}

}  // namespace
}  // namespace welvane
