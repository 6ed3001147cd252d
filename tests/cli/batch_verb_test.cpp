#include <filesystem>
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

struct BatchVerb : test::ProgramInFolder {
    void SetUp() override {
        write("a.las", sampleLas({"GR", "RHOB"}, 100, 5));
        write("b.las", sampleLas({"GR"}, 200, 7));
        write("bad.las", "~Version\n VERS. 2.0 :\n");
    }
    std::string verdicts(const ProgramRun& done) const {
        std::string text;
        const Json all = Json::parse(done.out);
        for (const Json& file : all["files"]) text += file["verdict"].get<std::string>() + " ";
        return text;
    }
};

TEST_F(BatchVerb, oneBadFileDoesNotEndIt) {
    const ProgramRun done = run({"batch", "a.las", "bad.las", "gone.las", "b.las", "--out-dir", "out", "--json"});
    EXPECT_EQ(done.status, 1) << done.err;
    EXPECT_EQ(verdicts(done), "written failed failed written ");
    EXPECT_NE(done.err.find("welvane: bad.las: "), std::string::npos) << done.err;
    const Json all = Json::parse(done.out);
    EXPECT_EQ(all["files"][3]["samples"], 7);
    EXPECT_EQ(all["files"][0]["channels"], 2);
    EXPECT_EQ(all["total"]["samples"], 12);
    EXPECT_EQ(line("out/b.las", "203.00000"), "203.00000 13.00000");
    EXPECT_FALSE(exists("out/bad.las"));
}

TEST_F(BatchVerb, tableEndsInATotalAndAllGoodIsExitStatusZero) {
    const ProgramRun done = run({"batch", "a.las", "b.las", "--out-dir", "new/folder"});
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_TRUE(exists("new/folder/a.las"));
    EXPECT_NE(done.out.find("Total of 2 files"), std::string::npos) << done.out;
    EXPECT_NE(done.out.find("2 written\n"), std::string::npos) << done.out;
}

TEST_F(BatchVerb, noInputIsReplacedAndNoOutputTwice) {
    std::filesystem::create_directory(folder.path("sub"));
    write("sub/a.las", sampleLas({"GR"}, 300, 3));
    const std::string before = folder.read("a.las");
    ProgramRun done = run({"batch", "a.las", "b.las", "--out-dir", ".", "--force", "--json"});
    EXPECT_EQ(verdicts(done), "failed failed ");
    EXPECT_EQ(done.status, 1);
    EXPECT_EQ(folder.read("a.las"), before);
    done = run({"batch", "a.las", "sub/a.las", "--out-dir", "out", "--json"});
    EXPECT_EQ(verdicts(done), "written failed ");
    EXPECT_NE(done.err.find("already that of a.las"), std::string::npos) << done.err;
    EXPECT_EQ(line("out/a.las", "102.00000"), "102.00000 12.00000 22.00000");
    done = run({"batch", "a.las", "--out-dir", "sub", "--json"});
    EXPECT_EQ(verdicts(done), "failed ") << "what exists stays without --force";
}

/// A step of zero refuses its own file only, and the format that a filter sets for one file is set anew for each.
TEST_F(BatchVerb, filesDoNotReachEachOther) {
    std::string flat = sampleLas({"GR"}, 400, 3);
    const std::size_t step = flat.find("STEP.M      1");
    ASSERT_NE(step, std::string::npos);
    flat.replace(step, 13, "STEP.M      0");
    write("flat.las", flat);
    const ProgramRun done = run({"batch", "flat.las", "a.las", "b.las", "--out-dir", "out", "--json"});
    EXPECT_EQ(verdicts(done), "failed written written ") << done.err;
}

TEST_F(BatchVerb, filterInLfOnlyShapesEveryFileAndFindsItsTables) {
    std::filesystem::create_directory(folder.path("house"));
    write("house/wells.csv", "No,Well,Operator\n1,Heron 4,Marlstone\n");
    folder.write(
        "house/h.fil",
        "~Version\n WRAP. NO :\n~Well\n FMT_FILTER. 9.1 :\n COMP. [File=wells.csv Key=LAS(~W:WELL) Col=Operator] "
        ": Company\n~Curve\n GAMMA.API : Gamma ray | GR\n");
    const ProgramRun done = run({"batch", "a.las", "b.las", "--out-dir", "out", "--filter", "house/h.fil", "--json"});
    EXPECT_EQ(verdicts(done), "written written ") << done.err;
    EXPECT_EQ(line("out/a.las", "103.0"), "103.0 13.0");
    EXPECT_EQ(line("out/b.las", "COMP."), "COMP. Marlstone :Company");
    EXPECT_NE(line("out/b.las", "GAMMA.API"), "");
    std::size_t notes = 0;
    for (std::size_t at = 0; (at = done.err.find("h.fil: lines end in LF", at)) != std::string::npos; ++at) ++notes;
    EXPECT_EQ(notes, 1u) << done.err;
}

TEST_F(BatchVerb, optionsThatMakeNoSenseAreWrongUsage) {
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--step", "0"}, {"--unit", "X"}, {"--splice"}}) {
        std::vector<std::string> arguments = {"batch", "a.las", "b.las", "--out-dir", "out"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        EXPECT_EQ(run(arguments).status, 2) << options[0];
    }
    EXPECT_EQ(run({"batch", "a.las"}).status, 2);
}

