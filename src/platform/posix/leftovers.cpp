#include "platform/leftovers.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "shared/files.h"

namespace welvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view partEnd = ".part", scratchBegin = "welvane-";
/// A file name has at most 255 bytes; host, process and number take the rest.
constexpr std::size_t longestNamePart = 180, longestHost = 32;

/// Letters and digits of the host's name, in which "." and "-" would divide.
std::string hostName() {
    std::array<char, 256> name{};
    if (gethostname(name.data(), name.size() - 1) != 0) return "host";
    std::string host;
    for (const char c : std::string_view(name.data()))
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) host += c;
    return host.empty() ? "host" : host.substr(0, longestHost);
}

/// "HOST-PROCESS-", in front of a number.
std::string ownMark() {
    return hostName() + "-" + std::to_string(getpid()) + "-";
}

/// Whether a mark with its number is that of a process of this host that is gone.
bool leftBehind(std::string_view mark, const std::string& host) {
    if (!mark.starts_with(host + "-")) return false;
    mark.remove_prefix(host.size() + 1);
    pid_t process = 0;
    const auto [end, error] = std::from_chars(mark.data(), mark.data() + mark.size(), process);
    if (error != std::errc() || process <= 0 || end == mark.data() + mark.size() || *end != '-') return false;
    return kill(process, 0) != 0 && errno == ESRCH;
}

/// Entries of a folder that are ours and that `isLeft` says are left behind.
template <class IsLeft>
std::vector<fs::path> leftIn(const std::string& folder, IsLeft&& isLeft) {
    std::vector<fs::path> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, error), end; !error && entry != end;
         entry.increment(error)) {
        struct stat facts {};
        if (isLeft(entry->path().filename().string()) && lstat(entry->path().c_str(), &facts) == 0 &&
            facts.st_uid == geteuid())
            found.push_back(entry->path());
    }
    return found;
}

}  // namespace

std::string partFileName(std::string_view path, unsigned number) {
    return dirOf(path) + "." + fileNameOf(path).substr(0, longestNamePart) + "." + ownMark() + std::to_string(number) +
           std::string(partEnd);
}

void sweepPartFiles(const std::string& folder) {
    const std::string host = hostName();
    const auto isLeft = [&host](std::string_view name) {
        if (!name.starts_with('.') || !name.ends_with(partEnd)) return false;
        name.remove_suffix(partEnd.size());
        return leftBehind(name.substr(name.rfind('.') + 1), host);
    };
    for (const fs::path& file : leftIn(folder, isLeft)) ::unlink(file.c_str());
}

std::string makeScratchFolder(const std::string& base) {
    std::string name = withBackslash(base) + std::string(scratchBegin) + ownMark() + "XXXXXX";
    return mkdtemp(name.data()) == nullptr ? std::string() : name + "/";
}

void sweepScratchFolders(const std::string& base) {
    const std::string host = hostName();
    const auto isLeft = [&host](std::string_view name) {
        return name.starts_with(scratchBegin) && leftBehind(name.substr(scratchBegin.size()), host);
    };
    std::error_code ignored;
    for (const fs::path& folder : leftIn(base, isLeft)) fs::remove_all(folder, ignored);
}

}  // namespace welvane
