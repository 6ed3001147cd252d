#include "las/header_line.h"

#include <algorithm>

#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::size_t lineLimit = 254;

/// A field's text: a tab has become a blank before it is cut, so both are taken off its ends.
std::string_view trimField(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == npos ? std::string_view() : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Text between the dot and the colon; `text` is a data line.
std::string_view behindDot(std::string_view text, std::size_t colon) {
    const std::size_t dot = text.find('.');
    return text.substr(dot + 1, colon - dot - 1);
}

/// Writes `text` from a column (1-based) of the line; what stands outside the line is lost.
void place(std::string& line, int column, std::string_view text) {
    if (column < 1) {
        const auto lost = std::min(text.size(), static_cast<std::size_t>(1 - column));
        text.remove_prefix(lost);
        column = 1;
    }
    const auto start = static_cast<std::size_t>(column - 1);
    if (start >= line.size()) return;
    text = text.substr(0, line.size() - start);
    std::copy(text.begin(), text.end(), line.begin() + static_cast<std::ptrdiff_t>(start));
}

}  // namespace

LineKind lineKind(std::string_view line) {
    const std::string_view text = trim(line);
    if (text.empty()) return LineKind::Blank;
    if (text.front() == '#') return LineKind::Comment;
    if (text.front() == '~') return LineKind::Title;
    const std::size_t dot = text.find('.');
    if (dot == npos) return LineKind::Other;
    const std::size_t colon = text.find(':');
    if (colon == npos || colon < dot) return LineKind::Other;
    return dot == 0 ? LineKind::DotFirst : LineKind::Data;
}

int countWords(std::string_view text, char delimiter) {
    text = trim(text);
    int count = 1;
    for (std::size_t place = text.find(delimiter); place != npos; place = text.find(delimiter, place)) {
        ++count;
        place = text.find_first_not_of(' ', place + 1);
        if (place == npos) break;
    }
    return count;
}

std::string getMnemField(std::string_view line) {
    const std::size_t dot = line.find('.');
    return dot == npos ? std::string() : std::string(trimField(line.substr(0, dot)));
}

std::string getUnitField(std::string_view line) {
    const std::size_t dot = line.find('.');
    const std::size_t colon = line.find(':');
    if (dot == npos || colon == npos || colon < dot) return {};
    const std::string_view text = behindDot(line, colon);
    // A blank right behind the dot means that there is no unit.
    return std::string(text.substr(0, text.find_first_of(blanks)));
}

std::string getValueField(std::string& line) {
    tabsToBlanks(line);
    if (lineKind(line) != LineKind::Data) return {};
    const std::size_t colon = line.rfind(':');
    std::replace(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(colon), ':', '|');
    std::string_view text = behindDot(line, colon);
    if (text.empty()) return {};
    if (text.front() != ' ') {
        const std::size_t blank = text.find(' ');
        if (blank == npos) return {};
        text.remove_prefix(blank);
    }
    std::string value(trim(text));
    // Kept: a "|" that stood in the value all along comes back as ":" too; lines written by this program hold none
    // there.
    std::replace(value.begin(), value.end(), '|', ':');
    return value;
}

std::string getDescField(std::string& line) {
    tabsToBlanks(line);
    const std::size_t colon = line.rfind(':');
    return std::string(trim(std::string_view(line).substr(colon == npos ? 0 : colon + 1)));
}

bool parseHeaderLine(std::string& line, HeaderField& fields) {
    fields = {};
    if (lineKind(line) != LineKind::Data) return false;
    tabsToBlanks(line);
    // The unit ends at the first colon, so it is taken before getValueField turns that colon into something else.
    fields.mnem = getMnemField(line);
    fields.unit = getUnitField(line);
    fields.value = getValueField(line);
    fields.desc = getDescField(line);
    return true;
}

bool parseHeaderLine(std::string_view line, HeaderField& fields) {
    std::string copy(line);
    return parseHeaderLine(copy, fields);
}

std::string headerWord(std::string_view text, std::string_view ends) {
    std::string word(trim(text));
    for (char& c : word)
        if (static_cast<unsigned char>(c) <= ' ' || ends.find(c) != npos) c = '_';
    if (word.starts_with('#') || word.starts_with('~')) word.front() = '_';
    return word;
}

std::string formatHeaderLine(const HeaderField& fields, int dot, int colon, int value, bool whole) {
    const std::size_t most = whole ? npos : lineLimit;
    const auto cut = [most](std::string_view text) { return trim(text).substr(0, most); };
    const std::string_view mnem = cut(fields.mnem);
    const std::string_view unit = cut(fields.unit);
    const std::string_view valueText = cut(fields.value);
    const auto length = [](std::string_view text) { return static_cast<int>(text.size()); };

    // No column is of use behind the line's end, and small numbers cannot overflow.
    constexpr int farRight = 2 * static_cast<int>(lineLimit);
    dot = std::clamp(dot, 0, farRight);
    colon = std::clamp(colon, 0, farRight);
    value = std::clamp(value, 0, farRight);

    // Each column depends only on those left of it, so one pass settles all three.
    if (length(mnem) >= dot) dot = length(mnem) + 1;
    const bool valueAtColon = value < 1;
    const int firstValueColumn = dot + length(unit) + 2;
    if (valueAtColon) {
        colon = std::max(colon, firstValueColumn + length(valueText));
        value = colon - length(valueText);
    } else {
        value = std::max(value, firstValueColumn);
        if (colon - value - 1 < length(valueText)) colon = value + length(valueText) + 2;
    }

    const std::string_view desc = cut(fields.desc);
    std::string line(whole ? static_cast<std::size_t>(std::max({colon, value, dot}) + 1 + length(desc)) : lineLimit,
                     ' ');
    place(line, dot - length(mnem), mnem);
    place(line, dot, ".");
    place(line, dot + 1, unit);
    place(line, value, valueText);
    place(line, colon, ":");
    place(line, colon + 1, desc);
    line.resize(trimRight(line).size());
    return line;
}

bool isNotTitleLine(std::string_view line, const std::vector<std::string>& names) {
    if (const std::size_t mark = line.find('#'); mark != npos && trim(line.substr(0, mark)).empty())
        line.remove_prefix(mark + 1);
    const auto holdsName = [&names](std::string_view word) {
        if (holdsText(word, "DEPT")) return true;
        return std::any_of(names.begin() + (names.empty() ? 0 : 1), names.end(),
                           [word](const std::string& name) { return !name.empty() && holdsText(word, name); });
    };
    for (std::size_t start = line.find_first_not_of(blanks); start != npos;
         start = line.find_first_not_of(blanks, start)) {
        const std::size_t end = std::min(line.find_first_of(blanks, start), line.size());
        if (!holdsName(line.substr(start, end - start))) return true;
        start = end;
    }
    return false;
}

}  // namespace welvane
