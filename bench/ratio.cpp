// Holds the program against the floor, both as whole processes, in turns: wall time of each, their ratio, and the
// anonymous memory at its highest.
//
//     welvane_ratio RUNS FLOOR INPUT FLOOR_OUTPUT -- PROGRAM ARGUMENT...
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

struct Figures {
    double seconds = 0;
    long anonymousKilobytes = 0;
    bool ended = false;
};

/// RssAnon of a process in kilobytes; 0 once it is gone.
long anonymousMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("RssAnon:", 0) == 0) return std::atol(line.c_str() + 8);
    return 0;
}

Figures timeOnce(const std::vector<std::string>& command, bool watchMemory) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    Figures figures;
    const auto start = std::chrono::steady_clock::now();
    pid_t process = 0;
    posix_spawn_file_actions_t silence;
    posix_spawn_file_actions_init(&silence);
    posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    if (posix_spawnp(&process, arguments[0], &silence, nullptr, arguments.data(), environ) != 0) return figures;
    int status = 0;
    // Watching takes time of its own, so runs that are watched for memory are not the ones that are timed.
    while (watchMemory && waitpid(process, &status, WNOHANG) == 0) {
        figures.anonymousKilobytes = std::max(figures.anonymousKilobytes, anonymousMemory(process));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (!watchMemory) waitpid(process, &status, 0);
    figures.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    figures.ended = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return figures;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int count, char** arguments) {
    std::vector<std::string> words(arguments + 1, arguments + count);
    const auto mark = std::find(words.begin(), words.end(), "--");
    if (mark == words.end() || mark - words.begin() != 4 || mark + 1 == words.end()) {
        std::fputs("usage: welvane_ratio RUNS FLOOR INPUT FLOOR_OUTPUT -- PROGRAM ARGUMENT...\n", stderr);
        return 2;
    }
    const int runs = std::max(1, std::atoi(words[0].c_str()));
    const std::vector<std::string> floor(words.begin() + 1, mark), program(mark + 1, words.end());
    std::vector<double> floorSeconds, programSeconds, ratios;
    for (int run = 0; run <= runs; ++run) {
        const Figures below = timeOnce(floor, false), above = timeOnce(program, false);
        if (!below.ended || !above.ended) {
            std::fputs("welvane_ratio: a command failed\n", stderr);
            return 1;
        }
        if (run == 0) continue;  // warms the page cache
        floorSeconds.push_back(below.seconds);
        programSeconds.push_back(above.seconds);
        ratios.push_back(above.seconds / below.seconds);
    }
    const Figures watched = timeOnce(program, true);
    std::printf("floor %.3f s, program %.3f s (medians of %d), ratio %.2f (%.2f to %.2f), anonymous memory %ld MB\n",
                median(floorSeconds), median(programSeconds), runs, median(ratios),
                *std::min_element(ratios.begin(), ratios.end()), *std::max_element(ratios.begin(), ratios.end()),
                watched.anonymousKilobytes / 1024);
    return 0;
}
