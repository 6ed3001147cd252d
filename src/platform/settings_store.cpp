#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "platform/platform.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view sectionTitle = "[Startup]";
/// Far above what the program ever stores; a larger file is not ours.
constexpr std::size_t largestFile = std::size_t{1} << 20;
constexpr auto longestWait = std::chrono::seconds(2);

/// Lines of the file without their ends; none when it cannot be read.
std::vector<std::string> readLines(const std::string& path) {
    const std::optional<MappedFile> file = MappedFile::open(path);
    if (!file || file->bytes().empty() || file->bytes().size() > largestFile) return {};
    std::vector<std::string> lines = split(file->bytes(), '\n');
    if (lines.back().empty()) lines.pop_back();
    for (std::string& line : lines) {
        if (endsWith(line, "\r")) line.pop_back();
    }
    return lines;
}

/// A value that blanks or quotes at its ends would not survive is kept in double quotes.
std::string asStored(std::string_view value) {
    const bool plain = trimBreaks(value) == value && !beginsWith(value, "\"");
    return plain ? std::string(value) : "\"" + std::string(value) + "\"";
}

std::string asGiven(std::string_view stored) {
    stored = trimBreaks(stored);
    if (stored.size() >= 2 && stored.front() == '"' && stored.back() == '"')
        stored = stored.substr(1, stored.size() - 2);
    return std::string(stored);
}

/// Where a key stands in the lines of a settings file.
struct Place {
    std::optional<std::size_t> line;  ///< of the key
    std::optional<std::size_t>
        end;  ///< behind the last line of the section that is not blank; nothing without a section
};

Place findKey(const std::vector<std::string>& lines, std::string_view key) {
    Place place;
    bool inside = false;
    for (std::size_t number = 0; number < lines.size(); ++number) {
        const std::string_view line = trimBreaks(lines[number]);
        if (beginsWith(line, "[")) inside = sameText(line, sectionTitle);
        if (!inside) continue;
        if (!line.empty()) place.end = number + 1;
        const std::size_t equals = line.find('=');
        if (equals == npos || !sameText(trimBreaks(line.substr(0, equals)), key)) continue;
        place.line = number;
        break;
    }
    return place;
}

std::string valueOf(const std::string& line) {
    return asGiven(std::string_view(line).substr(line.find('=') + 1));
}

/// Holds the lock file while it lives. The lock file itself stays: to remove it would let two processes lock two files
/// of one name.
class Lock {
  public:
    explicit Lock(const std::string& path)
        : file_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666)) {
        const auto giveUp = std::chrono::steady_clock::now() + longestWait;
        while (file_ >= 0 && !(held_ = flock(file_, LOCK_EX | LOCK_NB) == 0) &&
               std::chrono::steady_clock::now() < giveUp) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() {
        if (file_ >= 0) ::close(file_);
    }
    bool held() const { return held_; }

  private:
    int file_;
    bool held_ = false;
};

}  // namespace

std::string MemorySettings::get(std::string_view key, std::string_view defaultText) const {
    const auto found = values_.find(upper(key));
    return found == values_.end() ? std::string(defaultText) : found->second;
}

bool MemorySettings::put(std::string_view key, std::string_view value) {
    values_[upper(key)] = value;
    return true;
}

FileSettings::FileSettings(std::string path) : path_(std::move(path)) {}

std::string FileSettings::get(std::string_view key, std::string_view defaultText) const {
    const std::vector<std::string> lines = readLines(path_);
    const Place place = findKey(lines, key);
    return place.line ? valueOf(lines[*place.line]) : std::string(defaultText);
}

bool FileSettings::put(std::string_view key, std::string_view value) {
    if (path_.empty() || value.find_first_of("\r\n") != npos) return false;
    const auto unchanged = [&](const std::vector<std::string>& lines, const Place& place) {
        return place.line && valueOf(lines[*place.line]) == value;
    };
    std::vector<std::string> lines = readLines(path_);
    if (unchanged(lines, findKey(lines, key))) return true;

    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);
    const Lock lock(path_ + ".lock");
    if (!lock.held()) return false;
    // Read again: another process may have written while we waited.
    lines = readLines(path_);
    const Place place = findKey(lines, key);
    if (unchanged(lines, place)) return true;
    std::string line = std::string(key) + "=" + asStored(value);
    if (place.line) {
        lines[*place.line] = std::move(line);
    } else if (place.end) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(*place.end), std::move(line));
    } else {
        lines.emplace_back(sectionTitle);
        lines.push_back(std::move(line));
    }
    try {
        OutputFile file(path_, OutputFile::Mode::Beside);
        for (const std::string& kept : lines) {
            file.write(kept);
            file.write("\n");
        }
        file.commit();
        return true;
    } catch (const RunTimeFailure&) {
        return false;
    }
}

}  // namespace welvane
