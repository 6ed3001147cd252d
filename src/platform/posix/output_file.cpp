#include "platform/output_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/leftovers.h"
#include "platform/posix/system_error.h"
#include "shared/files.h"

namespace welvane {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 20;
/// As many links as the system itself follows.
constexpr int linkLimit = 40;
/// Names that are tried for a temporary file before it is given up.
constexpr int nameAttempts = 100;

/// The file behind a chain of links, also where the last of them leads to a name that is not there yet.
std::string behindLinks(const std::string& path) {
    std::filesystem::path name(path);
    std::error_code error;
    for (int step = 0; step < linkLimit && std::filesystem::is_symlink(name, error); ++step) {
        const std::filesystem::path target = std::filesystem::read_symlink(name, error);
        if (error) break;
        name = target.is_absolute() ? target : name.parent_path() / target;
    }
    return name.string();
}

/// Calls `make` with temporary names beside `path` until one is free; false when that failed, with the error number
/// set.
template <class Make>
bool takeTemporaryName(const std::string& path, std::string& name, Make&& make) {
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < nameAttempts; ++attempt) {
        name = partFileName(path, ++counter);
        if (make(name)) return true;
        if (errno != EEXIST) return false;
    }
    return false;
}

/// Where the system shows an open file that has no name.
std::string pathOfDescriptor(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

/// A file in the folder of `path` that has no name; -1 where there are none, or none that a name can be given to.
int openUnnamed(const std::string& path) {
    const std::string folder = dirOf(path);
    const int file = ::open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (file < 0 || access(pathOfDescriptor(file).c_str(), F_OK) == 0) return file;
    ::close(file);
    return -1;
}

bool linkUnnamed(int file, const std::string& name) {
    return linkat(AT_FDCWD, pathOfDescriptor(file).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// Gives a file another name, which nobody may have; false with the error number set.
bool renameToNew(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno == EEXIST) return false;
    // A file system that cannot do it in one step has links, or can only be asked first.
    if (link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return true;
    }
    if (errno == EEXIST) return false;
    if (access(to.c_str(), F_OK) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.c_str(), to.c_str()) == 0;
}

/// 0, or the error number. EINVAL is none: a file system that cannot sync.
int syncFile(int file) {
    return fsync(file) == 0 || errno == EINVAL ? 0 : errno;
}

/// The new name itself is safe once the folder is; that it is there already is what matters, so a failure is none.
void syncFolderOf(const std::string& path) {
    const std::string folder = dirOf(path);
    const int opened = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0) return;
    static_cast<void>(fsync(opened));
    ::close(opened);
}

/// 0, or the error number.
int syncPath(const std::string& path) {
    const int opened = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened < 0) return errno;
    const int error = syncFile(opened);
    ::close(opened);
    return error;
}

}  // namespace

struct OutputFile::State {
    Mode mode = Mode::InPlace;
    std::string given;    ///< as the caller named it, for messages
    std::string target;   ///< the file that is replaced, links followed
    std::string written;  ///< where the bytes go
    int file = -1;
    bool temporary = false;  ///< `written` is ours to remove
    bool unnamed = false;    ///< `file` has no name yet, so closing it drops it
    bool open = false;       ///< takes bytes
    std::unique_ptr<char[]> block;
    std::size_t capacity = 0, used = 0;

    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        if (file >= 0) {
            // In place, what was given so far is to be found in the file; nobody is left to hear of a failure.
            if (mode == Mode::InPlace) static_cast<void>(writeOut());
            ::close(file);
        }
        if (temporary) ::unlink(written.c_str());
    }

    bool isNew() const { return mode == Mode::New || mode == Mode::NewUnsynced; }
    bool isSynced() const { return mode == Mode::Beside || mode == Mode::New; }
    [[noreturn]] void fail(int errorNumber) const { throw FileFailure(given, systemReason(errorNumber)); }
    [[noreturn]] void failTaken() const {
        throw FileFailure(given, "exists already: it came to be while this run was writing");
    }

    /// Hands bytes to the system; 0 or the error number.
    int writeAll(const char* bytes, std::size_t size) const {
        while (size > 0) {
            const ssize_t done = ::write(file, bytes, std::min(size, std::size_t{1} << 30));
            if (done < 0 && errno == EINTR) continue;
            if (done < 0) return errno;
            if (done == 0) return ENOSPC;
            bytes += done;
            size -= static_cast<std::size_t>(done);
        }
        return 0;
    }
    int writeOut() {
        const int error = writeAll(block.get(), used);
        used = 0;
        return error;
    }
    void flush() {
        if (!open) fail(EBADF);
        if (const int error = writeOut(); error != 0) fail(error);
    }

    void openTarget();
    void openTemporary(const struct stat* old);
    void nameTemporary();
    void place();
    void syncNamed() const;
    void syncFolder() const;
};

void OutputFile::State::openTarget() {
    written = target;
    file = ::open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666);
    if (file < 0) fail(errno);
}

void OutputFile::State::openTemporary(const struct stat* old) {
    // A new name could take the place of a file that we may not write; the old file's own rights decide.
    if (old != nullptr && access(target.c_str(), W_OK) != 0) fail(errno);
    file = openUnnamed(target);
    unnamed = file >= 0;
    if (!unnamed) {
        temporary = takeTemporaryName(target, written, [this](const std::string& name) {
            file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            return file >= 0;
        });
        if (!temporary) fail(errno);
    }
    if (old == nullptr) return;
    // Owner and group stay where we are allowed to give them; the mode bits after them, since a change of owner drops
    // some.
    if (fchown(file, old->st_uid, old->st_gid) != 0)
        static_cast<void>(fchown(file, static_cast<uid_t>(-1), old->st_gid));
    static_cast<void>(fchmod(file, old->st_mode & 07777));
}

