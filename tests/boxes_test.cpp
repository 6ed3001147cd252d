#include <filesystem>
#include <gtest/gtest.h>
#include <set>

#include "support/known_prompts.h"

namespace welvane::test {
namespace {

std::string metFile;

/// The tests before this one kept which boxes they met; the next ones begin anew.
TEST(Boxes, EachIsMetByATest) {
    std::set<std::size_t> met;
    std::ifstream lines(metFile);
    for (std::size_t row = 0; lines >> row;) met.insert(row);
    for (std::size_t row = 0; row < std::size(knownPrompts); ++row)
        EXPECT_TRUE(met.contains(row)) << "no test meets \"" << knownPrompts[row].title
                                       << "\": " << knownPrompts[row].text;
    lines.close();
    std::filesystem::remove(metFile);
}

}  // namespace
}  // namespace welvane::test

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (count > 1) welvane::test::metFile = arguments[1];
    return RUN_ALL_TESTS();
}
