#include "las/header_edit.h"

#include <fstream>
#include <optional>
#include <string>

#include "las/header_line.h"
#include "las/sections.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A shorter line has no room for the columns to be trusted.
constexpr std::size_t shortestLine = 20;
/// A header line is never longer; a file without CR is one line of any size.
constexpr std::size_t longestLine = std::size_t{1} << 20U;

struct Hit {
    std::string line;
    std::size_t position = 0;  ///< 0-based place in the file
};

std::optional<Hit> findLine(std::string_view bytes, std::string_view mnem, char section) {
    LineReader file(bytes);
    if (section != 0 && seekSection(file, section) == 0) return std::nullopt;
    while (true) {
        const std::size_t position = file.position();
        std::string_view line;
        if (!file.next(line) || line.size() > longestLine) return std::nullopt;
        if (section != 0 ? line.find('~') != npos : holdsText(line, "~A")) return std::nullopt;
        if (lineKind(line) == LineKind::Data && sameText(getMnemField(line), mnem))
            return Hit{std::string(line), position};
    }
}

std::string editedLine(const std::string& line, EditPart part, std::string_view newText, char section) {
    HeaderField fields;
    parseHeaderLine(std::string_view(line), fields);
    const std::size_t dot = line.find('.');
    const std::size_t colon = line.rfind(':');
    const std::size_t place = fields.value.empty() ? npos : line.find(fields.value, dot + 1);
    int value = section == 'P' || section == 'W' ? 16 : 17;
    if (place != npos) value = static_cast<int>(place) + 1;
    switch (part) {
        case EditPart::Mnem:
            fields.mnem = newText;
            break;
        case EditPart::Unit:
            fields.unit = newText;
            break;
        case EditPart::Value:
            fields.value = newText;
            break;
        case EditPart::Desc:
            fields.desc = newText;
            break;
    }
    std::string edited = formatHeaderLine(fields, static_cast<int>(dot) + 1, static_cast<int>(colon) + 1, value);
    if (edited.size() < line.size()) edited.resize(line.size(), ' ');
    return edited;
}

bool overwrite(std::string_view path, std::size_t position, const std::string& line) {
    std::fstream file(resolvePath(path), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(position));
    file.write(line.data(), static_cast<std::streamsize>(line.size()));
    file.close();
    return !file.fail();
}

/// Copies the file with one line exchanged, all line ends kept as they stand.
bool rewriteWithLine(std::string_view path, std::string_view bytes, std::string_view mnem, const std::string& edited) {
    LineReader file(bytes);
    std::string_view line;
    // Kept: the first line that begins with the mnemonic is exchanged, wherever it stands and whatever follows the
    // mnemonic ("RUN" takes a "RUN1" above it).
    do {
        if (!file.next(line)) return false;
    } while (!beginsWith(trimLeft(line), mnem));
    const auto start = static_cast<std::size_t>(line.data() - bytes.data());
    OutputFile target(path, OutputFile::Mode::Beside);
    target.write(bytes.substr(0, start));
    target.write(edited);
    target.write(bytes.substr(start + line.size()));
    target.commit();
    return true;
}

bool knownSection(char section) {
    return section == 0 || std::string_view("VWCPO").find(section) != npos;
}

}  // namespace

EditResult editHeaderField(std::string_view path, std::string_view mnem, EditPart part, std::string_view newText,
                           char section, UserInterface& user) {
    section = upperChar(section);
    mnem = trim(mnem);
    if (mnem.empty() || !knownSection(section)) return EditResult::Refused;
    auto mapped = MappedFile::open(path);
    if (!mapped) return EditResult::Refused;
    const auto hit = findLine(mapped->bytes(), mnem, section);
    if (!hit) return EditResult::Refused;
    if (hit->line.size() < shortestLine) {
        user.ask({"Header Line Too Short to edit",
                  hit->line + "\r\n\r\n" +
                      "is too short for reliable editing. Increase the Format positions for the Dot, Value and Colon "
                      "on the properties tab "
                      "(try 6, 15 and 50) and try again. ",
                  Buttons::Ok, Icon::Stop, Answer::Ok});
        return EditResult::Refused;
    }
    const std::string edited = editedLine(hit->line, part, newText, section);
    if (edited == hit->line) return EditResult::Done;
    try {
        const bool done = edited.size() == hit->line.size() ? overwrite(path, hit->position, edited)
                                                            : rewriteWithLine(path, mapped->bytes(), mnem, edited);
        return done ? EditResult::Done : EditResult::Refused;
    } catch (const RunTimeFailure&) {
        return EditResult::Refused;
    }
}

}  // namespace welvane
