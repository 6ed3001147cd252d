#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "functions/functions.h"
#include "session/filters.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view functionMark = "FUN=";

bool isFunction(const FilterCurve& line) {
    return beginsWith(trim(line.source), functionMark);
}

/// A FUN= clause: the function's key, the source's mnemonic, then fields 2 to 5 of the descriptor.
struct Clause {
    std::string key, source;
    std::vector<std::string> arguments;
};

Clause parseClause(std::string_view text) {
    Clause clause;
    std::vector<std::string> parts = split(text.substr(functionMark.size()), ',');
    for (std::string& part : parts) part = std::string(trim(part));
    clause.key = parts[0];
    if (parts.size() > 1) clause.source = parts[1];
    if (parts.size() > 2) clause.arguments.assign(parts.begin() + 2, parts.end());
    return clause;
}

/// "0", "1" or "2" for a lithology's word; nothing for any other text.
std::optional<std::string> lithologyCode(std::string_view word) {
    constexpr std::array<std::string_view, 3> words = {"SAND", "LIME", "DOLO"};
    for (std::size_t code = 0; code < words.size(); ++code)
        if (sameText(trim(word), words[code])) return std::to_string(code);
    return std::nullopt;
}

/// Fields 2 to 5. Words for lithologies become their numbers; the functions that change a matrix take the two
/// lithologies in fields 4 and 5, also where these follow the source at once.
std::array<std::string, 4> parametersOf(const FunctionEntry& entry, const std::vector<std::string>& arguments) {
    std::array<std::string, 4> fields;
    const bool shortForm = entry.takesLithologies() && arguments.size() == 2;
    const std::size_t first = shortForm ? 2 : 0;
    for (std::size_t index = 0; index < arguments.size() && first + index < fields.size(); ++index)
        fields[first + index] = lithologyCode(arguments[index]).value_or(arguments[index]);
    return fields;
}

/// Places by name, case ignored; of equal names the first counts.
class NameIndex {
  public:
    void add(std::string_view name, int place) { places_.try_emplace(upper(trim(name)), place); }
    /// The place, or `absent`.
    int find(std::string_view name, int absent) const {
        const auto found = places_.find(upper(trim(name)));
        return found == places_.end() ? absent : found->second;
    }

  private:
    std::unordered_map<std::string, int> places_;
};

std::string partInFront(std::string_view text) {
    return std::string(trim(text.substr(0, text.find('|'))));
}

void takeLine(Table& table, int column, const FilterCurve& line, int number) {
    table.text(SrdRow::Mnem, column) = line.field.mnem;
    table.text(SrdRow::Unit, column) = line.field.unit;
    table.text(SrdRow::Value, column) = line.field.value;
    table.text(SrdRow::Description, column) = line.field.desc;
    table.setCheck(SrdRow::Use, column, Check::Checked);
    table.data(SrdRow::Use, column) = std::to_string(number);
}

/// What stands behind the number of a column that a FUN= line made: the number of that function, and of the one whose
/// result it reads. Both travel with the column.
struct FunctionMark {
    int own = 0;    ///< from 1; 0 for a column that no line made
    int front = 0;  ///< 0 where it reads samples of the inputs
    std::string text() const {
        return front == 0 ? std::to_string(own) : std::to_string(own) + "<" + std::to_string(front);
    }
};

FunctionMark functionMarkOf(const Table& table, int column) {
    const std::string_view text = table.data(SrdRow::Number, column);
    const std::size_t bar = text.find('<');
    return {static_cast<int>(val(text.substr(0, bar))), bar == npos ? 0 : static_cast<int>(val(text.substr(bar + 1)))};
}

int lastFunctionMark(const Table& table) {
    int last = 0;
    for (int column = 1; column < table.columns(); ++column) last = std::max(last, functionMarkOf(table, column).own);
    return last;
}

