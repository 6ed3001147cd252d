#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "las/cells.h"
#include "las/channel_names.h"
#include "las/data_words.h"
#include "las/index_unit.h"
#include "las/las_file.h"
#include "las/well.h"

/// The ground of the true rules: how a file's text is read, what a cell is, which line names which column, which unit
/// the index has.
namespace welvane {
namespace {

using test::smallWell;
using test::TempFolder;
using test::withLineEnds;

constexpr FigureRules trueRules = FigureRules::trueFigures;

std::string utf16(const std::string& text, bool bigEndian, bool mark) {
    std::string bytes = mark ? (bigEndian ? "\xFE\xFF" : "\xFF\xFE") : "";
    for (const char c : text) bytes += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return bytes;
}

TEST(TrueReading, everyFormOfAFileReadsAsTheSameText) {
    const TempFolder folder;
    const std::string good = withLineEnds(smallWell());
    const LasFile plain(folder.write("plain.las", good), trueRules);
    std::string mixed = good;
    mixed.erase(mixed.find("\r\n  1669.75"), 1);
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {{"LF", smallWell()},
                 {"CR", withLineEnds(smallWell(), "\r")},
                 {"one lone LF among CR LF", mixed},
                 {"a byte order mark", "\xEF\xBB\xBF" + good},
                 {"UTF-16, the low byte first", utf16(good, false, true)},
                 {"UTF-16, the high byte first, LF", utf16(smallWell(), true, true)},
                 {"UTF-16 without its mark", utf16(good, false, false)}};
    for (const auto& row : cases) {
        const LasFile file(folder.write("a.las", row.bytes), trueRules);
        LineReader lines = file.text().lines();
        LineReader expected = plain.text().lines();
        std::string_view line;
        std::string_view wanted;
        while (expected.next(wanted)) {
            ASSERT_TRUE(lines.next(line)) << row.name;
            ASSERT_EQ(line, wanted) << row.name;
        }
        EXPECT_FALSE(lines.next(line)) << row.name;
        EXPECT_EQ(file.value("WELL").text, "BEECH 1") << row.name;
        EXPECT_EQ(file.shape().wordsPerStep, 3) << row.name;
        EXPECT_EQ(file.ends().lastDepth, 1669.375) << row.name;
    }
}

TEST(TrueReading, countsWordsAsTheyAreTaken) {
    std::mt19937 random(9);
    for (int round = 0; round < 20000; ++round) {
        std::string line;
        for (auto left = random() % 40; left > 0; --left) line += " \t \x89\xA0-1a!"[random() % 10];
        std::size_t words = 0;
        for (std::string_view rest = line; !nextDataWord(rest).empty();) ++words;
        ASSERT_EQ(countDataWords(line), words) << '"' << line << '"';
    }
}

TEST(TrueReading, countsHowLinesEnd) {
    const struct {
        const char *name, *text;
        std::size_t crLf, lf, cr, firstOther;
    } cases[] = {
        {"CR LF", "a\r\nb\r\n", 2, 0, 0, 0},
        {"no end at the end", "a\nb", 0, 1, 0, 0},
        {"one LF among CR LF", "a\r\nb\nc\r\n", 2, 1, 0, 2},
        {"three ways", "a\rb\n\r\n", 1, 1, 1, 2},
        {"CR CR LF", "a\r\r\n", 1, 0, 1, 2},
        {"LF CR is two", "a\n\rb\n", 0, 2, 1, 2},
    };
    for (const auto& row : cases) {
        LineReader lines(row.text, 0, LineRule::Any);
        for (std::string_view line; lines.next(line);) {
        }
        EXPECT_EQ(lines.ends().crLf, row.crLf) << row.name;
        EXPECT_EQ(lines.ends().lf, row.lf) << row.name;
        EXPECT_EQ(lines.ends().cr, row.cr) << row.name;
        EXPECT_EQ(lines.ends().firstOther, row.firstOther) << row.name;
    }
}

TEST(TrueReading, findsEveryLineEndHoweverFarApart) {
    // Blocks of any length around the reader's own, each line told by its length.
    for (const std::string end : {"\n", "\r", "\r\n"}) {
        for (const std::size_t length : {0UL, 1UL, 4094UL, 4095UL, 4096UL, 4097UL, 9000UL}) {
            const std::string text = std::string(length, 'x') + end + "y" + end + std::string(length, 'z');
            LineReader lines(text, 0, LineRule::Any);
            std::string_view line;
            ASSERT_TRUE(lines.next(line));
            EXPECT_EQ(line.size(), length);
            ASSERT_TRUE(lines.next(line));
            EXPECT_EQ(line, "y");
            EXPECT_EQ(lines.next(line), length > 0);
            lines.seek(0);
            lines.next(line);
            EXPECT_EQ(line.size(), length) << "after going back";
        }
    }
}

TEST(TrueReading, sectionsAreThemselves) {
    const std::string text =
        "~Version\n VERS. 2.0 : v\n~Custom\n X. 1 : x\n~Core data\n Y. 1 : y\n~Wireline\n~WELL INFO ~Analysis\n STRT.M "
        "1 : ~A\n"
        "~Analysis\n1 2\n~CURVES\n GR. : g\n~A  DEPT\n1 2\n";
    const LasText read(text, LineRule::Any);
    const auto behind = [&](const char* title) { return text.find('\n', text.find(title)) + 1; };
    EXPECT_EQ(read.seekSection('C'), behind("~CURVES"));
    EXPECT_EQ(read.seekSection('W'), behind("~WELL INFO"));
    EXPECT_EQ(read.seekSection('A'), behind("~A  DEPT"));
    EXPECT_EQ(read.titles().size(), 8U);
    EXPECT_EQ(LasText("~Core\n X. 1 : x\n~Alog\n1\n", LineRule::Any).seekSection('C'), 6U) << "nothing better";
    EXPECT_EQ(getDepthHeader(read).strt().value, "1");
}

TEST(Cells, areNumbersOrAreTold) {
    const struct {
        const char* word;
        CellKind kind;
        double value;
        int decimals;
    } cases[] = {
        {"12.50", CellKind::Number, 12.5, 2},
        {"-999.25", CellKind::Number, -999.25, 2},
        {"+.5", CellKind::Number, 0.5, 1},
        {"7.", CellKind::Number, 7, 0},
        {"1.25E+03", CellKind::Number, 1250, 0},
        {"1.5d-3", CellKind::Number, 0.0015, 4},
        {"1.5e2", CellKind::Number, 150, 0},
        {"123456789012345678901", CellKind::Number, 123456789012345678901.0, 0},
        {"0.1234567890123456789", CellKind::Number, 0.1234567890123456789, 19},
        {"NaN", CellKind::Word, 0, 0},
        {"inf", CellKind::Word, 0, 0},
        {"-", CellKind::Word, 0, 0},
        {".", CellKind::Word, 0, 0},
        {"-1.#IND", CellKind::Word, 0, 0},
        {"12abc", CellKind::Word, 0, 0},
        {"#N/A", CellKind::Word, 0, 0},
        {"****", CellKind::Word, 0, 0},
        {"1e999", CellKind::Word, 0, 0},
        {"0x10", CellKind::Word, 0, 0},
        {"12-", CellKind::Word, 0, 0},
        {"1,234,567", CellKind::Word, 0, 0},
        {"123-456", CellKind::RunOn, 0, 0},
        {"7.020101130.188", CellKind::RunOn, 0, 0},
        {"-999.25-999.25", CellKind::RunOn, 0, 0},
        {"123,42", CellKind::DecimalComma, 0, 0},
        {"12:30:00", CellKind::Time, 0, 0},
        {"01-Jan-20", CellKind::Time, 0, 0},
        {"2020-01-31", CellKind::Time, 0, 0},
        {"31/1/2020", CellKind::Time, 0, 0},
        {"10-20-30", CellKind::RunOn, 0, 0},
        {"", CellKind::Missing, 0, 0},
    };
    for (const auto& row : cases) {
        const Cell cell = judgeCell(row.word, false);
        EXPECT_EQ(cell.kind, row.kind) << row.word;
        if (row.kind != CellKind::Number) {
            EXPECT_TRUE(std::isnan(cell.value)) << row.word;
            continue;
        }
        EXPECT_EQ(cell.value, row.value) << row.word;
        EXPECT_EQ(cell.decimals, row.decimals) << row.word;
    }
    EXPECT_EQ(judgeCell("-123,42", true).value, -123.42);
    EXPECT_EQ(judgeCell("1,234.5", true).kind, CellKind::Word);
}

TEST(ChannelNames, theLineOfEachColumnNamesIt) {
    const struct {
        const char *name, *lines;
        std::size_t columns;
        const char* expected;
        std::size_t missing, surplus;
    } cases[] = {
        {"as they should be", "DEPT.M : d\nGR.GAPI : g\n", 2, "DEPT GR", 0, 0},
        {"no mnemonic, a dot in front", "DEPT.M : d\n.OHMM : 2\nGR. : g\n", 3, "DEPT CH2 GR", 0, 0},
        {"a tab in front of the dot", "DEPT.M : d\n\t.OHMM : 2\n", 2, "DEPT CH2", 0, 0},
        {"fewer columns", "DEPT.M : d\nGR. : g\nDT. : t\n", 2, "DEPT GR DT", 1, 0},
        {"more columns", "DEPT.M : d\nGR. : g\n", 4, "DEPT GR CH3 CH4", 0, 2},
        {"comments and blanks between", "#x\nDEPT.M : d\n\n# GR. : g\nDT. : t\n", 2, "DEPT DT", 0, 0},
        {"nothing but half lines", "DEPT.M\nDT  .US/M\nGR : gamma\nRHOB\n", 4, "DEPT DT GR RHOB", 0, 0},
        {"half lines that the data have columns for", "TRACK\nDEPT.M : d\nGR. : g\n", 3, "TRACK DEPT GR", 0, 0},
        {"half lines that they have none for", "see below\nDEPT.M : d\nGR. : g\n", 2, "DEPT GR", 0, 0},
        {"half lines and surplus columns", "TRACK\nDEPT.M : d\nGR. : g\n", 4, "TRACK DEPT GR CH4", 0, 1},
        {"none", "", 2, "CH1 CH2", 0, 2},
    };
    for (const auto& row : cases) {
        const std::string text = std::string("~C\n") + row.lines + "~A\n";
        const ColumnNames names = nameColumns(LasText(text, LineRule::Any), row.columns);
        std::string found;
        for (const HeaderField& field : names.channels) found += (found.empty() ? "" : " ") + field.mnem;
        EXPECT_EQ(found, row.expected) << row.name;
        EXPECT_EQ(names.missing(), row.missing) << row.name;
        EXPECT_EQ(names.surplus(), row.surplus) << row.name;
    }
    const ColumnNames half = nameColumns(LasText("~C\nDT  .US/M\n .OHMM 7 : five\n", LineRule::Any), 2);
    EXPECT_EQ(half.channels[0].unit, "US/M");
    EXPECT_EQ(half.channels[1].unit + half.channels[1].value + half.channels[1].desc, "OHMM7five");
}

TEST(IndexUnits, ofStartStopAndStepWhereTheyAgree) {
    const struct {
        const char *strt, *stop, *step, *index;
        IndexUnitKind kind;
        const char *text, *contradiction;
    } cases[] = {
        {"M", "M", "M", "M", IndexUnitKind::Metre, "M", ""},
        {"M", "", "M", "", IndexUnitKind::Metre, "M", ""},
        {"", "FEET", "", "F", IndexUnitKind::Foot, "FEET", ""},
        {"M", "METRES", "m", "[M]", IndexUnitKind::Metre, "M", ""},
        {"M", "M", "M", "\xD0\xBC\xD0\xB5\xD1\x82\xD0\xB5\xD1\x80", IndexUnitKind::Metre, "M", ""},
        {"M", "M", "M", "na", IndexUnitKind::Metre, "M", ""},
        {"na", "na", "na", "na", IndexUnitKind::Unknown, "na", ""},
        {"", "", "", "", IndexUnitKind::Unknown, "", ""},
        {"M", "F", "M", "M", IndexUnitKind::Metre, "M", "STRT is in M, STOP in F"},
        {"M", "M", "M", "FT", IndexUnitKind::Metre, "M", "STRT is in M, DEPT in FT"},
        {"IN", "IN", "IN", "in", IndexUnitKind::OtherLength, "IN", ""},
        {".1IN", ".1IN", ".1IN", "0.1IN", IndexUnitKind::OtherLength, ".1IN", ""},
        {"F", "IN", "F", "F", IndexUnitKind::Foot, "F", "STRT is in F, STOP in IN"},
        {"S", "SEC", "", "HHMMSS", IndexUnitKind::Time, "S", ""},
    };
    for (const auto& row : cases) {
        const std::string text = std::string("~W\n STRT.") + row.strt + " 1 : s\n STOP." + row.stop + " 2 : s\n STEP." +
                                 row.step + " 1 : s\n~C\n DEPT." + row.index + " : d\n~A\n1\n";
        const IndexUnitFound found = findIndexUnit(LasText(text, LineRule::Any));
        EXPECT_EQ(found.unit.kind, row.kind) << text;
        EXPECT_EQ(found.unit.text, row.text) << text;
        EXPECT_EQ(found.contradiction, row.contradiction) << text;
    }
    EXPECT_EQ(readIndexUnit("Inches").metres, 0.0254);
    EXPECT_EQ(readIndexUnit(" ft ").metres, 0.3048);
}

}  // namespace
}  // namespace welvane
