#include "platform/file_settings.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "support/temp_folder.h"

namespace welvane {
namespace {

TEST(FileSettings, whatIsPutIsGotWhateverTheCaseOfTheKey) {
    const test::TempFolder folder;
    const std::string path = folder.path("a/b/settings.ini");
    FileSettings settings(path);
    EXPECT_EQ(settings.get("country", "Other"), "Other") << "a missing file counts as empty";
    for (const char* value :
         {"Canada", "", " two blanks ", "6|15|60|50|13|5", "a=b;c", "\"quoted\"", "\"", "[Startup]", "C:\\x\\n"}) {
        EXPECT_TRUE(settings.put("fillCVal", value));
        EXPECT_EQ(FileSettings(path).get("FILLCVAL", "default"), value);
    }
    EXPECT_FALSE(settings.put("key", "two\nlines"));
    EXPECT_EQ(settings.get("key", "none"), "none");
}

TEST(FileSettings, keepsWhatItDoesNotKnow) {
    const test::TempFolder folder;
    const std::string path = folder.write(
        "s.ini", "; note\r\n[Other]\r\ncountry=X\r\n[startup]\r\nCountry = Canada\r\n\r\n[Last]\r\na=1\r\n");
    FileSettings settings(path);
    EXPECT_EQ(settings.get("country", ""), "Canada");
    EXPECT_TRUE(settings.put("country", "Other"));
    EXPECT_TRUE(settings.put("inDir", "/tmp"));
    EXPECT_EQ(folder.read("s.ini"),
              "; note\n[Other]\ncountry=X\n[startup]\ncountry=Other\ninDir=/tmp\n\n[Last]\na=1\n");
}

TEST(FileSettings, aValueThatDidNotChangeWritesNothing) {
    const test::TempFolder folder;
    FileSettings settings(folder.write("s.ini", "[Startup]\nA=1"));
    EXPECT_TRUE(settings.put("a", "1"));
    EXPECT_EQ(folder.read("s.ini"), "[Startup]\nA=1");
    EXPECT_FALSE(std::filesystem::exists(folder.path("s.ini.lock")));
}

TEST(FileSettings, manyWritersLoseNothing) {
    const test::TempFolder folder;
    const std::string path = folder.path("s.ini");
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 4; ++writer) {
        writers.emplace_back([&path, writer] {
            for (int number = 0; number < 10; ++number) {
                FileSettings(path).put("k" + std::to_string(writer * 100 + number), std::to_string(number));
            }
        });
    }
    for (std::thread& writer : writers) writer.join();
    for (int writer = 0; writer < 4; ++writer) {
        for (int number = 0; number < 10; ++number) {
            EXPECT_EQ(FileSettings(path).get("k" + std::to_string(writer * 100 + number), "lost"),
                      std::to_string(number));
        }
    }
}

TEST(FileSettings, aPlaceThatCannotBeWrittenIsFalse) {
    const test::TempFolder folder;
    folder.write("file", "x");
    EXPECT_FALSE(FileSettings(folder.path("file/s.ini")).put("a", "1"));
    EXPECT_FALSE(FileSettings("").put("a", "1"));
    EXPECT_EQ(FileSettings(folder.path()).get("a", "default"), "default") << "a folder counts as empty";
}

}  // namespace
}  // namespace welvane
