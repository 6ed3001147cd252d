#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "program_in_folder.h"

namespace welvane {
namespace {

using test::ProgramRun;
using test::sampleLas;
using Json = nlohmann::json;

/// a.las: two channels over 4 m each. b.las: one over 4 m, with LF ends.
struct ListVerb : test::ProgramInFolder {
    void SetUp() override {
        write("a.las", sampleLas({"GR", "RHOB"}, 100, 5));
        folder.write("b.las", sampleLas({"GR"}, 105, 5));
    }
};

TEST_F(ListVerb, listingAndSummary) {
    const ProgramRun both = run({"list", "a.las", "b.las"});
    EXPECT_EQ(both.status, 0) << both.err;
    for (const char* line : {"LISTING for : b.las\n", "WELL: Heron 4 Well\n", "RHOB  .GAPI         4.0 c-M\n",
                             "Total C-M :        8.0\n", "Total Non-Null Curve-M = 12.0\n", "2     GR    GAPI  8.0000"})
        EXPECT_NE(both.out.find(line), std::string::npos) << line << both.out;
    EXPECT_EQ(both.out.find('\r'), std::string::npos);

    const ProgramRun filed = run({"list", "a.las", "-o", "report.txt", "--comment", "two wells"});
    EXPECT_EQ(filed.status, 0) << filed.err;
    EXPECT_EQ(filed.out.find("SUMMARY"), std::string::npos);
    EXPECT_NE(folder.read("report.txt").find("\r\ntwo wells\r\n"), std::string::npos);
    EXPECT_EQ(run({"list", "a.las", "-o", "report.txt"}).status, 1) << "exists already";
    EXPECT_EQ(run({"list", "a.las", "-o", "a.las", "--force"}).status, 1) << "is an input";
    EXPECT_TRUE(std::filesystem::is_empty(homes.path("TMPDIR")));
}

TEST_F(ListVerb, optionsShapeTheListing) {
    struct Case {
        std::vector<std::string> options;
        const char *with, *without;
    };
    for (const Case& row :
         {Case{{"--no-statistics"}, "c-M", "Statistics:"}, Case{{"--no-curves"}, "Statistics:", "Curves "},
          Case{{"--no-footage"}, "GR    .GAPI", "c-M"}, Case{{"--intervals"}, ": (100.0- 104.0)", "Using TOP"},
          Case{{"--mnemonics", "STEP,XYZ"}, "STEP: 1 Step\nXYZ:", "WELL:"},
          Case{{"--no-mnemonics"}, "c-M", "Mnemonics"},
          Case{{"--top", "NOTOP"}, "TOP, NOTOP not found. Using entire LAS interval", "Using TOP"},
          Case{{"--price"}, "Price Estimate this well: $150.00", "Other Charges"},
          Case{{"--per-foot", "100", "--metric", "--other", "1", "--discount", "50", "--pricing-comment", "half"},
               "TOTAL                          =      $400.50\n\nPRICING COMMENTS*\n\nhalf\n",
               "$150"}}) {
        std::vector<std::string> arguments = {"list", "a.las"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const ProgramRun done = run(arguments);
        EXPECT_EQ(done.status, 0) << done.err;
        EXPECT_NE(done.out.find(row.with), std::string::npos) << row.options.front() << "\n" << done.out;
        EXPECT_EQ(done.out.find(row.without), std::string::npos) << row.options.front() << "\n" << done.out;
    }
}

TEST_F(ListVerb, gridAndJson) {
    const ProgramRun grid = run({"list", "a.las", "--csv", "--no-statistics", "--no-footage"});
    EXPECT_EQ(grid.out,
              "WellName,Channel,Min,Max,Average,STD,NNCF,Min @,Max @\r\n"
              "Heron 4 (a.las),GR.GAPI,10.0000,14.0000,12.0000,1.5811,4.0000,100.0000,104.0000\r\n"
              "Heron 4 (a.las),RHOB.GAPI,20.0000,24.0000,22.0000,1.5811,4.0000,100.0000,104.0000\r\n");
    const Json all = Json::parse(run({"list", "a.las", "none.las", "b.las", "--json", "--price"}).out);
    EXPECT_EQ(all["files"].size(), 2u);
    EXPECT_EQ(all["files"][1]["path"], "b.las");
    EXPECT_EQ(all["files"][0]["channels"][1]["mean"], 22);
    EXPECT_EQ(all["skipped"], Json::array({"none.las"}));
    EXPECT_EQ(all["totals"]["nonNullCurve"], 12);
    EXPECT_EQ(all["totals"]["price"], 300);
}

TEST_F(ListVerb, unreadableFilesAreSkippedAndNamed) {
    folder.write("empty.las", "");
    const ProgramRun done = run({"list", "empty.las", "none.las", ".", "a.las"});
    EXPECT_EQ(done.status, 1);
    EXPECT_EQ(done.err,
              "welvane: empty.las: the file is empty\nwelvane: none.las: No such file or directory\nwelvane: .: Is a "
              "directory\n");
    EXPECT_NE(done.out.find("LISTING for : a.las"), std::string::npos);
    const ProgramRun none = run({"list", "empty.las", "-o", "report.txt"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_FALSE(exists("report.txt"));
}

TEST_F(ListVerb, priceOfALength) {
    struct Case {
        std::vector<std::string> options;
        int status;
        const char* total;
    };
    for (const Case& row :
         {Case{{"--feet", "10000"}, 0, "420.0"}, Case{{"--feet", "1000"}, 0, "150.0"},
          Case{{"--feet", "1000", "--minimum", "0"}, 0, "42.0"},
          Case{{"--feet", "1000", "--per-foot", "2", "--other", "100", "--discount", "10", "--metric"}, 0, "1890.0"},
          Case{{"--feet", "1000", "--discount", "100", "--minimum", "0"}, 0, "0.0"},
          Case{{"--feet", "far"}, 2, "--feet: 'far' is not a number"}, Case{{"--feet", "nan"}, 2, "is not a number"},
          Case{{"--feet", "1e300"}, 2, "is not between"},
          Case{{"--feet", "1", "--discount", "101"}, 2, "is not between 0 and 100"},
          Case{{"--feet", "1e30", "--per-foot", "1e30"}, 1, "beyond what can be counted"}}) {
        std::vector<std::string> arguments = {"price", "--json"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const ProgramRun done = run(arguments);
        EXPECT_EQ(done.status, row.status) << row.total << done.err;
        if (row.status == 0) {
            EXPECT_EQ(Json::parse(done.out)["total"].dump(), row.total);
        } else {
            EXPECT_NE(done.err.find(row.total), std::string::npos) << done.err;
        }
    }
    EXPECT_NE(run({"price", "--feet", "10000"}).out.find("$420.00\n"), std::string::npos);
}

}  // namespace
}  // namespace welvane
