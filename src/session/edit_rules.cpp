#include "session/edit_rules.h"

#include <algorithm>

#include "functions/functions.h"
#include "session/loading.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

bool isFileRow(int row) {
    return row >= at(SrdRow::FirstLink) && row < srdRowCount && row % 4 == 0;
}
int slotOfRow(int row) {
    return row / 4 - 2;
}
bool isHeaderRow(int row) {
    return row >= at(SrdRow::Mnem) && row <= at(SrdRow::Description);
}

std::string joinedOthers(const std::vector<std::string>& members, std::string_view self) {
    std::vector<std::string> others;
    for (const std::string& member : members)
        if (!sameText(member, trim(self))) others.push_back(member);
    return join(others, "|");
}

std::string functionKey(const std::string& descriptor) {
    const std::string code = FunctionDescriptor::parse(descriptor).fields[0];
    if (!isNumeric(code)) return std::string(noneText);
    const double number = strictDouble(code);
    if (number < 0 || number >= functionCount) return std::string(noneText);
    return std::string(functionCatalogue()[static_cast<std::size_t>(number)].key);
}

void editFunction(App& app, Session& session, const CellEdit& edit, const FunctionDialog& dialog) {
    // Kept: the first item of the list clears as well, as a choice that is no item does; the dialog offers that
    // function too. Test: functionCell
    if (edit.comboIndex < 1 || sameText(edit.text, noneText)) {
        clearFunction(session, edit.column);
        return;
    }
    const std::string old = session.tables.outputs().data(at(SrdRow::Function), edit.column);
    setFunction(app, session, edit.column, dialog ? dialog(old, edit.text) : std::string());
}

}  // namespace

std::string functionList() {
    std::string list;
    for (const FunctionEntry& entry : functionCatalogue()) {
        list += entry.key;
        list += '|';
    }
    list += noneText;
    return list;
}

std::string newChannelList(const App& app, const Session& session, int row, int column) {
    const Table& table = session.tables.outputs();
    if (isFileRow(row)) {
        if (column == 0) return std::string(browseList);
        return session.loaded(slotOfRow(row)) ? CurveString(session, slotOfRow(row)) : std::string();
    }
    if (column < 1) return {};
    const std::string& text = table.text(row, column);
    if (row == at(SrdRow::Mnem) && !trim(text).empty()) return joinedOthers(groupMembers(app.reference, text), text);
    if (row == at(SrdRow::Unit)) return join(unitGroupMembers(app.reference, text), "|");
    if (row == at(SrdRow::Function)) return functionList();
    return {};
}

bool canEditNewChannel(const Session& session, int row, int column) {
    if (row < 0 || row >= srdRowCount || column < 0 || column >= session.tables.outputs().columns()) return false;
    if (column == 0) return isFileRow(row);
    return row != at(SrdRow::Number) && (row < at(SrdRow::FirstLink) || row % 4 != static_cast<int>(Link::Curve));
}

void editNewChannel(App& app, Session& session, const CellEdit& edit, const FunctionDialog& functionDialog) {
    if (!canEditNewChannel(session, edit.row, edit.column) || edit.column == 0)
        throw RunTimeFailure("subscript out of range");
    SessionCell& cell = session.tables.outputs().cell(edit.row, edit.column);
    if (isHeaderRow(edit.row)) {
        // The first value is the one that comes back when a function is taken away.
        if (cell.data.empty()) cell.data = cell.text;
        cell.text = edit.text;
        return;
    }
    if (edit.row == at(SrdRow::Use)) {
        cell.check = edit.text == "1" ? Check::Checked : Check::Unchecked;
        return;
    }
    if (edit.row == at(SrdRow::Function)) {
        editFunction(app, session, edit, functionDialog);
        return;
    }
    if (isFileRow(edit.row)) {
        linkChannel(session, slotOfRow(edit.row), edit.comboIndex, edit.column);
        return;
    }
    cell.text = edit.text;
    recalculateUse(session, false);
}

void setFunction(const App& app, Session& session, int column, const std::string& descriptor) {
    Table& table = session.tables.outputs();
    SessionCell& function = table.cell(at(SrdRow::Function), column);
    if (descriptor.empty()) {
        clearFunction(session, column);
        return;
    }
    for (int row = at(SrdRow::Mnem); row <= at(SrdRow::Description); ++row) {
        SessionCell& cell = table.cell(row, column);
        if (cell.data.empty()) cell.data = cell.text;
    }
    function.data = descriptor;
    function.text = functionKey(descriptor);
    const FunctionDescriptor parsed = FunctionDescriptor::parse(descriptor);
    const std::string& mnem = parsed.fields[6];
    table.text(at(SrdRow::Mnem), column) = mnem;
    const std::string code = apiCodeForMnem(app.reference, mnem), description = descriptionForMnem(app.reference, mnem);
    if (!code.empty()) table.text(at(SrdRow::Value), column) = code;
    std::string& shown = table.text(at(SrdRow::Description), column);
    if (!description.empty()) shown = description;
    shown += " " + parsed.fields[7];
    table.text(at(SrdRow::Unit), column) = unitForMnem(app.reference, mnem, sameText(app.settings.country, "Canada"));
}

