// A batch that is killed again and again, and resumed.

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/golden_run.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;

constexpr int fileCount = 160, lineCount = 150, killCount = 8;
/// Outputs that a run may have made and not yet told as written.
constexpr std::size_t group = 64;

std::string lasText(int number) {
    std::string text =
        "~Version\r\n VERS. 2.0 :\r\n WRAP. NO :\r\n~Well\r\n STRT.M 100 :\r\n STOP.M " +
        std::to_string(99 + lineCount) +
        " :\r\n STEP.M 1 :\r\n NULL. -999.25 :\r\n~Curve\r\n DEPT.M :\r\n GR.API :\r\n RHOB.G/CC :\r\n~ASCII\r\n";
    for (int line = 0; line < lineCount; ++line) {
        char row[64];
        std::snprintf(row, sizeof row, " %d %.3f %.4f\r\n", 100 + line, number + line * 0.5, 2 + line * 0.001);
        text += row;
    }
    return text;
}

class KilledBatch : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string list;
        for (int number = 1000; number < 1000 + fileCount; ++number) {
            const std::string file = folder.write(std::to_string(number) + ".las", lasText(number));
            list += file + "\n";
        }
        folder.write("list", list);
    }
    ProgramRun run(const std::string& out, const std::vector<std::string>& more, double seconds = 60) const {
        std::vector<std::string> words{WELVANE_PROGRAM, "batch", "@list", "--out-dir", out, "-q"};
        words.insert(words.end(), {"--step", "0.5", "--fill", "linear", "--jobs", "2"});
        words.insert(words.end(), more.begin(), more.end());
        return runProgram(words, folder.path(), cleanEnvironment(folder.path("homes"), WELVANE_SOURCE_DIR "/data"),
                          seconds);
    }

    TempFolder folder;
};

/// Lines of the log for each verdict, by path.
std::map<std::string, std::map<std::string, std::size_t>> linesOf(const std::string& log) {
    std::map<std::string, std::map<std::string, std::size_t>> lines;
    std::ifstream stream(log);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t path = line.find("\"path\":\"");
        if (path == std::string::npos) continue;
        const std::string verdict = line.substr(12, line.find('"', 12) - 12);
        ++lines[verdict][line.substr(path, line.find('"', path + 8) - path)];
    }
    return lines;
}

TEST_F(KilledBatch, resumesToTheBytesOfAnUndisturbedRun) {
    const auto begun = std::chrono::steady_clock::now();
    ASSERT_EQ(run("whole", {}).status, 0);
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begun;
    ASSERT_EQ(textsBelow(folder.path("whole")).size(), static_cast<std::size_t>(fileCount));

    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> part(0.02, 0.3);
    const std::vector<std::string> resumed = {"--log", "log", "--resume"};
    std::size_t kills = 0;
    while (kills < killCount) {
        const ProgramRun run = this->run("out", resumed, whole.count() * part(random));
        if (run.timedOut && run.status != 0) {
            ++kills;
            continue;
        }
        ASSERT_EQ(run.status, 0) << run.err;
        if (kills > 0) break;
        // It was too fast for us: anew.
        fs::remove_all(folder.path("out"));
        fs::remove(folder.path("log"));
    }
    const ProgramRun last = run("out", resumed);
    ASSERT_EQ(last.status, 0) << last.err;

    EXPECT_TRUE(textsBelow(folder.path("out")) == textsBelow(folder.path("whole")));
    auto lines = linesOf(folder.path("log"));
    EXPECT_EQ(lines["written"].size(), static_cast<std::size_t>(fileCount));
    for (const auto& [file, count] : lines["written"]) EXPECT_EQ(count, 1U) << file;
    EXPECT_TRUE(lines["failed"].empty());
    std::size_t started = 0;
    for (const auto& [file, count] : lines["begun"]) started += count;
    EXPECT_LE(started, fileCount + kills * group);
}

}  // namespace
}  // namespace welvane::test
