#include "platform/output_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/system_error.h"
#include "shared/files.h"

namespace welvane {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 20;
/// As many links as the system itself follows.
constexpr int linkLimit = 40;
/// A file name has at most 255 bytes; what is put around the name in a temporary one needs the rest.
constexpr std::size_t longestNamePart = 200;

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

/// Opens a new file beside `path` under a name that nobody else has; `name` receives it.
int openBeside(const std::string& path, std::string& name) {
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = dirOf(path) + "." + fileNameOf(path).substr(0, longestNamePart) + "." + std::to_string(getpid()) + "-" +
               std::to_string(++counter) + ".part";
        const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST) return file;
    }
    return -1;
}

}  // namespace

struct OutputFile::State {
    Mode mode = Mode::InPlace;
    std::string given;    ///< as the caller named it, for messages
    std::string target;   ///< the file that is replaced, links followed
    std::string written;  ///< where the bytes go
    int file = -1;
    bool temporary = false;  ///< `written` is ours to remove
    std::unique_ptr<char[]> block;
    std::size_t capacity = 0, used = 0;

    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        if (file >= 0) {
            // In place, what was given so far is to be found in the file; nobody is left to hear of a failure.
            if (!temporary) static_cast<void>(writeOut());
            ::close(file);
        }
        if (temporary) ::unlink(written.c_str());
    }

    [[noreturn]] void fail(int errorNumber) const { throw FileFailure(given, systemReason(errorNumber)); }

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
        if (file < 0) fail(EBADF);
        if (const int error = writeOut(); error != 0) fail(error);
    }

    void openTarget();
    void openTemporary(const struct stat* old);
};

void OutputFile::State::openTarget() {
    written = target;
    file = ::open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666);
    if (file < 0) fail(errno);
}

void OutputFile::State::openTemporary(const struct stat* old) {
    // A new name could take the place of a file that we may not write; the old file's own rights decide.
    if (old != nullptr && access(target.c_str(), W_OK) != 0) fail(errno);
    file = openBeside(target, written);
    if (file < 0) fail(errno);
    temporary = true;
    if (old == nullptr) return;
    // Owner and group stay where we are allowed to give them; the mode bits after them, since a change of owner drops
    // some.
    if (fchown(file, old->st_uid, old->st_gid) != 0)
        static_cast<void>(fchown(file, static_cast<uid_t>(-1), old->st_gid));
    static_cast<void>(fchmod(file, old->st_mode & 07777));
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
    if (mode == Mode::InPlace)
        state_->openTarget();
    else
        state_->openTemporary(exists ? &old : nullptr);
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

const std::string& OutputFile::writtenPath() const {
    return state_->written;
}

void OutputFile::close() {
    if (state_->file < 0) return;
    state_->flush();
    // Some file systems tell of a full disk only here.
    const int file = std::exchange(state_->file, -1);
    if (::close(file) != 0 && errno != EINTR) state_->fail(errno);
}

void OutputFile::commit() {
    close();
    if (!state_->temporary) return;
    const int file = ::open(state_->written.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) state_->fail(errno);
    const int error = fsync(file) == 0 ? 0 : errno;
    ::close(file);
    // EINVAL: a file system that cannot sync.
    if (error != 0 && error != EINVAL) state_->fail(error);
    if (::rename(state_->written.c_str(), state_->target.c_str()) != 0) state_->fail(errno);
    state_->temporary = false;
    state_->written = state_->target;
    // The new name itself is safe once the folder is; that it is there already is what matters, so a failure is none.
    const std::string folder = dirOf(state_->target);
    const int opened = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0) return;
    static_cast<void>(fsync(opened));
    ::close(opened);
}

}  // namespace welvane
