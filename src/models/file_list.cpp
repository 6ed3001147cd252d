#include "models/file_list.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == 0x7F;
}

/// One pattern without ";". After a mismatch the last "*" takes one character more.
bool fitsOne(std::string_view name, std::string_view pattern) {
    std::size_t at = 0, wanted = 0, star = npos, resume = 0;
    while (at < name.size()) {
        if (wanted < pattern.size() && pattern[wanted] == '*') {
            star = wanted++;
            resume = at;
        } else if (wanted < pattern.size() &&
                   (pattern[wanted] == '?' || upperChar(pattern[wanted]) == upperChar(name[at]))) {
            ++wanted;
            ++at;
        } else if (star != npos) {
            wanted = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', wanted) == npos;
}

bool before(const std::string& one, const std::string& other) {
    if (lessText(one, other)) return true;
    return !lessText(other, one) && one < other;
}

}  // namespace

bool fitsPattern(std::string_view name, std::string_view pattern) {
    while (true) {
        const std::size_t end = pattern.find(';');
        const std::string_view one = trim(pattern.substr(0, end));
        if (one == "*.*" || (!one.empty() && fitsOne(name, one))) return true;
        if (end == npos) return false;
        pattern.remove_prefix(end + 1);
    }
}

std::string patternOf(std::string_view extension) {
    std::vector<std::string> patterns;
    for (const std::string& piece : split(extension, ';')) {
        const std::string_view one = trim(piece);
        if (one.empty()) continue;
        if (one.find_first_of("/\\") != npos || std::any_of(one.begin(), one.end(), isControl)) return {};
        const bool bare = one.find_first_of("*?.") == npos;
        patterns.push_back((bare ? "*." : one.front() == '.' ? "*" : "") + std::string(one));
    }
    return join(patterns, ";");
}

bool legalFolderName(std::string_view name) {
    constexpr std::size_t longestName = 255;
    return !name.empty() && name != "." && name != ".." && name.size() <= longestName &&
           name.find_first_of("/\\") == npos && std::none_of(name.begin(), name.end(), isControl);
}

FolderListing listFolder(const std::string& folder, std::string_view pattern) {
    FolderListing listing;
    std::error_code failed;
    for (std::filesystem::directory_iterator entry(resolvePath(folder), failed), end; !failed && entry != end;
         entry.increment(failed)) {
        std::string name = entry->path().filename().native();
        if (name.front() == '.') continue;
        std::error_code unknown;  // of a link that leads nowhere: it is listed as a file
        if (entry->is_directory(unknown))
            listing.folders.push_back(std::move(name));
        else if (fitsPattern(name, pattern))
            listing.files.push_back(std::move(name));
    }
    if (failed) listing.problem = failed.message();
    std::sort(listing.folders.begin(), listing.folders.end(), before);
    std::sort(listing.files.begin(), listing.files.end(), before);
    return listing;
}

std::string lineOfName(std::string_view name) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string line;
    for (const char c : name) {
        if (!isControl(c))
            line += c;
        else if (c == '\n')
            line += "\\n";
        else
            line.append("\\x").append(1, digits[static_cast<unsigned char>(c) / 16]).append(1, digits[c % 16]);
    }
    return line;
}

}  // namespace welvane
