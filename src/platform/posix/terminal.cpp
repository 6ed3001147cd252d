#include "platform/terminal.h"

#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace welvane {

namespace {
/// A signal handler gets no argument of ours: the flag in use stands at a fixed place.
std::atomic<std::atomic<bool>*> flagInUse{nullptr};
std::atomic<bool> interrupted{false};

void onInterrupt(int number) {
    std::atomic<bool>* const flag = flagInUse.load();
    if (flag != nullptr && !interrupted.exchange(true)) {
        *flag = true;
        return;
    }
    signal(number, SIG_DFL);
    raise(number);
}
}  // namespace

bool isTerminal(Stream stream) {
    const int number = stream == Stream::Input    ? STDIN_FILENO
                       : stream == Stream::Output ? STDOUT_FILENO
                                                  : STDERR_FILENO;
    return isatty(number) != 0;
}

int terminalWidth() {
    struct winsize size {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

void cancelOnInterrupt(std::atomic<bool>* flag) {
    flagInUse = flag;
    struct sigaction action {};
    if (flag != nullptr)
        action.sa_handler = onInterrupt;
    else
        action.sa_handler = SIG_DFL;
    // A question that waits for its answer is to end, so calls are not taken up again.
    action.sa_flags = 0;
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        // What our caller chose to ignore (nohup, a job in the background) stays ignored.
        struct sigaction old {};
        sigaction(number, nullptr, &old);
        if (old.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
    }
    signal(SIGXFSZ, SIG_IGN);
    signal(SIGPIPE, SIG_IGN);
}

bool wasInterrupted() {
    return interrupted;
}

}  // namespace welvane
