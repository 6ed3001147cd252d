#include "las/sections.h"

#include <limits>

#include "las/limits.h"
#include "platform/mapped_file.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A section handed out as one text is bounded by what a person can have written, so that a damaged file cannot fill
/// memory.
constexpr std::size_t textLimit = std::size_t{256} << 20U;

std::string_view headerOf(std::string_view bytes) {
    return bytes.substr(0, headerLimit);
}

/// First place of "~" + letter at or behind `from`, anywhere in the text.
std::size_t findTitle(std::string_view text, char letter, std::size_t from = 0) {
    for (std::size_t place = text.find('~', from); place != npos; place = text.find('~', place + 1))
        if (place + 1 < text.size() && upperChar(text[place + 1]) == upperChar(letter)) return place;
    return npos;
}

bool holdsTitle(std::string_view text, char letter) {
    return findTitle(text, letter) != npos;
}
bool isTitle(std::string_view line, char letter) {
    return line.size() >= 2 && line[0] == '~' && upperChar(line[1]) == upperChar(letter);
}
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

/// Calls `take` with the trimmed lines behind a section's title until it returns false. False without the section.
template <class Take>
bool eachSectionLine(std::string_view path, char letter, Take&& take) {
    const auto mapped = MappedFile::open(path);
    if (!mapped) return false;
    LineReader file(headerOf(mapped->bytes()));
    if (seekSection(file, letter) == 0) return false;
    for (std::string_view line; file.next(line);)
        if (!take(trim(line))) break;
    return true;
}

