#include "convert/table_layout.h"

#include <algorithm>
#include <array>
#include <deque>

#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t previewLines = 1000;
constexpr std::size_t previewBytes = std::size_t{4} << 20;
/// Lines in front of the data among which names and units are looked for.
constexpr std::size_t linesRemembered = 4;

/// A decimal comma makes a number too, so that a table of such numbers is not cut at them; who reads it says what
/// becomes of them.
bool isNumberCell(std::string_view cell, Delimiter delimiter) {
    return cell.empty() || isNoNumberText(cell) || isNumeric(cell) ||
           (delimiter != Delimiter::Comma && isDecimalComma(cell));
}

/// How much a line looks like a row of data.
enum class RowKind { Blank, Text, DepthFirst, Numbers };

RowKind rowKind(std::string_view line, Delimiter delimiter, std::size_t& count) {
    FieldCursor cursor(line, delimiter);
    bool depthFirst = false, numbers = true;
    count = 0;
    for (std::string_view field; cursor.next(field); ++count) {
        if (count == 0) depthFirst = !field.empty() && isNumberCell(field, delimiter);
        numbers = numbers && isNumberCell(field, delimiter);
    }
    if (count == 0) return RowKind::Blank;
    return !depthFirst ? RowKind::Text : numbers ? RowKind::Numbers : RowKind::DepthFirst;
}

/// Place of the first row of this kind that has another one with as many fields right behind it; without such a pair,
/// of the first row of this kind; npos without one. Rows right in front of it that begin with a number and have as many
/// fields are data as well.
std::size_t findData(std::string_view bytes, Delimiter delimiter, RowKind wanted) {
    TableLines lines(bytes);
    std::size_t run = npos;  // where the lines that begin with a number and have `columns` fields began
    std::size_t single = npos, count = 0, columns = 0;
    bool fittedBefore = false;
    std::string_view line;
    for (std::size_t start = lines.position(); lines.next(line); start = lines.position()) {
        const RowKind kind = rowKind(line, delimiter, count);
        if (kind == RowKind::Blank) continue;
        if (kind < RowKind::DepthFirst)
            run = npos;
        else if (run == npos || count != columns)
            run = start;
        const bool fits = kind >= wanted;
        if (fits && fittedBefore && count == columns) return run;
        if (fits) single = std::min(single, run);
        fittedBefore = fits;
        columns = count;
    }
    return single;
}

/// Place of the first line behind a rule line; npos without one.
std::size_t placeBehindRule(std::string_view bytes) {
    TableLines lines(bytes);
    for (std::string_view line; lines.position() < previewBytes && lines.next(line);)
        if (isRuleLine(line)) return lines.position();
    return npos;
}

/// Place of the first line that is not blank, one further when it holds no number but the next line does.
std::size_t firstFilledLine(std::string_view bytes, Delimiter delimiter) {
    TableLines lines(bytes);
    std::string_view line;
    for (std::size_t start = lines.position(); lines.next(line); start = lines.position())
        if (countFields(line, delimiter) > 0) {
            const bool headed = line.find_first_of("0123456789") == npos && lines.position() < bytes.size();
            return headed ? lines.position() : start;
        }
    return bytes.size();
}

std::size_t placeOfLine(std::string_view bytes, std::size_t number) {
    TableLines lines(bytes);
    std::string_view line;
    for (std::size_t at = 1; at < number; ++at)
        if (!lines.next(line)) return bytes.size();
    return lines.position();
}

std::size_t findDataPosition(std::string_view bytes, Delimiter delimiter) {
    for (const RowKind wanted : {RowKind::Numbers, RowKind::DepthFirst})
        if (const std::size_t place = findData(bytes, delimiter, wanted); place != npos) return place;
    const std::size_t behindRule = placeBehindRule(bytes);
    return behindRule == npos ? firstFilledLine(bytes, delimiter) : behindRule;
}

NameAndUnit nameAndUnit(std::string_view text) {
    const std::size_t open = text.find('(');
    const std::size_t close = open == npos ? npos : text.find(')', open);
    if (close == npos) return {std::string(trimSpace(text)), ""};
    return {std::string(trimSpace(text.substr(0, open))),
            std::string(trimSpace(text.substr(open + 1, close - open - 1)))};
}

/// Names that stand over the runs of a rule line, each from its run's start to the next one's.
std::vector<NameAndUnit> namesOverRules(std::string_view line, std::string_view rules) {
    std::vector<NameAndUnit> names;
    for (std::size_t start = rules.find('='); start != npos;) {
        const std::size_t next = rules.find('=', std::min(rules.find_first_not_of('=', start), rules.size()));
        const std::size_t from = names.empty() ? 0 : start;
        names.push_back(nameAndUnit(from < line.size() ? line.substr(from, next == npos ? npos : next - from)
                                                       : std::string_view()));
        start = next;
    }
    return names;
}

/// A line of names less a mark in front of them ("#", "~A").
std::string_view withoutMark(std::string_view line) {
    line = trimSpace(line);
    if (!line.empty() && line.front() == '#') line.remove_prefix(1);
    if (!line.empty() && line.front() == '~') line.remove_prefix(std::min(line.find_first_of(" \t,;"), line.size()));
    return line;
}