/// The column reads what its input reads; the unit that the input came with stays behind the cells.
void copyInput(Table& table, int column, int input) {
    for (int slot = 0; slot < slotCount; ++slot)
        for (const Link part : {Link::Mnem, Link::Curve, Link::From, Link::To})
            table.text(linkRow(slot, part), column) = table.text(linkRow(slot, part), input);
    SessionCell& unit = table.cell(SrdRow::InputUnit, column);
    unit.text = table.text(SrdRow::InputUnit, input);
    unit.data = table.data(SrdRow::InputUnit, input);
    table.data(SrdRow::Unit, column) = table.data(SrdRow::Unit, input);
}

/// The descriptor of a FUN= line; false, with nothing set, for a function that the catalogue does not hold.
bool setLineFunction(Table& table, int column, const FilterCurve& line, int number, const Clause& clause,
                     FailureList& skipped) {
    const FunctionEntry* const entry = findFunction(clause.key);
    if (entry == nullptr) {
        skipped.add(line.name,
                    "the function \"" + clause.key + "\" is not known; the channel keeps its input's samples");
        return false;
    }
    if (clause.arguments.size() < entry->neededArguments())
        skipped.add(line.name, std::string(entry->key) + " needs " + std::to_string(entry->neededArguments()) +
                                   " arguments behind the source, got " + std::to_string(clause.arguments.size()));
    const FunctionDescriptor descriptor{std::to_string(static_cast<int>(entry->code)),
                                        parametersOf(*entry, clause.arguments), std::to_string(number), line.field.mnem,
                                        "was :" + clause.source + " "};
    table.text(SrdRow::Function, column) = entry->key;
    table.data(SrdRow::Function, column) = descriptor.text();
    return true;
}

/// The columns that the FUN= lines of a filter make.
class FunctionColumns {
  public:
    FunctionColumns(Session& session, const std::vector<FilterCurve>& lines, FigureRules rules, FailureList& skipped)
        : table_(session.tables.outputs()), lines_(lines), rules_(rules), skipped_(skipped) {
        for (std::size_t index = 0; index < lines.size(); ++index)
            if (isFunction(lines[index])) functions_.push_back(index);
        first_ = table_.columns();
        lastMark_ = lastFunctionMark(table_);
        for (int column = 1; column < first_; ++column) columns_.add(table_.text(SrdRow::Mnem, column), column);
        int column = appendChannels(session, static_cast<int>(functions_.size()));
        for (const std::size_t index : functions_) make(column++, index);
    }

    bool isNew(int column) const { return column >= first_; }
    /// Index of the line that made a new column.
    int lineOf(int column) const {
        return static_cast<int>(functions_[static_cast<std::size_t>(column) - static_cast<std::size_t>(first_)]);
    }
    /// Whether a function whose result has this name could be made as its line says.
    bool makes(std::string_view mnem) const { return made_.find(mnem, 0) != 0; }

  private:
    void make(int column, std::size_t index);

    Table& table_;
    const std::vector<FilterCurve>& lines_;
    FigureRules rules_;
    FailureList& skipped_;
    std::vector<std::size_t> functions_;
    int first_ = 0, lastMark_ = 0;
    NameIndex columns_, made_;
};

void FunctionColumns::make(int column, std::size_t index) {
    const FilterCurve& line = lines_[index];
    const Clause clause = parseClause(trim(line.source));
    const int number = static_cast<int>(index) + 1;
    takeLine(table_, column, line, number);
    for (const Link part : {Link::From, Link::To}) table_.text(linkRow(0, part), column).clear();
    const int input = clause.source.empty() ? 0 : columns_.find(clause.source, 0);
    FunctionMark mark{.own = ++lastMark_};
    if (input == 0) {
        skipped_.add(line.name, "there is no channel \"" + clause.source + "\" for the function to read");
    } else {
        copyInput(table_, column, input);
        if (rules_ == FigureRules::trueFigures) mark.front = functionMarkOf(table_, input).own;
        // What is read is a result then, in the unit that it was made in.
        if (mark.front != 0) table_.data(SrdRow::Unit, column) = table_.text(SrdRow::Unit, input);
    }
    if (setLineFunction(table_, column, line, number, clause, skipped_)) {
        table_.data(SrdRow::Number, column) = mark.text();
        if (input != 0) made_.add(line.field.mnem, column);
    }
    columns_.add(line.field.mnem, column);
}

