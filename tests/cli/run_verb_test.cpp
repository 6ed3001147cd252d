#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "program_in_folder.h"

namespace welvane {
namespace {

using test::ProgramRun;
using test::sampleLas;

struct RunVerb : test::ProgramInFolder {
    void SetUp() override {
        write("a.las", sampleLas({"GR", "RHOB"}, 100, 5));
        write("b.las", sampleLas({"GR"}, 105, 5));
    }
    std::size_t files() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder.path()), std::filesystem::directory_iterator()));
    }
};

std::string without(std::string text, const std::string& part) {
    const std::size_t place = text.find(part);
    return place == std::string::npos ? text : text.erase(place, part.size());
}

TEST_F(RunVerb, optionsReachTheOutput) {
    struct Case {
        const char* name;
        std::vector<std::string> options;
        const char *word, *line;  ///< a word at the begin of a line of the output, and that line's words
    };
    for (const Case& row :
         {Case{"as it stands", {}, "103.00000", "103.00000 13.00000 23.00000"},
          Case{"splice", {"b.las", "--splice"}, "107.00000", "107.00000 12.00000 -999.25000"},
          Case{"limits", {"--from", ">=102", "--to", "103"}, "STRT.M", "STRT.M 102.00000 :First depth"},
          Case{"select in order", {"--select", "rhob,GR"}, "103.00000", "103.00000 23.00000 13.00000"},
          Case{"null", {"b.las", "--splice", "--null", "-9999"}, "107.00000", "107.00000 12.00000 -9999.00000"},
          Case{"offset", {"--offset", "-50"}, "53.00000", "53.00000 13.00000 23.00000"},
          Case{"finer grid, filled", {"--step", "0.5", "--fill", "linear"}, "102.50000", "102.50000 12.50000 22.50000"},
          Case{"format", {"--format", ",,,,9,1"}, "103.0", "103.0 13.0 23.0"},
          Case{"deep end first", {"--direction", "deep"}, "STRT.M", "STRT.M 104.00000 :First depth"},
          Case{"curve line", {"--curve", "DENS.G/C3 : density | RHOB"}, "103.00000", "103.00000 23.00000 13.00000"},
          Case{"link by hand", {"--link", "1:GR>RHOB:100:101"}, "101.00000", "101.00000 11.00000"},
          Case{"shift", {"--shift", "1:GR:1", "--select", "GR"}, "103.00000", "103.00000 12.00000"},
          Case{"a clip leaves zeros", {"--clip", "1:GR:101:102", "--select", "GR"}, "103.00000", "103.00000 0.00000"},
          Case{"depths of an input",
               {"--apply-depths", "1:100:102", "--select", "GR"},
               "104.00000",
               "104.00000 -999.25000"},
          Case{"version", {"--vers", "1.2"}, "WELL.", "WELL. Well :Heron 4"}}) {
        std::vector<std::string> arguments = {"run", "a.las", "-o", "c.las", "--force"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const ProgramRun done = run(arguments);
        EXPECT_EQ(done.status, 0) << row.name << ": " << done.err;
        EXPECT_EQ(line("c.las", row.word), row.line) << row.name << "\n" << folder.read("c.las");
    }
    EXPECT_EQ(files(), 3u) << "nothing but the inputs and the output";
}

TEST_F(RunVerb, sectionsAndPlainTables) {
    ASSERT_EQ(run({"run", "a.las", "-o", "c.las", "--sections", "V,C,W"}).status, 0);
    const std::string text = folder.read("c.las");
    EXPECT_LT(text.find("~Curve"), text.find("~Well"));
    ASSERT_EQ(run({"run", "a.las", "-o", "c.txt", "--ascii", "mnem", "--separator", "comma"}).status, 0);
    EXPECT_NE(folder.read("c.txt").find(','), std::string::npos);
    EXPECT_EQ(folder.read("c.txt").find('~'), std::string::npos);
}

TEST_F(RunVerb, dryRunTellsThePlanAndWritesNothing) {
    const ProgramRun done = run({"run", "a.las", "b.las", "--splice", "--dry-run", "-o", "c.las"});
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_NE(done.out.find("100 to 109 M, step 1"), std::string::npos) << done.out;
    EXPECT_FALSE(exists("c.las"));
}

TEST_F(RunVerb, refusedInputsGetOneLine) {
    const std::string good = sampleLas({"GR"}, 100, 50);
    std::string ragged = good, many = good;
    ragged.insert(ragged.find("\n", ragged.find("  120   ")), " 1");
    std::string columns;
    for (int number = 0; number < 33000; ++number) columns += " C" + std::to_string(number) + ".X : \n";
    many.insert(many.find("~Ascii"), columns);
    write("noa.las", good.substr(0, good.find("~Ascii")));
    write("header.las", good.substr(0, good.find("~Ascii") + 7));
    write("noc.las", without(without(without(good, "~Curve Information\n"), " DEPT.M            : Depth\n"),
                             " GR.GAPI         : Channel GR\n"));
    write("nostep.las", without(good, " STEP.M      1 : Step\n"));
    write("nostrt.las", without(good, " STRT.M      100 : First depth\n"));
    write("zero.las", good.substr(0, good.find("STEP.M")) + "STEP.M 0 " + good.substr(good.find(": Step")));
    write("ragged.las", ragged);
    write("many.las", many);
    write("long.las", good + std::string(5u << 20, '1') + "\n");
    folder.write("empty.las", "");
    folder.write("binary.las", std::string("~V\0~W", 5));
    ASSERT_EQ(mkfifo(folder.path("pipe.las").c_str(), 0600), 0);
    const std::pair<const char*, const char*> cases[] = {
        {"none.las", "No such file or directory"},
        {".", "Is a directory"},
        {"pipe.las", "Not a regular file"},
        {"empty.las", "the file is empty"},
        {"binary.las", "byte 3 is NUL"},
        {"noa.las", "no ~A section: nothing but a header"},
        {"header.las", "no data behind its ~A"},
        {"noc.las", "no ~Curve section"},
        {"nostep.las", "no STEP"},
        {"nostrt.las", "no STRT in its ~Well section: --from has to name"},
        {"zero.las", "its STEP is 0: --step has to name one"},
        {"ragged.las", "lines 14 and 34 differ"},
        {"many.las", "33002 channels, more than the 32767"},
        {"long.las", "is longer than 4 MB"}};
    for (const auto& [name, why] : cases) {
        const ProgramRun done = run({"run", name, "-o", "c.las"});
        EXPECT_EQ(done.status, 1) << name;
        EXPECT_EQ(done.err.rfind("welvane: " + std::string(name) + ": ", 0), 0u) << done.err;
        EXPECT_NE(done.err.find(why), std::string::npos) << done.err;
        EXPECT_EQ(std::count(done.err.begin(), done.err.end(), '\n'), 1) << done.err;
        EXPECT_FALSE(exists("c.las")) << name;
    }
    EXPECT_EQ(run({"run", "ragged.las", "-o", "c.las", "--loose"}).status, 0);
}

TEST_F(RunVerb, outputsAreGuarded) {
    folder.write("old.las", "old");
    std::filesystem::create_symlink("a.las", folder.path("link.las"));
    const std::pair<const char*, const char*> cases[] = {{"old.las", "exists already (--force replaces it)"},
                                                         {"a.las", "is one of the inputs"},
                                                         {"link.las", "is one of the inputs"},
                                                         {"none/c.las", "its folder does not exist"},
                                                         {".", "Is a directory"}};
    for (const auto& [output, why] : cases) {
        const ProgramRun done = run({"run", "a.las", "-o", output});
        EXPECT_EQ(done.status, 1) << output;
        EXPECT_EQ(done.err, std::string("welvane: ") + output + ": " + why + "\n");
    }
    EXPECT_EQ(run({"run", "a.las", "-o", "a.las", "--force"}).status, 1) << "an input is never replaced";
    EXPECT_EQ(folder.read("old.las"), "old");
    EXPECT_EQ(run({"run", "a.las", "-o", "old.las", "--force", "--quiet"}).err, "");
    EXPECT_NE(folder.read("old.las").find("~Well"), std::string::npos);
}

TEST_F(RunVerb, lineEndsAreRepairedOnTheWay) {
    const std::string text = sampleLas({"GR"}, 100, 5);
    folder.write("unix.las", text);
    const ProgramRun done = run({"run", "unix.las", "-o", "c.las"});
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_NE(done.err.find("unix.las: lines end in LF without CR; read through a repaired copy\n"), std::string::npos)
        << done.err;
    EXPECT_EQ(line("c.las", "103.00000"), "103.00000 13.00000");
    EXPECT_EQ(folder.read("unix.las"), text) << "the input stays";
    EXPECT_TRUE(std::filesystem::is_empty(homes.path("TMPDIR"))) << "the copy goes";
    EXPECT_EQ(run({"run", "unix.las", "-o", "d.las", "--strict"}).status, 1);
}

TEST_F(RunVerb, wrongOptionsAreUsage) {
    for (const std::vector<std::string>& options :
         std::vector<std::vector<std::string>>{{"--step", "0"},
                                               {"--step", "x"},
                                               {"--from", "top"},
                                               {"--from", ">>1"},
                                               {"--unit", "yard"},
                                               {"--direction", "up"},
                                               {"--header", "z.las"},
                                               {"--format", "1,2,3,4,5,6,7"},
                                               {"--format", "99999"},
                                               {"--link", "1:GR"},
                                               {"--link", "7:GR>GR"},
                                               {"--clip", "1:GR:5:4"},
                                               {"--sections", "V,X"},
                                               {"--separator", "tab"},
                                               {"--column-width", "0"},
                                               {"b.las", "b.las", "b.las", "b.las"}}) {
        std::vector<std::string> arguments = {"run", "a.las", "-o", "c.las"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramRun done = run(arguments);
        EXPECT_EQ(done.status, 2) << options.front() << " " << options.back() << ": " << done.err;
    }
    EXPECT_EQ(run({"run", "a.las", "-o", "c.las", "--select", "GR,XYZ"}).err,
              "welvane: --select: there is no output channel XYZ\n");
    EXPECT_FALSE(exists("c.las"));
}

}  // namespace
}  // namespace welvane
