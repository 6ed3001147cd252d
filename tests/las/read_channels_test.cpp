#include "las/read_channels.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "las/well.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/run_state.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::LasMaker;
using test::TempFolder;

/// What a reading gives as one text: a record a line, "." for null; then the notes as "CHANNEL:LINE:COUNT".
std::string textOf(const LasFile& file, const ChannelReading& how) {
    std::string text;
    try {
        ChannelReader reader(file, how);
        for (RecordBlock block; reader.next(block);) {
            for (std::size_t record = 0; record < block.records; ++record) {
                for (std::size_t column = 0; column < block.columns; ++column) {
                    const double value = block.record(record)[column];
                    text += (column == 0 ? "" : " ") + (std::isnan(value) ? "." : plainNumber(value));
                }
                text += "|";
            }
        }
        for (const Note& note : reader.notes("a.las"))
            text += " " + note.channel + ":" + std::to_string(note.line) + ":" + std::to_string(note.count);
    } catch (const DataRefusal& refusal) {
        return refusal.what();
    } catch (const RunTimeFailure& failure) {
        return failure.what();
    }
    return text;
}

/// By one thread, and the same by several, each of which takes a few bytes at a time.
std::string readAsText(const std::string& bytes, ChannelReading how = {}) {
    const TempFolder folder;
    const LasFile file(folder.write("a.las", bytes), FigureRules::trueFigures);
    std::string text = textOf(file, how);
    for (const Workers workers : {Workers{3, 1}, Workers{2, 9}, Workers{4, 40}}) {
        how.workers = workers;
        EXPECT_EQ(textOf(file, how), text) << workers.pieceBytes << " bytes at a time of\n" << bytes;
    }
    return text;
}

std::string lasOf(const std::string& curves, const std::string& data, const std::string& wrap = "NO") {
    return "~V\nVERS. 2.0 : v\nWRAP. " + wrap + " : w\n~W\nNULL. -999.25 : n\n~C\n" + curves + "~A\n" + data;
}

