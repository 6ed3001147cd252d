#include "platform/mapped_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "support/temp_folder.h"

namespace welvane {
namespace {

TEST(MappedFile, givesTheBytesAsTheyStand) {
    const test::TempFolder folder;
    const std::string path = folder.write("a.las", std::string("one\r\n\0two", 9));
    const auto file = MappedFile::open(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->bytes(), std::string_view("one\r\n\0two", 9));
    EXPECT_FALSE(file->damaged());

    const auto empty = MappedFile::open(folder.write("empty", ""));
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->bytes(), "");
    std::filesystem::create_directory(folder.path("sub"));
    folder.write("sub/b.las", "b");
    EXPECT_TRUE(MappedFile::open(folder.path() + "sub\\b.las")) << "a backslash separates folders too";
}

TEST(MappedFile, refusesWhatIsNoRegularFile) {
    const test::TempFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    folder.write("closed", "x");
    ASSERT_EQ(chmod(folder.path("closed").c_str(), 0), 0);
    struct Case {
        const char* name;
        std::string path, why;
    };
    std::vector<Case> cases = {{"absent", folder.path("none"), "No such file or directory"},
                               {"folder", folder.path(), "Is a directory"},
                               {"pipe", folder.path("pipe"), "Not a regular file"},
                               {"device", "/dev/zero", "Not a regular file"},
                               {"no name", "", "No such file or directory"}};
    if (geteuid() != 0) cases.push_back({"no right", folder.path("closed"), "Permission denied"});
    for (const Case& row : cases) {
        std::string why;
        EXPECT_FALSE(MappedFile::open(row.path, &why)) << row.name;
        EXPECT_EQ(why, row.why) << row.name;
    }
}

TEST(MappedFile, aFileCutWhileItIsMappedReadsAsZeros) {
    const test::TempFolder folder;
    constexpr std::size_t pages = 64, page = 4096;
    const std::string path = folder.write("cut.las", std::string(pages * page, 'x'));
    const auto file = MappedFile::open(path);
    const auto whole = MappedFile::open(folder.write("whole.las", std::string(page, 'y')));
    ASSERT_TRUE(file && whole);
    std::filesystem::resize_file(path, page);
    std::size_t kept = 0;
    for (const char c : file->bytes()) kept += c == 'x' ? 1 : c == '\0' ? 0 : pages * page;
    EXPECT_EQ(kept, page);
    EXPECT_TRUE(file->damaged());
    EXPECT_EQ(whole->bytes().front(), 'y');
    EXPECT_FALSE(whole->damaged()) << "only the cut file is marked";
}

TEST(MappedFile, manyAtATimeAndAgain) {
    const test::TempFolder folder;
    const std::string path = folder.write("a", "abc");
    for (int round = 0; round < 5; ++round) {
        std::vector<MappedFile> files;
        for (int number = 0; number < 100; ++number) {
            auto file = MappedFile::open(path);
            ASSERT_TRUE(file) << round << " " << number;
            files.push_back(std::move(*file));
        }
        EXPECT_EQ(files.back().bytes(), "abc");
    }
}

}  // namespace
}  // namespace welvane
