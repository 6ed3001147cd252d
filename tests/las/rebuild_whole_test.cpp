#include "las/rebuild_whole.h"

#include <gtest/gtest.h>

#include "las/well.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::TempFolder;

struct Rebuilt {
    WholeRebuild made;
    std::string text;
    std::string notes() const {
        std::string all;
        for (const Note& note : made.notes) all += textOf(note) + "\n";
        return all;
    }
};

/// The source as it is given, its lines ended as they are.
Rebuilt rebuilt(const std::string& bytes, RebuildKind kind = RebuildKind::Other) {
    const TempFolder folder;
    SilentInterface user;
    RunState run;
    Rebuilt result;
    result.made = rebuildWhole(LasFile(folder.write("a.las", bytes)), folder.path("b.las"), kind, "Canada", run, user);
    if (result.made.result == StepResult::Done) result.text = folder.read("b.las");
    std::erase(result.text, '\r');
    return result;
}

const char* const broken =
    "# from the rig\n"
    "~Version\r\n VERS. 1.2 : CWLS\n WRAP. NO : one line\n"
    "~Well\n STRT.F 100 : s\n STOP.F 200 : e\n STEP.F 0.25 : i\n NULL. -99999 : n\n"
    " WELL.   WELL NAME : Beech | 1\n DATE.  LOGGED : 12:30:00\n no field here\n RIG. Seven\n"
    "~Curve\n DEPT.F : Depth\r .GAPI 30 310 : Gamma\n# the new one\n GR:1 .M3/M3  : Second\n"
    "~Core\n any text at all\n"
    "~Parameter\n BHT .DEGC 35.500 : Temperature\n"
    "~A\n"
    "100.00  -99999   1.23456789 5\n"
    "100.50  0.0000012 n/a 6\n"
    "101.00  1 2\n"
    "101.50  1E30  2 7\n"
    "~Tail\n last words\n";

TEST(RebuildWhole, keepsEveryLineAndEveryNumberOrNamesIt) {
    const Rebuilt result = rebuilt(broken);
    EXPECT_EQ(result.text,
              "~Version\n# from the rig\n"
              " VERS.     2.0          : CWLS LOG ASCII STANDARD - VERSION 2.0\n"
              " WRAP.     NO           : one line\n"
              "~Well\n"
              " STRT.F    100          : s\n"
              " STOP.F    101.50       : e\n"
              " STEP.F    0.25         : i\n"
              " NULL.     -99999       : n\n"
              " WELL.     Beech | 1    : WELL NAME\n"
              " DATE.     12:30:00     : LOGGED\n"
              "# no field here\n"
              "  RIG.                  : Seven\n"
              " COMP.                  : COMPANY\n"
              "  FLD.                  : FIELD\n"
              "  LOC.                  : LOCATION\n"
              " PROV.                  : PROVINCE\n"
              "  UWI.                  : UNIQUE WELL ID\n"
              " SRVC.                  : SERVICE COMPANY\n"
              "~Curve\n"
              " DEPT.F                  : Depth\n"
              "  CH2.GAPI  30 310       : Gamma\n"
              "# the new one\n"
              " GR_1.M3/M3              : Second\n"
              "  CH4.                   :\n"
              "~Core\nany text at all\n"
              "~Parameter\n"
              "  BHT.DEGC 35.500       : Temperature\n"
              "~Tail\nlast words\n"
              "~Ascii DEPT        CH2        GR_1  CH4\n"
              "  100.00     -99999  1.23456789    5\n"
              "  100.50  0.0000012         n/a    6\n"
              "  101.50       1E30           2    7\n");
    EXPECT_EQ(result.notes(),
              "line 16: .GAPI 30 310 : Gamma: had no mnemonic; it is now CH2\n"
              "line 18: GR:1 .M3/M3  : Second: a mnemonic cannot hold a colon; it is now GR_1\n"
              "column 4 has no ~Curve line; it is now CH4\n"
              "line 3: VERS. 1.2 : CWLS: written as LAS 2.0\n"
              "line 7: STOP.F 200 : e: does not fit the data; 101.50 is written\n"
              "line 12: no field here: no header line; kept as a comment\n"
              "line 13: RIG. Seven: had no colon\n"
              "line 28: ~Tail: stood behind the data, and stands in front of them now\n"
              "line 26: dropped data line: 101.00  1 2\n"
              "GR_1: line 25: words that are no numbers stay as they are (1)\n");
}

