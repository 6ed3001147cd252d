#include <filesystem>
#include <gtest/gtest.h>

#include "certify/batch.h"
#include "certify/certify_after.h"
#include "support/memory_platform.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

/// A stand-in for the checker: what it does is told by the name of the file it is given. Without a log path it writes
/// beside the file.
constexpr const char* checkerScript = R"(#!/bin/sh
log="$2"
case "$2" in *.log) ;; *) log="${1%.*}.log" ;; esac
echo "$*" >> "$(dirname "$0")/calls.txt"
case "$1" in
*good*) echo "all well, $# arguments" > "$log" ;;
*failed*) printf 'line one\r\nTest 3 failed: no null\r\nError: worse\r\n' > "$log" ;;
*error*) echo "some error: x" > "$log" ;;
*nothing*) ;;
*crash*) echo "so far well" > "$log"; kill -SEGV $$ ;;
*fatal*) echo "Failed: 1" > "$log"; kill -SEGV $$ ;;
*late*) sleep 0.3; echo "well at last" > "$log" ;;
*hang*) echo "so far well" > "$log"; sleep 60 ;;
*exit*) echo "well" > "$log"; exit 7 ;;
esac
)";

/// Memory for everything but the starting of programs.
class StartingPlatform : public test::MemoryPlatform {
  public:
    ProcessResult runAndWait(const std::vector<std::string>& arguments, double seconds,
                             const std::function<bool()>& turn) override {
        started.push_back(arguments);
        return system_->runAndWait(arguments, seconds, turn);
    }

  private:
    std::unique_ptr<Platform> system_ = makeSystemPlatform();
};

struct Certify : testing::Test {
    test::ScriptedInterface user;
    StartingPlatform platform;
    App app{user, platform};
    test::TempFolder folder;

    Certify() {
        const std::string checker = folder.write("my checker.sh", checkerScript);
        std::filesystem::permissions(checker, std::filesystem::perms::owner_all);
        app.settings.certProgram = checker;
    }
    std::string certified(const std::string& name, CertifyOptions options = {}) {
        const std::string path = folder.write(name, "~V\r\n");
        return certifyFile(app, path, certifyLogPath(path), options, path).log;
    }
};

TEST_F(Certify, readsTheLogOfEveryKindOfRun) {
    struct Case {
        const char *name, *log;
        double seconds;
    };
    for (const Case& row : {
             Case{"a good one.las", "all well, 3 arguments\n", 0},
             Case{"failed.las", "line one\r\nTest 3 failed: no null\r\nError: worse\r\n", 0},
             Case{"nothing.las", "", 0},
             Case{"exit.las", "well\n", 0},
             Case{"late.las", "well at last\n", 0},
             Case{"late2.las", "well at last\n", 20},
             Case{"crash.las", "", 0},
             Case{"fatal.las", "Failed: 1\n", 0},
             Case{"hang.las", "", 0.3},
         }) {
        SCOPED_TRACE(row.name);
        CertifyOptions options;
        options.timeoutSeconds = row.seconds;
        EXPECT_EQ(certified(row.name, options), row.log);
    }
}

TEST_F(Certify, handsOverWholePathsAndOptions) {
    CertifyOptions options = certifyOptions(CheckKind::Wrap, true, false, "canada");
    EXPECT_EQ(certified("good \"quoted\" $(x).las", options), "all well, 5 arguments\n");
    const std::string base = folder.path("good \"quoted\" $(x)");
    EXPECT_EQ(platform.started.back(),
              (std::vector<std::string>{app.settings.certProgram, base + ".las", base + ".log", "/W", "/R", "/C"}));
    EXPECT_FALSE(std::filesystem::exists(base + ".log")) << "slot 4 deletes the log";

    EXPECT_EQ(certified("good.las", certifyOptions(CheckKind::Complete, false, true, "Other")),
              "all well, 3 arguments\n");
    EXPECT_EQ(platform.started.back().back(), "/U");
    EXPECT_TRUE(std::filesystem::exists(folder.path("good.log")));

    const std::size_t before = platform.started.size();
    options.region = " /X";
    EXPECT_EQ(certified("good.las", options), "") << "an illegal slot does nothing";
    EXPECT_EQ(platform.started.size(), before);
}

TEST_F(Certify, cutsTheCheckersCommandLineAsItsQuotesSay) {
    struct Case {
        std::string setting;
        std::vector<std::string> arguments;
    };
    for (const Case& row : {
             Case{"", {}},
             Case{"corvant", {"corvant"}},
             Case{"wine corvant.sh  -q", {"wine", "corvant.sh", "-q"}},
             Case{"\"/opt/my tools/corvant\" \"a b\" c", {"/opt/my tools/corvant", "a b", "c"}},
             Case{"sh \"\" x\"y z\"", {"sh", "", "xy z"}},
             Case{"C:\\Program Files\\Ostrandmeyer\\Toolbox\\Corvant.exe",
                  {"C:/Program Files/Ostrandmeyer/Toolbox/Corvant.exe"}},
             Case{app.settings.certProgram, {app.settings.certProgram}},
         }) {
        SCOPED_TRACE(row.setting);
        EXPECT_EQ(checkerArguments(row.setting), row.arguments);
    }
    EXPECT_EQ(certifyLogPath("a/b.las"), "a/b.log");
    EXPECT_EQ(certifyLogPath("a/b.LOG"), "a/b.LOG.log") << "a checked file is never its own log";
}

