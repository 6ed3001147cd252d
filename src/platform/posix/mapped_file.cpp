#include "platform/mapped_file.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/posix/system_error.h"
#include "shared/files.h"

namespace welvane {

namespace {

/// One mapping as the signal handler sees it. `begin` is 0 while the place is free; it is set last and cleared first.
struct Watched {
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::size_t> size{0};
    std::atomic<int> faults{0};
};

/// A signal handler gets no argument of ours, so what it looks at has to stand at a fixed place of the process. A place
/// taken by one mapping is never touched on behalf of another, so two programs in one process stay apart.
std::array<Watched, 4096> watched;
struct sigaction previousHandler;
std::uintptr_t pageSize = 4096;

/// Faults of one mapping that cost a single page each; the next one gives up the rest of it, since a system has only so
/// many mappings.
constexpr int singlePageFaults = 16;

void passOn(int number, siginfo_t* info, void* context) {
    if ((previousHandler.sa_flags & SA_SIGINFO) != 0 && previousHandler.sa_sigaction != nullptr) {
        previousHandler.sa_sigaction(number, info, context);
    } else if (previousHandler.sa_handler != SIG_DFL && previousHandler.sa_handler != SIG_IGN) {
        previousHandler.sa_handler(number);
    } else {
        // The default takes effect when the access that faulted is tried again.
        signal(number, SIG_DFL);
    }
}

/// Puts zeros where a page of one of our mappings cannot be read; any other fault is not ours.
void onBusError(int number, siginfo_t* info, void* context) {
    const int savedError = errno;
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    for (Watched& mapping : watched) {
        const std::uintptr_t begin = mapping.begin.load();
        const std::size_t size = mapping.size.load();
        if (begin == 0 || address < begin || address >= begin + size) continue;
        const std::uintptr_t page = address - address % pageSize;
        const bool single = mapping.faults.fetch_add(1) < singlePageFaults;
        const std::size_t length = single ? pageSize : begin + size - page;
        void* const zeros = mmap(reinterpret_cast<void*>(page), length, PROT_READ,
                                 MAP_FIXED | MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        errno = savedError;
        if (zeros != MAP_FAILED) return;
        break;
    }
    errno = savedError;
    passOn(number, info, context);
}

void installHandler() {
    static std::once_flag once;
    std::call_once(once, [] {
        pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
        struct sigaction action {};
        action.sa_sigaction = onBusError;
        action.sa_flags = SA_SIGINFO | SA_ONSTACK;
        sigemptyset(&action.sa_mask);
        sigaction(SIGBUS, &action, &previousHandler);
    });
}

/// A free place for a mapping; nullptr when all are taken.
Watched* watch(const void* begin, std::size_t size) {
    for (Watched& place : watched) {
        std::size_t unused = 0;
        if (!place.size.compare_exchange_strong(unused, size)) continue;
        place.faults = 0;
        place.begin = reinterpret_cast<std::uintptr_t>(begin);
        return &place;
    }
    return nullptr;
}

void unwatch(Watched& place) {
    place.begin = 0;
    place.size = 0;
}

FileIdentity identityOf(const struct stat& facts) {
    return {facts.st_dev, facts.st_ino, static_cast<std::uint64_t>(facts.st_size),
            std::int64_t{facts.st_mtim.tv_sec} * 1'000'000'000 + facts.st_mtim.tv_nsec};
}

/// Closes a file descriptor at the end of a block.
struct Descriptor {
    int number = -1;
    ~Descriptor() {
        if (number >= 0) ::close(number);
    }
};

}  // namespace

std::optional<FileIdentity> identifyFile(std::string_view path) {
    struct stat facts {};
    if (stat(resolvePath(path).c_str(), &facts) != 0) return std::nullopt;
    return identityOf(facts);
}

struct MappedFile::Mapping {
    void* address = nullptr;
    std::size_t size = 0;
    FileIdentity identity;
    Watched* place = nullptr;

    Mapping() = default;
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    ~Mapping() {
        // The place is given up first: another thread may then map the same addresses for a new file.
        if (place != nullptr) unwatch(*place);
        if (address != nullptr) munmap(address, size);
    }
};

MappedFile::MappedFile(std::unique_ptr<Mapping> mapping) : mapping_(std::move(mapping)) {}
MappedFile::MappedFile(MappedFile&& other) noexcept = default;
MappedFile& MappedFile::operator=(MappedFile&& other) noexcept = default;
MappedFile::~MappedFile() = default;

std::optional<MappedFile> MappedFile::open(std::string_view path, std::string* why) {
    const auto refuse = [&](std::string reason) -> std::optional<MappedFile> {
        if (why != nullptr) *why = std::move(reason);
        return std::nullopt;
    };
    const std::string name = resolvePath(path);
    // Looked at before it is opened: to open some devices is to act on them.
    struct stat facts {};
    if (stat(name.c_str(), &facts) != 0) return refuse(systemReason(errno));
    if (S_ISDIR(facts.st_mode)) return refuse("Is a directory");
    if (!S_ISREG(facts.st_mode)) return refuse("Not a regular file");
    // Without waiting, should the name have become a pipe in between.
    const Descriptor file{::open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)};
    if (file.number < 0) return refuse(systemReason(errno));
    if (fstat(file.number, &facts) != 0) return refuse(systemReason(errno));
    if (!S_ISREG(facts.st_mode)) return refuse("Not a regular file");

    auto mapping = std::make_unique<Mapping>();
    mapping->identity = identityOf(facts);
    const auto size = static_cast<std::size_t>(facts.st_size);
    if (size == 0) return MappedFile(std::move(mapping));
    installHandler();
    void* const address = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number, 0);
    if (address == MAP_FAILED) return refuse(systemReason(errno));
    mapping->address = address;
    mapping->size = size;
    mapping->place = watch(address, size);
    if (mapping->place == nullptr) return refuse("Too many open files");
    return MappedFile(std::move(mapping));
}

MappedFile mapFile(std::string_view path) {
    std::string why;
    auto file = MappedFile::open(path, &why);
    if (!file) throw FileFailure(std::string(path), why);
    return std::move(*file);
}

void needWhole(const MappedFile& file, std::string_view path) {
    if (file.damaged()) throw FileFailure(std::string(path), "the file was cut while it was read");
    const std::optional<FileIdentity> now = identifyFile(path);
    if (!now) throw FileFailure(std::string(path), "the file was taken away while it was read");
    if (*now != file.identity()) throw FileFailure(std::string(path), "the file was changed while it was read");
}

std::string_view MappedFile::bytes() const {
    if (mapping_ == nullptr || mapping_->size == 0) return "";
    return {static_cast<const char*>(mapping_->address), mapping_->size};
}

const FileIdentity& MappedFile::identity() const {
    return mapping_->identity;
}

bool MappedFile::damaged() const {
    return mapping_ != nullptr && mapping_->place != nullptr && mapping_->place->faults.load() > 0;
}

void MappedFile::willReadAll() const {
    if (mapping_ != nullptr && mapping_->size != 0) madvise(mapping_->address, mapping_->size, MADV_SEQUENTIAL);
}

}  // namespace welvane