TEST(RebuildWhole, givesTheSameFromEveryLineEndAndFromItself) {
    const std::string first = rebuilt(test::smallWell()).text;
    EXPECT_NE(first.find("\n[TOPS]\n5478.0|Upper\n5478.6|Lower|spare\n~Ascii"), std::string::npos) << first;
    EXPECT_NE(first.find("1669.875    20.000  410.000\n"), std::string::npos) << first;
    for (const char* end : {"\r\n", "\r"}) EXPECT_EQ(rebuilt(test::withLineEnds(test::smallWell(), end)).text, first);
    const Rebuilt again = rebuilt("\xEF\xBB\xBF" + first);
    EXPECT_EQ(again.text, first);
    EXPECT_EQ(again.notes(), "");
}

TEST(RebuildWhole, putsWrappedRecordsTogetherByTheirValues) {
    test::LasMaker maker;
    for (const char* name : {"A", "B", "C", "D", "E"}) maker.curve(name);
    maker.ramp(100, 1, 4, 5);
    const std::string plain = rebuilt(maker.text()).text;
    std::string wrapped = maker.wrapped(3).text();
    const std::size_t last = wrapped.find("\n  103");
    const Rebuilt result = rebuilt(wrapped);
    EXPECT_EQ(result.text, plain);
    wrapped.resize(last);
    wrapped += "\n  103\n 13 23 33\n 43\n";
    EXPECT_EQ(rebuilt(wrapped).made.records, 3U);
    EXPECT_NE(rebuilt(wrapped).notes().find("the last record, which is cut"), std::string::npos);
}

TEST(RebuildWhole, stepAndDepthsAreThoseOfTheData) {
    struct Case {
        const char *name, *step, *data, *expected;
    };
    for (const Case& row : {Case{"as it stands", "0.1524", "1.0 1\n1.2 1\n1.3 1\n1.5 1\n", "0.1524"},
                            {"a record is missing", "0.5", "1 1\n1.5 1\n2.5 1\n", "0.5"},
                            {"another regular one", "0.25", "1 1\n1.5 1\n2.0 1\n", "0.5"},
                            {"another direction", "0.5", "2.0 1\n1.5 1\n1.0 1\n", "-0.5"},
                            {"0 of regular data", "0", "1 1\n2 1\n", "1"},
                            {"0 of others", "0", "1 1\n2 1\n7.5 1\n", "0"},
                            {"whole numbers", "0", "1 1\n2 1\n4 1\n", "0"},
                            {"none of others", "1", "1 1\n2 1\n7.5 1\n", "0"},
                            {"one record", "3", "1 1\n", "3"}}) {
        const std::string text = rebuilt("~V\n VERS. 2.0 : v\n~W\n STRT.M 1 : s\n STEP.M " + std::string(row.step) +
                                         " : s\n~C\n DEPT.M :\n GR. :\n~A\n" + row.data)
                                     .text;
        const std::string line = " STEP.M    " + std::string(row.expected) + " ";
        EXPECT_NE(text.find(line), std::string::npos) << row.name << "\n" << text;
    }
}

TEST(RebuildWhole, refusesWhatHoldsNoData) {
    for (const char* text : {"~V\n~C\nD. : x\n", "~V\n~A\n1 2\n", "~C\nA. :\nB. :\n~A\n1 2 3\n1\n"}) {
        const Rebuilt result = rebuilt(text);
        EXPECT_EQ(result.made.result, StepResult::Failed) << text;
        EXPECT_NE(result.made.why, "");
    }
}

}  // namespace
}  // namespace welvane
