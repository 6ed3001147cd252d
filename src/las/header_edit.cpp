#include "las/header_edit.h"

#include <optional>

#include "las/header_line.h"
#include "las/las_text.h"
#include "las/limits.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A shorter line has no room for the columns to be trusted.
constexpr std::size_t shortestLine = 20;
/// A header line is never longer; a file without CR is one line of any size.
constexpr std::size_t longestLine = std::size_t{1} << 20U;

/// The line that an edit means; nothing when there is none.
std::optional<std::string_view> findLine(const LasText& text, std::string_view mnem, char section) {
    const auto start = section == 0 ? std::optional<std::size_t>(0) : text.seekSection(section);
    if (!start) return std::nullopt;
    LineReader lines = text.lines(*start);
    for (std::string_view line; lines.next(line) && line.size() <= longestLine;) {
        if (section != 0 ? line.find('~') != npos : holdsText(line, "~A")) break;
        if (lineKind(line) == LineKind::Data && sameText(getMnemField(line), mnem)) return line;
    }
    return std::nullopt;
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

/// The line that a longer one takes the place of. Kept: the first line that begins with the mnemonic, wherever it
/// stands and whatever follows the mnemonic ("RUN" takes a "RUN1" above it).
std::optional<std::string_view> lineThatGivesWay(const LasText& text, std::string_view mnem) {
    LineReader lines = text.lines();
    for (std::string_view line; lines.next(line);)
        if (beginsWith(trimLeft(line), mnem)) return line;
    return std::nullopt;
}

/// What stands in front of the data; without any, as many whole lines as a header can have.
std::string_view headerPart(const LasText& text) {
    if (const auto data = text.seekSection('A')) return text.bytes().substr(0, *data);
    if (text.bytes().size() <= headerLimit) return text.bytes();
    return text.bytes().substr(0, text.bytes().rfind('\r', headerLimit) + 1);
}

bool knownSection(char section) {
    return section == 0 || std::string_view("VWCPO").find(section) != npos;
}

}  // namespace

EditResult editHeaderText(std::string& header, const HeaderEdit& edit, std::string& shortLine) {
    shortLine.clear();
    const char section = upperChar(edit.section);
    const std::string_view mnem = trim(edit.mnem);
    if (mnem.empty() || !knownSection(section)) return EditResult::Refused;
    const LasText text(header);
    auto line = findLine(text, mnem, section);
    if (!line) return EditResult::Refused;
    if (line->size() < shortestLine) {
        shortLine = *line;
        return EditResult::Refused;
    }
    const std::string edited = editedLine(std::string(*line), edit.part, edit.text, section);
    if (edited.size() != line->size()) line = lineThatGivesWay(text, mnem);
    if (!line) return EditResult::Refused;
    header.replace(static_cast<std::size_t>(line->data() - header.data()), line->size(), edited);
    return EditResult::Done;
}

void tellShortLine(std::string_view line, UserInterface& user) {
    user.ask({"Header Line Too Short to edit",
              std::string(line) + "\r\n\r\n" +
                  "is too short for reliable editing. Increase the Format positions for the Dot, Value and Colon "
                  "on the properties tab "
                  "(try 6, 15 and 50) and try again. ",
              Buttons::Ok, Icon::Stop, Answer::Ok});
}

EditResult editHeaderFields(std::string_view path, std::span<const HeaderEdit> edits, UserInterface& user) {
    if (!fileExists(path)) return EditResult::Refused;
    const MappedFile file = mapFile(path);
    const std::string_view bytes = file.bytes();
    const std::string_view before = headerPart(LasText(bytes));
    std::string header(before);
    EditResult result = EditResult::Done;
    for (const HeaderEdit& edit : edits) {
        std::string shortLine;
        if (editHeaderText(header, edit, shortLine) != EditResult::Done) result = EditResult::Refused;
        if (!shortLine.empty()) tellShortLine(shortLine, user);
    }
    needWhole(file, path);
    if (header == before) return result;
    if (header.size() == before.size()) {
        overwriteBytes(path, 0, header);
        return result;
    }
    OutputFile target(path, OutputFile::Mode::Beside);
    target.write(header);
    target.write(bytes.substr(before.size()));
    target.commit();
    return result;
}

EditResult editHeaderField(std::string_view path, std::string_view mnem, EditPart part, std::string_view newText,
                           char section, UserInterface& user) {
    const HeaderEdit edit{mnem, part, section, std::string(newText)};
    return editHeaderFields(path, {&edit, 1}, user);
}

}  // namespace welvane