/// Version of a file by its ~V section, with the reader behind that title.
struct VersionFound {
    bool sectionEnded = false;  ///< the next section came before a VERS line
    bool isOld = false;         ///< below 2.0, which counts as 1.2
};
VersionFound readVersion(LineReader& file) {
    for (std::string_view line; file.next(line);) {
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
    enum class End { Hit, ReachedData, EndOfFile } end = End::EndOfFile;
    HeaderField fields;
    char section = 0;
};
Found findMnem(LineReader& file, std::string_view mnem, char section) {
    Found found;
    for (std::string_view line; file.next(line);) {
        line = trimLeft(line);
        if (beginsWith(line, "~")) {
            if (isTitle(line, 'A')) {
                found.end = Found::End::ReachedData;
                return found;
            }
            found.section = line.size() > 1 ? upperChar(line[1]) : ' ';
            continue;
        }
        if (section != 0 && found.section != section) continue;
        if (lineKind(line) != LineKind::Data || !sameText(takeMnem(line), mnem)) continue;
        parseHeaderLine(line, found.fields);
        found.end = Found::End::Hit;
        return found;
    }
    return found;
}

/// In LAS 1.2 the lines of ~W carry their text behind the colon, but for the depths and the null value.
std::string valueByVersion(const Found& found, std::string_view mnem, bool isOld) {
    const bool numeric =
        sameText(mnem, "STRT") || sameText(mnem, "STOP") || sameText(mnem, "STEP") || sameText(mnem, "NULL");
    return isOld && !numeric && found.section == 'W' ? found.fields.desc : found.fields.value;
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

}  // namespace

std::size_t seekSection(LineReader& file, char letter) {
    const bool wantsData = upperChar(letter) == 'A';
    LineReader header(headerOf(file.bytes()));
    for (std::string_view line; header.next(line);) {
        line = trim(line);
        if (!wantsData && holdsTitle(line, 'A')) break;
        if (!isTitle(line, letter)) continue;
        file.seek(header.position());
        return header.position() + 1;
    }
    file.seek(0);
    return 0;
}

std::string getSectionText(std::string_view path, char letter) {
    const auto mapped = MappedFile::open(path);
    if (!mapped) return {};
    const std::string_view bytes = mapped->bytes();
    const std::size_t start = findTitle(bytes, letter);
    if (start == npos) return {};
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

LasValue getLasValue(std::string_view path, std::string_view mnem, char section) {
    LasValue result;
    const auto mapped = MappedFile::open(path);
    if (!mapped) return result;
    mnem = trim(mnem);
    section = upperChar(section);
    if (std::string_view("WVPOC").find(section) == npos) section = 0;
    LineReader file(headerOf(mapped->bytes()));
    bool isOld = false;
    if (section == 'W' && seekSection(file, 'V') != 0) {
        const VersionFound version = readVersion(file);
        if (version.sectionEnded) {
            if (sameText(mnem, "WRAP") || sameText(mnem, "VERS")) result.text.assign(1, ' ');
            return result;
        }
        isOld = version.isOld;
    }
    file.seek(0);
    const Found found = findMnem(file, mnem, section);
    if (found.end == Found::End::ReachedData) {
        result.text.assign(1, ' ');
        result.marker = "NOT";
    } else if (found.end == Found::End::Hit) {
        result.text = valueByVersion(found, mnem, isOld);
        result.unit = found.fields.unit;
    }
    return result;
}

std::string getFileValue(std::string_view path, std::string_view mnem, std::string* unit) {
    if (unit != nullptr) unit->clear();
    const auto mapped = MappedFile::open(path);
    if (!mapped) return {};
    mnem = trim(mnem);
    LineReader file(headerOf(mapped->bytes()));
    const bool isOld = seekSection(file, 'V') != 0 && readVersion(file).isOld;
    file.seek(0);
    const Found found = findMnem(file, mnem, 0);
    if (found.end == Found::End::ReachedData) return " ";
    if (found.end == Found::End::EndOfFile) return {};
    if (unit != nullptr) *unit = found.fields.unit;
    return valueByVersion(found, mnem, isOld);
}

std::string getOpenValue(LineReader& file, std::string_view mnem, char section) {
    mnem = trim(mnem);
    LineReader header(headerOf(file.bytes()));
    const auto leave = [&file, &header](std::string text) {
        file.seek(header.position());
        return text;
    };
    std::string_view line;
    while (true) {
        if (!header.next(line)) return leave({});
        if (isTitle(line, section)) break;
        if (isTitle(line, 'A')) return leave({});
    }
    while (header.next(line)) {
        line = trimLeft(line);
        if (isTitle(line, 'A')) break;
        if (lineKind(line) != LineKind::Data || !sameText(takeMnem(line), mnem)) continue;
        std::string copy(line);
        return leave(withoutChar(withoutChar(getValueField(copy), '\t'), ':'));
    }
    return leave({});
}

DepthHeader getDepthHeader(std::string_view path) {
    DepthHeader result;
    const auto mapped = MappedFile::open(path);
    if (!mapped) return result;
    result.indexName = "DEPT";
    LineReader file(headerOf(mapped->bytes()));
    if (seekSection(file, 'W') == 0) return result;
    constexpr std::array<std::string_view, 4> names = {"STRT", "STOP", "STEP", "NULL"};
    unsigned seen = 0;
    for (std::string_view line; seen != 0b1111U && file.next(line) && !holdsTilde(line);) {
        const std::string_view text = trimLeft(line);
        if (lineKind(text) != LineKind::Data) continue;
        for (std::size_t index = 0; index < names.size(); ++index) {
            if (!beginsWith(text, names[index])) continue;
            seen |= 1U << index;
            HeaderField fields;
            parseHeaderLine(text, fields);
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

int readSection(SectionTable& table, std::string_view path, char letter) {
    SectionTable rows;
    const bool found = eachSectionLine(path, letter, [&rows](std::string_view line) {
        if (holdsTilde(line)) return false;
        if (lineKind(line) == LineKind::Data) parseTableRow(line, rows.emplace_back());
        return rows.size() < rowLimit;
    });
    if (!found) return 0;
    table = std::move(rows);
    return static_cast<int>(table.size());
}

int appendSection(SectionTable& table, std::string_view path, char letter) {
    SectionTable rows;
    const bool found = eachSectionLine(path, letter, [&rows](std::string_view line) {
        if (beginsWith(line, "~")) return false;
        if (lineKind(line) == LineKind::Data) parseTableRow(line, rows.emplace_back());
        return rows.size() < rowLimit;
    });
    table = std::move(rows);
    return found ? static_cast<int>(table.size()) - 1 : 0;
}

int readSectionLoose(SectionTable& table, std::string_view path, char letter) {
    SectionTable rows;
    const bool found = eachSectionLine(path, letter, [&rows](std::string_view line) {
        if (holdsTilde(line)) return false;
        const std::string text = withoutChar(line, '\t');
        if (lineKind(text) != LineKind::Data) return true;
        HeaderField& row = rows.emplace_back();
        parseTableRow(trim(text), row);
        if (row.unit.empty()) splitLooseUnit(row);
        return rows.size() < rowLimit;
    });
    if (!found) return 0;
    table = std::move(rows);
    return static_cast<int>(table.size());
}

SectionTable readSectionLines(std::string_view path, char letter) {
    SectionTable rows;
    eachSectionLine(path, letter, [&rows](std::string_view line) {
        if (holdsTilde(line)) return false;
        if (lineKind(line) == LineKind::Data) parseHeaderLine(line, rows.emplace_back());
        return rows.size() < rowLimit;
    });
    return rows;
}

std::vector<std::string> readSections(std::string_view path) {
    std::vector<std::string> titles;
    const auto mapped = MappedFile::open(path);
    if (!mapped) return titles;
    LineReader file(headerOf(mapped->bytes()));
    for (std::string_view line; file.next(line);) {
        line = trim(line);
        if (!beginsWith(line, "~")) continue;
        titles.emplace_back(line);
        if (isTitle(line, 'A') || titles.size() == rowLimit) break;
    }
    return titles;
}

}  // namespace welvane
