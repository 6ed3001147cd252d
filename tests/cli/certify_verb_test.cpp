#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

#include "program_in_folder.h"

namespace welvane {
namespace {

using test::ProgramRun;
using test::sampleLas;
using Json = nlohmann::json;

/// Checkers are scripts. `$log` is the log that they are to write, `$file` the file that they judge.
struct CertifyVerb : test::ProgramInFolder {
    void SetUp() override {
        for (const char* name : {"a.las", "b.las", "c.las"}) write(name, sampleLas({"GR"}, 100, 5));
        script("judge", "case $file in *b.las) echo 'ERROR: STRT' > \"$log\";; *) echo fine \"$@\" > \"$log\";; esac");
    }
    void script(const char* name, const std::string& body) {
        folder.write(name,
                     "#!/bin/sh\nfor a; do case $a in *.log) log=$a;; *.las) file=$a;; esac; done\n[ \"$log\" ] || "
                     "log=${file%.las}.log\n" +
                         body + "\n");
        chmod(folder.path(name).c_str(), 0755);
    }
};

TEST_F(CertifyVerb, everyFileGetsAVerdictInItsPlace) {
    script("slow", "case $file in *a.las) sleep 0.5;; esac; . ./judge");
    folder.write("a.log", "mine");
    for (const char* jobs : {"1", "3"}) {
        const ProgramRun done =
            run({"certify", "a.las", "b.las", "none.las", "c.las", "--checker", "./slow", "--jobs", jobs, "--json"});
        EXPECT_EQ(done.status, 1);
        EXPECT_NE(done.err.find("none.las: No such file or directory"), std::string::npos) << done.err;
        std::string verdicts;
        for (const Json& one : Json::parse(done.out))
            verdicts += one["path"].get<std::string>() + " " + one["verdict"].get<std::string>() + ", ";
        EXPECT_EQ(verdicts, "a.las Passed, b.las Failed, none.las Check Incomplete, c.las Passed, ") << jobs;
    }
    EXPECT_EQ(folder.read("a.log"), "mine") << "a file beside the input is not the checker's";
    EXPECT_TRUE(std::filesystem::is_empty(homes.path("TMPDIR")));

    const ProgramRun text = run({"certify", "b.las", "c.las", "--checker", "./judge"});
    EXPECT_EQ(text.out, "Failed            b.las\n    ERROR: STRT\nPassed            c.las\n");
    EXPECT_EQ(text.err, "welvane: 2 files: 1 passed, 1 failed, 0 not checked to the end\n");
    EXPECT_EQ(run({"certify", "a.las", "--checker", "./judge"}).status, 0);
}

TEST_F(CertifyVerb, optionsReachTheChecker) {
    struct Case {
        std::vector<std::string> options;
        const char* end;
    };
    for (const Case& row : {Case{{}, " /U\n"}, Case{{"--region", "canada"}, " /C\n"},
                            Case{{"--wrap-checks"}, " /W /U\n"}, Case{{"--repair", "--in-place"}, " /R /U\n"}}) {
        std::vector<std::string> arguments = {"certify", "a.las", "--json", "--checker", "./judge \"two words\""};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const std::string log = Json::parse(run(arguments).out)["log"];
        EXPECT_EQ(log.rfind("fine two words a.las ", 0), 0u) << log;
        EXPECT_TRUE(log.ends_with(row.end)) << log;
    }
    EXPECT_EQ(run({"certify", "a.las", "--checker", "./judge", "--repair"}).status, 2)
        << "files are not changed unasked";
}

TEST_F(CertifyVerb, savedLogsReplaceNothing) {
    EXPECT_EQ(run({"certify", "a.las", "--checker", "./judge", "--save-logs"}).status, 0);
    EXPECT_EQ(folder.read("a.log"), "fine a.las a.log /U\n");
    const ProgramRun again = run({"certify", "a.las", "--checker", "./judge", "--save-logs"});
    EXPECT_EQ(again.status, 1);
    EXPECT_NE(again.err.find("its log a.log: exists already"), std::string::npos) << again.err;
    const ProgramRun input = run({"certify", "a.las", "a.log", "--checker", "./judge", "--save-logs", "--force"});
    EXPECT_NE(input.err.find("its log a.log is one of the inputs"), std::string::npos) << input.err;
}

TEST_F(CertifyVerb, checkersThatCannotRunAreOneLine) {
    folder.write("plain", "x");
    folder.write("lost", "#!/no/such/interpreter\n");
    chmod(folder.path("lost").c_str(), 0755);
    const std::pair<const char*, const char*> cases[] = {
        {"./none", "no such checker"},
        {"none", "no such checker on the search path"},
        {"./plain", "the checker is not executable"},
        {"./lost", "the checker could not be started: No such file or directory"}};
    for (const auto& [checker, why] : cases) {
        const ProgramRun done = run({"certify", "a.las", "b.las", "c.las", "--checker", checker, "--jobs", "2"});
        EXPECT_EQ(done.status, 1) << checker;
        EXPECT_EQ(done.err.rfind(std::string("welvane: ") + checker + ": " + why, 0), 0u) << done.err;
        EXPECT_EQ(std::count(done.err.begin(), done.err.end(), '\n'), 1) << done.err;
        EXPECT_EQ(done.out, "");
    }
}

TEST_F(CertifyVerb, checkersThatFailGiveNoPass) {
    script("hang", "echo fine > \"$log\"; sleep 60");
    script("crash", "echo fine > \"$log\"; kill -SEGV $$");
    script("silent", "exit 3");
    script("flood", "yes fine | head -c 20000000 > \"$log\"; echo Failed: late >> \"$log\"");
    struct Case {
        const char *checker, *verdict, *why;
    };
    const auto begun = std::chrono::steady_clock::now();
    for (const Case& row :
         {Case{"./hang", "Check Incomplete", "was ended after 0.5 s"},
          Case{"./crash", "Check Incomplete", "by signal 11"},
          Case{"./silent", "Check Incomplete", "no log, exit status 3"}, Case{"./flood", "Failed", ""}}) {
        const ProgramRun done = run({"certify", "a.las", "--checker", row.checker, "--timeout", "0.5"});
        EXPECT_EQ(done.status, 1) << row.checker;
        EXPECT_EQ(done.out.rfind(row.verdict, 0), 0u) << row.checker << done.out;
        EXPECT_NE(done.err.find(row.why), std::string::npos) << done.err;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(30));
}

TEST_F(CertifyVerb, runChecksAndOpensItsOutput) {
    ASSERT_EQ(run({"settings", "set", "cert_prog", "./judge", "-q"}).status, 0);
    const ProgramRun good = run({"run", "a.las", "-o", "new.las", "--certify"});
    EXPECT_EQ(good.status, 0) << good.err;
    EXPECT_NE(good.err.find("new.las: Passed\n"), std::string::npos) << good.err;
    EXPECT_EQ(folder.read("new.log"), "fine new.las /U\n");
    const ProgramRun bad = run({"run", "a.las", "-o", "new-b.las", "--certify", "-q"});
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.err, "welvane: new-b.las: Failed\nwelvane: new-b.las: ERROR: STRT\n");
    EXPECT_TRUE(exists("new-b.las")) << "the output stays";

    folder.write("old.log", "mine");
    EXPECT_EQ(run({"run", "a.las", "-o", "old.las", "--certify"}).err,
              "welvane: old.log: exists already (--force replaces it)\n");
    EXPECT_FALSE(exists("old.las"));
    EXPECT_EQ(run({"run", "a.las", "-o", "new.txt", "--certify"}).status, 2);

    script("xdg-open", "echo \"$1\" > opened");
    environment.front() = "PATH=" + folder.path() + ":/usr/bin:/bin";
    ASSERT_EQ(run({"run", "a.las", "-o", "shown.las", "--open"}).status, 0);
    for (int turn = 0; turn < 200 && folder.read("opened").empty(); ++turn)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(folder.read("opened"), "shown.las\n");
}

}  // namespace
}  // namespace welvane
