// The system calls by which a program opens and reads, each counted, and one of them failing: linked into a copy of the
// program, they stand in front of the C library's. WELVANE_FAIL_LOG names a file that is told of each call, one a line;
// WELVANE_FAIL_AT is the number, from 1, of the call that fails with EIO.

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// What the kernel tells of itself is no file of a run.
bool isWatched(const char* path) {
    return std::strncmp(path, "/proc/", 6) != 0 && std::strncmp(path, "/sys/", 5) != 0;
}

/// Counts a call and tells of it; true when it is the one to fail.
bool fails(const char* call, const char* path) {
    static long number = 0;
    static const char* const log = std::getenv("WELVANE_FAIL_LOG");
    static const char* const at = std::getenv("WELVANE_FAIL_AT");
    if (!isWatched(path)) return false;
    ++number;
    if (log != nullptr) {
        char line[4200];
        const int length = std::snprintf(line, sizeof line, "%s %s\n", call, path);
        const long file = syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND, 0600);
        syscall(SYS_write, file, line, static_cast<std::size_t>(length));
        syscall(SYS_close, file);
    }
    if (at == nullptr || std::atol(at) != number) return false;
    errno = EIO;
    return true;
}

mode_t modeOf(int flags, std::va_list arguments) {
    return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return fails("open", path) ? -1 : static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int openat(int folder, const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return fails("openat", path) ? -1 : static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

int stat(const char* path, struct stat* facts) {
    return fails("stat", path) ? -1 : static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, facts, 0));
}

int fstat(int file, struct stat* facts) {
    return fails("fstat", "") ? -1 : static_cast<int>(syscall(SYS_newfstatat, file, "", facts, AT_EMPTY_PATH));
}

void* mmap(void* address, size_t length, int protection, int flags, int file, off_t offset) {
    if (file >= 0 && fails("mmap", "")) return MAP_FAILED;
    return reinterpret_cast<void*>(syscall(SYS_mmap, address, length, protection, flags, file, offset));
}

ssize_t pread(int file, void* target, size_t length, off_t offset) {
    return fails("pread", "") ? -1 : syscall(SYS_pread64, file, target, length, offset);
}

}  // extern "C"
