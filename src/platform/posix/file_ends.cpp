#include "platform/file_ends.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/system_error.h"
#include "shared/files.h"

namespace welvane {

namespace {

/// Bytes read at the place, fewer only at the end of the file; -1 with errno set.
ssize_t readAt(int file, char* target, std::size_t length, std::uint64_t place) {
    std::size_t done = 0;
    while (done < length) {
        const ssize_t got = ::pread(file, target + done, length - done, static_cast<off_t>(place + done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -1;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(done);
}

}  // namespace

std::string_view FileEnds::tail() const {
    if (whole()) return begin().size() < block ? begin() : begin().substr(begin().size() - block);
    return {buffer_.data() + block, block};
}

std::string FileEnds::read(std::string_view path) {
    beginLength_ = 0;
    size_ = 0;
    const std::string name = resolvePath(path);
    // Looked at before it is opened: to open some devices is to act on them.
    struct stat facts {};
    if (::stat(name.c_str(), &facts) != 0) return systemReason(errno);
    if (S_ISDIR(facts.st_mode)) return "Is a directory";
    if (!S_ISREG(facts.st_mode)) return "Not a regular file";
    const int file = ::open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (file < 0) return systemReason(errno);

    const auto length = static_cast<std::uint64_t>(facts.st_size);
    const bool small = length <= buffer_.size();
    const std::size_t first = small ? static_cast<std::size_t>(length) : block;
    const ssize_t got = readAt(file, buffer_.data(), first, 0);
    const ssize_t last = small || got < 0 ? got : readAt(file, buffer_.data() + block, block, length - block);
    const int error = errno;
    ::close(file);
    if (got < 0 || last < 0) return systemReason(error);
    // Cut by someone else in between: what was read is what there is.
    if (static_cast<std::size_t>(got) < first || (!small && static_cast<std::size_t>(last) < block)) {
        beginLength_ = static_cast<std::size_t>(got);
        size_ = beginLength_;
        return {};
    }
    beginLength_ = first;
    size_ = length;
    return {};
}

}  // namespace welvane
