#include "platform/file_settings.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/file_lock.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "shared/text.h"

namespace welvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view sectionTitle = "[Startup]";
/// Far above what the program ever stores; a larger file is not ours.
constexpr std::size_t largestFile = std::size_t{1} << 20;

/// Lines of the file without their ends.
std::vector<std::string> readLines(const std::string& path) {
    std::error_code error;
    // A home that we may not look into holds no settings of ours.
    const fs::file_status status = fs::status(path, error);
    if (error == std::errc::permission_denied || is_directory(status) || status.type() == fs::file_type::not_found)
        return {};
    const MappedFile file = mapFile(path);
    if (file.bytes().empty() || file.bytes().size() > largestFile) return {};
    std::vector<std::string> lines = split(file.bytes(), '\n');
    if (lines.back().empty()) lines.pop_back();
    for (std::string& line : lines) {
        if (endsWith(line, "\r")) line.pop_back();
    }
    needWhole(file, path);
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

}  // namespace

FileSettings::FileSettings(std::string path) : path_(std::move(path)) {}

std::string FileSettings::get(std::string_view key, std::string_view defaultText) const {
    const std::lock_guard alone(guard_);
    const auto now = identifyFile(path_);
    if (!now || now != known_) {
        lines_ = readLines(path_);
        known_ = now;
    }
    const Place place = findKey(lines_, key);
    return place.line ? valueOf(lines_[*place.line]) : std::string(defaultText);
}

bool FileSettings::put(std::string_view key, std::string_view value) {
    why_.clear();
    if (path_.empty()) why_ = "there is no folder for settings: neither HOME nor XDG_CONFIG_HOME names one";
    if (value.find_first_of("\r\n") != npos) why_ = "a setting is one line";
    if (!why_.empty()) return false;
    try {
        return putLine(key, value);
    } catch (const RunTimeFailure& failure) {
        why_ = failure.what();
        return false;
    }
}

bool FileSettings::putLine(std::string_view key, std::string_view value) {
    const auto unchanged = [&](const std::vector<std::string>& lines, const Place& place) {
        return place.line && valueOf(lines[*place.line]) == value;
    };
    std::vector<std::string> lines = readLines(path_);
    if (unchanged(lines, findKey(lines, key))) return true;

    std::error_code error;
    const fs::path folder = fs::path(path_).parent_path();
    fs::create_directories(folder, error);
    if (error) throw FileFailure(folder.string(), error.message());
    const FileLock lock(path_ + ".lock");
    if (!lock.held()) throw FileFailure(path_ + ".lock", lock.why());
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
    OutputFile file(path_, OutputFile::Mode::Beside);
    for (const std::string& kept : lines) {
        file.write(kept);
        file.write("\n");
    }
    file.commit();
    return true;
}

}  // namespace welvane
