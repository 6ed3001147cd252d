#include "las/wrap_whole.h"

#include <gtest/gtest.h>

#include "las/well.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::LasMaker;
using test::TempFolder;

struct Wrapping {
    TempFolder folder;
    SilentInterface user;
    RunState run;
    WholeWrap made;

    /// What comes of the text, without carriage returns; "" where nothing does.
    std::string of(const std::string& text) {
        made = wrapWhole(LasFile(folder.writeLines("a.las", text)), folder.path("b.las"), run, user);
        std::string result = made.result == StepResult::Done ? folder.read("b.las") : "";
        std::erase(result, '\r');
        return result;
    }
    static std::string data(const std::string& text) {
        const std::size_t at = text.find("~Ascii\n");
        return at == std::string::npos ? "" : text.substr(at + 7);
    }
};

LasMaker channels(int count) {
    LasMaker maker;
    for (int channel = 1; channel <= count; ++channel) maker.curve("C" + std::to_string(channel));
    return maker;
}

TEST(WrapWhole, linesStayWithinEightyCharactersAndComeBack) {
    LasMaker maker = channels(12);
    std::string words;
    for (int channel = 1; channel <= 12; ++channel) words += " -" + std::to_string(1000 + channel) + ".5000";
    for (int record = 0; record < 4; ++record) maker.row(100 + record, words);
    Wrapping wrapping;
    const std::string wrapped = wrapping.of(maker.text());
    EXPECT_TRUE(wrapping.made.wrapped);
    EXPECT_TRUE(Wrapping::data(wrapped).starts_with(
        "100\n -1001.5000 -1002.5000 -1003.5000 -1004.5000 -1005.5000 -1006.5000 -1007.5000\n -1008.5000 "))
        << wrapped;
    EXPECT_NE(wrapped.find("WRAP.        YES"), std::string::npos);
    const std::string back = wrapping.of(wrapped);
    EXPECT_FALSE(wrapping.made.wrapped);
    EXPECT_EQ(Wrapping::data(back).substr(0, 4 + 12 * 11 + 1), " 100" + words + "\n");
}

TEST(WrapWhole, recordsAreTheirValuesAndNotSoManyLines) {
    LasMaker maker = channels(4);
    maker.wrapped(2).ramp(0, 1, 250, 4);
    std::string text = maker.text();
    // From the 221st on a record takes one line of values.
    for (int record = 220; record < 250; ++record) {
        const std::string two = "\n " + std::to_string(10 + record) + " " + std::to_string(20 + record) + "\n ";
        const std::size_t at = text.rfind(two);
        ASSERT_NE(at, std::string::npos);
        text[at + two.size() - 2] = ' ';
    }
    Wrapping wrapping;
    const std::string plain = Wrapping::data(wrapping.of(text));
    EXPECT_EQ(wrapping.made.why, "");
    EXPECT_EQ(plain, Wrapping::data(wrapping.of(channels(4).wrapped(2).ramp(0, 1, 250, 4).text())));
    EXPECT_NE(plain.find("\n 240 250 260 270 280\n"), std::string::npos) << plain;
    text.resize(text.rfind(' '));
    EXPECT_NE(wrapping.of(text).find(" 249 259 269 279 -999.25\n"), std::string::npos);
    EXPECT_EQ(textOf(wrapping.made.notes.at(0)),
              "line 735: the last record is cut; null is written for what it lacks (1)");
}

TEST(WrapWhole, refusesWhatWouldBeOtherRecords) {
    const std::string rows = channels(3).ramp(0, 1, 250, 3).text();
    const struct {
        const char* name;
        std::string text;
        const char* why;
    } cases[] = {
        {"one channel", channels(1).ramp(0, 1, 9, 1).text(), "to be read again"},
        {"one record", channels(3).ramp(0, 1, 1, 3).text(), ""},
        {"a longer line behind those that are looked at", rows + " 250 1 2 3 4\n 251 1 2 3\n", "has 5 values, not 4"},
        {"a shorter one", rows + " 250 1 2\n 251 1 2 3\n", "has 3 values, not 4"},
        {"a wrapped record that is too long", channels(4).wrapped(2).ramp(0, 1, 250, 4).text() + "9\n 1 2\n 3 4 5\n",
         "has 6 values, not 5"},
    };
    for (const auto& row : cases) {
        Wrapping wrapping;
        EXPECT_EQ(wrapping.of(row.text), "") << row.name;
        EXPECT_EQ(wrapping.made.result, StepResult::Failed) << row.name;
        EXPECT_NE(wrapping.made.why.find(row.why), std::string::npos) << wrapping.made.why;
    }
}

}  // namespace
}  // namespace welvane
