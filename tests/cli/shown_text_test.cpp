#include "cli/shown_text.h"

#include <gtest/gtest.h>
#include <string>

namespace welvane {
namespace {

TEST(ShownText, isSafeForATerminal) {
    const std::pair<std::string, std::string> cases[] = {{"plain", "plain"},
                                                         {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F"},
                                                         {"gr\xFC\xDF", "gr\xC3\xBC\xC3\x9F"},
                                                         {"a\tb\nc", "a b\nc"},
                                                         {"\x1B[2J\x07", "?[2J?"},
                                                         {"\xC2\x9B\x31m", "?1m"},
                                                         {"\x9B\x31m", "?1m"},
                                                         {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0?"},
                                                         {std::string("a\0b", 3), "a?b"}};
    for (const auto& [bytes, shown] : cases) EXPECT_EQ(shownText(bytes), shown) << bytes;
    EXPECT_EQ(padded("gr\xC3\xBC\xC3\x9F", 6), "gr\xC3\xBC\xC3\x9F  ");
    EXPECT_EQ(paddedLeft("12", 4), "  12");
    EXPECT_EQ(padded("long", 2), "long");
}

}  // namespace
}  // namespace welvane
