#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "program_in_folder.h"

namespace welvane {
namespace {

using test::ProgramRun;

struct FromAsciiVerb : test::ProgramInFolder {
    ProgramRun convert(const char* table, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"from-ascii", table, "-o", "o.las", "--force"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run(arguments);
    }
};

TEST_F(FromAsciiVerb, tablesOfEveryMake) {
    struct Case {
        const char *name, *text;
        std::vector<std::string> options;
        const char *word, *line;  ///< a word at the begin of a line of the output, and that line's words
    };
    for (const Case& row :
         {Case{"commas", "Depth,GR\n100,1\n101,2\n", {}, "101", "101 2"},
          Case{"lone CRs", "Depth,GR\r100,1\r101,2\r\n", {}, "101", "101 2"},
          Case{"report",
               "Log\n\nDepth (m)  RES (OHM.M)\n=========  ===========\n100 1.5\n101 2.5\n",
               {},
               "RES.OHMM",
               "RES.OHMM :"},
          Case{"no numbers", "D G H\n100 nan 1\n101 -inf 2\n", {"--null", "-99"}, "101", "101 -99 2"},
          Case{"names and units",
               "100;1\n101;2\n",
               {"--names", ",DENS", "--units", "M,G/C3"},
               "DENS.G/C3",
               "DENS.G/C3 :"},
          Case{"drop by name", "D,A,B\n100,1,2\n101,3,4\n", {"--drop", "a"}, "101", "101 4"},
          Case{"drop by number", "D,A,B\n100,1,2\n101,3,4\n", {"--drop", "3"}, "101", "101 3"},
          Case{"sort", "D,A\n102,1\n100,2\n101,3\n", {"--sort", "shallow"}, "STRT.F", "STRT.F 100.0000 :START DEPTH"},
          Case{"sort from the deep end",
               "D,A\n102,1\n100,2\n101,3\n",
               {"--sort", "deep"},
               "STEP.F",
               "STEP.F -1.0000 :STEP LENGTH"},
          Case{"data row", "1,2\n3,4\n100,5\n101,6\n", {"--data-row", "3"}, "STRT.F", "STRT.F 100.0000 :START DEPTH"},
          Case{"delimiter", "100,5 6\n101,6 7\n", {"--delimiter", "comma"}, "101", "101 6_7"},
          Case{"long line", "D A\n100 1\n101 2\n", {}, "101", "101 2"}}) {
        folder.write("t.txt", row.text + (std::string(row.name) == "long line" ? std::string(1u << 20, 'x') + "\n"
                                                                               : std::string()));
        const ProgramRun done = convert("t.txt", row.options);
        EXPECT_EQ(done.status, 0) << row.name << ": " << done.err;
        EXPECT_EQ(line("o.las", row.word), row.line) << row.name << "\n" << folder.read("o.las");
        EXPECT_EQ(run({"info", "o.las"}).status, 0) << row.name << " is read back";
    }
}

TEST_F(FromAsciiVerb, theHeaderComesFromAFile) {
    folder.write("t.csv", "D,A\n100,1\n101,2\n");
    write("head.las", test::sampleLas({"GR"}, 100, 5));
    ASSERT_EQ(convert("t.csv", {"--header", "head.las"}).status, 0);
    EXPECT_EQ(line("o.las", "WELL."), "WELL. Heron 4 : Well");
    EXPECT_EQ(folder.read("o.las").find("GR."), std::string::npos) << "its curves are not taken";
}

TEST_F(FromAsciiVerb, rowsAreShownFirst) {
    folder.write("t.csv", "Depth,GR\n100,1\n100.5,2\n");
    const ProgramRun dry = run({"from-ascii", "t.csv", "--dry-run"});
    EXPECT_EQ(dry.status, 0);
    EXPECT_EQ(dry.out,
              "t.csv: 2 columns parted by commas, 2 rows from line 2 on\n  Name     DEPT  GR\n  Unit        F    \n  "
              "line 2    100   1\n"
              "  line 3  100.5   2\n");
    EXPECT_FALSE(exists("o.las"));
    const ProgramRun made = convert("t.csv");
    EXPECT_EQ(made.out, "");
    EXPECT_EQ(made.err, dry.out + "welvane: o.las: 2 samples of 1 channel, 100 to 100.5 F\n");
    EXPECT_EQ(convert("t.csv", {"--quiet"}).err, "");
}

TEST_F(FromAsciiVerb, badTablesGetOneLineAndNoOutput) {
    folder.write("good.csv", "D,A\n100,1\n101,2\n");
    folder.write("text.csv", "D,A\n100,1\nabc,2\n102,3\n");
    folder.write("gap.csv", "D,A\n100,1\n101,2\n,3\n");
    folder.write("one.txt", "100\n101\n");
    folder.write("empty.txt", "");
    folder.write("blank.txt", "\n\n");
    folder.write("binary", std::string("1 2\0\n", 5));
    std::string wide;
    for (int column = 0; column < 33000; ++column) wide += "1 ";
    folder.write("wide.txt", wide + "\n" + wide + "\n");
    struct Case {
        const char* table;
        std::vector<std::string> options;
        int status;
        const char* why;
    };
    for (const Case& row : {Case{"text.csv", {}, 1, "The depth \"abc\" in line 3 is not a number"},
                            Case{"gap.csv", {}, 1, "(line 4)"},
                            Case{"one.txt", {}, 1, "needs a depth and a channel"},
                            Case{"empty.txt", {}, 1, "the file is empty"},
                            Case{"blank.txt", {}, 1, "no rows of numbers"},
                            Case{"binary", {}, 1, "byte 4 is NUL"},
                            Case{"wide.txt", {}, 1, "33000 columns"},
                            Case{"none.txt", {}, 1, "No such file"},
                            Case{".", {}, 1, "Is a directory"},
                            Case{"good.csv", {"--header", "none.las"}, 1, "none.las: No such file"},
                            Case{"good.csv", {"--header", "binary"}, 1, "binary: not a text file"},
                            Case{"good.csv", {"--header", "one.txt"}, 1, "neither a ~Version nor a ~Well"},
                            Case{"good.csv", {"--data-row", "99"}, 1, "no data in line 99"},
                            Case{"good.csv", {"--drop", "2"}, 1, "1 column of the table is left"},
                            Case{"good.csv", {"--drop", "X"}, 2, "no column 'X'"},
                            Case{"good.csv", {"--names", "A,B,C"}, 2, "3 for a table of 2 columns"},
                            Case{"good.csv", {"--names", "A B"}, 2, "holds what a header line has no place for"},
                            Case{"good.csv", {"--delimiter", "x"}, 2, "--delimiter"},
                            Case{"good.csv", {"--null", "x"}, 2, "--null"},
                            Case{"good.csv", {"--data-row", "0"}, 2, "--data-row"}}) {
        const ProgramRun done = convert(row.table, row.options);
        EXPECT_EQ(done.status, row.status) << row.why << done.err;
        EXPECT_NE(done.err.find(row.why), std::string::npos) << done.err;
        EXPECT_FALSE(exists("o.las")) << row.why;
    }
}

TEST_F(FromAsciiVerb, outputsAreGuardedAndSkippedLinesTold) {
    folder.write("t.csv", "D,A\n100,1\n101,2,3\n102,3\n");
    folder.write("old.las", "old");
    EXPECT_EQ(run({"from-ascii", "t.csv", "-o", "old.las"}).err,
              "welvane: old.las: exists already (--force replaces it)\n");
    EXPECT_EQ(run({"from-ascii", "t.csv", "-o", "t.csv", "--force"}).err, "welvane: t.csv: is one of the inputs\n");
    EXPECT_EQ(run({"from-ascii", "t.csv"}).status, 2);
    EXPECT_EQ(folder.read("old.las"), "old");
    EXPECT_NE(convert("t.csv").err.find("welvane: t.csv: A total of 1 lines were skipped"), std::string::npos);
}

}  // namespace
}  // namespace welvane
