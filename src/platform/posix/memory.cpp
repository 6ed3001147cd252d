#include "platform/memory.h"

#include <algorithm>
#include <fcntl.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>

#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t largestReport = 65536;

/// Text of one of the system's report files, which have no size of their own; "" when it is not there.
std::string readReport(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return {};
    std::string text(largestReport, '\0');
    std::size_t used = 0;
    for (ssize_t got = 1; got > 0 && used < text.size(); used += static_cast<std::size_t>(got)) {
        got = std::max<ssize_t>(0, ::read(file, text.data() + used, text.size() - used));
    }
    ::close(file);
    text.resize(used);
    return text;
}

/// The number behind the name at the begin of a line; nothing without such a line.
std::optional<std::uint64_t> numberAfter(std::string_view report, std::string_view name) {
    for (const std::string& line : split(report, '\n')) {
        if (beginsWith(line, name)) return static_cast<std::uint64_t>(val(std::string_view(line).substr(name.size())));
    }
    return std::nullopt;
}

/// What is left below the limit of one control group; a group without a limit tells nothing.
std::optional<std::uint64_t> leftInGroup(const std::string& folder, const char* limitFile, const char* usedFile) {
    const std::string limit = readReport(folder + limitFile);
    if (limit.empty() || !isDigit(limit.front())) return std::nullopt;
    const double used = val(readReport(folder + usedFile));
    // Pages of files that nobody uses at present are given back as soon as somebody needs the memory.
    const auto reclaimable = numberAfter(readReport(folder + "/memory.stat"), "inactive_file ");
    return static_cast<std::uint64_t>(std::max(0.0, val(limit) - used + static_cast<double>(reclaimable.value_or(0))));
}

/// Smallest rest of the group and all groups around it.
std::optional<std::uint64_t> leftInGroups(const std::string& root, std::string group, const char* limitFile,
                                          const char* usedFile) {
    std::optional<std::uint64_t> least;
    while (true) {
        if (const auto left = leftInGroup(root + group, limitFile, usedFile))
            least = std::min(left, least ? least : left);
        if (group.empty() || group == "/") return least;
        group.resize(group.rfind('/'));
    }
}

std::optional<std::uint64_t> leftByGroups() {
    std::optional<std::uint64_t> least;
    for (const std::string& line : split(readReport("/proc/self/cgroup"), '\n')) {
        const std::vector<std::string> fields = split(line, ':');
        if (fields.size() < 3) continue;
        std::optional<std::uint64_t> left;
        if (fields[0] == "0")
            left = leftInGroups("/sys/fs/cgroup", fields[2], "/memory.max", "/memory.current");
        else if (holdsText(fields[1], "memory"))
            left = leftInGroups("/sys/fs/cgroup/memory", fields[2], "/memory.limit_in_bytes", "/memory.usage_in_bytes");
        if (left) least = std::min(left, least ? least : left);
    }
    return least;
}

std::optional<std::uint64_t> leftByOwnLimit() {
    struct rlimit limit {};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return std::nullopt;
    const double used = val(readReport("/proc/self/statm")) * static_cast<double>(sysconf(_SC_PAGESIZE));
    return static_cast<std::uint64_t>(std::max(0.0, static_cast<double>(limit.rlim_cur) - used));
}

}  // namespace

std::uint64_t availableMemory() {
    std::optional<std::uint64_t> least;
    if (const auto kilobytes = numberAfter(readReport("/proc/meminfo"), "MemAvailable:")) least = *kilobytes * 1024;
    for (const auto& left : {leftByGroups(), leftByOwnLimit()}) {
        if (left) least = std::min(left, least ? least : left);
    }
    return least.value_or(0);
}

}  // namespace welvane