TEST_F(Certify, checkerThatCannotRunShowsABox) {
    for (const char* setting : {"", "/no/such/corvant", "no-such-checker-anywhere"}) {
        SCOPED_TRACE(setting);
        app.settings.certProgram = setting;
        user.willAnswer(Answer::Ok);
        EXPECT_EQ(certified("good.las"), "");
        EXPECT_EQ(user.asked().back().title, "Unable to Run Corvant");
        EXPECT_EQ(user.asked().back().text,
                  "Unable to locate Corvant.exe. Path to Corvant Not Set, or path is incorrect. Please check "
                  "Preferences and try again");
    }
    app.settings.certProgram = folder.write("not executable", "text");
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(certified("good.las"), "");
    EXPECT_EQ(user.asked().back().title, "Certify Not Possible");
    EXPECT_EQ(user.asked().back().text, "Error while running, or unable to run Corvant. No results for " +
                                            folder.path("good.las") + "  are available.");
}

TEST_F(Certify, batchGivesEachFileItsVerdict) {
    BatchCertification batch;
    batch.saveLogs = true;
    batch.kind = CheckKind::Wrap;
    for (const char* name : {"good.las", "error.las", "nothing.las"}) folder.write(name, "~V\r\n");
    folder.write("nothing.log", "an old verdict");
    fillCr(batch, {folder.path("good.las"), folder.path("error.las"), folder.path("nothing.las")});
    EXPECT_EQ(batch.crd.rows(), 4);
    EXPECT_EQ(batch.crd.text(0, 0), "File Names");
    EXPECT_EQ(batch.crd.text(0, 1), "Do WRAP Checks");
    EXPECT_TRUE(doBatchChecks(app, batch));
    const std::vector<std::pair<std::string, std::uint32_t>> expected = {
        {"Passed", 65280}, {"Failed", 255}, {"Check Incomplete", 255}};
    for (int row = 1; row <= 3; ++row) {
        SCOPED_TRACE(row);
        EXPECT_EQ(batch.crd.text(row, 1), expected[static_cast<std::size_t>(row - 1)].first);
        EXPECT_EQ(batch.crd.backColour(row, 1), expected[static_cast<std::size_t>(row - 1)].second);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("nothing.log"))) << "the stale log was deleted";
    EXPECT_EQ(app.run.targetLabel, folder.path("nothing.log"));
}

TEST_F(Certify, cancelLeavesWhatWasDone) {
    struct CancellingInterface : SilentInterface {
        RunState* run = nullptr;
        void pumpEvents() override {
            if (run->sourceLabel.find("hang") != std::string::npos) run->cancelRequested = true;
        }
    } cancelling;
    App cancelled{cancelling, platform};
    cancelled.settings.certProgram = app.settings.certProgram;
    cancelling.run = &cancelled.run;
    BatchCertification batch;
    fillCr(batch, {folder.write("good.las", ""), folder.write("hang.las", ""), folder.write("good2.las", "")});
    EXPECT_FALSE(doBatchChecks(cancelled, batch));
    EXPECT_EQ(batch.crd.text(1, 1), "Passed");
    for (const int row : {2, 3}) {
        EXPECT_EQ(batch.crd.text(row, 1), "");
        EXPECT_EQ(batch.crd.backColour(row, 1), 0xFFFFFFU);
    }
}

TEST_F(Certify, afterARunTellsTheFaults) {
    EXPECT_FALSE(certifyAfter(app, folder.write("failed.txt", "")).ran);
    EXPECT_TRUE(certifyAfter(app, folder.write("good.las", "")).ran);
    EXPECT_EQ(platform.started.back(),
              (std::vector<std::string>{app.settings.certProgram, folder.path("good.las"), "/U"}));
    user.willAnswer(Answer::Ok);
    app.settings.country = "Canada";
    const std::string path = folder.write("failed.LAS", "");
    EXPECT_EQ(certifyAfter(app, path).faults, "Test 3 failed: no null\nError: worse\n");
    EXPECT_EQ(user.asked().back().title, "File Failed Corvant!");
    EXPECT_EQ(user.asked().back().text,
              "The Corvant check run on " + path +
                  " after the processing indicated these error(s).\n\nTest 3 failed: no null\nError: worse\n");
    EXPECT_EQ(user.asked().back().icon, Icon::Stop);
    EXPECT_EQ(platform.started.back().back(), "/C");

    folder.write("nothing.log", "Failed: of an earlier run");
    EXPECT_EQ(certifyAfter(app, folder.write("nothing.las", "")).log, "");
}

}  // namespace
}  // namespace welvane