bool browseSlotFile(App& app, Session& session, int slot) {
    if (slot < 0 || slot >= slotCount) return false;
    const FilePrompt prompt{"Open LAS File", "las", dirOf(app.run.lasFile), "", false};
    const std::string chosen = app.user.askFile(prompt);
    if (chosen.empty() || !fileExists(chosen)) return false;
    session.slots[slot].path = chosen;
    return Open4Files(app, session, slot).done();
}

std::string sectionList(const Session& session, int column) {
    const std::string& name = session.tables.ord.text(at(OrdRow::Name), column);
    switch (name.size() > 1 ? upperChar(name[1]) : ' ') {
        case 'V':
            return "~V|~Version|~Version Information";
        case 'W':
            return "~W|~Well|~Well Information";
        case 'C':
            return "~C|~Curve|~Curve Information";
        case 'P':
            return "~P|~Parameter|~Parameter Information";
        case 'O':
            return "~O|~Other|~Other Information";
        case 'A':
            return "~A|~ASCII|";
        default:
            return {};
    }
}

bool includeSection(App& app, Session& session, int column, bool include) {
    Table& table = session.tables.ord;
    const std::string name = table.text(at(OrdRow::Name), column);
    constexpr std::string_view needed = "VWC";
    if (!include && name.size() > 1 && needed.find(upperChar(name[1])) != npos) {
        const Prompt question{
            "Warning!",
            "Choosing not to include this section, " + name + ", will produce a LAS Certification error. Proceed?",
            Buttons::YesNo, Icon::Warning, Answer::No};
        if (app.user.ask(question) != Answer::Yes) include = true;
    }
    table.setCheck(at(OrdRow::Include), column, include ? Check::Checked : Check::Unchecked);
    return include;
}

bool moveSection(Session& session, int from, int to) {
    Table& table = session.tables.ord;
    const int last = table.columns() - 1;
    const auto movable = [&](int column) { return column > 0 && column < last; };
    if (!movable(from) || !movable(to)) return false;
    table.moveColumn(from, to);
    for (int column = 1; column <= last; ++column) table.text(at(OrdRow::Order), column) = std::to_string(column);
    return true;
}

void useAllChannels(Session& session, bool use) {
    Table& table = session.tables.outputs();
    for (int column = 1; column < table.columns(); ++column)
        table.setCheck(at(SrdRow::Use), column, use ? Check::Checked : Check::Unchecked);
}

void fillEmptyFromLibrary(const App& app, Session& session, SrdRow row) {
    if (row != SrdRow::Value && row != SrdRow::Description) return;
    Table& table = session.tables.outputs();
    for (int column = 1; column < table.columns(); ++column) {
        SessionCell& cell = table.cell(at(row), column);
        if (!cell.text.empty()) continue;
        const std::string& mnem = table.text(at(SrdRow::Mnem), column);
        cell.text =
            row == SrdRow::Value ? apiCodeForMnem(app.reference, mnem) : descriptionForMnem(app.reference, mnem);
        if (cell.text.empty()) cell.text = cell.data;
    }
}

std::vector<MenuEntry> channelMenu(const Session& session, int row, int column) {
    if (row == at(SrdRow::Use)) return {{"&All", true}, {"&None", true}};
    if (row == at(SrdRow::Value) || row == at(SrdRow::Description))
        return {{"Fill Empty VALUE", row == at(SrdRow::Value)}, {"Fill Empty DESC", row == at(SrdRow::Description)}};
    bool anyLoaded = false;
    for (int slot = 0; slot < slotCount; ++slot) anyLoaded = anyLoaded || session.loaded(slot);
    const bool inFileRows = row >= at(SrdRow::FirstLink);
    const bool fileLoaded = inFileRows && session.loaded(slotOfRow(row));
    const Table& table = session.tables.outputs();
    const bool added =
        column > 0 && column < table.columns() && sameText(table.text(at(SrdRow::Mnem), column), "Added");
    return {{"&Add Channel", column > 0 && anyLoaded},
            {"&Delete Channel", added},
            {"Delete &File", fileLoaded},
            {"View As Log (Tracewick)", fileLoaded}};
}

}  // namespace welvane