void OutputFile::State::nameTemporary() {
    if (!takeTemporaryName(target, written, [this](const std::string& name) { return linkUnnamed(file, name); }))
        fail(errno);
    temporary = true;
    unnamed = false;
    ::close(std::exchange(file, -1));
}

void OutputFile::State::syncNamed() const {
    if (const int error = syncPath(written); error != 0) fail(error);
}

/// The bytes, all handed over, take the target's name.
void OutputFile::State::place() {
    if (unnamed) {
        if (const int error = isSynced() ? syncFile(file) : 0; error != 0) fail(error);
        if (linkUnnamed(file, target)) return;
        if (errno != EEXIST) fail(errno);
        if (isNew()) failTaken();
        // No link replaces a file, a rename does.
        nameTemporary();
    } else if (isSynced()) {
        syncNamed();
    }
    if (isNew() ? !renameToNew(written, target) : ::rename(written.c_str(), target.c_str()) != 0)
        errno == EEXIST ? failTaken() : fail(errno);
}

void OutputFile::State::syncFolder() const {
    syncFolderOf(target);
}

OutputFile::OutputFile(std::string_view path, Mode mode) : state_(std::make_unique<State>()) {
    state_->mode = mode;
    state_->given = path;
    state_->target = behindLinks(resolvePath(path));
    if (path.empty()) state_->fail(ENOENT);
    struct stat old {};
    const bool exists = stat(state_->target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) state_->fail(EISDIR);
    if (exists && !S_ISREG(old.st_mode)) throw FileFailure(state_->given, "Not a regular file");
    if (exists && state_->isNew()) throw FileFailure(state_->given, "exists already");
    if (mode == Mode::InPlace)
        state_->openTarget();
    else
        state_->openTemporary(exists ? &old : nullptr);
    state_->open = true;
    state_->block = std::make_unique_for_overwrite<char[]>(blockSize);
    state_->capacity = blockSize;
}

OutputFile::OutputFile(OutputFile&&) noexcept = default;
OutputFile& OutputFile::operator=(OutputFile&&) noexcept = default;
OutputFile::~OutputFile() = default;

void OutputFile::write(std::string_view text) {
    if (text.empty()) return;
    if (text.size() >= state_->capacity) {
        state_->flush();
        if (const int error = state_->writeAll(text.data(), text.size()); error != 0) state_->fail(error);
        return;
    }
    std::memcpy(reserve(text.size()), text.data(), text.size());
    advance(text.size());
}

void OutputFile::writeLine(std::string_view text) {
    write(text);
    write("\r\n");
}

char* OutputFile::reserve(std::size_t size) {
    if (state_->capacity - state_->used < size) {
        state_->flush();
        if (size > state_->capacity) {
            state_->block = std::make_unique_for_overwrite<char[]>(size);
            state_->capacity = size;
        }
    }
    return state_->block.get() + state_->used;
}

void OutputFile::advance(std::size_t used) {
    state_->used += used;
}

std::vector<std::string> syncFiles(const std::vector<std::string>& paths) {
    // All of them are on their way to the disk before the first is waited for.
    for (const std::string& path : paths) {
        const int opened = ::open(resolvePath(path).c_str(), O_RDONLY | O_CLOEXEC);
        if (opened < 0) continue;
        static_cast<void>(sync_file_range(opened, 0, 0, SYNC_FILE_RANGE_WRITE));
        ::close(opened);
    }
    std::vector<std::string> reasons;
    std::map<std::string, std::string> folders;
    for (const std::string& path : paths) {
        const std::string found = resolvePath(path);
        const int error = syncPath(found);
        reasons.push_back(error == 0 ? "" : systemReason(error));
        folders.emplace(dirOf(found), found);
    }
    for (const auto& [folder, path] : folders) syncFolderOf(path);
    return reasons;
}

void overwriteBytes(std::string_view path, std::uint64_t place, std::string_view bytes) {
    const auto fail = [path](int errorNumber) { throw FileFailure(std::string(path), systemReason(errorNumber)); };
    const int file = ::open(resolvePath(path).c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (file < 0) fail(errno);
    int error = 0;
    while (!bytes.empty() && error == 0) {
        const ssize_t done = ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(place));
        if (done > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(done));
            place += static_cast<std::uint64_t>(done);
        } else if (done == 0 || errno != EINTR) {
            error = done == 0 ? ENOSPC : errno;
        }
    }
    if (::close(file) != 0 && error == 0 && errno != EINTR) error = errno;
    if (error != 0) fail(error);
}

const std::string& OutputFile::writtenPath() {
    if (state_->unnamed) {
        close();
        state_->nameTemporary();
    }
    return state_->written;
}

void OutputFile::close() {
    if (!state_->open) return;
    state_->flush();
    state_->open = false;
    // Closing a file without a name would drop it.
    if (state_->unnamed) return;
    // Some file systems tell of a full disk only here.
    const int file = std::exchange(state_->file, -1);
    if (::close(file) != 0 && errno != EINTR) state_->fail(errno);
}

void OutputFile::commit() {
    close();
    if (!state_->unnamed && !state_->temporary) return;
    state_->place();
    if (state_->unnamed) ::close(std::exchange(state_->file, -1));
    state_->temporary = state_->unnamed = false;
    state_->written = state_->target;
    if (state_->isSynced()) state_->syncFolder();
}

}  // namespace welvane
