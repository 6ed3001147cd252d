#include "jobs/table_changes.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <limits>
#include <optional>
#include <unordered_map>
#include <vector>

#include "session/session_tables.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int nowhere = -1;
/// More cells than any session has: a line that asks for more is damaged.
constexpr std::int64_t mostCells = 8000000;

bool byRows(TableKey key) {
    return key == TableKey::LineMnem;
}

int lengthOf(const Table& table, TableKey key) {
    return byRows(key) ? table.rows() : table.columns();
}

/// The input channel that feeds a column first, "slot:channel"; "" where none does.
std::string firstLink(const Table& table, int column) {
    for (int slot = 0; slot < slotCount; ++slot) {
        if (linkRow(slot, Link::Curve) >= table.rows()) break;
        const std::string& channel = table.text(linkRow(slot, Link::Curve), column);
        if (!channel.empty() && table.text(linkRow(slot, Link::Mnem), column) != noneText)
            return std::to_string(slot) + ":" + channel;
    }
    return {};
}

std::string keyOf(const Table& table, TableKey key, int place) {
    if (place == 0) return "heads";
    if (key == TableKey::FirstLink) return firstLink(table, place);
    if (key == TableKey::LineMnem) return "line " + upper(trim(table.text(place, FieldColumn::Mnem)));
    return at(SlotRow::Index) < table.rows() ? table.text(SlotRow::Index, place) : std::string();
}

/// For each place of `table` the one of `base` that it came from, or nowhere.
std::vector<int> originsOf(const Table& base, const Table& table, TableKey key) {
    std::vector<int> origins(static_cast<std::size_t>(lengthOf(table, key)), nowhere);
    if (key == TableKey::Place) {
        for (int place = 0; place < std::min(base.columns(), table.columns()); ++place) origins[place] = place;
        return origins;
    }
    std::unordered_map<std::string, std::deque<int>> places;
    for (int place = 0; place < lengthOf(base, key); ++place) places[keyOf(base, key, place)].push_back(place);
    std::vector<bool> used(static_cast<std::size_t>(lengthOf(base, key)));
    for (std::size_t place = 0; place < origins.size(); ++place) {
        const auto found = places.find(keyOf(table, key, static_cast<int>(place)));
        if (found == places.end() || found->second.empty()) continue;
        origins[place] = found->second.front();
        used[found->second.front()] = true;
        found->second.pop_front();
    }
    // What goes by another name now most likely still stands where it stood.
    for (std::size_t place = 0; place < std::min(origins.size(), used.size()); ++place)
        if (origins[place] == nowhere && !used[place]) origins[place] = static_cast<int>(place);
    return origins;
}

void copyLine(const Table& from, int source, Table& to, int target, bool row) {
    const int cells = row ? std::min(from.columns(), to.columns()) : std::min(from.rows(), to.rows());
    for (int cell = 0; cell < cells; ++cell) {
        const SessionCell& original = row ? from.cell(source, cell) : from.cell(cell, source);
        (row ? to.cell(target, cell) : to.cell(cell, target)) = original;
    }
}

Table arranged(const Table& base, const std::vector<int>& origins, TableKey key, int rows, int columns) {
    Table table(rows, columns);
    table.setVisible(base.visible());
    table.setCaption(base.caption());
    for (std::size_t place = 0; place < origins.size(); ++place)
        if (origins[place] != nowhere) copyLine(base, origins[place], table, static_cast<int>(place), byRows(key));
    for (int row = 0; row < rows; ++row) {
        const int origin = byRows(key) ? origins[row] : row;
        if (origin != nowhere && origin < base.rows()) table.setRowHidden(row, base.rowHidden(origin));
    }
    return table;
}

/// "0-4 6 x 5": runs of places, and x for a new one.
std::string originsText(const std::vector<int>& origins) {
    std::string text;
    for (std::size_t place = 0; place < origins.size();) {
        std::size_t end = place + 1;
        while (end < origins.size() && origins[place] != nowhere &&
               origins[end] == origins[place] + static_cast<int>(end - place))
            ++end;
        text += origins[place] == nowhere ? std::string(" x") : " " + std::to_string(origins[place]);
        if (end - place > 1) text += "-" + std::to_string(origins[end - 1]);
        place = end;
    }
    return text;
}

