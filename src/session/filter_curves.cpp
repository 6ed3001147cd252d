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

bool takesLithologies(FunctionCode code) {
    return code == FunctionCode::DenMatrix || code == FunctionCode::NporCp1e || code == FunctionCode::NphiCp1c;
}

/// Fields 2 to 5. Words for lithologies become their numbers; the functions that change a matrix take the two
/// lithologies in fields 4 and 5, also where these follow the source at once.
std::array<std::string, 4> descriptorFields(const FunctionEntry& entry, const std::vector<std::string>& arguments) {
    std::array<std::string, 4> fields;
    const bool shortForm = takesLithologies(entry.code) && arguments.size() == 2;
    const std::size_t first = shortForm ? 2 : 0;
    for (std::size_t index = 0; index < arguments.size() && first + index < fields.size(); ++index)
        fields[first + index] = lithologyCode(arguments[index]).value_or(arguments[index]);
    return fields;
}

/// How many arguments a function cannot do without. Clip limits may be open, and the stale average takes none.
std::size_t neededArguments(FunctionCode code) {
    switch (code) {
        case FunctionCode::BulkDen2Poro:
        case FunctionCode::Poro2BulkDen:
        case FunctionCode::Dt2Poro:
        case FunctionCode::Poro2Dt:
        case FunctionCode::DenMatrix:
        case FunctionCode::NporCp1e:
        case FunctionCode::NphiCp1c:
        case FunctionCode::Replace:
        case FunctionCode::Average:
            return 2;
        case FunctionCode::NeutCr2Poro:
        case FunctionCode::Math:
        case FunctionCode::Scale:
            return 4;
        case FunctionCode::MinMax:
            return 1;
        case FunctionCode::Res2Cond:
        case FunctionCode::Cond2Res:
        case FunctionCode::AvePoro:
            break;
    }
    return 0;
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
    table.text(at(SrdRow::Mnem), column) = line.field.mnem;
    table.text(at(SrdRow::Unit), column) = line.field.unit;
    table.text(at(SrdRow::Value), column) = line.field.value;
    table.text(at(SrdRow::Description), column) = line.field.desc;
    table.setCheck(at(SrdRow::Use), column, Check::Checked);
    table.data(at(SrdRow::Use), column) = std::to_string(number);
}

/// The column reads what its input reads; the unit that the input came with stays behind the cells.
void copyInput(Table& table, int column, int input) {
    for (int slot = 0; slot < slotCount; ++slot)
        for (const Link part : {Link::Mnem, Link::Curve, Link::From, Link::To})
            table.text(linkRow(slot, part), column) = table.text(linkRow(slot, part), input);
    SessionCell& unit = table.cell(at(SrdRow::InputUnit), column);
    unit.text = table.text(at(SrdRow::InputUnit), input);
    unit.data = table.data(at(SrdRow::InputUnit), input);
    table.data(at(SrdRow::Unit), column) = table.data(at(SrdRow::Unit), input);
}

/// The descriptor of a FUN= line, or nothing for a function that the catalogue does not hold.
void setLineFunction(Table& table, int column, const FilterCurve& line, int number, const Clause& clause,
                     FailureList& skipped) {
    const FunctionEntry* const entry = findFunction(clause.key);
    if (entry == nullptr) {
        skipped.add(line.name,
                    "the function \"" + clause.key + "\" is not known; the channel keeps its input's samples");
        return;
    }
    if (clause.arguments.size() < neededArguments(entry->code))
        skipped.add(line.name, std::string(entry->key) + " needs " + std::to_string(neededArguments(entry->code)) +
                                   " arguments behind the source, got " + std::to_string(clause.arguments.size()));
    FunctionDescriptor descriptor;
    descriptor.fields[0] = std::to_string(static_cast<int>(entry->code));
    const std::array<std::string, 4> fields = descriptorFields(*entry, clause.arguments);
    std::copy(fields.begin(), fields.end(), descriptor.fields.begin() + 1);
    descriptor.fields[5] = std::to_string(number);
    descriptor.fields[6] = line.field.mnem;
    descriptor.fields[7] = "was :" + clause.source + " ";
    table.text(at(SrdRow::Function), column) = entry->key;
    table.data(at(SrdRow::Function), column) = descriptor.text();
}

