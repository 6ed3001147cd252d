// Every call by which a run opens or reads a file fails once. What comes out must be what comes out without a failure,
// or nothing, and that told.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/las_maker.h"
#include "support/run_program.h"
#include "support/sample_las.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;
using Texts = std::map<std::string, std::string>;

/// One command and the files that it finds. Files below "home/" are the reference files, and "home/settings.ini" the
/// user's settings.
struct Scene {
    const char* name;
    std::vector<std::string> arguments;
    Texts files;
    bool headless = false;
    const char* mayStand = "";  ///< an output that is whole before the last file is read
};

const std::string unitsFile = "[Depth|F]\nF|1|0\nM|0.3048|0\n[Gamma|GAPI]\nGAPI|1|0\n";
const std::string curvesFile = "[GAMMA|02 001 00 00|GAPI|GAPI]\nGR. :Gamma Ray\nGRC. :Gamma Ray corrected\n";
const std::string settingsFile = "[Startup]\nformatdef=6|15|50|0|12|3\n";
const Texts home = {{"home/units.ini", unitsFile},
                    {"home/curves.ini", curvesFile},
                    {"home/para.ini", "RUN . : Run number\n"},
                    {"home/settings.ini", settingsFile}};

const std::string filterText = withLineEnds(
    "~Version\n VERS. 2.0 : x\n~Well\n STEP.M 0.5 : step\n NULL. -9999 : null\n COMP. [File=WELLS.csv Key=LAS(~W:WELL) "
    "Col=Operator] : company\n FLD. [File=b.las Key=WELL] : of another file\n~Curve\n DEPT. : depth\n GAM.GAPI : Gamma "
    "| "
    "GR\n");
const std::string tableText = "Id,Well,Operator\n1,Heron 4,Elm Oil\n";
const std::string surveyText = "0 0 0\n50 5 10\n200 20 10\n";
const std::string titleFault = withLineEnds(
    "~V\n VERS. 2.0 : x\n WRAP. NO : x\n~W\n STRT.M 100 : x\n STOP.M 102 : x\n STEP.M 1 : x\n NULL. -999.25 : "
    "x\nXWELL. 1 : x YWELL. 2 : y ~Curve\n DEPT.M : d\n GR.GAPI : g\n~A\n100 1\n101 2\n102 3\n");

std::string lasBytes(const std::vector<std::string>& channels, int start) {
    return withLineEnds(sampleLas(channels, start, 5));
}
Texts with(Texts files, const Texts& more) {
    files.insert(more.begin(), more.end());
    return files;
}