/// The first line of a filter that is a LAS header stands for the index, which is no channel.
bool isIndexLine(const std::vector<FilterCurve>& lines, std::size_t index) {
    return index == 0 && lines[0].source.empty();
}

}  // namespace

FilterCurve parseFilterCurve(const HeaderField& line) {
    FilterCurve curve;
    curve.field = line;
    curve.name = line.mnem;
    const std::size_t bar = line.desc.find('|');
    curve.field.desc = partInFront(line.desc);
    if (bar != npos) curve.source = std::string(trim(std::string_view(line.desc).substr(bar + 1)));
    return curve;
}

void applyFilterCurves(Session& session, const std::vector<FilterCurve>& lines, bool dropOthers, FigureRules rules,
                       FailureList& skipped) {
    Table& table = session.tables.outputs();
    std::vector<bool> taken(lines.size(), false);
    NameIndex byMnem, bySource;
    const bool replaces = !dropOthers && rules == FigureRules::trueFigures;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        // A line that makes a channel does not give its name to one that is there as well.
        if (!replaces || !isFunction(lines[index])) byMnem.add(lines[index].field.mnem, static_cast<int>(index));
        if (!lines[index].source.empty()) bySource.add(lines[index].source, static_cast<int>(index));
    }
    const FunctionColumns functions(session, lines, rules, skipped);
    // The first line whose mnemonic is the channel's, else the first whose source is; -1 for none.
    const auto lineFor = [&](std::string_view mnem) { return byMnem.find(mnem, bySource.find(mnem, -1)); };
    const std::string behind = std::to_string(std::max(table.columns(), static_cast<int>(lines.size())) + 10);
    for (int column = 1; column < table.columns(); ++column) {
        const std::string& mnem = table.text(SrdRow::Mnem, column);
        const int line = functions.isNew(column) ? functions.lineOf(column) : lineFor(mnem);
        if (line >= 0 && !mnem.empty()) {
            takeLine(table, column, lines[line], line + 1);
            taken[line] = true;
            continue;
        }
        table.data(SrdRow::Use, column) = behind;
        if (dropOthers || (replaces && functions.makes(mnem))) table.setCheck(SrdRow::Use, column, Check::Unchecked);
    }
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (taken[index] || (dropOthers && isIndexLine(lines, index))) continue;
        const FilterCurve& line = lines[index];
        skipped.add(line.name,
                    "there is no channel \"" + (line.source.empty() ? line.field.mnem : line.source) + "\" for it");
    }
    sortByUse(session);
}

bool readsOwnColumn(const Table& outputs, int column) {
    return functionMarkOf(outputs, column).own != 0;
}

int functionInFront(const Table& outputs, int column) {
    const int front = functionMarkOf(outputs, column).front;
    if (front == 0) return 0;
    for (int other = 1; other < outputs.columns(); ++other)
        if (other != column && functionMarkOf(outputs, other).own == front) return other;
    return 0;
}

FilterReport applyCurveLines(Session& session, const std::vector<std::string>& lines, FigureRules rules) {
    FilterReport report;
    std::vector<FilterCurve> curves;
    for (const std::string& line : lines) {
        HeaderField fields;
        if (!parseHeaderLine(std::string_view(trim(line)), fields)) {
            report.skipped.add(line, "is no line of the form MNEM.UNIT VALUE : DESCRIPTION | SOURCE");
            continue;
        }
        curves.push_back(parseFilterCurve(fields));
    }
    try {
        Session next = session;
        next.multipleConnections = true;
        applyFilterCurves(next, curves, false, rules, report.skipped);
        session = std::move(next);
        report.applied = true;
    } catch (const std::exception& error) {
        report.why = error.what();
    }
    return report;
}

}  // namespace welvane