/// The new columns of the FUN= lines, in their order behind the others; returns each one's index in `lines`.
std::vector<std::size_t> addFunctionColumns(Session& session, const std::vector<FilterCurve>& lines,
                                            FailureList& skipped) {
    std::vector<std::size_t> functions;
    for (std::size_t index = 0; index < lines.size(); ++index)
        if (isFunction(lines[index])) functions.push_back(index);
    Table& table = session.tables.outputs();
    NameIndex columns;
    for (int column = 1; column < table.columns(); ++column) columns.add(table.text(at(SrdRow::Mnem), column), column);
    int column = appendChannels(session, static_cast<int>(functions.size()));
    for (const std::size_t index : functions) {
        const FilterCurve& line = lines[index];
        const Clause clause = parseClause(trim(line.source));
        const int number = static_cast<int>(index) + 1;
        takeLine(table, column, line, number);
        for (const Link part : {Link::From, Link::To}) table.text(linkRow(0, part), column).clear();
        const int input = clause.source.empty() ? 0 : columns.find(clause.source, 0);
        if (input == 0)
            skipped.add(line.name, "there is no channel \"" + clause.source + "\" for the function to read");
        else
            copyInput(table, column, input);
        setLineFunction(table, column, line, number, clause, skipped);
        columns.add(line.field.mnem, column++);
    }
    return functions;
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

void applyFilterCurves(App&, Session& session, const std::vector<FilterCurve>& lines, bool dropOthers,
                       FailureList& skipped) {
    Table& table = session.tables.outputs();
    std::vector<bool> taken(lines.size(), false);
    NameIndex byMnem, bySource;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        byMnem.add(lines[index].field.mnem, static_cast<int>(index));
        if (!lines[index].source.empty()) bySource.add(lines[index].source, static_cast<int>(index));
    }
    const int firstAdded = table.columns();
    const std::vector<std::size_t> lineOfAdded = addFunctionColumns(session, lines, skipped);
    // The first line whose mnemonic is the channel's, else the first whose source is; -1 for none.
    const auto lineFor = [&](std::string_view mnem) { return byMnem.find(mnem, bySource.find(mnem, -1)); };
    const std::string behind = std::to_string(std::max(table.columns(), static_cast<int>(lines.size())) + 10);
    for (int column = 1; column < table.columns(); ++column) {
        const int line = column < firstAdded
                             ? lineFor(table.text(at(SrdRow::Mnem), column))
                             : static_cast<int>(lineOfAdded[static_cast<std::size_t>(column - firstAdded)]);
        if (line >= 0 && !table.text(at(SrdRow::Mnem), column).empty()) {
            takeLine(table, column, lines[static_cast<std::size_t>(line)], line + 1);
            taken[static_cast<std::size_t>(line)] = true;
            continue;
        }
        table.data(at(SrdRow::Use), column) = behind;
        if (dropOthers) table.setCheck(at(SrdRow::Use), column, Check::Unchecked);
    }
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (taken[index] || (dropOthers && isIndexLine(lines, index))) continue;
        const FilterCurve& line = lines[index];
        skipped.add(line.name,
                    "there is no channel \"" + (line.source.empty() ? line.field.mnem : line.source) + "\" for it");
    }
    sortByUse(session);
}

FilterReport applyCurveLines(App& app, Session& session, const std::vector<std::string>& lines) {
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
        applyFilterCurves(app, next, curves, false, report.skipped);
        session = std::move(next);
        report.applied = true;
    } catch (const std::exception& error) {
        report.why = error.what();
    }
    return report;
}

}  // namespace welvane
