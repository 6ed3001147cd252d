#include "las/data_access.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "las/well.h"

namespace welvane {
namespace {

using test::smallWell;
using test::TempFolder;

TEST(DataAccess, shapeOfTheData) {
    std::string manyWrapped;
    for (int step = 0; step < 100; ++step) manyWrapped += "1.0\n2 3 4\n5 6\n";
    const std::string wideLine(50, 'x');
    const struct {
        const char* name;
        std::string data;
        DataLayout layout;
        int lines, bytes, words;
        std::size_t first, differing;
    } cases[] = {
        {"one line per step", "1 2\n\n1.5 20\n2 3\n", DataLayout::OneLine, 1, 5, 2, 0, 0},
        {"last line is not taken", "1 2\n1 2\n1 2 3", DataLayout::OneLine, 1, 5, 2, 0, 0},
        {"tabs separate", "1\t2\t3\n1 \t2 3\n1 2 3\n", DataLayout::OneLine, 1, 7, 3, 0, 0},
        {"wrapped", "1.0\n1 2\n 3\n1.5\n1 2\n 3\n2\n", DataLayout::Wrapped, 3, 14, 4, 0, 0},
        {"second step not whole without the last line", "1.0\n1 2\n 3\n1.5\n1 2\n 3\n", DataLayout::Undecided, 0, 0, 0,
         3, 4},
        {"wrapped with depths alone", "1.0\n1 2\n1.5\n1 2\n2.0\n", DataLayout::Wrapped, 2, 10, 3, 0, 0},
        {"over 200 lines", manyWrapped, DataLayout::Wrapped, 3, 17, 6, 0, 0},
        {"period without a lone depth", "1 2\n1\n1 2\n1\n1 2\n1\n", DataLayout::Undecided, 0, 0, 0, 3, 4},
        {"ten words first pass as one", "1 2 3 4 5 6 7 8 9 10\n1 2\n1 2 3 4 5 6 7 8 9 10\n1 2\n1\n",
         DataLayout::Wrapped, 2, 27, 12, 0, 0},
        {"never repeats", "1 2\n\n1\n1 2 3\n1 2 3 4\n", DataLayout::Undecided, 0, 0, 0, 3, 5},
        {"one line of data", "1 2\n", DataLayout::Undecided, 0, 0, 0, 0, 0},
        {"no data", "", DataLayout::Undecided, 0, 0, 0, 0, 0},
    };
    const TempFolder folder;
    for (const auto& row : cases) {
        const DataShape shape = detectDataLayout(folder.writeLines("a.las", "~V\n~A\n" + row.data));
        EXPECT_EQ(shape.layout, row.layout) << row.name;
        EXPECT_EQ(shape.linesPerStep, row.lines) << row.name;
        EXPECT_EQ(shape.bytesPerStep, row.bytes) << row.name;
        EXPECT_EQ(shape.wordsPerStep, row.words) << row.name;
        EXPECT_EQ(shape.firstLineNumber, row.first) << row.name;
        EXPECT_EQ(shape.differingLineNumber, row.differing) << row.name;
    }
    EXPECT_EQ(detectDataLayout(folder.path("none")).layout, DataLayout::Undecided);
    EXPECT_EQ(detectDataLayout(folder.writeLines("b.las", "~V\n1 2\n1 2\n")).layout, DataLayout::Undecided);
}

TEST(DataAccess, endsOfTheData) {
    const TempFolder folder;
    const std::string plain = folder.writeLines("a.las", "~A\n\n 100.50 1\n 100.00008 2\n 99.50 3\n 100 4\n");
    const DataEnds ends = locateDataEnds(plain, 2, 11, false);
    EXPECT_TRUE(ends.found);
    EXPECT_EQ(ends.firstPosition, 5);
    EXPECT_EQ(ends.firstDepth, 100.5);
    EXPECT_EQ(ends.lastDepth, 100);
    EXPECT_EQ(ends.lastPosition, 42) << "100.00008 and 100.50 only begin like the last depth";

    EXPECT_EQ(locateDataEnds(folder.writeLines("r.las", "~A\n1.00005 7\n"), 2, 11, false).firstDepth, 1.0001);
    EXPECT_FALSE(locateDataEnds(folder.writeLines("b.las", "~A\n1 2\n"), 3, 5, false).hasLastDepth);
    EXPECT_FALSE(locateDataEnds(folder.writeLines("c.las", "~A\n"), 2, 5, false).hasLastDepth);
    EXPECT_FALSE(locateDataEnds(folder.writeLines("d.las", "1 2\n"), 2, 5, false).found);

    const std::string wrapped = folder.writeLines("w.las", "~A\n1.0\n5 2.5\n2.5\n6 7\n");
    EXPECT_EQ(locateDataEnds(wrapped, 3, 12, true).lastPosition, 17);
    const std::string twice = folder.writeLines("t.las", "~A\n2.5\n6\n2.5\n7\n");
    EXPECT_EQ(locateDataEnds(twice, 2, 8, true).lastPosition, 5) << "the last but one of two";
}

TEST(DataAccess, wordsBecomeShortestNumbers) {
    std::vector<std::string> words = {"old"};
    EXPECT_EQ(splitValues("  1.500 \t-0.250  abc 3 ", ' ', words), 4U);
    EXPECT_EQ(words, (std::vector<std::string>{"1.5", "-0.25", "0", "3"}));
    EXPECT_EQ(splitValues("1,,2.0", ',', words), 2U);
    EXPECT_EQ(splitValues("", ' ', words), 0U);
}

TEST(DataAccess, slotOfASmallWell) {
    const TempFolder folder;
    const std::string text = smallWell("1.2");
    const std::string path = folder.writeLines("a.las", text);
    InputSlot slot;
    ASSERT_TRUE(fillInputSlot(path, slot));
    EXPECT_EQ(slot.start, 1670);
    EXPECT_EQ(slot.stop, 1669.375);
    EXPECT_EQ(slot.step, -0.125);
    EXPECT_EQ(slot.topDepth, 1669.375);
    EXPECT_EQ(slot.bottomDepth, 1670);
    EXPECT_EQ(slot.firstDepth, 1670);
    EXPECT_EQ(slot.lastDepth, 1669.375);
    EXPECT_EQ(slot.nullText, "-999.25");
    EXPECT_EQ(slot.depthUnit, "M");
    EXPECT_EQ(slot.lasVersion, "1.2");
    EXPECT_EQ(slot.wrap, "NO");
    EXPECT_EQ(slot.linesPerStep, 1);
    EXPECT_EQ(slot.bytesPerStep, 29);
    EXPECT_EQ(slot.wordsPerStep, 3);
    EXPECT_EQ(slot.path, path);
    EXPECT_EQ(slot.firstColumnWidth, 9);
    EXPECT_EQ(slot.firstColumnDecimals, 3);
    EXPECT_EQ(slot.dotColumn, 6);
    const std::string bytes = folder.read("a.las");
    EXPECT_EQ(slot.dataStart, static_cast<std::int64_t>(bytes.find("\n 1670.000")) + 2);
    EXPECT_EQ(slot.lastLine, static_cast<std::int64_t>(bytes.find("\n 1669.375")) + 2);

    const SlotChannels channels = readSlotChannels(path);
    ASSERT_EQ(channels.size(), 3U);
    EXPECT_EQ(channels[1].field.mnem, "GR");
    EXPECT_EQ(channels[1].field.value, "30 310 01 00");
    EXPECT_EQ(channels[1].field.desc, "Gamma Ray");
}

TEST(DataAccess, slotWithoutUsableData) {
    const TempFolder folder;
    InputSlot slot;
    EXPECT_FALSE(fillInputSlot(folder.writeLines("a.las", "~W\nSTRT.M 5 : x\nSTOP.F 2 : x\n~A\n1 2\n"), slot));
    EXPECT_EQ(slot.start, 5) << "what was found stays";
    EXPECT_EQ(slot.depthUnit, "F") << "of the STOP line";
    EXPECT_EQ(slot.colonColumn, 10);
    EXPECT_EQ(slot.wrap, "");
    InputSlot bare;
    EXPECT_FALSE(fillInputSlot(folder.writeLines("b.las", "~V\n"), bare));
    EXPECT_EQ(bare.dotColumn, 7);
    EXPECT_EQ(bare.valueColumn, 15);
    EXPECT_EQ(bare.colonColumn, 50);
    EXPECT_FALSE(fillInputSlot(folder.path(), bare));
}

TEST(DataAccess, largeFilesAndLongLines) {
    const TempFolder folder;
    // A hole of 8 GB between the first samples and the last ones: only both ends may be looked at.
    std::string samples;
    for (int line = 0; line < 250; ++line) samples += " 1000.000  10.00\n";
    const std::string path =
        folder.writeLines("sparse.las", smallWell().substr(0, smallWell().find("~A")) + "~A\n" + samples);
    {
        std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(std::streamoff{8} << 30);
        for (int depth = 0; depth < 4; ++depth) file << "\r\n 200" << depth << ".500  20.00";
        file << "\r\n";
    }
    if (std::filesystem::file_size(path) < std::uintmax_t{8} << 30U) GTEST_SKIP() << "no sparse files here";
    InputSlot slot;
    ASSERT_TRUE(fillInputSlot(path, slot));
    EXPECT_EQ(slot.firstDepth, 1000);
    EXPECT_EQ(slot.lastDepth, 2003.5);
    EXPECT_EQ(slot.lastLine, (std::int64_t{8} << 30) + 3 * 18 + 3);

    std::string wide;
    for (int word = 0; word < 40'000; ++word) wide += " 1.5";
    const DataShape shape = detectDataLayout(folder.writeLines("wide.las", "~A\n" + wide + "\n" + wide + "\n"));
    EXPECT_EQ(shape.layout, DataLayout::OneLine);
    EXPECT_EQ(shape.wordsPerStep, 40'000);
    EXPECT_EQ(shape.bytesPerStep, 160'002);

    const std::string endless = folder.writeLines("endless.las", "~W\nSTRT.M 5 : x\n~A\n");
    std::filesystem::resize_file(endless, std::uintmax_t{5} << 30U);
    EXPECT_FALSE(fillInputSlot(endless, slot)) << "the data are one line of 5 GB";
}

}  // namespace
}  // namespace welvane