const std::vector<Scene>& scenes() {
    static const Texts two = {{"a.las", lasBytes({"GR", "RHOB"}, 100)}, {"b.las", lasBytes({"GR"}, 105)}};
    static const Texts filtered = with(two, {{"f.fil", filterText}, {"wells.csv", tableText}});
    static const std::vector<Scene> all = {
        {"Splice",
         {"run", "a.las", "b.las", "--splice", "--force", "-o", "c.las"},
         with(with(two, home), {{"c.las", "old"}})},
        {"Filter", {"run", "a.las", "--filter", "f.fil", "-o", "c.las"}, filtered},
        {"FilterInLineFeeds",
         {"run", "a.las", "--filter", "f.fil", "-o", "c.las"},
         {{"a.las", sampleLas({"GR"}, 100, 5)}, {"f.fil", "~Well\n STEP.M 0.5 : step\n"}}},
        {"Survey", {"run", "a.las", "--tvd", "s.txt", "-o", "c.las"}, with(with(two, home), {{"s.txt", surveyText}})},
        {"Header", {"run", "a.las", "b.las", "--header", "2", "--ascii", "MNEM", "-o", "c.txt"}, two},
        {"HeadlessSplice",
         {"/File1=a.las", "/File2=b.las", "/Dowhat=splice", "/Output=c.las"},
         with(with(two, home), {{"c.las", "old"}}),
         true},
        {"HeadlessMerge", {"/File1=a.las", "/Dowhat=merge", "/Filter=f.fil", "/Output=c.las"}, filtered, true},
        {"HeadlessFilter",
         {"/File1=a.las", "/Dowhat=Filter", "/Filter=f.fil", "/Output=c.las"},
         with({{"a.las", sampleLas({"GR"}, 100, 5)}}, {{"f.fil", filterText}, {"wells.csv", tableText}, {"b.las", ""}}),
         true},
        {"HeadlessTitle",
         {"/File1=a.las", "/Dowhat=Filter", "/Filter=f.fil", "/Output=c.las"},
         {{"a.las", titleFault}, {"f.fil", withLineEnds("~Well\n STEP.M 0.5 : step\n")}},
         true},
        {"Info", {"info", "a.las"}, two},
        {"Stats", {"stats", "a.las"}, two},
        {"List", {"list", "a.las", "-o", "r.txt"}, two, false, "r.txt"},
        {"Tops", {"tops", "a.las"}, two},
        {"Check", {"check", "a.las"}, two},
        {"CheckLongHeader",
         {"check", "a.las"},
         {{"a.las", withLineEnds("~V\n~W\n" + std::string(20'000, '#') + "\n~C\n D. : d\n~A\n1\n")}}},
        {"Bytes", {"bytes", "a.las", "--find-bad-ends"}, two},
        {"Wrap", {"wrap", "a.las", "-o", "c.las"}, two},
        {"Repair", {"repair", "a.las", "-o", "c.las"}, {{"a.las", titleFault}}},
        {"Rebuild", {"repair", "a.las", "--rebuild", "-o", "c.las"}, with(two, home)},
        {"Batch", {"batch", "a.las", "--out-dir", "out"}, two},
        {"FromAscii",
         {"from-ascii", "t.csv", "--header", "a.las", "-o", "c.las"},
         with(two, {{"t.csv", "DEPT,GR\n1,2\n2,3\n"}})},
        {"Tvd", {"tvd", "s.txt"}, {{"s.txt", surveyText}}},
        {"Replace", {"replace", "a.las", "-o", "c.las", "--search", "GR", "--replace", "XX"}, two},
    };
    return all;
}

void PrintTo(const Scene& scene, std::ostream* out) {
    *out << scene.name;
}

/// What a run left: its output streams, status, and all files of its folder.
struct Result {
    ProgramRun run;
    Texts files;
};

Texts filesBelow(const fs::path& folder) {
    Texts files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[fs::relative(entry.path(), folder).generic_string()] = TempFolder::readFile(entry.path().string());
    return files;
}

class FailuresTest : public ::testing::TestWithParam<Scene> {
  protected:
    /// Runs the scene with its call number `at` failing; 0 fails none. Leaves the calls in `calls`.
    Result run(std::size_t at, bool traced = true) {
        const TempFolder folder;
        const fs::path work = folder.path("work");
        for (const auto& [name, text] : GetParam().files) {
            fs::path path = name.starts_with("home/") ? fs::path(folder.path(name)) : work / name;
            if (name == "home/settings.ini") path = folder.path("base/XDG_CONFIG_HOME/welvane/settings.ini");
            fs::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << text;
        }
        fs::create_directories(folder.path("home"));
        std::vector<std::string> environment = cleanEnvironment(folder.path("base"), folder.path("home/"));
        environment.push_back("WELVANE_FAIL_LOG=" + folder.path("calls"));
        environment.push_back("WELVANE_FAIL_AT=" + std::to_string(at));
        if (traced) environment.push_back("WELVANE_TRACE=1");
        std::vector<std::string> arguments = {WELVANE_FAILING_PROGRAM};
        arguments.insert(arguments.end(), GetParam().arguments.begin(), GetParam().arguments.end());
        Result result{runProgram(arguments, work.string(), environment), filesBelow(work)};
        calls.clear();
        std::ifstream log(folder.path("calls"));
        for (std::string line; std::getline(log, line);) calls.push_back(line);
        result.run.out = std::regex_replace(result.run.out, std::regex("[0-9]+\\.[0-9]{3}"), "SECONDS");
        return result;
    }

    std::vector<std::string> calls;
};

/// Lines of `text` that `whole` does not have.
std::vector<std::string> newLines(const std::string& text, const std::string& whole) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (whole.find(line) == std::string::npos) lines.push_back(line);
    return lines;
}

TEST_P(FailuresTest, aFailureIsToldOrChangesNothing) {
    const Result whole = run(0);
    const std::vector<std::string> all = calls;
    ASSERT_GT(all.size(), 3U);
    ASSERT_EQ(whole.run.status, 0) << whole.run.err;
    std::size_t told = 0;
    for (std::size_t at = 1; at <= all.size(); ++at) {
        SCOPED_TRACE("call " + std::to_string(at) + " of " + std::to_string(all.size()) + ": " + all[at - 1]);
        const Result result = run(at);
        if (result.files == whole.files && result.run.status == 0 && result.run.out == whole.run.out &&
            result.run.err == whole.run.err)
            continue;
        ++told;
        EXPECT_EQ(result.run.status, GetParam().headless ? 0 : 1);
        // A verdict such as that of check stands among the results.
        const std::vector<std::string> lines = newLines(result.run.err + result.run.out, whole.run.err + whole.run.out);
        // The headless line also tells that nothing was written.
        EXPECT_TRUE(!lines.empty() && lines.size() <= 3) << result.run.err;
        for (const auto& [name, text] : result.files) {
            const auto before = GetParam().files.find(name), after = whole.files.find(name);
            const bool asItWas = before != GetParam().files.end() && before->second == text;
            // A file that is there already may be repaired before something fails; a new one may not appear.
            const bool mayChange = before != GetParam().files.end() || name == GetParam().mayStand;
            const bool asItShallBe = mayChange && after != whole.files.end() && after->second == text;
            EXPECT_TRUE(asItWas || asItShallBe) << name << "\n" << text;
        }
        if (GetParam().headless && told == 1) {
            const Result silent = run(at, false);
            EXPECT_EQ(silent.run.out + silent.run.err, "");
        }
    }
    EXPECT_GT(told, 2U);
    std::printf("%-20s %3zu calls, %3zu told\n", GetParam().name, all.size(), told);
}

INSTANTIATE_TEST_SUITE_P(Scenes, FailuresTest, ::testing::ValuesIn(scenes()),
                         [](const auto& made) { return std::string(made.param.name); });

}  // namespace
}  // namespace welvane::test
