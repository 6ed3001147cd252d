#include "las/las_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

#include "las/well.h"

namespace welvane {
namespace {

namespace fs = std::filesystem;
using test::smallWell;
using test::TempFolder;

TEST(LasFile, answersEveryQuestion) {
    const TempFolder folder;
    const LasFile file(folder.writeLines("a.las", smallWell()));
    EXPECT_EQ(file.path(), folder.path("a.las"));
    EXPECT_EQ(file.bytes(), folder.read("a.las"));
    EXPECT_EQ(file.section('C').value().size(), 3U);
    EXPECT_EQ(file.value("well").text, "BEECH 1");
    EXPECT_EQ(file.value("BHT", 'P').unit, "DEGC");
    EXPECT_EQ(file.depthHeader().step().value, "-0.1250");
    EXPECT_EQ(file.shape().wordsPerStep, 3);
    EXPECT_EQ(file.ends().lastDepth, 1669.375);
    EXPECT_EQ(file.lineEnds(), LineEnds::Good);
    EXPECT_EQ(LasFile(folder.write("b.las", smallWell())).lineEnds(), LineEnds::Unix);
    EXPECT_EQ(LasFile(folder.write("c.las", "")).lineEnds(), LineEnds::Empty);
}

TEST(LasFile, staysTheFileThatWasOpened) {
    struct Case {
        const char* name;
        void (*touch)(const std::string& path);
        bool unchanged, stillReadable;
    };
    const Case cases[] = {
        {"left alone", [](const std::string&) {}, true, true},
        {"read by others", [](const std::string& path) { TempFolder::readFile(path); }, true, true},
        {"renamed away", [](const std::string& path) { fs::rename(path, path + ".old"); }, false, true},
        {"another file under its name",
         [](const std::string& path) {
             fs::rename(path, path + ".old");
             fs::copy_file(path + ".old", path);
         },
         false, true},
        {"written to, the size kept",
         [](const std::string& path) {
             fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(1));
         },
         false, true},
        {"grown", [](const std::string& path) { fs::resize_file(path, fs::file_size(path) + 1); }, false, true},
        {"cut", [](const std::string& path) { fs::resize_file(path, 0); }, false, false},
    };
    for (const Case& one : cases) {
        const TempFolder folder;
        const LasFile file(folder.writeLines("a.las", smallWell()));
        one.touch(file.path());
        EXPECT_EQ(file.unchanged(), one.unchanged) << one.name;
        const bool found = file.value("WELL").text == "BEECH 1";
        EXPECT_EQ(found, one.stillReadable) << one.name;
        if (one.unchanged)
            EXPECT_NO_THROW(file.needWhole()) << one.name;
        else
            EXPECT_THROW(file.needWhole(), FileFailure) << one.name;
    }
}

TEST(LasFile, manyThreadsAskAtOnce) {
    const TempFolder folder;
    const LasFilePointer file = openLasFile(folder.writeLines("a.las", smallWell()));
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([file] {
            for (int turn = 0; turn < 50; ++turn) {
                EXPECT_EQ(file->ends().firstDepth, 1670);
                EXPECT_EQ(file->shape().bytesPerStep, 25);
                EXPECT_EQ(file->section('C').value().size(), 3U);
            }
        });
    for (std::thread& thread : threads) thread.join();
}

TEST(LasFile, aFileThatCannotBeOpenedIsAFailureThatNamesIt) {
    const TempFolder folder;
    try {
        const LasFile file(folder.path("none.las"));
        ADD_FAILURE() << "opened";
    } catch (const FileFailure& failure) {
        EXPECT_EQ(failure.what(), folder.path("none.las") + ": No such file or directory");
        EXPECT_EQ(failure.reason(), "No such file or directory");
    }
}

}  // namespace
}  // namespace welvane
