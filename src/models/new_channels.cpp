#include "models/new_channels.h"

#include <algorithm>

#include "functions/functions.h"
#include "models/cell_texts.h"
#include "session/matching.h"
#include "session/properties.h"
#include "session/session_setup.h"
#include "shared/failure.h"
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

void needHeaderCell(const CellEdit& edit) {
    if (edit.row == SrdRow::Mnem) return needMnem(edit.text);
    if (edit.row == SrdRow::Unit || edit.row == SrdRow::InputUnit) return needUnit(edit.text);
    needOneLine(edit.text);
}

void editFunction(App& app, Session& session, const CellEdit& edit, const FunctionChooser& chooseFunction) {
    // Kept: the first item of the list clears as well, as a choice that is no item does; the dialog offers that
    // function too. Test: functionCell
    if (edit.comboIndex < 1 || sameText(edit.text, noneText)) {
        clearFunction(session, edit.column);
        return;
    }
    const std::string old = session.tables.outputs().data(SrdRow::Function, edit.column);
    setFunction(app, session, edit.column, chooseFunction ? chooseFunction(edit.column, old, edit.text) : std::nullopt);
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

std::string newChannelList(const App& app, const Session& session, TableIndex row, TableIndex column) {
    const Table& table = session.tables.outputs();
    if (isFileRow(row)) {
        if (column == 0) return std::string(browseList);
        return session.loaded(slotOfRow(row)) ? CurveString(session, slotOfRow(row)) : std::string();
    }
    if (column < 1) return {};
    const std::string& text = table.text(row, column);
    if (row == SrdRow::Mnem && !trim(text).empty()) return joinedOthers(groupMembers(app.reference, text), text);
    if (row == SrdRow::Unit) return join(unitGroupMembers(app.reference, text), "|");
    if (row == SrdRow::Function) return functionList();
    return {};
}

bool canEditNewChannel(const Session& session, TableIndex row, TableIndex column) {
    if (row < 0 || row >= srdRowCount || column < 0 || column >= session.tables.outputs().columns()) return false;
    if (column == 0) return isFileRow(row);
    return row != SrdRow::Number && (row < at(SrdRow::FirstLink) || row % 4 != static_cast<int>(Link::Curve));
}

void editNewChannel(App& app, Session& session, const CellEdit& edit, const FunctionChooser& chooseFunction) {
    if (!canEditNewChannel(session, edit.row, edit.column) || edit.column == 0)
        throw RunTimeFailure("subscript out of range");
    SessionCell& cell = session.tables.outputs().cell(edit.row, edit.column);
    if (isHeaderRow(edit.row)) {
        needHeaderCell(edit);
        // The first value is the one that comes back when a function is taken away.
        if (cell.data.empty()) cell.data = cell.text;
        cell.text = edit.text;
        return;
    }
    if (edit.row == SrdRow::Use) {
        cell.check = edit.text == "1" ? Check::Checked : Check::Unchecked;
        return;
    }
    if (edit.row == SrdRow::Function) {
        editFunction(app, session, edit, chooseFunction);
        return;
    }
    if (isFileRow(edit.row)) {
        linkChannel(session, slotOfRow(edit.row), edit.comboIndex, edit.column, FigureRules::asLaidDown);
        return;
    }
    if (session.rules == FigureRules::trueFigures) needNumberOrBlank(edit.text);
    cell.text = edit.text;
    recalculateUse(session, false);
}

void setFunction(const App& app, Session& session, int column, const std::optional<FunctionDescriptor>& descriptor) {
    Table& table = session.tables.outputs();
    SessionCell& function = table.cell(SrdRow::Function, column);
    if (!descriptor) {
        clearFunction(session, column);
        return;
    }
    for (int row = at(SrdRow::Mnem); row <= at(SrdRow::Description); ++row) {
        SessionCell& cell = table.cell(row, column);
        if (cell.data.empty()) cell.data = cell.text;
    }
    function.data = descriptor->text();
    // Its source is the one that was chosen now, and no longer that of a filter's line.
    table.data(SrdRow::Number, column).clear();
    const auto known = descriptor->code();
    function.text = known ? functionCatalogue()[static_cast<std::size_t>(*known)].key : noneText;
    const std::string& mnem = descriptor->resultMnem;
    table.text(SrdRow::Mnem, column) = mnem;
    const std::string code = apiCodeForMnem(app.reference, mnem), description = descriptionForMnem(app.reference, mnem);
    if (!code.empty()) table.text(SrdRow::Value, column) = code;
    std::string& shown = table.text(SrdRow::Description, column);
    if (!description.empty()) shown = description;
    shown += " " + descriptor->note;
    table.text(SrdRow::Unit, column) = unitForMnem(app.reference, mnem, sameText(app.settings.country, "Canada"));
}

void useAllChannels(Session& session, bool use) {
    Table& table = session.tables.outputs();
    for (int column = 1; column < table.columns(); ++column)
        table.setCheck(SrdRow::Use, column, use ? Check::Checked : Check::Unchecked);
}

void fillEmptyFromLibrary(const App& app, Session& session, SrdRow row) {
    if (row != SrdRow::Value && row != SrdRow::Description) return;
    Table& table = session.tables.outputs();
    for (int column = 1; column < table.columns(); ++column) {
        SessionCell& cell = table.cell(row, column);
        if (!cell.text.empty()) continue;
        const std::string& mnem = table.text(SrdRow::Mnem, column);
        cell.text =
            row == SrdRow::Value ? apiCodeForMnem(app.reference, mnem) : descriptionForMnem(app.reference, mnem);
        if (cell.text.empty()) cell.text = cell.data;
    }
}

std::vector<MenuEntry> channelMenu(const Session& session, TableIndex row, TableIndex column) {
    using enum ChannelCommand;
    if (row == SrdRow::Use) return {{UseAll, "&All"}, {UseNone, "&None"}};
    if (row == SrdRow::Value || row == SrdRow::Description)
        return {{FillValue, "Fill Empty VALUE", row == SrdRow::Value},
                {FillDescription, "Fill Empty DESC", row == SrdRow::Description}};
    bool anyLoaded = false;
    for (int slot = 0; slot < slotCount; ++slot) anyLoaded = anyLoaded || session.loaded(slot);
    const Table& table = session.tables.outputs();
    const bool inTable = column > 0 && column < table.columns();
    const int slot = slotOfChannelRow(row);
    const bool fileLoaded = slot >= 0 && session.loaded(slot);
    const bool linked = fileLoaded && inTable && !table.text(linkRow(slot, Link::Curve), column).empty();
    return {{Add, "&Add Channel", column > 0 && anyLoaded},
            {Delete, "&Delete Channel", inTable && sameText(table.text(SrdRow::Mnem, column), "Added")},
            {DeleteFile, "Delete &File", fileLoaded},
            {ViewLog, "View As Log (Tracewick)", fileLoaded},
            {Adjust, "&Shift and Clip", linked}};
}

int slotOfChannelRow(TableIndex row) {
    return row >= at(SrdRow::FirstLink) && row < srdRowCount ? slotOfRow(row) : -1;
}

}  // namespace welvane