TEST_F(BatchVerb, plainTablesAreNotCalledLas) {
    EXPECT_EQ(run({"batch", "a.las", "--out-dir", "out", "--ascii", "MNEM", "--separator", "comma"}).status, 0);
    EXPECT_TRUE(exists("out/a.txt"));
}

struct TvdVerb : test::ProgramInFolder {};

TEST_F(TvdVerb, tableAndMappedDepths) {
    write("s.csv", "MD,INC,AZI\n0,0,10\n100,60,10\n200,60,20\n");
    ProgramRun done = run({"tvd", "s.csv", "--json"});
    ASSERT_EQ(done.status, 0) << done.err;
    const Json table = Json::parse(done.out);
    ASSERT_EQ(table.size(), 3u);
    // An arc from upright to 60 degrees: length times sin(30) / 30 degrees times cos(30).
    EXPECT_NEAR(table[1]["tvd"].get<double>(), 82.70, 0.01);
    EXPECT_NEAR(table[2]["tvd"].get<double>(), 132.70, 0.02);
    EXPECT_EQ(table[2]["azimuth"], 20.0);
    done = run({"tvd", "s.csv", "--json", "--map", "0,150", "300"});
    const Json mapped = Json::parse(done.out);
    EXPECT_NEAR(mapped[1]["tvd"].get<double>(), 107.70, 0.02);
    EXPECT_NEAR(mapped[2]["tvd"].get<double>(), 182.70, 0.03);
    done = run({"tvd", "s.csv", "--json", "--inverse", "--map", "107.70"});
    EXPECT_NEAR(Json::parse(done.out)[0]["md"].get<double>(), 150, 0.05);
}

TEST_F(TvdVerb, whatIsNoStationIsSkippedAndTold) {
    std::string many = "MD,INC\n";
    for (int station = 0; station < 6000; ++station) many += std::to_string(10 * station) + ",1\n";
    struct Case {
        const char* name;
        std::string text;
        int status;
        std::size_t stations;
        const char* told;
    };
    for (const Case& row :
         {Case{"text", "MD,INC\n0,0\nx,1\n100,?\n200,0\n", 0, 2, "2 lines skipped as no station, first \"x,1\""},
          Case{"repeated", "0 0\n100 5\n100 5\n", 0, 3, "1 station at the depth of the one above"},
          Case{"one", "100 5\n", 0, 1, "one station alone maps no depth"},
          Case{"too many", many, 0, 5000, "behind the first 5000 stations skipped"},
          Case{"descending", "200 5\n100 5\n0 5\n", 0, 3, "put in order"},
          Case{"no deviation", "MD,TVD\n0,0\n100,90\n", 0, 2, "its own TVD is taken"},
          Case{"beyond any depth", "0 0\n1e300 5\n", 0, 1, "1 line skipped"},
          Case{"nothing", "no survey\n", 1, 0, "no survey station was found"}}) {
        write("s.txt", row.text);
        const ProgramRun done = run({"tvd", "s.txt", "--json"});
        EXPECT_EQ(done.status, row.status) << row.name << done.err;
        EXPECT_NE(done.err.find(row.told), std::string::npos) << row.name << ": " << done.err;
        EXPECT_EQ(row.status == 0 ? Json::parse(done.out).size() : 0, row.stations) << row.name;
    }
}

TEST_F(TvdVerb, savedTableReadsBack) {
    write("s.txt", "M 300.00 299.98\n300 0.6 118.4\n400 10 120\n500 20 121\n-1 -1 -1\n");
    ASSERT_EQ(run({"tvd", "s.txt", "-o", "t.txt"}).status, 0);
    const Json first = Json::parse(run({"tvd", "s.txt", "--json"}).out);
    EXPECT_EQ(Json::parse(run({"tvd", "t.txt", "--unit", "M", "--json"}).out), first);
    EXPECT_EQ(first[0]["unit"], "M");
    EXPECT_EQ(run({"tvd", "s.txt", "-o", "t.txt"}).status, 1) << "what exists stays without --force";
    EXPECT_EQ(run({"tvd", "s.txt", "-o", "s.txt", "--force"}).status, 1);
}

struct FunctionsVerb : test::ProgramInFolder {};

TEST_F(FunctionsVerb, catalogueHoldsSixteenAndItsExamplesRun) {
    const Json all = Json::parse(run({"functions", "--json"}).out);
    ASSERT_EQ(all.size(), 16u);
    write("a.las",
          sampleLas({"ILD", "CILD", "RHOB", "DPHI", "DT", "SPHI", "TNPH", "NPHI", "NEUT", "GR", "TRACK"}, 100, 3));
    for (std::size_t code = 0; code < all.size(); ++code) {
        const std::string key = all[code]["key"];
        EXPECT_EQ(all[code]["code"], code);
        const ProgramRun done = run({"run", "a.las", "-o", "c.las", "-f", "--curve",
                                     "NEW.X : " + key + " | " + all[code]["example"].get<std::string>()});
        EXPECT_EQ(done.status, 0) << key << done.err;
        EXPECT_EQ(done.err.find("needs"), std::string::npos) << key << ": " << done.err;
        EXPECT_EQ(done.err.find("no channel"), std::string::npos) << key << ": " << done.err;
        EXPECT_NE(run({"functions", key}).out.find(all[code]["description"].get<std::string>()), std::string::npos)
            << key;
    }
    EXPECT_EQ(run({"functions", "NOSUCH"}).status, 1);
}

}  // namespace
}  // namespace welvane
