#include "las/sections.h"

#include <limits>

#include "las/limits.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A section handed out as one text is bounded by what a person can have written, so that a damaged file cannot fill
/// memory.
constexpr std::size_t textLimit = std::size_t{256} << 20U;

bool holdsTilde(std::string_view line) {
    return line.find('~') != npos;
}

std::string_view takeMnem(std::string_view line) {
    line = line.substr(0, line.find('.'));
    const std::size_t first = line.find_first_not_of(" \t");
    return first == npos ? std::string_view() : line.substr(first, line.find_last_not_of(" \t") - first + 1);
}

std::int16_t column(std::size_t place) {
    const bool fits = place < static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max());
    return fits ? static_cast<std::int16_t>(place + 1) : std::int16_t{0};
}

/// Version of a file by its ~V section.
struct VersionFound {
    bool sectionEnded = false;  ///< the next section came before a VERS line
    bool isOld = false;         ///< below 2.0, which counts as 1.2
};
VersionFound readVersion(const LasText& text) {
    const auto start = text.seekSection('V');
    if (!start) return {};
    LineReader lines = text.headerLines(*start);
    for (std::string_view line; lines.next(line);) {
        line = trimLeft(line);
        if (beginsWith(line, "~")) return {true, false};
        if (!beginsWith(line, "VERS")) continue;
        HeaderField fields;
        parseHeaderLine(line, fields);
        return {false, static_cast<float>(val(fields.value)) < 2.0F};
    }
    return {};
}

/// What a search for a mnemonic through the header's lines found.
struct Found {
    LasValue::End end = LasValue::End::NotFound;
    HeaderField fields;
    char section = 0;
};
Found findMnem(const LasText& text, std::string_view mnem, char section) {
    Found found;
    LineReader header = text.headerLines();
    for (std::string_view line; header.next(line);) {
        line = trimLeft(line);
        if (beginsWith(line, "~")) {
            if (isTitle(line, 'A')) {
                found.end = LasValue::End::ReachedData;
                return found;
            }
            found.section = line.size() > 1 ? upperChar(line[1]) : ' ';
            continue;
        }
        if (section != 0 && found.section != section) continue;
        if (lineKind(line) != LineKind::Data || !sameText(takeMnem(line), mnem)) continue;
        parseHeaderLine(line, found.fields);
        found.end = LasValue::End::Found;
        return found;
    }
    return found;
}

/// In LAS 1.2 the lines of ~W carry their text behind the colon, but for the depths and the null value.
LasValue valueByVersion(Found found, std::string_view mnem, bool isOld) {
    const bool numeric =
        sameText(mnem, "STRT") || sameText(mnem, "STOP") || sameText(mnem, "STEP") || sameText(mnem, "NULL");
    const bool behindColon = isOld && !numeric && found.section == 'W';
    return {found.end, std::move(behindColon ? found.fields.desc : found.fields.value), std::move(found.fields.unit)};
}

/// Field text of a table: no tabs, no blanks at the ends.
std::string tableText(std::string_view text) {
    return std::string(trim(withoutChar(text, '\t')));
}

void parseTableRow(std::string_view line, HeaderField& row) {
    std::string text = upper(line);
    parseHeaderLine(text, row);
    for (std::string* field : {&row.mnem, &row.unit, &row.value, &row.desc}) *field = tableText(*field);
}

/// The unit standing alone in front of a number in a value such as "M 1500".
void splitLooseUnit(HeaderField& row) {
    constexpr std::string_view blanks = " \t";
    const std::size_t gap = row.value.find_first_of(blanks);
    if (gap == std::string::npos) return;
    const std::size_t second = row.value.find_first_not_of(blanks, gap);
    const std::string number = row.value.substr(second);
    if (number.find_first_of(blanks) != std::string::npos) return;
    if (val(number) == 0 && number != "0") return;
    row.unit = row.value.substr(0, gap);
    row.value = number;
}

/// The rows of one section.
bool takeRow(std::string_view line, const SectionReading& how, SectionTable& rows) {
    if (how.letters == SectionReading::Letters::AsTheyStand) {
        if (lineKind(line) == LineKind::Data) parseHeaderLine(line, rows.emplace_back());
    } else if (!how.unitApart) {
        if (lineKind(line) == LineKind::Data) parseTableRow(line, rows.emplace_back());
    } else if (const std::string text = withoutChar(line, '\t'); lineKind(text) == LineKind::Data) {
        parseTableRow(trim(text), rows.emplace_back());
        if (rows.back().unit.empty()) splitLooseUnit(rows.back());
    }
    return rows.size() < rowLimit;
}

