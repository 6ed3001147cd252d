#include "platform/process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/posix/system_error.h"

namespace welvane {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto turnInterval = std::chrono::milliseconds(50);
/// What a child gets to end by itself before it is killed.
constexpr auto graceTime = std::chrono::seconds(2);

/// The arguments as the system wants them; built before a fork, since nothing may be allocated behind it.
std::vector<char*> pointersTo(const std::vector<std::string>& arguments) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

/// In the child: signals as a fresh process has them, nothing on the input, output dropped.
void settleChild() {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ, SIGBUS}) signal(number, SIG_DFL);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, number);
    if (nothing > STDERR_FILENO) ::close(nothing);
}

/// In the child: becomes the program, or tells the parent through the pipe why not.
[[noreturn]] void execOrTell(const std::vector<char*>& pointers, int pipeEnd) {
    execvp(pointers[0], pointers.data());
    const int error = errno;
    static_cast<void>(!::write(pipeEnd, &error, sizeof error));
    _exit(127);
}

/// The error number that the child sent, 0 when it became the program.
int errorFromChild(int pipeEnd) {
    int error = 0;
    ssize_t got = 0;
    do {
        got = ::read(pipeEnd, &error, sizeof error);
    } while (got < 0 && errno == EINTR);
    return got == sizeof error ? error : 0;
}

bool ended(pid_t child, int& status) {
    const pid_t got = waitpid(child, &status, WNOHANG);
    return got == child || (got < 0 && errno == ECHILD);
}

void waitForEnd(pid_t child, int& status) {
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
}

/// Asks the child's group to end, and kills it when it does not.
void endGroup(pid_t child, int& status) {
    kill(-child, SIGTERM);
    const auto giveUp = Clock::now() + graceTime;
    bool done = false;
    while (!(done = ended(child, status)) && Clock::now() < giveUp)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    kill(-child, SIGKILL);
    if (!done) waitForEnd(child, status);
}

/// Waits with turns in between; false when the child had to be ended.
bool waitWithTurns(pid_t child, double timeoutSeconds, const std::function<bool()>& turn, int& status, bool& timedOut) {
    const auto start = Clock::now();
    auto nextTurn = start;
    auto nap = std::chrono::milliseconds(1);
    while (!ended(child, status)) {
        const auto now = Clock::now();
        if (timeoutSeconds > 0 && std::chrono::duration<double>(now - start).count() >= timeoutSeconds) {
            timedOut = true;
            return false;
        }
        if (now >= nextTurn) {
            if (turn && !turn()) return false;
            nextTurn = now + turnInterval;
        }
        // Short naps at first: many programs are done at once.
        std::this_thread::sleep_for(nap);
        nap = std::min(nap * 2, std::chrono::milliseconds(20));
    }
    return true;
}

}  // namespace

ProcessResult runProgram(const std::vector<std::string>& arguments, double timeoutSeconds,
                         const std::function<bool()>& turn) {
    ProcessResult result;
    int ends[2] = {-1, -1};
    if (arguments.empty() || pipe2(ends, O_CLOEXEC) != 0) {
        result.why = systemReason(arguments.empty() ? ENOENT : errno);
        return result;
    }
    const std::vector<char*> pointers = pointersTo(arguments);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        setpgid(0, 0);
        settleChild();
        // Ends with us, even when we are killed. The parent may have gone before this took effect.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(127);
        execOrTell(pointers, ends[1]);
    }
    const int forkError = errno;
    ::close(ends[1]);
    const int error = child < 0 ? forkError : errorFromChild(ends[0]);
    ::close(ends[0]);
    int status = 0;
    if (error != 0) {
        result.why = systemReason(error);
        if (child > 0) waitForEnd(child, status);
        return result;
    }
    result.started = true;
    if (!waitWithTurns(child, timeoutSeconds, turn, status, result.timedOut)) endGroup(child, status);
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    return result;
}

bool startDetached(const std::vector<std::string>& arguments) {
    int ends[2] = {-1, -1};
    if (arguments.empty() || pipe2(ends, O_CLOEXEC) != 0) return false;
    const std::vector<char*> pointers = pointersTo(arguments);
    const pid_t middle = fork();
    if (middle == 0) {
        // The grandchild belongs to nobody here, so that nobody has to wait for it.
        setsid();
        if (fork() != 0) _exit(0);
        settleChild();
        execOrTell(pointers, ends[1]);
    }
    ::close(ends[1]);
    const int error = middle < 0 ? EAGAIN : errorFromChild(ends[0]);
    ::close(ends[0]);
    int status = 0;
    if (middle > 0) waitForEnd(middle, status);
    return error == 0;
}

void becomeProgram(const std::vector<std::string>& arguments) {
    if (arguments.empty()) return;
    const std::vector<char*> pointers = pointersTo(arguments);
    execvp(pointers[0], pointers.data());
}

}  // namespace welvane
