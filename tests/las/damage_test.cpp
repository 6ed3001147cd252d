#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

#include "las/classify.h"
#include "las/data_access.h"
#include "las/header_edit.h"
#include "las/rebuild.h"
#include "las/repair.h"
#include "las/sections.h"
#include "las/statistics.h"
#include "las/tops.h"
#include "las/well.h"

namespace welvane {
namespace {

using test::smallWell;
using test::TempFolder;

/// Every reader over one file; the test is that all of them return, and that what they say of the shape is no nonsense.
/// A file written costs a sync, so the writers have their turn at some of the files only.
void readAll(const std::string& path, const TempFolder& folder, bool alsoWrite) {
    SilentInterface user;
    RunState run;
    LasStatistics statistics;
    InputSlot slot;
    const LasFile file(path);
    for (const char letter : {'V', 'W', 'C', 'P', 'O', 'A', '~'}) {
        file.section(letter);
        file.section(letter, {.unitApart = true});
        file.section(letter, lettersAsTheyStand);
        file.sectionText(letter);
        file.value("WELL", letter);
    }
    file.value("DEPT");
    readTops(file);
    if (fillInputSlot(file, slot)) {
        EXPECT_GT(slot.wordsPerStep, 0);
        EXPECT_GT(slot.bytesPerStep, 0);
        EXPECT_GT(slot.linesPerStep, 0);
        EXPECT_GT(slot.dataStart, 0);
    }
    readSlotChannels(file);
    quickCheck(path, user);
    readLasStatistics(file, "Upper", statistics, run, user);
    if (!alsoWrite) return;
    std::string state;
    convertWrap(file, folder.path("wrapped.las"), state, run, user);
    rewriteLas(path, folder.path("rebuilt.las"), RebuildKind::Plexmore2, {}, run, user);
    editHeaderField(path, "WELL", EditPart::Value, "A LONGER NAME THAN BEFORE", 'W', user);
    repairLineEnds(path, path, run, user);
}

std::string wrappedWell() {
    std::string text = smallWell();
    text.replace(text.find("  1670 "), std::string::npos,
                 "1670\n 1 2\n1669.875\n 3 4\n1669.75\n -999.25 6\n1669.625\n 7 8\n");
    return text;
}

TEST(Damage, cutAtEveryByte) {
    const TempFolder folder;
    for (const std::string& text : {smallWell(), wrappedWell()}) {
        const std::string bytes = TempFolder::readFile(folder.writeLines("whole.las", text));
        for (std::size_t length = 0; length < bytes.size(); ++length)
            readAll(folder.write("cut.las", bytes.substr(0, length)), folder, length % 9 == 0);
    }
}

TEST(Damage, flippedAndDroppedBytes) {
    const TempFolder folder;
    const unsigned seed = 7;
    std::mt19937 random(seed);
    const std::string bytes = TempFolder::readFile(folder.writeLines("whole.las", wrappedWell()));
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        SCOPED_TRACE("byte " + std::to_string(place) + ", seed " + std::to_string(seed));
        std::string damaged = bytes;
        damaged[place] =
            "\0\r\n\t.:~#|\xFF"
            "9-E"[random() % 13];
        if (random() % 2 == 0) damaged.erase(random() % damaged.size(), 1 + random() % 20);
        readAll(folder.write("damaged.las", damaged), folder, place % 9 == 0);
    }
}

TEST(Damage, thingsThatAreNoFiles) {
    const TempFolder folder;
    const std::string pipe = folder.path("pipe.las");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink("circle.las", folder.path("circle.las"));
    std::filesystem::create_directory(folder.path("folder.las"));
    for (const std::string& path :
         {pipe, folder.path("circle.las"), folder.path("folder.las"), std::string("/dev/zero"), folder.path("none")}) {
        EXPECT_THROW(LasFile{path}, FileFailure) << path;
        EXPECT_EQ(judgeFile(path), FileVerdict::UnixTermination) << path;
        SilentInterface user;
        RunState run;
        EXPECT_EQ(rewriteLas(path, folder.path("b"), RebuildKind::Plexmore2, {}, run, user).result, StepResult::Failed);
        EXPECT_FALSE(fixCurveTitle(path, folder.path("b"))) << path;
    }
}

}  // namespace
}  // namespace welvane
