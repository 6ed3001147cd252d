#include "models/clipboard.h"

#include <algorithm>
#include <functional>
#include <optional>

#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view checkedText = "1", uncheckedText = "0", fieldEnds = "\t\r\n";

std::string quotedCell(std::string text) {
    if (text.find_first_of("\t\r\n\"") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

std::string shownCell(const TableModel& table, std::int64_t row, int column) {
    const Check check = table.check(row, column);
    if (check == Check::None) return table.text(row, column);
    return std::string(check == Check::Checked ? checkedText : uncheckedText);
}

std::optional<bool> readCheck(std::string_view text) {
    const std::string_view word = trim(text);
    for (const char* yes : {"1", "yes", "true", "x"})
        if (sameText(word, yes)) return true;
    for (const char* no : {"0", "2", "no", "false", ""})
        if (sameText(word, no)) return false;
    return std::nullopt;
}

/// Place of a text in a "|"-joined pick list, case ignored; -1 where it is none of it.
int itemOf(const std::string& list, std::string_view text) {
    if (list.empty()) return -1;
    const std::vector<std::string> items = split(list, '|');
    const auto found =
        std::find_if(items.begin(), items.end(), [&](const std::string& item) { return sameText(item, text); });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

/// One field from `place` on, which then stands behind it.
std::string takeField(std::string_view text, std::size_t& place) {
    if (place < text.size() && text[place] == '"') {
        std::string unquoted;
        std::size_t end = place + 1;
        while (end < text.size() && (text[end] != '"' || (end + 1 < text.size() && text[end + 1] == '"'))) {
            unquoted += text[end];
            end += text[end] == '"' ? 2 : 1;
        }
        // A quote that nothing closes, or with more behind it, is a character like any other.
        const bool closed = end < text.size() && (end + 1 == text.size() || fieldEnds.find(text[end + 1]) != npos);
        if (closed) {
            place = end + 1;
            return unquoted;
        }
    }
    const std::size_t end = std::min(text.find_first_of(fieldEnds, place), text.size());
    std::string field(text.substr(place, end - place));
    place = end;
    return field;
}

/// Where each row of a block goes.
std::vector<std::int64_t> shownRowsFrom(const TableModel& table, std::int64_t row, std::size_t count) {
    std::vector<std::int64_t> rows;
    for (; row < table.rows() && rows.size() < count; ++row)
        if (!table.rowHidden(row)) rows.push_back(row);
    return rows;
}

/// One cell of a block on its way in.
struct PastedCell {
    std::int64_t row = 0;
    int column = 0;
    std::string text, took{};
    bool taken = false, edited = false;
};

/// Edits one cell; "" when it took the text, else why it did not.
std::string put(TableModel& table, const PastedCell& cell) {
    if (table.check(cell.row, cell.column) != Check::None) {
        const std::optional<bool> on = readCheck(cell.text);
        if (!on) return "this cell is a check: 1 or 0";
        const EditOutcome outcome = table.setCheck(cell.row, cell.column, *on);
        return outcome.done ? std::string() : outcome.why;
    }
    const std::string before = table.text(cell.row, cell.column);
    const int item = itemOf(table.pickList(cell.row, cell.column), cell.text);
    const EditOutcome outcome = table.edit(cell.row, cell.column, cell.text, item);
    if (!outcome.done) return outcome.why;
    // A choice of a list may act on other cells and leave its own as it was.
    const bool stayed = item < 0 && table.text(cell.row, cell.column) == before;
    return stayed ? "not one of the texts that this cell offers" : "";
}

class Paste {
  public:
    explicit Paste(TableModel& table) : table_(table) {}

    void add(std::int64_t row, int column, std::string text) {
        PastedCell cell{.row = row, .column = column, .text = std::move(text)};
        if (shownCell(table_, row, column) == cell.text) {
            cell.took = cell.text;
            cell.taken = true;
        } else {
            apply(cell);
        }
        cells_.push_back(std::move(cell));
    }

    /// A link that was pasted brings the header of its channel; what the block says of it goes first.
    PasteReport finish() {
        for (PastedCell& cell : cells_)
            if (cell.taken && shownCell(table_, cell.row, cell.column) != cell.took) apply(cell);
        for (const PastedCell& cell : cells_) {
            const bool kept = cell.taken && shownCell(table_, cell.row, cell.column) == cell.took;
            if (cell.taken && !kept)
                report_.refused.push_back({cell.row, cell.column, cell.text, "another cell of the block changed it"});
            if (kept && cell.edited) ++report_.changed;
        }
        return std::move(report_);
    }

  private:
    void apply(PastedCell& cell) {
        const std::string why = put(table_, cell);
        cell.taken = why.empty();
        cell.edited = true;
        if (cell.taken) {
            cell.took = shownCell(table_, cell.row, cell.column);
        } else {
            report_.refused.push_back({cell.row, cell.column, cell.text, why});
        }
    }

    TableModel& table_;
    PasteReport report_;
    std::vector<PastedCell> cells_;
};

PasteReport inOneStep(TableModel& table, const std::string& text, const std::function<void(Paste&)>& add) {
    PasteReport report;
    table.asOneStep(text, [&] {
        Paste paste(table);
        add(paste);
        report = paste.finish();
    });
    return report;
}

}  // namespace

std::string copyCells(const TableModel& table, const CellArea& area) {
    std::string text;
    const std::int64_t lastRow = std::min(area.lastRow, table.rows() - 1);
    const int lastColumn = std::min(area.lastColumn, table.columns() - 1);
    for (std::int64_t row = std::max<std::int64_t>(area.firstRow, 0); row <= lastRow; ++row) {
        if (table.rowHidden(row)) continue;
        for (int column = std::max(area.firstColumn, 0); column <= lastColumn; ++column) {
            text += quotedCell(shownCell(table, row, column));
            text += column < lastColumn ? "\t" : "\r\n";
        }
    }
    return text;
}

std::vector<std::vector<std::string>> splitCells(std::string_view text) {
    std::vector<std::vector<std::string>> rows;
    std::size_t place = 0;
    while (place < text.size()) {
        rows.emplace_back();
        rows.back().push_back(takeField(text, place));
        while (place < text.size() && text[place] == '\t') rows.back().push_back(takeField(text, ++place));
        if (place < text.size() && text[place] == '\r') ++place;
        if (place < text.size() && text[place] == '\n') ++place;
    }
    return rows;
}

std::string PasteReport::summary() const {
    if (!why.empty()) return why;
    if (refused.empty()) return {};
    const RefusedCell& first = refused.front();
    return counted(static_cast<std::int64_t>(refused.size()), "cell") + " kept what stood there; \"" + first.text +
           "\" in row " + std::to_string(first.row) + ", column " + std::to_string(first.column) + ": " + first.why;
}

PasteReport pasteCells(TableModel& table, std::int64_t row, int column, std::string_view text) {
    const std::vector<std::vector<std::string>> block = splitCells(text);
    std::size_t width = 0;
    for (const std::vector<std::string>& line : block) width = std::max(width, line.size());
    const std::vector<std::int64_t> rows =
        row < 0 ? std::vector<std::int64_t>() : shownRowsFrom(table, row, block.size());
    if (rows.size() < block.size() || column < 0 ||
        width > static_cast<std::size_t>(std::max(table.columns() - column, 0))) {
        PasteReport report;
        report.why = "nothing was pasted: " + counted(static_cast<std::int64_t>(block.size()), "row") + " of " +
                     counted(static_cast<std::int64_t>(width), "column") + " reach beyond the table";
        return report;
    }
    return inOneStep(table, "Paste cells", [&](Paste& paste) {
        for (std::size_t line = 0; line < block.size(); ++line)
            for (std::size_t field = 0; field < block[line].size(); ++field)
                paste.add(rows[line], column + static_cast<int>(field), block[line][field]);
    });
}

PasteReport clearCells(TableModel& table, const CellArea& area) {
    const std::int64_t lastRow = std::min(area.lastRow, table.rows() - 1);
    const int lastColumn = std::min(area.lastColumn, table.columns() - 1);
    return inOneStep(table, "Clear cells", [&](Paste& paste) {
        for (std::int64_t row = std::max<std::int64_t>(area.firstRow, 0); row <= lastRow; ++row)
            for (int column = std::max(area.firstColumn, 0); column <= lastColumn; ++column)
                if (!table.rowHidden(row) && table.mayEdit(row, column) && table.check(row, column) == Check::None)
                    paste.add(row, column, "");
    });
}

}  // namespace welvane
