#include "shared/files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "support/temp_folder.h"

namespace welvane {
namespace {

TEST(Files, partsOfPaths) {
    struct Case {
        const char *path, *folder, *name, *renamed;
    };
    for (const Case& test :
         {Case{"/data/a.las", "/data/", "a.las", "/data/a.txt"},
          Case{"C:\\logs\\a.b.las", "C:\\logs\\", "a.b.las", "C:\\logs\\a.b.txt"}, Case{"a.las", "", "a.las", "a.txt"},
          Case{"dir.d/name", "dir.d/", "name", "dir.d/name.txt"}, Case{"/data/", "/data/", "", "/data/.txt"}}) {
        EXPECT_EQ(dirOf(test.path), test.folder);
        EXPECT_EQ(fileNameOf(test.path), test.name);
        EXPECT_EQ(changeExtension(test.path, "txt"), test.renamed);
    }
    EXPECT_EQ(withBackslash("/data"), "/data/");
    EXPECT_EQ(withBackslash("C:\\logs\\"), "C:\\logs\\");
    EXPECT_EQ(withBackslash(""), "");
}

TEST(Files, backslashStandsForSlashUnlessSuchAFileExists) {
    const test::TempFolder folder;
    folder.write("sub.las", "12345");
    const std::string odd = folder.write("odd\\name", "1");
    std::string other = folder.path("sub.las");
    other[other.rfind('/')] = '\\';
    EXPECT_EQ(resolvePath(other), folder.path("sub.las"));
    EXPECT_EQ(resolvePath(odd), odd);
    EXPECT_TRUE(fileExists(other));
    EXPECT_EQ(fileSize(other), 5U);
    EXPECT_TRUE(samePath(other, folder.path("sub.las")));
}

TEST(Files, tellsFilesFromFolders) {
    const test::TempFolder folder;
    const std::string file = folder.write("a", "");
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(folderExists(file));
    EXPECT_TRUE(folderExists(folder.path()));
    EXPECT_FALSE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(""));
    EXPECT_FALSE(folderExists(""));
    EXPECT_FALSE(fileExists(folder.path("absent")));
    EXPECT_EQ(fileSize(file), 0U);
    EXPECT_FALSE(fileSize(folder.path("absent")).has_value());
    EXPECT_FALSE(fileSize(folder.path()).has_value());
}

TEST(Files, samePathFollowsLinksAndTexts) {
    const test::TempFolder folder;
    const std::string file = folder.write("a", "x");
    std::filesystem::create_symlink(file, folder.path("link"));
    EXPECT_TRUE(samePath(file, folder.path("link")));
    EXPECT_TRUE(samePath(folder.path("new"), folder.path("./new"))) << "neither exists";
    EXPECT_FALSE(samePath(file, folder.path("b")));
    EXPECT_FALSE(samePath(file, folder.write("c", "x")));
}

TEST(Files, copyAndRemove) {
    const test::TempFolder folder;
    const std::string file = folder.write("a", std::string("x\0\r\n", 4));
    folder.write("b", "a longer text before");
    EXPECT_TRUE(copyFile(file, folder.path("b")));
    EXPECT_EQ(folder.read("b"), std::string("x\0\r\n", 4));
    EXPECT_FALSE(copyFile(folder.path("absent"), folder.path("b")));
    EXPECT_FALSE(copyFile(file, folder.path("no/such/folder")));
    EXPECT_FALSE(copyFile(file, file)) << "a file over itself is refused, not emptied";
    EXPECT_EQ(folder.read("a").size(), 4U);
    EXPECT_TRUE(removeFile(file));
    EXPECT_FALSE(removeFile(file));
}

}  // namespace
}  // namespace welvane
