#pragma once

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "support/temp_folder.h"

namespace welvane::test {

struct ProgramRun {
    int status = -1;  ///< exit status; 128 + signal when a signal ended it
    bool timedOut = false;
    std::string out, err;
};

/// Runs a program in `folder` with the given environment ("NAME=value") and nothing on stdin, and waits for its end; it
/// is killed after `seconds`. The output goes through files, so a program that writes much cannot block.
inline ProgramRun runProgram(const std::vector<std::string>& arguments, const std::string& folder,
                             const std::vector<std::string>& environment, double seconds = 60) {
    const TempFolder streams;
    const std::string out = streams.path("out"), err = streams.path("err");
    std::vector<char*> argv, envp;
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    for (const std::string& variable : environment) envp.push_back(const_cast<char*>(variable.c_str()));
    argv.push_back(nullptr);
    envp.push_back(nullptr);

    const pid_t child = ::fork();
    if (child == 0) {
        const int in = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        const int outFile = ::open(out.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        const int errFile = ::open(err.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        const bool ready =
            ::dup2(in, 0) == 0 && ::dup2(outFile, 1) == 1 && ::dup2(errFile, 2) == 2 && ::chdir(folder.c_str()) == 0;
        if (ready) ::execve(argv[0], argv.data(), envp.data());
        ::_exit(127);
    }
    ProgramRun run;
    if (child < 0) return run;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    int state = 0;
    while (::waitpid(child, &state, WNOHANG) == 0) {
        if (!run.timedOut && std::chrono::steady_clock::now() > end) {
            run.timedOut = true;
            ::kill(child, SIGKILL);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    run.status = WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
    run.out = TempFolder::readFile(out);
    run.err = TempFolder::readFile(err);
    return run;
}

/// An environment in which nothing of the user's shines through: PATH, and homes and scratch below `base`, which are
/// made. `programFolder` is where the reference files stand.
inline std::vector<std::string> cleanEnvironment(const std::filesystem::path& base, const std::string& programFolder) {
    std::vector<std::string> environment = {"PATH=/usr/local/bin:/usr/bin:/bin", "LANG=C.UTF-8",
                                            "WELVANE_HOME=" + programFolder};
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "TMPDIR"}) {
        const std::filesystem::path place = base / name;
        std::filesystem::create_directories(place);
        environment.push_back(std::string(name) + "=" + place.string());
    }
    return environment;
}

}  // namespace welvane::test
