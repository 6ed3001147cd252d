#include "shared/text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "shared/field_splitter.h"
#include "shared/line_reader.h"

namespace welvane {
namespace {

TEST(Text, comparisonIgnoresAsciiCaseOnly) {
    EXPECT_TRUE(sameText("Depth", "dEPTH"));
    EXPECT_FALSE(sameText("DEPT", "DEPTH"));
    EXPECT_FALSE(sameText("\xE9", "\xC9")) << "bytes beyond ASCII are no letters";
    EXPECT_FALSE(sameText("[", "{")) << "only letters have a case";
    EXPECT_TRUE(lessText("abc", "ABD"));
    EXPECT_FALSE(lessText("ABC", "abc"));
    EXPECT_TRUE(lessText("z", "\x80"));
    EXPECT_TRUE(beginsWith("~Well Information", "~w"));
    EXPECT_FALSE(beginsWith("~", "~W"));
    EXPECT_TRUE(endsWith("a.LAS", ".las"));
    EXPECT_FALSE(endsWith("las", "a.las"));
}

TEST(Text, find) {
    struct Case {
        const char* name;
        std::string_view text, part;
        std::size_t from, place;
    };
    for (const Case& test : std::vector<Case>{{"at the start", "Null", "nu", 0, 0},
                                              {"at the end", "a null", "NULL", 0, 2},
                                              {"behind a first one", "abab", "AB", 1, 2},
                                              {"absent", "abc", "d", 0, npos},
                                              {"part longer than text", "ab", "abc", 0, npos},
                                              {"empty part", "ab", "", 2, 2},
                                              {"from behind the end", "ab", "a", 9, npos}})
        EXPECT_EQ(findText(test.text, test.part, test.from), test.place) << test.name;
    EXPECT_TRUE(holdsText("G/C3", "g/c"));
}

TEST(Text, trimTakesBlanksOnly) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim(" \ta\t "), "\ta\t");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trimLeft(" a "), "a ");
    EXPECT_EQ(trimRight(" a "), " a");
    EXPECT_EQ(trimBreaks(" \t\r\na\r\n"), "a");
    EXPECT_EQ(trimBreaks("\r\n"), "");
}

TEST(Text, changes) {
    EXPECT_EQ(upper("us/f \xE9"), "US/F \xE9");
    EXPECT_EQ(replaceAll("aAa", "AA", "b"), "ba") << "no overlap";
    EXPECT_EQ(replaceAll("x", "x", "xx"), "xx") << "what was put in is not looked at again";
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    std::string tabs = "\ta\t";
    tabsToBlanks(tabs);
    EXPECT_EQ(tabs, " a ");
    EXPECT_EQ(withoutChar("a-b-", '-'), "ab");
    EXPECT_EQ(rightAligned("12", 4), "  12");
    EXPECT_EQ(rightAligned("12345", 3), "345");
    EXPECT_EQ(split("a||b", '|'), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(split("", '|'), std::vector<std::string>{""});
    EXPECT_EQ(join({"a", "", "b"}, "|"), "a||b");
    EXPECT_EQ(join({}, "|"), "");
}

TEST(FieldSplitter, cutsOnItsSeparators) {
    struct Case {
        const char* name;
        const char* separators;
        std::string_view text;
        std::vector<std::string_view> fields;
    };
    for (const Case& test : std::vector<Case>{{"runs of blanks count as one", " ", "  1  2 3 ", {"1", "2", "3"}},
                                              {"blank and tab", " \t", "1 \t 2", {"1", "2"}},
                                              {"a tab is no blank", " ", "1\t2 3", {"1\t2", "3"}},
                                              {"empty fields count", ",", ",a,,b,", {"", "a", "", "b", ""}},
                                              {"no separator inside", "|", "abc", {"abc"}},
                                              {"empty text", ",", "", {}},
                                              {"blanks only", " ", "   ", {}}}) {
        FieldSplitter splitter(test.separators);
        splitter.setText(test.text);
        ASSERT_EQ(splitter.count(), test.fields.size()) << test.name;
        for (std::size_t index = 0; index < test.fields.size(); ++index)
            EXPECT_EQ(splitter.field(index + 1), test.fields[index]) << test.name;
        EXPECT_EQ(splitter.field(0), "") << test.name;
        EXPECT_EQ(splitter.field(test.fields.size() + 1), "") << test.name;
    }
}

TEST(LineReader, endsLinesAtCrLfAndLoneCr) {
    struct Case {
        const char* name;
        std::string_view bytes;
        std::vector<std::string_view> lines;
        std::vector<std::size_t> starts;
    };
    for (const Case& test :
         std::vector<Case>{{"CR LF", "a\r\nb\r\n", {"a", "b"}, {0, 3}},
                           {"lone CR", "a\rb", {"a", "b"}, {0, 2}},
                           {"lone LF is text", "a\nb\r\n", {"a\nb"}, {0}},
                           {"LF before CR LF stays", "a\n\r\nb", {"a\n", "b"}, {0, 4}},
                           {"CR CR LF is two ends", "a\r\r\nb", {"a", "", "b"}, {0, 2, 4}},
                           {"no end at the end", "a\r\nb", {"a", "b"}, {0, 3}},
                           {"CR as last byte, an LF beyond the text", std::string_view("a\r\n", 2), {"a"}, {0}},
                           {"empty lines", "\r\n\r\n", {"", ""}, {0, 2}},
                           {"empty text", "", {}, {}}}) {
        LineReader reader(test.bytes);
        std::string_view line;
        for (std::size_t index = 0; index < test.lines.size(); ++index) {
            EXPECT_EQ(reader.position(), test.starts[index]) << test.name;
            ASSERT_TRUE(reader.next(line)) << test.name;
            EXPECT_EQ(line, test.lines[index]) << test.name;
        }
        EXPECT_TRUE(reader.atEnd()) << test.name;
        EXPECT_EQ(reader.position(), test.bytes.size()) << test.name;
        EXPECT_FALSE(reader.next(line)) << test.name;
    }
    LineReader middle("one\r\ntwo\r\n");
    middle.seek(5);
    std::string_view line;
    ASSERT_TRUE(middle.next(line));
    EXPECT_EQ(line, "two");
    middle.seek(99);
    EXPECT_FALSE(middle.next(line));
}

TEST(LineReader, numbersLinesFromOne) {
    const std::string_view bytes = "a\r\nb\rc\nd\r\n";
    const std::vector<std::size_t> numbers = {1, 1, 1, 2, 2, 3, 3, 3, 3, 3};
    for (std::size_t place = 0; place < numbers.size(); ++place)
        EXPECT_EQ(lineNumberAt(bytes, place), numbers[place]) << place;
    EXPECT_EQ(lineNumberAt("", 0), 1U);
}

}  // namespace
}  // namespace welvane
