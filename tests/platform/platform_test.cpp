#include "platform/platform.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <string>
#include <thread>

#include "support/temp_folder.h"

namespace welvane {
namespace {

namespace fs = std::filesystem;

/// An environment variable for the time of one test.
class Environment {
  public:
    Environment(const char* name, const std::string& value) : name_(name) { setenv(name, value.c_str(), 1); }
    ~Environment() { unsetenv(name_); }

  private:
    const char* name_;
};

TEST(SystemPlatform, scratchFolderIsPrivateAndGoesWithIt) {
    const test::TempFolder folder;
    const Environment temporary("TMPDIR", folder.path());
    auto platform = makeSystemPlatform();
    EXPECT_TRUE(fs::is_empty(folder.path())) << "made at the first call only";
    const std::string scratch = platform->scratchFolder();
    EXPECT_EQ(scratch, platform->scratchFolder());
    EXPECT_EQ(scratch.rfind(folder.path(), 0), 0u);
    EXPECT_EQ(scratch.back(), '/');
    EXPECT_EQ(fs::status(scratch).permissions(), fs::perms::owner_all);
    EXPECT_NE(scratch, makeSystemPlatform()->scratchFolder());
    fs::create_directory(scratch + "sub");
    platform.reset();
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(SystemPlatform, foldersFollowTheEnvironment) {
    const test::TempFolder folder;
    const Environment home("WELVANE_HOME", folder.path());
    const Environment config("XDG_CONFIG_HOME", folder.path("config"));
    const auto platform = makeSystemPlatform();
    EXPECT_EQ(platform->programFolder(), folder.path());
    EXPECT_TRUE(platform->settings().put("country", "Canada"));
    EXPECT_EQ(folder.read("config/welvane/settings.ini"), "[Startup]\ncountry=Canada\n");
    EXPECT_GT(platform->freeMemory(), 1u << 20);
}

TEST(RunAndWait, tellsHowTheProgramEnded) {
    const test::TempFolder folder;
    const auto platform = makeSystemPlatform();
    const auto run = [&](const std::vector<std::string>& arguments) {
        return platform->runAndWait(arguments, 20, nullptr);
    };
    EXPECT_EQ(run({"sh", "-c", "exit 3"}).exitCode, 3);
    EXPECT_EQ(run({"sh", "-c", "kill -9 $$"}).signal, SIGKILL);
    EXPECT_EQ(run({"sh", "-c", "printf %s \"$1\" > \"$2\"", "x", "a 'b' $c", folder.path("out")}).exitCode, 0);
    EXPECT_EQ(folder.read("out"), "a 'b' $c") << "no shell looks at the arguments";

    const ProcessResult missing = run({folder.path("none")});
    EXPECT_FALSE(missing.started);
    EXPECT_EQ(missing.why, "No such file or directory");
    EXPECT_EQ(run({folder.path()}).why, "Permission denied");
    EXPECT_FALSE(run({}).started);
}

TEST(RunAndWait, endsTheWholeGroupOnTimeOutAndOnRequest) {
    const test::TempFolder folder;
    const auto platform = makeSystemPlatform();
    const auto start = std::chrono::steady_clock::now();
    // The grandchild would write the file after one second.
    const std::vector<std::string> slow = {"sh", "-c", "(sleep 1; echo late > \"$0\") & sleep 20", folder.path("late")};
    EXPECT_TRUE(platform->runAndWait(slow, 0.1, nullptr).timedOut);
    int turns = 0;
    const ProcessResult stopped = platform->runAndWait(slow, 0, [&] { return ++turns < 3; });
    EXPECT_TRUE(stopped.started);
    EXPECT_FALSE(stopped.timedOut);
    EXPECT_NE(stopped.signal, 0);
    EXPECT_EQ(turns, 3);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    EXPECT_FALSE(fs::exists(folder.path("late")));
}

}  // namespace
}  // namespace welvane
