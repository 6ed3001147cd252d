#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "fuzz/targets.h"
#include "support/temp_folder.h"

namespace welvane::fuzz {

/// A target prints as its name, and so do the tests that are made of it.
void PrintTo(const Target& target, std::ostream* out) {
    *out << target.name;
}

namespace {

class Replay : public ::testing::TestWithParam<Target> {};

/// Everything that was once found is kept as a seed, so none of it comes back; the sanitizers see what a plain run does
/// not, and CTest ends one that hangs.
TEST_P(Replay, everySeedIsSwallowed) {
    const std::filesystem::path seeds =
        std::filesystem::path(WELVANE_SOURCE_DIR) / "tests/fuzz/seeds" / GetParam().name;
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(seeds)) {
        SCOPED_TRACE(entry.path().string());
        const std::string bytes = test::TempFolder::readFile(entry.path().string());
        EXPECT_NO_THROW(GetParam().run(bytes));
        // Cut at every place where a line ends, as a broken copy would be.
        for (std::size_t end = bytes.find('\r'); end != std::string::npos; end = bytes.find('\r', end + 1)) {
            EXPECT_NO_THROW(GetParam().run(std::string_view(bytes).substr(0, end))) << "cut to " << end << " bytes";
        }
        ++count;
    }
    EXPECT_GE(count, 2U) << "seeds of " << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(Targets, Replay, ::testing::ValuesIn(targets()),
                         [](const auto& made) { return std::string(made.param.name); });

}  // namespace
}  // namespace welvane::fuzz
