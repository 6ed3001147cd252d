#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <vector>

#include "las/las_file.h"
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
    if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory)
        throw FileFailure(folder.empty() ? "." : folder, error.message());
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
std::string resolveLas(std::string_view text, const LasFile* file) {
    constexpr std::string_view opening = "LAS(";
    const std::size_t open = findText(text, opening);
    const std::size_t close = open == npos ? npos : text.find(')', open);
    if (close == npos) return std::string(text);
    const std::string_view inside = trim(text.substr(open + opening.size(), close - open - opening.size()));
    const std::size_t colon = inside.find(':');
    if (file == nullptr) return {};
    if (inside.size() > 1 && inside.front() == '~' && colon != npos)
        return std::string(trim(file->value(trim(inside.substr(colon + 1)), upperChar(inside[1])).text));
    return std::string(trim(file->value(inside).text));
}

std::string withoutQuotes(std::string_view text) {
    text = trim(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
    return std::string(text);
}

struct Tokens {
    std::string file, key, column;
};

/// The fields of a reference: parted by blanks that stand outside double quotes. A quote that nothing closes is plain
/// text.
std::vector<std::string> fieldsOf(std::string_view text) {
    std::vector<std::string> fields;
    std::string field;
    bool quoted = false;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char c = text[place];
        if (c == '"' && (quoted || text.find('"', place + 1) != npos)) quoted = !quoted;
        if (c != ' ' || quoted) {
            field += c;
        } else if (!field.empty()) {
            fields.push_back(std::move(field));
            field.clear();
        }
    }
    if (!field.empty()) fields.push_back(std::move(field));
    return fields;
}

/// The three tokens; a field that names none of them says nothing.
Tokens cutTokens(std::string_view text) {
    Tokens tokens;
    constexpr std::array<std::string_view, 3> names = {"File=", "Key=", "Col="};
    const std::array<std::string*, 3> targets = {&tokens.file, &tokens.key, &tokens.column};
    for (const std::string& field : fieldsOf(text)) {
        const std::string whole = withoutQuotes(field);
        for (std::size_t index = 0; index < names.size(); ++index) {
            const std::size_t place = findText(whole, names[index]);
            if (place == npos) continue;
            *targets[index] = whole.substr(place + names[index].size());
            break;
        }
    }
    return tokens;
}

}  // namespace

std::string applyFilterSpecial(const Session& session, std::string_view text, int slot, std::string_view filterFolder,
                               std::vector<std::string>* tables) {
    if (slot < 0 || slot >= slotCount) return {};
    const InputSlot& input = session.slots[slot];
    Tokens tokens = cutTokens(text);
    for (std::string* const token : {&tokens.file, &tokens.key, &tokens.column}) {
        *token = resolveLas(withoutQuotes(*token), input.file.get());
        if (sameText(*token, "ThisLASFileName")) *token = fileNameOf(input.path);
    }
    const bool bare = tokens.file.empty() && tokens.key.empty() && tokens.column.empty();
    if (bare && holdsText(text, "LAS(")) return resolveLas(text, input.file.get());
    const std::string file = findReferenceFile(tokens.file, filterFolder);
    if (file.empty()) return {};
    if (tables != nullptr) tables->push_back(file);
    if (tokens.column.empty()) return std::string(trim(openLasFile(file)->value(tokens.key).text));
    return getDBValue(file, tokens.key, tokens.column);
}

}  // namespace welvane
