#include "las/data_access.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "las/well.h"

namespace welvane {
namespace {

using test::smallWell;
using test::TempFolder;
using test::withLineEnds;

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
    for (const auto& row : cases) {
        const std::string bytes = withLineEnds("~V\n~A\n" + row.data);
        const DataShape shape = detectDataLayout(LasText(bytes));
        EXPECT_EQ(shape.layout, row.layout) << row.name;
        EXPECT_EQ(shape.linesPerStep, row.lines) << row.name;
        EXPECT_EQ(shape.bytesPerStep, row.bytes) << row.name;
        EXPECT_EQ(shape.wordsPerStep, row.words) << row.name;
        EXPECT_EQ(shape.firstLineNumber, row.first) << row.name;
        EXPECT_EQ(shape.differingLineNumber, row.differing) << row.name;
    }
    EXPECT_EQ(detectDataLayout(LasText("~V\r\n1 2\r\n1 2\r\n")).layout, DataLayout::Undecided);
}

TEST(DataAccess, endsOfTheData) {
    constexpr double none = -1;
    const struct {
        const char *name, *text;
        int words, bytes;
        DataLayout layout;
        double first, last;
        std::int64_t firstPosition, lastPosition;
    } cases[] = {
        {"numbers that only begin like the last depth", "~A\n\n 100.50 1\n 100.00008 2\n 99.50 3\n 100 4\n", 2, 11,
         DataLayout::OneLine, 100.5, 100, 5, 42},
        {"first depth to four decimals", "~A\n1.00005 7\n", 2, 11, DataLayout::OneLine, 1.0001, 1.00005, 5, 5},
        {"fewer words than a record", "~A\n1 2\n", 3, 5, DataLayout::OneLine, 1, none, 5, 0},
        {"no lines", "~A\n", 2, 5, DataLayout::OneLine, 0, none, 5, 0},
        {"no ~A", "1 2\n", 2, 5, DataLayout::OneLine, 0, none, 0, 0},
        {"wrapped", "~A\n1.0\n5 2.5\n2.5\n6 7\n", 3, 12, DataLayout::Wrapped, 1, 2.5, 5, 17},
        {"the last but one of two", "~A\n2.5\n6\n2.5\n7\n", 2, 8, DataLayout::Wrapped, 2.5, 2.5, 5, 5},
    };
    for (const auto& row : cases) {
        const std::string bytes = withLineEnds(row.text);
        const DataEnds ends = locateDataEnds(
            LasText(bytes), {.layout = row.layout, .bytesPerStep = row.bytes, .wordsPerStep = row.words});
        EXPECT_EQ(ends.found, row.firstPosition != 0) << row.name;
        EXPECT_EQ(ends.firstPosition, row.firstPosition) << row.name;
        EXPECT_EQ(ends.firstDepth, row.first) << row.name;
        EXPECT_EQ(ends.hasLastDepth ? ends.lastDepth : none, row.last) << row.name;
        EXPECT_EQ(ends.lastPosition, row.lastPosition) << row.name;
    }
}

TEST(DataAccess, slotOfASmallWell) {
    const TempFolder folder;
    const std::string text = smallWell("1.2");
    const std::string path = folder.writeLines("a.las", text);
    InputSlot slot;
    const LasFile file(path);
    ASSERT_TRUE(fillInputSlot(file, slot));
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
    EXPECT_EQ(slot.bytesPerStep, 25);
    EXPECT_EQ(slot.wordsPerStep, 3);
    EXPECT_EQ(slot.path, path);
    EXPECT_EQ(slot.firstColumnWidth, 6);
    EXPECT_EQ(slot.firstColumnDecimals, 0);
    EXPECT_EQ(slot.dotColumn, 6);
    const std::string bytes = folder.read("a.las");
    EXPECT_EQ(slot.dataStart, static_cast<std::int64_t>(bytes.find("\n  1670 ")) + 2);
    EXPECT_EQ(slot.lastLine, static_cast<std::int64_t>(bytes.find("\n  1669.375")) + 2);

    const SlotChannels channels = readSlotChannels(file);
    ASSERT_EQ(channels.size(), 3U);
    EXPECT_EQ(channels[1].field.mnem, "GR");
    EXPECT_EQ(channels[1].field.value, "30 310 01 00");
    EXPECT_EQ(channels[1].field.desc, "Gamma Ray");
}

TEST(DataAccess, slotWithoutUsableData) {
    const TempFolder folder;
    const auto fill = [&folder](const char* text, InputSlot& slot) {
        return fillInputSlot(LasFile(folder.writeLines("a.las", text)), slot);
    };
    InputSlot slot, bare;
    EXPECT_FALSE(fill("~W\nSTRT.M 5 : x\nSTOP.F 2 : x\n~A\n1 2\n", slot));
    EXPECT_EQ(slot.start, 5) << "what was found stays";
    EXPECT_EQ(slot.depthUnit, "F") << "of the STOP line";
    EXPECT_EQ(slot.colonColumn, 10);
    EXPECT_EQ(slot.wrap, "");
    EXPECT_FALSE(fill("~V\n", bare));
    EXPECT_EQ(bare.dotColumn, 7);
    EXPECT_EQ(bare.valueColumn, 15);
    EXPECT_EQ(bare.colonColumn, 50);
    EXPECT_TRUE(fill("~V\n~C\nD. : x\n~A\n1 2\n1 2\n1 2\n", bare));
    EXPECT_EQ(bare.lasVersion, " ") << "a header without VERS";
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
    ASSERT_TRUE(fillInputSlot(LasFile(path), slot));
    EXPECT_EQ(slot.firstDepth, 1000);
    EXPECT_EQ(slot.lastDepth, 2003.5);
    EXPECT_EQ(slot.lastLine, (std::int64_t{8} << 30) + 3 * 18 + 3);

    std::string wide;
    for (int word = 0; word < 40'000; ++word) wide += " 1.5";
    wide = withLineEnds("~A\n" + wide + "\n" + wide + "\n");
    const DataShape shape = detectDataLayout(LasText(wide));
    EXPECT_EQ(shape.layout, DataLayout::OneLine);
    EXPECT_EQ(shape.wordsPerStep, 40'000);
    EXPECT_EQ(shape.bytesPerStep, 160'002);

    const std::string endless = folder.writeLines("endless.las", "~W\nSTRT.M 5 : x\n~A\n");
    std::filesystem::resize_file(endless, std::uintmax_t{5} << 30U);
    EXPECT_FALSE(fillInputSlot(LasFile(endless), slot)) << "the data are one line of 5 GB";
}

}  // namespace
}  // namespace welvane
