#include "app/headless.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "app/startup.h"
#include "support/memory_platform.h"
#include "support/sample_las.h"

namespace welvane {
namespace {

/// A silent process, as the headless line has it, and a folder to work in.
struct Headless : ::testing::Test {
    test::TempFolder folder;
    test::MemoryPlatform platform;
    SilentInterface user;
    App app{user, platform};

    void SetUp() override {
        app.run.commandMode = true;
        loadProcess(app);
    }
    std::string path(const char* name) const { return folder.path(name); }
    HeadlessReport run(CommandLine line) {
        if (line.slotPaths[0].empty()) line.slotPaths[0] = line.runFile;
        return runHeadless(app, line);
    }
    /// Words of the data line with this depth in an output; empty when there is none.
    std::vector<double> record(const char* name, double depth) const {
        std::istringstream lines(folder.read(name));
        bool data = false;
        for (std::string line; std::getline(lines, line);) {
            if (line.rfind("~A", 0) == 0) {
                data = true;
                continue;
            }
            std::istringstream words(line);
            std::vector<double> values;
            for (double value = 0; data && words >> value;) values.push_back(value);
            if (!values.empty() && values[0] == depth) return values;
        }
        return {};
    }
};

using Values = std::vector<double>;

TEST_F(Headless, oneFileIsCopied) {
    CommandLine line;
    line.runFile = folder.writeLines("a.las", test::sampleLas({"GR", "RHOB"}, 100, 5));
    line.outputPath = path("c.las");
    const HeadlessReport report = run(line);
    EXPECT_TRUE(report.written);
    EXPECT_TRUE(report.notes.empty()) << report.notes.front();
    EXPECT_EQ(record("c.las", 103), (Values{103, 13, 23}));
}

TEST_F(Headless, spliceJoinsChannelsOfOneName) {
    CommandLine line;
    line.slotPaths = {folder.writeLines("a.las", test::sampleLas({"GR"}, 100, 5)),
                      folder.writeLines("b.las", test::sampleLas({"RHOB", "GR"}, 105, 5)), "", ""};
    line.outputPath = path("c.las");
    line.dowhat = "SPLICE";
    EXPECT_TRUE(run(line).written);
    EXPECT_EQ(record("c.las", 102), (Values{102, 12, -999.25}));
    EXPECT_EQ(record("c.las", 107), (Values{107, 22, 12}));
}

TEST_F(Headless, filterSelectsAndRepairsTheFileInPlace) {
    const std::string unixText = test::sampleLas({"GR", "RHOB"}, 100, 5);
    CommandLine line;
    line.slotPaths[0] = folder.write("a.las", unixText);
    line.filterPath = folder.writeLines(
        "f.fil",
        "~Version\nVERS. 2.0 :\nWRAP. NO :\n~Well\nSTEP.M 1 :\nNULL. -999.25 :\n~Curve\nDENS.G/C3 : density | RHOB\n");
    line.outputPath = path("c.las");
    line.dowhat = "filter";
    EXPECT_TRUE(run(line).written);
    EXPECT_EQ(record("c.las", 102), (Values{102, 22}));
    EXPECT_EQ(folder.read("a.las"),
              folder.read(std::filesystem::path(folder.writeLines("b.las", unixText)).filename().string()));
}

TEST_F(Headless, nothingIsWrittenAndTheTraceTellsWhy) {
    const std::string good = folder.writeLines("a.las", test::sampleLas({"GR"}, 100, 5));
    const std::string unixEnds = folder.write("unix.las", test::sampleLas({"GR"}, 100, 5));
    struct Case {
        const char* name;
        std::string input, output, note;
    };
    for (const Case& row :
         {Case{"no output", good, "", "no output is named"}, Case{"output is the input", good, good, "same file"},
          Case{"no input", path("none.las"), path("c.las"), "none.las"},
          Case{"LF only", unixEnds, path("c.las"), "unix.las"}}) {
        CommandLine line;
        line.slotPaths[0] = row.input;
        line.outputPath = row.output;
        const HeadlessReport report = run(line);
        EXPECT_FALSE(report.written) << row.name;
        ASSERT_FALSE(report.notes.empty()) << row.name;
        EXPECT_NE((report.notes.front() + report.notes.back()).find(row.note), std::string::npos)
            << row.name << ": " << report.notes.front();
        EXPECT_FALSE(std::filesystem::exists(path("c.las"))) << row.name;
    }
    EXPECT_EQ(folder.read("a.las").substr(0, 8), "~Version");
}

}  // namespace
}  // namespace welvane