TEST(ReadChannels, recordsAsTheyStand) {
    const std::string two = "DEPT.M : d\nGR. : g\n", three = two + "DT. : t\n", five = three + "A. : a\nB. : b\n";
    const struct {
        const char* name;
        std::string bytes;
        const char* expected;
    } cases[] = {
        {"plain", lasOf(two, "1 10\n2 20\n"), "1 10|2 20|"},
        {"null by its single, in any writing, and not in the index",
         lasOf(two, "-999.25 -999.2500\n1 -9.9925E2\n2 -999.250001\n3 -999.26\n"), "-999.25 .|1 .|2 .|3 -999.26|"},
        {"words are told per channel", lasOf(three, "1 ERR 5\n2 NaN 12:30\n3 7 8\n"),
         "1 . 5|2 . .|3 7 8| GR:11:2 DT:12:1"},
        {"blank lines and comments are passed over", lasOf(two, "#x\n1 10\n\n  # y\n2 20\n\x1A"), "1 10|2 20|"},
        {"another section ends the data", lasOf(two, "1 10\n~P\n2 20\n"), "1 10|"},
        {"another usual null is told", lasOf(two, "1 -9999\n2 5\n"), "1 -9999|2 5| GR:10:1"},
        {"fewer columns than lines", lasOf(three, "1 10\n2 20\n"), "1 10|2 20| :0:1"},
        {"more columns than lines", lasOf(two, "1 10 5\n2 20 6\n"), "1 10 5|2 20 6| :0:1"},
        {"a record of another length", lasOf(three, "1 10 5\n2 20\n3 30 7\n"),
         "line 12: a record of 2 values, where 3 are expected"},
        {"one of another length behind the first 200",
         lasOf(two,
               [] {
                   std::string data;
                   for (int i = 1; i <= 300; ++i) data += std::to_string(i) + (i == 250 ? " 1 2\n" : " 1\n");
                   return data;
               }()),
         "line 259: a record of 3 values, where 2 are expected"},
        {"the last record cut", lasOf(three, "1 10 5\n2 20 6\n3 30\n"), "1 10 5|2 20 6|3 30 .| DT:13:1 :13:1"},
        {"cut inside a word", lasOf(three, "1 10 5\n2 20 6\n3 30"), "1 10 5|2 20 6|3 . .| GR:13:1 DT:13:1 :13:1"},
        {"cut inside the index", lasOf(three, "1 10 5\n2 20 6\n3"), "1 10 5|2 20 6| :13:1"},
        {"no line end, yet whole", lasOf(two, "1 10\n2 20"), "1 10|2 20|"},
        {"an index that is no number", lasOf(two, "1 10\nx 20\n3 30\n"), "line 11: the index \"x\" is no number"},
        {"an index that is a time", lasOf(two, "1:00 10\n2:00 20\n"),
         "line 10: the index \"1:00\" is a time or a date"},
        {"a decimal comma", lasOf(two, "1 10\n2 20,5\n"), "line 11: \"20,5\" has a decimal comma"},
        {"commas part cells", lasOf(three, "1,10,5\n2,,6\n3, 30 ,\n4,5,6\n"),
         "1 10 5|2 . 6|3 30 .|4 5 6| GR:12:1 DT:13:1"},
        {"run-on numbers where a column lacks", lasOf(three, "1 10-5\n2 20-5\n"),
         "line 11: \"10-5\" is two numbers run on, and the record has fewer values than ~Curve has lines"},
        {"wrapped", lasOf(five, "1\n10 20\n30 40\n2\n11 21\n31 41\n", "YES"), "1 10 20 30 40|2 11 21 31 41|"},
        {"wrapped, a single value on the last line", lasOf(five, "1\n10 20 30\n40\n2\n11 21 31\n41\n", "YES"),
         "1 10 20 30 40|2 11 21 31 41|"},
        {"wrapped, the layout changes", lasOf(five, "1\n10 20\n30 40\n2\n11 21 31\n41\n3\n12 22 32 42\n", "YES"),
         "1 10 20 30 40|2 11 21 31 41|3 12 22 32 42|"},
        {"wrapped in two columns", lasOf(two, "1\n10\n2\n20\n", "YES"), "1 10|2 20|"},
        {"wrapped, untold", lasOf(five, "1\n10 20\n30 40\n2\n11 21\n31 41\n"), "1 10 20 30 40|2 11 21 31 41|"},
        {"told to be wrapped, but is not", lasOf(three, "1 10 5\n2 20 6\n", "YES"), "1 10 5|2 20 6|"},
        {"wrapped, a value short", lasOf(five, "1\n10 20\n30 40\n2\n11 21\n31\n3\n12 22\n32 42\n", "YES"),
         "line 16: a record of 4 values, where 5 are expected"},
        {"wrapped, a value too many", lasOf(five, "1\n10 20\n30 40\n2\n11 21 9\n31 41\n3\n12 22\n32 42\n", "YES"),
         "line 16: a record of 6 values, where 5 are expected"},
        {"wrapped, the last record cut", lasOf(five, "1\n10 20\n30 40\n2\n11 21\n", "YES"),
         "1 10 20 30 40|2 11 21 . .| A:17:1 B:17:1 :16:1"},
        {"wrapped, all records lack a channel", lasOf(five, "1\n10 20\n30\n2\n11 21\n31\n3\n12 22\n32\n", "YES"),
         "1 10 20 30|2 11 21 31|3 12 22 32| :0:1"},
        {"no data", lasOf(two, "\n"), "no data behind its ~A line"},
        {"no NULL line", "~V\n~C\n" + two + "~A\n1 -999.25\n2 0\n", "1 .|2 0| :0:0"},
    };
    for (const auto& row : cases) EXPECT_EQ(readAsText(row.bytes), row.expected) << row.name;
}

TEST(ReadChannels, looselyPlacesWhatItCan) {
    const std::string three = "DEPT.M : d\nGR. : g\nDT. : t\n", five = three + "A. : a\nB. : b\n";
    const struct {
        const char* name;
        std::string bytes;
        ChannelReading how;
        const char* expected;
    } cases[] = {
        {"short and long records",
         lasOf(three, "1 10 5\n2 20\n3 30 7 8\n4 40 8\n"),
         {.loose = true},
         "1 10 5|2 20 .|3 30 7|4 40 8| DT:12:1 :12:2"},
        {"by place where the columns stand fast",
         lasOf(three, "1.0   10.5    5.5\n2.0   20.5    6.5\n3.0           7.5\n4.0 -30.25-128.5\n5.0   40.5    8.5\n"),
         {.loose = true},
         "1 10.5 5.5|2 20.5 6.5|3 . 7.5|4 -30.25 -128.5|5 40.5 8.5| GR:13:1 :13:2"},
        {"an index that is no number",
         lasOf(three, "1 10 5\nx 20 6\n3 30 7\n"),
         {.loose = true},
         "1 10 5|3 30 7| :12:1"},
        {"wrapped, short and long",
         lasOf(five, "1\n10 20\n30 40\n2\n11 21\n31\n3\n12 22 9\n32 42\n4\n13 23\n33 43\n", "YES"),
         {.loose = true},
         "1 10 20 30 40|2 11 21 31 .|3 12 22 9 32|4 13 23 33 43| B:19:1 :16:2"},
        {"decimal commas",
         lasOf(three, "1,5 10,25 5\n2 20 6,125\n"),
         {.decimalComma = true},
         "1.5 10.25 5|2 20 6.125|"},
    };
    for (const auto& row : cases) EXPECT_EQ(readAsText(row.bytes, row.how), row.expected) << row.name;
}

