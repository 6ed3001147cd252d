#include "platform/append_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/posix/system_error.h"
#include "shared/failure.h"
#include "shared/files.h"

namespace welvane {

AppendFile::AppendFile(const std::string& path, Start start)
    : path_(path),
      file_(::open(resolvePath(path).c_str(),
                   O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | (start == Start::New ? O_EXCL : 0), 0666)) {
    if (file_ < 0) throw FileFailure(path_, errno == EEXIST ? "exists already" : systemReason(errno));
    const bool held = flock(file_, LOCK_EX | LOCK_NB) == 0;
    if (held && (start != Start::Emptied || ftruncate(file_, 0) == 0)) return;
    const std::string why = held ? systemReason(errno) : "another process writes it";
    ::close(file_);
    throw FileFailure(path_, why);
}

AppendFile::~AppendFile() {
    ::close(file_);
}

void AppendFile::append(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t done = ::write(file_, text.data(), text.size());
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) throw FileFailure(path_, systemReason(done < 0 ? errno : ENOSPC));
        text.remove_prefix(static_cast<std::size_t>(done));
    }
}

void AppendFile::sync() const {
    if (fsync(file_) != 0 && errno != EINVAL) throw FileFailure(path_, systemReason(errno));
}

}  // namespace welvane
