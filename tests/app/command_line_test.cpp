#include "app/command_line.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace welvane {
namespace {

using Texts = std::vector<std::string>;

/// Current folder for the time of one test.
class InFolder {
  public:
    explicit InFolder(const std::string& folder) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~InFolder() { std::filesystem::current_path(before_); }

  private:
    std::filesystem::path before_;
};

TEST(SplitCommandLine, cutsFilesAndSwitches) {
    struct Case {
        const char* name;
        const char* text;
        Texts files, switches;
    };
    const Case cases[] = {
        {"nothing", "", {}, {}},
        {"one name", "a.las", {"", "a.las"}, {}},
        {"runs of blanks", "  a.las   b.las ", {"", "a.las", "b.las"}, {}},
        {"switches alone", "/File1=a.las /Output=c.las", {}, {"", "File1=a.las", "Output=c.las"}},
        {"files on both sides are one word list", "a.las /Dowhat=Filter", {"", "a.las"}, {"", "Dowhat=Filter"}},
        {"quoted name",
         "\"C:\\x y\\a.las\" /Dowhat=Filter /Filter=f.fil",
         {"", "C:\\x y\\a.las"},
         {"", "Dowhat=Filter", "Filter=f.fil"}},
        {"quoted names come first", "one \"two three\" four \" five \"", {"", "two three", "five", "one", "four"}, {}},
        {"blanks belong to a switch", "/Output=new well.las /x", {}, {"", "Output=new well.las", "x"}},
        {"a slash in a path cuts it", "/File1=data/a.las", {}, {"", "File1=data", "a.las"}},
        {"a slash in quotes cuts too", "\"x/y z\"", {"", "x"}, {"", "y z\""}},
        {"a slash with nothing behind it stays", "a.las / /Output=c", {"", "a.las", "/"}, {"", "", "Output=c"}},
    };
    for (const Case& row : cases) {
        Texts files, switches;
        splitCommandLine(row.text, files, switches);
        EXPECT_EQ(files, row.files) << row.name;
        EXPECT_EQ(switches, row.switches) << row.name;
    }
}

TEST(ApplySwitches, fillsByTheTable) {
    const test::TempFolder folder;
    const InFolder here(folder.path());
    std::filesystem::create_directory(folder.path("out"));
    CommandLine line;
    line.runFile = "run.las";
    applySwitches({"", "FILE2=\"b c.las\"", "xFile3=d.las", "file4=e.las", "DOWHAT=MERGE", "Filter=f=g.fil",
                   "Output=out\\c.las", "Other=1"},
                  line);
    EXPECT_EQ(line.slotPaths, (std::array<std::string, 4>{"run.las", "b c.las", "d.las", "e.las"}));
    EXPECT_EQ(line.dowhat, "MERGE");
    EXPECT_EQ(line.filterPath, "f=g.fil");
    EXPECT_EQ(line.outputPath, "out\\c.las");

    applySwitches({"", "File1=a.las", "Output=c.las"}, line);
    EXPECT_EQ(line.slotPaths[0], "a.las") << "a named first input wins over the positional one";
    EXPECT_EQ(line.outputPath, "c.las") << "no folder part is the current folder";
    applySwitches({"", "Output=none\\c.las"}, line);
    EXPECT_EQ(line.outputPath, "");
    EXPECT_EQ(line.refusedOutput, "none\\c.las");
    applySwitches({"", "Output=File1=z.las"}, line);
    EXPECT_EQ(line.slotPaths[0], "z.las") << "the first name of the table that the text holds";
}

TEST(CommandText, pathsSurviveTheCut) {
    const test::TempFolder folder;
    const InFolder here(folder.path());
    std::filesystem::create_directory(folder.path("my data"));
    folder.write("my data/a.las", "x");
    folder.write("b c.las", "x");
    const std::string absolute = folder.path("b c.las");
    std::string turned = absolute;
    for (char& c : turned) c = c == '/' ? '\\' : c;
    struct Case {
        const char* name;
        Texts arguments;
        std::string text;
    };
    const Case cases[] = {
        {"switches", {"/File1=a.las", "/Output=c.las"}, "/File1=a.las /Output=c.las"},
        {"blanks in a switch", {"/Output=new well.las"}, "/Output=new well.las"},
        {"nested path in a switch", {"/file1=my data/a.las"}, "/file1=my data\\a.las"},
        {"absolute path in a switch", {"/Filter=/x/y.fil"}, "/Filter=\\x\\y.fil"},
        {"existing file", {"my data/a.las"}, "\"my data\\a.las\""},
        {"absolute existing file", {absolute}, "\"" + turned + "\""},
        {"name with a blank, there or not", {"b c.las", "d e.las"}, "\"b c.las\" \"d e.las\""},
        {"the whole line in one argument", {"/File1=a.las /Output=c.las"}, "/File1=a.las /Output=c.las"},
        {"a file and a switch in one argument", {"a.las /Output=c.las"}, "a.las /Output=c.las"},
        {"blanks only", {" ", ""}, ""},
    };
    for (const Case& row : cases) EXPECT_EQ(commandText(row.arguments), row.text) << row.name;

    const CommandLine line =
        readCommandLine(commandText({absolute, "/Output=" + folder.path("c.las"), "/Dowhat=Filter"}));
    EXPECT_EQ(line.runFile, turned);
    EXPECT_EQ(line.slotPaths[0], turned);
    EXPECT_FALSE(line.outputPath.empty());
    EXPECT_EQ(readCommandLine("none.las /Output=c.las").runFile, "") << "a file that is not there is dropped";
}

}  // namespace
}  // namespace welvane