TEST(ReadChannels, linesEndAsTheyWill) {
    const std::string text = lasOf("DEPT.M : d\nGR. : g\n", "1 10\n2 20\n3 30\n");
    const std::string dos = test::withLineEnds(text);
    std::string mixed = dos;
    mixed.erase(mixed.find("\r\n2 20"), 1);
    std::string mixedBetween = test::withLineEnds(text.substr(0, text.find("1 10"))) + "1 10\n2 20\n3 30\n";
    const std::string values = "1 10|2 20|3 30|";
    EXPECT_EQ(readAsText(dos), values);
    EXPECT_EQ(readAsText(test::withLineEnds(text, "\r")), values);
    EXPECT_EQ(readAsText(mixed), values + " :10:1");
    EXPECT_EQ(readAsText(mixedBetween), values + " :10:3");
}

TEST(ReadChannels, manyThreadsReadWhatOneReads) {
    std::mt19937 source(20);
    const auto random = [&source](std::size_t limit) { return static_cast<std::size_t>(source()) % limit; };
    static const char* const odd[] = {"ERR", "-999.25", "-9999", "123-456", "1E3", "12:30:00", "# x\n", "\n", "~P\n"};
    static const char* const ends[] = {"\n", "\r\n", "\r"};
    for (int round = 0; round < 400; ++round) {
        const std::size_t oddity = std::size_t{20} << random(6);
        const char* const end = ends[random(3)];
        std::string data;
        for (std::size_t line = random(60); line > 0; --line) {
            for (int word = 0; word < 3; ++word)
                data += random(oddity) == 0
                            ? std::string(odd[random(std::size(odd))]) + " "
                            : formatMask(static_cast<double>(random(9000)) / 7, static_cast<int>(random(5))) + " ";
            data += random(2 * oddity) == 0 ? ends[random(3)] : end;
        }
        if (random(4) == 0) data.resize(data.size() - std::min<std::size_t>(data.size(), random(12)));
        readAsText(test::withLineEnds(lasOf("DEPT.M : d\nGR. : g\nDT. : t\n", ""), end) + data,
                   {.loose = random(2) == 0});
    }
}

TEST(ReadChannels, keepsAllInMemoryWithItsDecimals) {
    LasMaker maker;
    maker.curve("GR").curve("DT");
    for (int i = 0; i < 9000; ++i)
        maker.row(1000 + 0.125 * i, std::to_string(i) + ".5 " + (i == 7000 ? "1.25e-3" : "-999.25"));
    const TempFolder folder;
    const LasFile file(folder.write("a.las", maker.text()), FigureRules::trueFigures);
    RunState run;
    test::ScriptedInterface user;
    RunTurn turn(run, user, file.bytes().size());
    for (const Workers workers : {Workers{}, Workers{3, 5000}}) {
        const auto data = readChannels(file, {.workers = workers}, turn);
        ASSERT_TRUE(data);
        ASSERT_EQ(data->columns.size(), 3U);
        ASSERT_EQ(data->columns[0].size(), 9000U);
        for (std::size_t i = 0; i < 9000; ++i) {
            ASSERT_EQ(data->columns[0][i], 1000 + 0.125 * static_cast<double>(i));
            ASSERT_EQ(data->columns[1][i], static_cast<double>(i) + 0.5);
            ASSERT_EQ(data->lines[i], data->lines[0] + i);
        }
        EXPECT_EQ(data->columns[2][7000], 0.00125);
        EXPECT_TRUE(std::isnan(data->columns[2][6999]));
        EXPECT_EQ(data->facts.channels[0].decimals, 3);
        EXPECT_EQ(data->facts.channels[1].decimals, 1);
        EXPECT_EQ(data->facts.channels[2].decimals, 5);
    }
    run.cancelRequested = true;
    EXPECT_FALSE(readChannels(file, {}, turn)) << "stopped";
}

}  // namespace
}  // namespace welvane
