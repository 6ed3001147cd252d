#include "las/classify.h"

#include <gtest/gtest.h>

#include "las/well.h"
#include "shared/prompts.h"

namespace welvane {
namespace {

using test::smallWell;
using test::TempFolder;

/// `count` lines of ten bytes with the given end.
std::string lines(int count, const std::string& end) {
    std::string text;
    for (int line = 0; line < count; ++line) text += std::string(10 - end.size(), 'x') + end;
    return text;
}

TEST(Classify, lineEnds) {
    const struct {
        const char* name;
        std::string bytes;
        LineEnds kind;
    } cases[] = {
        {"CR LF", lines(20, "\r\n"), LineEnds::Good},
        {"CR LF, large", lines(2000, "\r\n"), LineEnds::Good},
        {"CR LF, the last block begins inside an end", "xxx" + lines(2000, "\r\n"), LineEnds::Good},
        {"no line end behind the last line", lines(20, "\r\n") + "end", LineEnds::Good},
        {"LF", lines(20, "\n"), LineEnds::Unix},
        {"LF, large", lines(2000, "\n"), LineEnds::Unix},
        {"LF with empty lines", "a\n\nb\n\n", LineEnds::Unix},
        {"LF only at the end", lines(2000, "\r\n") + lines(2000, "\n"), LineEnds::Undecided},
        {"CR LF only at the end", lines(2000, "\n") + lines(2000, "\r\n"), LineEnds::Undecided},
        {"CR CR LF", "a\r\r\nb", LineEnds::Undecided},
        {"no line end", "text", LineEnds::Unix},
        {"empty", "", LineEnds::Empty},
        {"NUL", std::string("a\0b\r\n", 5), LineEnds::Binary},
        {"NUL behind the first block", lines(500, "\r\n") + std::string(1, '\0') + lines(5, "\r\n"), LineEnds::Good},
    };
    const TempFolder folder;
    for (const auto& row : cases) EXPECT_EQ(lineEndKind(folder.write("a.las", row.bytes)), row.kind) << row.name;
    EXPECT_EQ(lineEndKind(folder.path("none.las")), LineEnds::Missing);
}

TEST(Classify, quickLasTest) {
    const TempFolder folder;
    const auto test = [&](const char* name, const std::string& bytes) {
        return quickLasTest(folder.write(name, bytes));
    };
    EXPECT_EQ(test("a.LAS", "~v ~w"), LasTest::Passes);
    EXPECT_EQ(test("a.las", "~V ~C ~"), LasTest::NoSections);
    EXPECT_EQ(test("a.las", "#~W #~V"), LasTest::Passes) << "comments count";
    EXPECT_EQ(test("a.las.bak", "~V~W"), LasTest::WrongName);
    EXPECT_EQ(test("a.las.las", "~V~W"), LasTest::WrongName);
    EXPECT_EQ(test("a.las", "~V" + std::string(31996, 'x') + "~W"), LasTest::Passes) << "32000 bytes are read whole";
    EXPECT_EQ(test("a.las", "~V" + std::string(31997, 'x') + "~W"), LasTest::NoSections);
    EXPECT_EQ(test("a.las", "~V" + std::string(19996, 'x') + "~W" + std::string(20000, 'x')), LasTest::Passes);
    EXPECT_EQ(test("a.las", "~V" + std::string(19997, 'x') + "~W" + std::string(19999, 'x')), LasTest::NoSections);
    EXPECT_EQ(quickLasTest(folder.path("none.las")), LasTest::ReadError);
}

TEST(Classify, plexmore) {
    const TempFolder folder;
    const auto kind = [&](const std::string& bytes) { return plexmoreKind(folder.write("a.las", bytes)); };
    EXPECT_EQ(kind("# ASCII SAVE ~C \t"), PlexmoreKind::Version2);
    EXPECT_EQ(kind("  # Ascii save\r\n~Curve"), PlexmoreKind::Version3);
    EXPECT_EQ(kind("# Ascii save\t"), PlexmoreKind::NoCurves);
    EXPECT_EQ(kind("# Ascii save" + std::string(2048, 'x') + "~C"), PlexmoreKind::NoCurves);
    EXPECT_EQ(kind("x # Ascii save ~C"), PlexmoreKind::None);
    EXPECT_EQ(plexmoreKind(folder.path("none.las")), PlexmoreKind::ReadError);

    const std::string table = "PrimaryIndex [A";
    EXPECT_TRUE(isPlexmoreAscii(folder.write("t", table + std::string(2048 - table.size(), 'x'))));
    EXPECT_FALSE(isPlexmoreAscii(folder.write("t", table + std::string(2047 - table.size(), 'x'))))
        << "too short to be read";
    EXPECT_FALSE(isPlexmoreAscii(folder.write("t", std::string(3000, 'x') + table)));
}

TEST(Classify, verdictAndStatusLine) {
    const std::string banner = "# Ascii save\r\n";
    const struct {
        const char *name, *file;
        std::string bytes;
        FileVerdict verdict;
        const char* text;
        bool red;
    } cases[] = {
        {"a LAS file", "a.las", "~V\r\n~W\r\n", FileVerdict::Las, "LAS File", false},
        {"line ends first", "a.las", "~V\n~W\n", FileVerdict::UnixTermination, "Unix Termination", true},
        {"empty", "a.las", "", FileVerdict::UnixTermination, "Unix Termination", true},
        {"other name", "a.txt", "~V\r\n~W\r\n", FileVerdict::NotBasicLas, "Not Basic LAS!", true},
        {"no ~V", "a.las", "~W\r\n", FileVerdict::NotBasicLas, "Not Basic LAS!", true},
        {"banner without ~C", "a.las", banner + "~V~W\r\n", FileVerdict::Unusable, "Unusable File!", true},
        {"banner without anything", "a.las", banner, FileVerdict::NotBasicLas, "Not Basic LAS!", true},
        {"2.X without ~V", "a.las", banner + "~C\t\r\n", FileVerdict::Plexmore2, "Plexmore 2.X LAS", false},
        {"3.5", "a.las", banner + "~V~W~C\r\n", FileVerdict::Plexmore3, "Plexmore 3.5 or earlier LAS", false},
    };
    SilentInterface user;
    for (const auto& row : cases) {
        const TempFolder folder;
        const FileVerdict verdict = quickCheck(folder.write(row.file, row.bytes), user);
        EXPECT_EQ(verdict, row.verdict) << row.name;
        EXPECT_EQ(statusLine(verdict).text, row.text) << row.name;
        EXPECT_EQ(statusLine(verdict).red, row.red) << row.name;
    }
}

}  // namespace
}  // namespace welvane
