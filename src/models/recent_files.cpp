#include "models/recent_files.h"

#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view recentKey = "recent";
/// What a path may hold and the setting, one line of "|"-joined paths, may not: written as "%" and two digits.
constexpr std::string_view escaped = "%|\r\n";
constexpr std::string_view digits = "0123456789ABCDEF";

std::string escape(std::string_view path) {
    std::string text;
    for (const char c : path) {
        if (escaped.find(c) == npos)
            text += c;
        else
            text.append("%")
                .append(1, digits[static_cast<std::size_t>(c) / 16])
                .append(1, digits[static_cast<std::size_t>(c) % 16]);
    }
    return text;
}

std::string unescape(std::string_view text) {
    std::string path;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t high = at + 2 < text.size() ? digits.find(text[at + 1]) : npos;
        const std::size_t low = high != npos ? digits.find(text[at + 2]) : npos;
        const bool isEscape = text[at] == '%' && low != npos;
        path += isEscape ? static_cast<char>(high * 16 + low) : text[at];
        if (isEscape) at += 2;
    }
    return path;
}

std::vector<std::string> allRecent(const SettingsStore& settings) {
    std::vector<std::string> paths;
    for (const std::string& text : split(settings.get(recentKey, ""), '|'))
        if (!text.empty()) paths.push_back(unescape(text));
    return paths;
}

}  // namespace

std::vector<std::string> recentFiles(const SettingsStore& settings) {
    std::vector<std::string> paths = allRecent(settings);
    std::erase_if(paths, [](const std::string& path) { return !fileSize(path); });
    return paths;
}

void noteRecentFile(SettingsStore& settings, std::string_view path) {
    std::vector<std::string> paths = allRecent(settings);
    std::erase(paths, path);
    paths.insert(paths.begin(), std::string(path));
    if (paths.size() > recentFilesKept) paths.resize(recentFilesKept);
    for (std::string& one : paths) one = escape(one);
    settings.put(recentKey, join(paths, "|"));
}

}  // namespace welvane