/// Text of a section whose lines end in any way: between the line of its title and the line end before the next "~".
std::string sectionTextOfAny(const LasText& source, std::size_t start) {
    LineReader lines = source.lines(start);
    std::string_view line;
    lines.next(line);
    std::string_view text = source.bytes().substr(lines.position());
    text = text.substr(0, text.find('~'));
    if (text.size() > textLimit) return {};
    if (endsWith(text, "\n")) text.remove_suffix(1);
    if (endsWith(text, "\r")) text.remove_suffix(1);
    return std::string(text);
}

}  // namespace

std::optional<SectionTable> readSection(const LasText& text, char letter, const SectionReading& how) {
    const auto start = text.seekSection(letter);
    if (!start) return std::nullopt;
    SectionTable rows;
    LineReader lines = text.headerLines(*start);
    for (std::string_view line; lines.next(line);) {
        line = trim(line);
        const bool inFront = how.end == SectionReading::End::TildeInFront || text.lineRule() == LineRule::Any;
        if (inFront ? beginsWith(line, "~") : holdsTilde(line)) break;
        if (!takeRow(line, how, rows)) break;
    }
    return rows;
}

std::string getSectionText(const LasText& source, char letter) {
    const std::string_view bytes = source.bytes();
    const std::size_t start = findTitle(bytes, letter);
    if (start == npos) return {};
    if (source.lineRule() == LineRule::Any) return sectionTextOfAny(source, start);
    const std::size_t next = bytes.find('~', start + 1);
    std::string_view text = bytes.substr(start);
    if (next != npos) text = text.substr(0, next - start >= 2 ? next - start - 2 : 0);
    std::size_t titleEnd = text.find("\r\n");
    std::size_t endLength = 2;
    if (titleEnd == npos) {
        titleEnd = text.find('\r');
        endLength = 1;
    }
    if (titleEnd == npos || text.size() - titleEnd > textLimit) return {};
    return std::string(text.substr(titleEnd + endLength));
}

LasValue getLasValue(const LasText& text, std::string_view mnem, char section) {
    mnem = trim(mnem);
    section = upperChar(section);
    if (std::string_view("WVPOC").find(section) == npos) section = 0;
    VersionFound version;
    if (section == 'W') version = readVersion(text);
    if (version.sectionEnded) return {};
    return valueByVersion(findMnem(text, mnem, section), mnem, version.isOld);
}

LasValue getFileValue(const LasText& text, std::string_view mnem) {
    mnem = trim(mnem);
    return valueByVersion(findMnem(text, mnem, 0), mnem, readVersion(text).isOld);
}

std::string getOpenValue(const LasText& text, std::string_view mnem, char section) {
    mnem = trim(mnem);
    LineReader header = text.headerLines();
    std::string_view line;
    do {
        if (!header.next(line) || (isTitle(line, 'A') && upperChar(section) != 'A')) return {};
    } while (!isTitle(line, section));
    while (header.next(line)) {
        line = trimLeft(line);
        if (isTitle(line, 'A')) break;
        if (lineKind(line) != LineKind::Data || !sameText(takeMnem(line), mnem)) continue;
        std::string copy(line);
        return withoutChar(withoutChar(getValueField(copy), '\t'), ':');
    }
    return {};
}

DepthHeader getDepthHeader(const LasText& text) {
    DepthHeader result;
    const auto start = text.seekSection('W');
    if (!start) return result;
    constexpr std::array<std::string_view, 4> names = {"STRT", "STOP", "STEP", "NULL"};
    unsigned seen = 0;
    LineReader lines = text.headerLines(*start);
    const bool anywhere = text.lineRule() == LineRule::CarriageReturn;
    for (std::string_view line; seen != 0b1111U && lines.next(line);) {
        const std::string_view shown = trimLeft(line);
        if (anywhere ? holdsTilde(line) : beginsWith(shown, "~")) break;
        if (lineKind(shown) != LineKind::Data) continue;
        for (std::size_t index = 0; index < names.size(); ++index) {
            if (!beginsWith(shown, names[index])) continue;
            seen |= 1U << index;
            HeaderField fields;
            parseHeaderLine(shown, fields);
            if (index == 0) {
                const std::size_t dot = line.find('.');
                const std::size_t place = fields.value.empty() ? npos : line.find(fields.value, dot + 1);
                result.layout = {column(dot), place == npos ? std::int16_t{15} : column(place),
                                 column(line.rfind(':'))};
            }
            result.entries[index] = {std::move(fields.value), std::move(fields.unit)};
        }
    }
    return result;
}

}  // namespace welvane