bool holdsNoNumber(const std::vector<NameAndUnit>& cells) {
    return std::none_of(cells.begin(), cells.end(), [](const NameAndUnit& cell) { return isNumeric(cell.name); });
}

void takeNames(TableLayout& layout, const std::vector<NameAndUnit>& cells) {
    for (std::size_t column = 0; column < cells.size(); ++column) {
        layout.names[column] = cells[column].name;
        layout.units[column] = cells[column].unit;
    }
}

void readNames(TableLayout& layout, std::string_view bytes) {
    std::deque<std::string_view> before;  // the last lines in front of the data that are not blank
    TableLines lines(bytes);
    for (std::string_view line; lines.position() < layout.dataPosition && lines.next(line);) {
        if (trimSpace(line).empty()) continue;
        before.push_front(line);
        if (before.size() > linesRemembered) before.pop_back();
    }
    if (before.empty()) return;
    if (isRuleLine(before.front())) {
        if (before.size() < 2) return;
        auto cells = namesWithUnits(before[1], layout.delimiter);
        if (cells.size() != layout.columns) cells = namesOverRules(before[1], before[0]);
        if (cells.size() == layout.columns) takeNames(layout, cells);
        return;
    }
    const auto last = namesWithUnits(withoutMark(before[0]), layout.delimiter);
    if (last.size() != layout.columns || !holdsNoNumber(last)) return;
    takeNames(layout, last);
    if (before.size() < 2) return;
    const auto upper = namesWithUnits(withoutMark(before[1]), layout.delimiter);
    if (upper.size() != layout.columns || !holdsNoNumber(upper)) return;
    takeNames(layout, upper);
    for (std::size_t column = 0; column < last.size(); ++column)
        if (layout.units[column].empty())
            layout.units[column] = last[column].name.empty() ? last[column].unit : last[column].name;
}

}  // namespace

bool isRuleLine(std::string_view line) {
    return line.find("===") != npos && line.find_first_not_of("= \t|+,;-") == npos;
}

std::vector<NameAndUnit> namesWithUnits(std::string_view line, Delimiter delimiter) {
    std::vector<NameAndUnit> cells;
    FieldCursor cursor(line, delimiter);
    std::string_view field;
    if (delimiter != Delimiter::Blanks) {
        while (cursor.next(field)) cells.push_back(nameAndUnit(field));
        return cells;
    }
    // A unit may stand apart from its name, and hold blanks itself.
    for (std::size_t place = 0; place < line.size();) {
        const std::size_t start = line.find_first_not_of(" \t", place);
        if (start == npos) break;
        std::size_t end = std::min(line.find_first_of(" \t(", start), line.size());
        const std::size_t open = line.find_first_not_of(" \t", end);
        if (open != npos && line[open] == '(' && line.find(')', open) != npos) end = line.find(')', open) + 1;
        cells.push_back(nameAndUnit(line.substr(start, std::max(end, start + 1) - start)));
        place = std::max(end, start + 1);
    }
    return cells;
}

Delimiter guessDelimiter(std::string_view bytes) {
    constexpr std::array<Delimiter, 4> candidates = {Delimiter::Tab, Delimiter::Semicolon, Delimiter::Comma,
                                                     Delimiter::Blanks};
    std::array<std::size_t, candidates.size()> rows{}, fields{};
    TableLines lines(bytes);
    std::string_view line;
    for (std::size_t taken = 0; taken < previewLines && lines.position() < previewBytes && lines.next(line); ++taken) {
        for (std::size_t index = 0; index < candidates.size(); ++index) {
            std::size_t count = 0;
            const RowKind kind = rowKind(line, candidates[index], count);
            if (count < 2) continue;
            if (kind == RowKind::Numbers) rows[index] += previewLines;
            if (kind == RowKind::DepthFirst) ++rows[index];
            fields[index] += candidates[index] == Delimiter::Blanks ? 1 : count;
        }
    }
    const auto best = std::max_element(rows.begin(), rows.end());
    if (*best > 0) return candidates[best - rows.begin()];
    return candidates[static_cast<std::size_t>(std::max_element(fields.begin(), fields.end()) - fields.begin())];
}

TableLayout findTableLayout(std::string_view bytes, Delimiter delimiter, std::size_t dataLine) {
    TableLayout layout;
    layout.delimiter = delimiter == Delimiter::Guess ? guessDelimiter(bytes) : delimiter;
    layout.dataPosition = dataLine > 0 ? placeOfLine(bytes, dataLine) : findDataPosition(bytes, layout.delimiter);
    if (layout.dataPosition >= bytes.size()) {
        layout.dataPosition = bytes.size();
        return layout;
    }
    layout.columns = countFields(TableLines(bytes).lineAt(layout.dataPosition), layout.delimiter);
    layout.names.resize(layout.columns);
    layout.units.resize(layout.columns);
    if (layout.columns > 0) readNames(layout, bytes);
    for (std::string& unit : layout.units) unit = normalUnit(unit);
    return layout;
}

std::string normalUnit(std::string_view unit) {
    unit = trimSpace(unit);
    if (sameText(unit, "OHM.M")) return "OHMM";
    if (sameText(unit, "FT3/FT3") || sameText(unit, "M3/M3")) return "V/V";
    return std::string(unit);
}

}  // namespace welvane
