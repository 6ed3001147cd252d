#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "program_in_folder.h"

namespace welvane {
namespace {

using test::ProgramRun;
using test::sampleLas;
using Json = nlohmann::json;

/// A file of the platform whose header breaks the standard: its first curve is no DEPT, a unit is written its own way,
/// a null is a thousand times too large, and one data line is short.
const std::string plexmore =
    "# Ascii save\n~Version\nVERS.\t2.0 : v\n~Well Information\nSTRT.M\t100 : s\nSTOP.M\t103 : s\nSTEP.M\t1 : s\nCN . "
    "Acme : c\nRIG . Number 7 : r\n"
    "~Curve\nDEPTH .M : d\nPOR .M3/M3 : n\n~Parameter\n~A\n100 0.1\n101 -999250.000\n102\n103 0.2\n";
const std::string sharedTitle =
    "~V\nVERS. 2.0 : v\nWRAP. NO : w\n~W\nSTRT.M 1 : s\nSTOP.M 3 : s\nSTEP.M 1 : s\nNULL. -999.25 : n\nXWELL. 12 : x "
    "YWELL. 34 : y ~Curve\n"
    "DEPT.M : d\nGR.GAPI : g\n~A\n1 5\n2 6\n3 7\n";

struct FileVerbs : test::ProgramInFolder {
    std::string sound = sampleLas({"GR", "RHOB"}, 100, 5);
    void SetUp() override {
        write("a.las", sound);
        folder.write("unix.las", sound);
    }
    bool says(const ProgramRun& done, const std::string& text) const {
        return (done.out + done.err).find(text) != std::string::npos;
    }
};

TEST_F(FileVerbs, checkJudgesWhateverItIsGiven) {
    write("plexmore.las", plexmore);
    write("title.las", sharedTitle);
    write("a.bak", sound);
    folder.write("table.csv", "a,b\n");
    folder.write("empty.las", "");
    folder.write("binary.las", std::string("~V\0~W", 5));
    folder.write("cr.las", "~V\r~W\r~A\r1 2\r");
    write("mark.las", "\xEF\xBB\xBF" + sound);
    write("long.las", std::string(60, '#') + "\n~V\n~W\n~P\n" + std::string(20000, 'x') +
                          "\n~C\nDEPT.M : d\nGR. : g\n~A\n1 2\n" + std::string(9000, ' '));
    write("late.las", "#\n" + std::string(30000, '#') + "\n~V\n~W\n~A\n1 2\n");
    std::filesystem::create_directory(folder.path("folder.las"));
    ASSERT_EQ(::mkfifo(folder.path("pipe.las").c_str(), 0600), 0);
    std::filesystem::create_symlink("circle2.las", folder.path("circle1.las"));
    std::filesystem::create_symlink("circle1.las", folder.path("circle2.las"));
    struct Case {
        const char *file, *status;
        bool usable;
        int quickCheck, lineEnds, lasTest, plexmoreKind;
    };
    for (const Case& row : {Case{"a.las", "LAS File", true, -1, -1, -1, -1},
                            {"unix.las", "Unix Termination", false, 1, 1, -1, -1},
                            {"cr.las", "Unix Termination", false, 1, 1, -1, -1},
                            {"plexmore.las", "Plexmore 2.X LAS", false, 2, -1, -1, 2},
                            {"title.las", "LAS File", false, -1, -1, -1, -1},
                            {"a.bak", "Not Basic LAS!", false, 4, -1, 1, -1},
                            {"table.csv", "CSV File", true, 1, 1, 1, -1},
                            {"empty.las", "File Doesn't Exist", false, 1, 3, 2, -1},
                            {"none.las", "File Doesn't Exist", false, 1, 2, 0, 0},
                            {"binary.las", "Unix Termination", false, 1, 4, -1, -1},
                            {"mark.las", "LAS File", true, -1, -1, -1, -1},
                            {"long.las", "LAS File", true, -1, -1, -1, -1},
                            {"late.las", "LAS File", true, -1, -1, -1, -1},
                            {"folder.las", "Unusable File!", false, 1, 0, 0, 0},
                            {"pipe.las", "Unusable File!", false, 1, 0, 0, 0},
                            {"circle1.las", "File Doesn't Exist", false, 1, 2, 0, 0}}) {
        SCOPED_TRACE(row.file);
        const ProgramRun done = run({"check", row.file, "--json"});
        EXPECT_EQ(done.status, row.usable ? 0 : 1) << done.err;
        const Json json = Json::parse(done.out);
        EXPECT_EQ(json["path"], row.file);
        EXPECT_EQ(json["status"], row.status);
        EXPECT_EQ(json["usable"], row.usable);
        EXPECT_EQ(json["quickCheck"], row.quickCheck);
        EXPECT_EQ(json["lineEndKind"], row.lineEnds);
        EXPECT_EQ(json["quickLasTest"], row.lasTest);
        EXPECT_EQ(json["plexmoreKind"], row.plexmoreKind);
    }
    EXPECT_EQ(Json::parse(run({"check", "long.las", "--json"}).out)["channels"], 1)
        << "the header goes on behind the first block";
    const ProgramRun text = run({"check", "a.las", "mark.las", "unix.las"});
    EXPECT_EQ(
        text.out,
        "a.las: LAS File; CR LF, LAS 2.0, not wrapped, 2 channels, 100 to 104 M\n"
        "mark.las: LAS File; CR LF, LAS 2.0, not wrapped, 2 channels, 100 to 104 M, begins with a byte order mark\n"
        "unix.las: Unix Termination; LF only, LAS 2.0, not wrapped, 2 channels, 100 to 104 M\n"
        "3 files: 2 usable, 1 not\n");
    EXPECT_EQ(run({"check", "title.las", "--yes"}).status, 1);
    EXPECT_NE(folder.read("title.las").find("YWELL"), std::string::npos)
        << "check changes nothing, whatever it is answered";
}

TEST_F(FileVerbs, repairDoesWhatIsAskedOrFound) {
    write("plexmore.las", plexmore);
    write("title.las", sharedTitle);
    folder.write("both.las", sharedTitle);
    folder.write("mixed.las", "~V\r\n~W\n~A\r\n1\n2\r\n");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char *said, *holds, *lacks;  ///< on the streams; in out.las
    };
    for (const Case& row : {
             Case{{"unix.las"}, 0, "each LF without CR before it becomes CR LF", "~Ascii\r\n", "\n\n"},
             {{"mixed.las", "--line-ends"}, 0, "out.las: written", "~V\r\n~W\r\n~A\r\n1\r\n2\r\n", "\r\r"},
             {{"title.las"}, 0, "line 9: XWELL. 12 : x YWELL. 34 : y", "\r\n~Curve\r\n", "YWELL"},
             {{"both.las"}, 0, "line 9: XWELL. 12", "n\r\n~Curve\r\nDEPT", "YWELL"},
             {{"plexmore.las"}, 0, "dropped data line, line 17: 102", "-999.25", "\r\n102"},
             {{"plexmore.las", "--rebuild"}, 0, "dropped header line, line 9: RIG . Number 7 : r", "POR.V/V", "RIG"},
             {{"a.las"}, 0, "nothing to repair; copied", "Heron 4", "\r\r"},
             {{"a.las", "--rebuild"}, 0, "clean LAS 2.0", "Heron 4", "First depth"},
             {{"unix.las", "--rebuild"}, 1, "add --line-ends", "", ""},
             {{"unix.las", "--rebuild", "--line-ends"}, 0, "clean LAS 2.0", "Heron 4", ""},
             {{"none.las"}, 1, "none.las: No such file or directory", "", ""},
         }) {
        const std::string name = row.arguments.front() + " " + row.arguments.back();
        SCOPED_TRACE(name);
        std::vector<std::string> arguments = {"repair", "-o", "out.las", "--force"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        std::filesystem::remove(folder.path("out.las"));
        const std::string before = folder.read(row.arguments.front());
        const ProgramRun done = run(arguments);
        EXPECT_EQ(done.status, row.status) << done.err;
        EXPECT_TRUE(says(done, row.said)) << done.err;
        EXPECT_EQ(exists("out.las"), row.status == 0);
        EXPECT_EQ(folder.read(row.arguments.front()), before) << "the input is left alone";
        const std::string out = folder.read("out.las");
        EXPECT_TRUE(*row.holds == '\0' || out.find(row.holds) != std::string::npos) << out;
        EXPECT_TRUE(*row.lacks == '\0' || out.find(row.lacks) == std::string::npos) << out;
    }
    run({"repair", "both.las", "-o", "whole.las"});
    EXPECT_EQ(run({"check", "whole.las"}).status, 0) << "what check finds wrong is repaired";
}

TEST_F(FileVerbs, repairInPlaceKeepsACopyBeside) {
    EXPECT_EQ(run({"repair", "unix.las"}).status, 2) << "neither an output nor --in-place";
    const ProgramRun first = run({"repair", "unix.las", "--in-place"});
    EXPECT_EQ(first.status, 0);
    EXPECT_TRUE(says(first, "kept as unix.unixterm.las")) << first.err;
    EXPECT_EQ(folder.read("unix.unixterm.las"), sound);
    EXPECT_EQ(folder.read("unix.las"), folder.read("a.las"));
    folder.write("unix.las", sound + "\n");
    EXPECT_TRUE(says(run({"repair", "unix.las", "--in-place"}), "unix.unixterm-2.las")) << "an older copy is not lost";
    EXPECT_EQ(folder.read("unix.unixterm.las"), sound);

    // Half-way through: the line ends are done, the rebuild finds no data.
    const std::string broken = "# Ascii save\n~V\n~W\n~C\nDEPT\t.M : d\nGR. : g\n~A\n1\n2\n3\n";
    folder.write("broken.las", broken);
    const ProgramRun failed = run({"repair", "broken.las", "--in-place"});
    EXPECT_EQ(failed.status, 1) << failed.err;
    EXPECT_EQ(folder.read("broken.las"), broken);
    EXPECT_FALSE(exists("broken.unixterm.las"));
}

TEST_F(FileVerbs, wrapAndUnwrapGiveTheSameSamples) {
    std::vector<std::string> names;
    for (int column = 0; column < 20; ++column) names.push_back("C" + std::to_string(column));
    write("wide.las", sampleLas(names, 100, 7));
    EXPECT_EQ(run({"wrap", "wide.las", "-o", "wrapped.las"}).status, 0);
    EXPECT_EQ(run({"wrap", "wrapped.las", "-o", "again.las"}).status, 0);
    EXPECT_EQ(run({"wrap", "a.las", "-o", "again.las"}).status, 1) << "an output that exists";
    const auto stats = [&](const char* file) { return Json::parse(run({"stats", file, "--json"}).out)["channels"]; };
    EXPECT_EQ(stats("wrapped.las"), stats("wide.las"));
    EXPECT_EQ(stats("again.las"), stats("wide.las"));
    EXPECT_EQ(Json::parse(run({"check", "wrapped.las", "--json"}).out)["wrap"], "YES");
    const auto words = [&](const char* file) {
        const std::string bytes = folder.read(file);
        std::istringstream data(bytes.substr(bytes.find("~A") + 6));
        std::vector<std::string> all;
        for (std::string word; data >> word;) all.push_back(word);
        return all;
    };
    EXPECT_EQ(words("again.las"), words("wide.las")) << "every sample, in its own words";
    EXPECT_EQ(words("wrapped.las").size(), 7u * 21u);
}

TEST_F(FileVerbs, topsAndStatisticsOfOneFormation) {
    std::string text = sound;
    text.insert(text.find("~Ascii"), "[TOPS]\n101 | Upper \xC9\n103|Lower\n");
    write("tops.las", text);
    const Json tops = Json::parse(run({"tops", "tops.las", "--json"}).out)["tops"];
    ASSERT_EQ(tops.size(), 2u);
    EXPECT_EQ(tops[0], Json({{"depth", "101"}, {"name", "Upper \xC3\x89"}})) << "Latin-1 in the file, UTF-8 in JSON";
    EXPECT_EQ(run({"tops", "tops.las"}).out, "Depth  Name\n  101  Upper \xC3\x89\n  103  Lower\n");
    const ProgramRun none = run({"tops", "a.las"});
    EXPECT_TRUE(none.status == 0 && none.out.empty() && says(none, "no [TOPS] block")) << none.err;

    const Json whole = Json::parse(run({"stats", "unix.las", "--json"}).out);
    EXPECT_EQ(whole["depthUnit"], "M");
    EXPECT_EQ(whole["top"], 100);
    EXPECT_EQ(whole["bottom"], 104);
    ASSERT_EQ(whole["channels"].size(), 2u) << "the index is none";
    EXPECT_EQ(
        whole["channels"][0],
        Json::parse(
            R"({"mnem":"GR","unit":"GAPI","minimum":10.0,"maximum":14.0,"mean":12.0,"count":5,"minimumDepth":100.0,
        "maximumDepth":104.0,"standardDeviation":1.5811388300841898,"footage":4.0,"intervals":[{"top":100.0,"bottom":104.0}]})"));
    EXPECT_EQ(Json::parse(run({"stats", "a.las", "unix.las", "--json"}).out).size(), 2u);
    const ProgramRun wrong = run({"stats", "tops.las", "--top", "Middle"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_TRUE(says(wrong, "no top is named Middle; it has Upper \xC3\x89, Lower")) << wrong.err;
    EXPECT_TRUE(says(run({"stats", "a.las"}),
                     "GR    GAPI      5       10  100       14  104    12  1.58114        4  100 to 104"))
        << run({"stats", "a.las"}).out;
}

TEST_F(FileVerbs, bytesShowPagesAndBadEnds) {
    folder.write("some.txt", "one\r\ntwo\nthree\x80");
    EXPECT_EQ(run({"bytes", "some.txt"}).out,
              "Text or Ascii codes for: some.txt\nPage 1 of 1, bytes 0 to 14 of 15\n"
              "00000000  |one..two*three.|  <- isolated line feed at 8\n");
    EXPECT_TRUE(says(run({"bytes", "some.txt", "--codes"}), "013  010  116  119  111  010* 116"));
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char* said;
    };
    folder.write("empty.txt", "");
    for (const Case& row : {Case{{"bytes", "a.las", "--page", "2"}, 0, "Page 2 of 2, bytes 400 to"},
                            {{"bytes", "a.las", "--page", "3"}, 1, "there is no page 3; it has 2 pages"},
                            {{"bytes", "a.las", "--page", "0"}, 1, "there is no page 0"},
                            {{"bytes", "empty.txt"}, 0, "The file is empty."},
                            {{"bytes", "some.txt", "--find-bad-ends"}, 1, "found at byte 8 (page 1)"},
                            {{"bytes", "a.las", "--find-bad-ends"}, 0, "No Isolated Line Feeds"},
                            {{"bytes", "."}, 1, "Is a directory"},
                            {{"bytes", "/dev/zero"}, 1, "Not a regular file"},
                            {{"bytes", "none"}, 1, "No such file"}}) {
        const ProgramRun done = run(row.arguments);
        EXPECT_EQ(done.status, row.status) << row.said;
        EXPECT_TRUE(says(done, row.said)) << done.out << done.err;
    }
}

TEST_F(FileVerbs, replaceWritesANewFile) {
    folder.write("in.txt", "Depth 1\r\ndepth 2\r\n");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char *out, *said;
    };
    for (const Case& row :
         {Case{{"--search", "DEPTH", "--replace", "-999.25"}, 0, "-999.25 1\r\n-999.25 2\r\n", "2 replaced"},
          {{"--search", "depth "}, 0, "1\r\n2\r\n", "2 replaced"},
          {{"--search", "13 10", "--replace", "10", "--codes"}, 0, "Depth 1\ndepth 2\n", "2 replaced"},
          {{"--search", "absent", "--replace", "x"}, 0, "Depth 1\r\ndepth 2\r\n", "0 replaced"},
          {{"--search", "a", "--replace", "10", "--codes"}, 1, "", "Only the space and numbers (0-9)"},
          {{"--search", "256", "--replace", "10", "--codes"}, 1, "", "must be between 1-255"},
          {{"--search", ""}, 2, "", "nothing to search for"}}) {
        std::filesystem::remove(folder.path("out.txt"));
        std::vector<std::string> arguments = {"replace", "in.txt", "-o", "out.txt"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const ProgramRun done = run(arguments);
        EXPECT_EQ(done.status, row.status) << row.said << done.err;
        EXPECT_EQ(folder.read("out.txt"), row.out);
        EXPECT_TRUE(says(done, row.said)) << done.err;
    }
    EXPECT_EQ(run({"replace", "in.txt", "-o", "in.txt", "--force", "--search", "1", "--replace", "2"}).status, 1)
        << "not onto itself";
}

}  // namespace
}  // namespace welvane
