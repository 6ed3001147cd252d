#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <vector>

#include "las/sections.h"
#include "session/db_value.h"
#include "session/filters.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A file of this name, or of one that differs in its case only, in the name's folder; "" when there is none.
std::string findIgnoringCase(const std::string& path) {
    if (fileExists(path)) return path;
    const std::string resolved = resolvePath(path);
    const std::string folder = dirOf(resolved), name = fileNameOf(resolved);
    std::error_code error;
    std::filesystem::directory_iterator entries(
        folder.empty() ? std::filesystem::path(".") : std::filesystem::path(folder), error);
    if (error) return {};
    std::string found;
    for (const auto end = std::filesystem::directory_iterator(); entries != end; entries.increment(error)) {
        const std::string entry = entries->path().filename().string();
        // Of several such names the first in the order of bytes, so that the choice does not hang on the file system.
        if (sameText(entry, name) && fileExists(folder + entry) && (found.empty() || entry < found)) found = entry;
    }
    return found.empty() ? std::string() : folder + found;
}

std::string findReferenceFile(std::string_view name, std::string_view filterFolder) {
    if (name.empty()) return {};
    const std::string found = findIgnoringCase(std::string(name));
    const bool rooted = name.front() == '/' || name.front() == '\\';
    return !found.empty() || filterFolder.empty() || rooted
               ? found
               : findIgnoringCase(std::string(filterFolder) + std::string(name));
}

/// "LAS(~W:UWI)" or "LAS(UWI)" read from the slot's file; any other text as it stands.
std::string resolveLas(std::string_view text, const std::string& path) {
    constexpr std::string_view opening = "LAS(";
    const std::size_t open = findText(text, opening);
    const std::size_t close = open == npos ? npos : text.find(')', open);
    if (close == npos) return std::string(text);
    const std::string_view inside = trim(text.substr(open + opening.size(), close - open - opening.size()));
    const std::size_t colon = inside.find(':');
    if (inside.size() > 1 && inside.front() == '~' && colon != npos)
        return std::string(trim(getLasValue(path, trim(inside.substr(colon + 1)), upperChar(inside[1])).text));
    return std::string(trim(getFileValue(path, inside)));
}

std::string withoutQuotes(std::string_view text) {
    text = trim(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
    return std::string(text);
}

struct Tokens {
    std::string file, key, column;
};

/// The three tokens. A word without one of their names belongs to the token in front of it, so that a value may hold
/// blanks.
Tokens cutTokens(std::string_view text) {
    Tokens tokens;
    constexpr std::array<std::string_view, 3> names = {"File=", "Key=", "Col="};
    const std::array<std::string*, 3> targets = {&tokens.file, &tokens.key, &tokens.column};
    std::string* current = nullptr;
    for (const std::string& word : split(text, ' ')) {
        if (word.empty()) continue;
        bool named = false;
        for (std::size_t index = 0; index < names.size() && !named; ++index) {
            const std::size_t place = findText(word, names[index]);
            if (place == npos) continue;
            current = targets[index];
            *current = word.substr(place + names[index].size());
            named = true;
        }
        if (!named && current != nullptr) *current += (current->empty() ? "" : " ") + word;
    }
    return tokens;
}

}  // namespace

std::string applyFilterSpecial(const Session& session, std::string_view text, int slot, std::string_view filterFolder) {
    if (slot < 0 || slot >= slotCount) return {};
    const std::string& path = session.slots[slot].path;
    Tokens tokens = cutTokens(text);
    for (std::string* const token : {&tokens.file, &tokens.key, &tokens.column}) {
        *token = resolveLas(withoutQuotes(*token), path);
        if (sameText(*token, "ThisLASFileName")) *token = fileNameOf(path);
    }
    const bool bare = tokens.file.empty() && tokens.key.empty() && tokens.column.empty();
    if (bare && holdsText(text, "LAS(")) return resolveLas(text, path);
    const std::string file = findReferenceFile(tokens.file, filterFolder);
    if (file.empty()) return {};
    if (tokens.column.empty()) return std::string(trim(getFileValue(file, tokens.key)));
    return getDBValue(file, tokens.key, tokens.column);
}

}  // namespace welvane