bool asTheyStand(const std::vector<int>& origins, int length) {
    for (std::size_t place = 0; place < origins.size(); ++place) {
        const int same = static_cast<int>(place) < length ? static_cast<int>(place) : nowhere;
        if (origins[place] != same) return false;
    }
    return true;
}

/// Two numbers with "-" between them, or one twice.
std::pair<int, int> runOf(const SessionLine& line, std::size_t place, int length) {
    const std::string& word = line.plain(place);
    const std::size_t dash = word.find('-');
    const auto number = [&](std::string_view digits) {
        int value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (error != std::errc() || end != digits.data() + digits.size() || value < 0 || value >= length)
            line.refuse("'" + word + "' is no place of the table");
        return value;
    };
    if (dash == std::string::npos) return {number(word), number(word)};
    const std::pair<int, int> run{number(word.substr(0, dash)), number(word.substr(dash + 1))};
    if (run.first > run.second) line.refuse("'" + word + "' runs backwards");
    return run;
}

std::vector<int> originsIn(const SessionLine& line, int length, int wanted) {
    std::vector<int> origins;
    for (std::size_t place = 1; place < line.size(); ++place) {
        if (line.plain(place) == "x") {
            origins.push_back(nowhere);
            continue;
        }
        const auto [first, last] = runOf(line, place, length);
        for (int origin = first; origin <= last && origins.size() <= static_cast<std::size_t>(wanted); ++origin)
            origins.push_back(origin);
    }
    if (origins.size() != static_cast<std::size_t>(wanted))
        line.refuse("the table has " + std::to_string(wanted) + " places");
    return origins;
}

std::string textWord(const std::string& text, const NamedTexts& named) {
    for (const auto& [name, meaning] : named)
        if (!meaning.empty() && text == meaning) return "@" + name;
    return quotedText(text);
}

std::string meantText(const SessionLine& line, std::size_t place, const NamedTexts& named) {
    if (place < line.size() && !line.word(place).quoted && line.word(place).text.starts_with("@")) {
        const auto found = named.find(line.word(place).text.substr(1));
        if (found == named.end()) line.refuse("nothing is called " + line.word(place).text);
        return found->second;
    }
    return line.text(place);
}

std::string_view checkWord(Check check) {
    if (check == Check::None) return "none";
    return check == Check::Checked ? "on" : "off";
}

std::string cellChanges(const SessionCell& before, const SessionCell& cell, bool told, const NamedTexts& named) {
    std::string text;
    const bool isSwitch = cell.check != Check::None;
    if ((told && !isSwitch) || cell.text != before.text) text += " text " + textWord(cell.text, named);
    if (cell.data != before.data) text += " data " + textWord(cell.data, named);
    if ((told && isSwitch) || cell.check != before.check) text += " check " + std::string(checkWord(cell.check));
    if (cell.backColour != before.backColour) text += " colour " + std::to_string(cell.backColour);
    return text;
}

void changeCell(SessionCell& cell, const SessionLine& line, const NamedTexts& named) {
    for (std::size_t place = 3; place < line.size(); place += 2) {
        const std::string& what = line.plain(place);
        if (what == "text")
            cell.text = meantText(line, place + 1, named);
        else if (what == "data")
            cell.data = meantText(line, place + 1, named);
        else if (what == "colour")
            cell.backColour =
                static_cast<std::uint32_t>(line.number(place + 1, 0, std::numeric_limits<std::uint32_t>::max()));
        else if (what == "check") {
            const std::string& state = line.plain(place + 1);
            if (state != "on" && state != "off" && state != "none") line.refuse("'" + state + "' is no check");
            cell.check = state == "on" ? Check::Checked : state == "off" ? Check::Unchecked : Check::None;
        } else {
            line.refuse("a cell has no '" + what + "'");
        }
    }
}

