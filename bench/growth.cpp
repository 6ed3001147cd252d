// How the program's time grows with what a file holds: for each kind of growth the processor time of sizes that double,
// and the exponent of the curve, 1 where time is in proportion.
//
//     welvane_growth PROGRAM FOLDER
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using Command = std::vector<std::string>;

/// A file of records with as many channels, lines behind ~Curve and records as wanted; every other sample of the
/// channels is null where `gaps`.
struct Shape {
    int channels = 3, sections = 0, records = 10;
    bool oneName = false, gaps = false;
};

void writeFile(const std::string& path, const Shape& shape) {
    std::ofstream file(path, std::ios::binary);
    file << "~Version\r\n VERS. 2.0 :\r\n WRAP. NO :\r\n~Well\r\n STRT.M 0 :\r\n STOP.M " << shape.records - 1
         << " :\r\n STEP.M 1 :\r\n NULL. -999.25 :\r\n~Curve\r\n DEPT.M :\r\n";
    for (int channel = 0; channel < shape.channels; ++channel)
        file << " C" << (shape.oneName ? std::string() : std::to_string(channel)) << ".M : of growth\r\n";
    for (int section = 0; section < shape.sections; ++section) file << "~Xtra " << section << "\r\n a line of it\r\n";
    file << "~Ascii\r\n";
    for (int record = 0; record < shape.records; ++record) {
        file << record;
        for (int channel = 0; channel < shape.channels; ++channel)
            file << (shape.gaps && record % 2 == 1 ? " -999.25" : " 12.5");
        file << "\r\n";
    }
}

/// Processor time of a command in seconds; below 0 when it failed.
double timeOnce(const Command& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t silence;
    posix_spawn_file_actions_init(&silence);
    posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = 0;
    rusage used{};
    if (posix_spawnp(&process, arguments[0], &silence, nullptr, arguments.data(), environ) != 0 ||
        wait4(process, &status, 0, &used) != process || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return -1;
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

double best(const Command& command) {
    double least = -1;
    for (int run = 0; run < 5; ++run) {
        const double seconds = timeOnce(command);
        if (seconds < 0) return -1;
        if (least < 0 || seconds < least) least = seconds;
    }
    return least;
}

/// The slope of log(time - idle) over log(size), by least squares.
double exponentOf(const std::vector<std::pair<double, double>>& curve, double idle) {
    double n = 0, x = 0, y = 0, xx = 0, xy = 0;
    for (const auto& [size, seconds] : curve) {
        const double a = std::log(size), b = std::log(std::max(seconds - idle, 1e-4));
        n += 1;
        x += a;
        y += b;
        xx += a * a;
        xy += a * b;
    }
    return (n * xy - x * y) / (n * xx - x * x);
}

struct Growth {
    const char* what;
    int least;  ///< doubled three times
    std::function<Command(int size)> prepare;
};

}  // namespace

int main(int count, char** words) {
    if (count != 3) {
        std::fputs("usage: welvane_growth PROGRAM FOLDER\n", stderr);
        return 2;
    }
    const std::string program = words[1], folder = words[2], input = folder + "/growth.las",
                      output = folder + "/growth.out";
    const auto runOn = [&](Shape shape, Command options) {
        writeFile(input, shape);
        Command command{program, "run", input, "-o", output, "--force", "--yes", "--quiet"};
        command.insert(command.end(), options.begin(), options.end());
        return command;
    };
    const std::vector<Growth> growths = {
        {"records", 50000, [&](int size) { return runOn({.records = size}, {}); }},
        {"channels", 2000, [&](int size) { return runOn({.channels = size}, {}); }},
        {"channels of one name", 2000, [&](int size) { return runOn({.channels = size, .oneName = true}, {}); }},
        {"curves of a filter", 1000,
         [&](int size) {
             return runOn({.channels = size}, {"--filter", input});
         }},
        {"sections", 10000, [&](int size) { return runOn({.sections = size}, {}); }},
        {"files", 250,
         [&](int size) {
             Command command{program, "stats", "--quiet"};
             for (int number = 0; number < size; ++number) {
                 command.push_back(folder + "/growth" + std::to_string(number) + ".las");
                 writeFile(command.back(), {.records = 100});
             }
             return command;
         }},
        {"covered intervals", 20000, [&](int size) {
             writeFile(input, {.records = 2 * size, .gaps = true});
             return Command{program, "stats", input, "--quiet"};
         }}};
    const double idle = best({program, "--version"});
    for (const Growth& growth : growths) {
        std::printf("%-22s", growth.what);
        std::vector<std::pair<double, double>> curve;
        for (int size = growth.least; size <= 8 * growth.least; size *= 2) {
            const double seconds = best(growth.prepare(size));
            if (seconds < 0) {
                std::fputs("welvane_growth: a command failed\n", stderr);
                return 1;
            }
            curve.emplace_back(size, seconds);
            std::printf("%8d %6.3f s", size, seconds);
        }
        std::printf("   exponent %.2f\n", exponentOf(curve, idle));
    }
    return 0;
}
