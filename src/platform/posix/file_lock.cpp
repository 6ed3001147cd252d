#include "platform/file_lock.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

#include "platform/posix/system_error.h"

namespace welvane {

namespace {
constexpr auto longestWait = std::chrono::seconds(2);
}  // namespace

FileLock::FileLock(const std::string& path)
    : file_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666)) {
    if (file_ < 0) {
        why_ = systemReason(errno);
        return;
    }
    const auto giveUp = std::chrono::steady_clock::now() + longestWait;
    while (!(held_ = flock(file_, LOCK_EX | LOCK_NB) == 0) && std::chrono::steady_clock::now() < giveUp)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    if (!held_) why_ = "another process holds it";
}

FileLock::~FileLock() {
    if (file_ >= 0) ::close(file_);
}

}  // namespace welvane