/// What a reader would call the cell: the row's label, the line's mnemonic, or the column's head.
std::string remark(const Table& table, int row, int column) {
    std::string_view label = column == 0 ? std::string_view() : trim(table.text(row, 0));
    if (label.empty() && row > 0) label = trim(table.text(0, column));
    return label.empty() ? std::string() : "   # " + quotedText(label);
}

/// A setting of a row with a label or a check in front of it, and that check.
bool isSetting(const Table& table, int row, int column) {
    if (row == 0 || column > 1) return false;
    const bool isSwitch = table.check(row, 0) != Check::None;
    return isSwitch || (column == 1 && !table.text(row, 0).empty());
}

std::string rowsChanges(const Table& before, const Table& table) {
    std::string text;
    if (table.visible() != before.visible()) text += std::string("visible ") + (table.visible() ? "yes" : "no") + "\n";
    if (table.caption() != before.caption()) text += "caption " + quotedText(table.caption()) + "\n";
    for (int row = 0; row < table.rows(); ++row)
        if (table.rowHidden(row) != before.rowHidden(row))
            text += "hidden " + std::to_string(row) + (table.rowHidden(row) ? " yes\n" : " no\n");
    return text;
}

void changeTable(Table& table, const SessionLine& line, const NamedTexts& named) {
    const std::string& what = line.keyword();
    if (what == "cell") {
        const int row = static_cast<int>(line.number(1, 0, table.rows() - 1));
        const int column = static_cast<int>(line.number(2, 0, table.columns() - 1));
        changeCell(table.cell(row, column), line, named);
    } else if (what == "visible") {
        table.setVisible(line.yes(1));
    } else if (what == "caption") {
        table.setCaption(line.text(1));
    } else if (what == "hidden") {
        table.setRowHidden(static_cast<int>(line.number(1, 0, table.rows() - 1)), line.yes(2));
    } else {
        line.refuse("a table has no '" + what + "'");
    }
}

}  // namespace

std::string tableChanges(const Table& base, const Table& table, TableKey key, Telling telling,
                         const NamedTexts& named) {
    if (base == table && telling == Telling::Changes) return {};
    std::string text;
    if (base.rows() != table.rows() || base.columns() != table.columns())
        text += "size " + std::to_string(table.rows()) + " " + std::to_string(table.columns()) + "\n";
    const std::vector<int> origins = originsOf(base, table, key);
    if (!asTheyStand(origins, lengthOf(base, key)))
        text += (byRows(key) ? "rows" : "columns") + originsText(origins) + "\n";
    const Table before = arranged(base, origins, key, table.rows(), table.columns());
    text += rowsChanges(before, table);
    for (int column = 0; column < table.columns(); ++column)
        for (int row = 0; row < table.rows(); ++row) {
            const bool told = telling == Telling::Settings && isSetting(table, row, column);
            const std::string changes = cellChanges(before.cell(row, column), table.cell(row, column), told, named);
            if (!changes.empty())
                text += "cell " + std::to_string(row) + " " + std::to_string(column) + changes +
                        remark(table, row, column) + "\n";
        }
    return text;
}

Table changedTable(const Table& base, const SessionPart& part, TableKey key, const NamedTexts& named) {
    int rows = base.rows(), columns = base.columns();
    auto line = part.lines.begin();
    if (line != part.lines.end() && line->keyword() == "size") {
        rows = static_cast<int>(line->number(1, 0, mostCells));
        columns = static_cast<int>(line->number(2, 0, maxColumns));
        if (static_cast<std::int64_t>(rows) * columns > mostCells) line->refuse("no session has such a table");
        ++line;
    }
    const int length = byRows(key) ? rows : columns;
    std::vector<int> origins;
    if (line != part.lines.end() && (line->keyword() == "rows" || line->keyword() == "columns")) {
        origins = originsIn(*line, lengthOf(base, key), length);
        ++line;
    } else {
        for (int place = 0; place < length; ++place) origins.push_back(place < lengthOf(base, key) ? place : nowhere);
    }
    Table table = arranged(base, origins, key, rows, columns);
    for (; line != part.lines.end(); ++line) changeTable(table, *line, named);
    return table;
}

}  // namespace welvane
