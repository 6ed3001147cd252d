#include "models/table_models.h"

#include <utility>

#include "listing/listing_options.h"
#include "listing/price.h"
#include "models/cell_texts.h"
#include "models/listing_window.h"
#include "models/property_rules.h"
#include "models/section_rules.h"
#include "models/session_files.h"
#include "session/properties.h"
#include "session/property_edits.h"
#include "session/tvd.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A cell beside a setting takes an edit where its row says that it applies.
bool canEditProperty(const Session& session, PrdRow row, PrdColumn column) {
    const Property* const property = findProperty(row, column);
    if (row == PrdRow::Head || row == PrdRow::ProcessingHead || column == PrdColumn::Label) return false;
    if (column == PrdColumn::Setting) return property != nullptr;
    if (row == PrdRow::PlainAscii) return property != nullptr && session.tables.checked(row);
    const bool applies = session.tables.prd.backColour(row, column) != colours::fixed;
    return applies && (property != nullptr || (isFormatRow(row) && column == PrdColumn::Option));
}

void checkSection(App& app, Session& session, TableIndex row, TableIndex column, bool on) {
    if (row == OrdRow::Include) includeSection(app, session, column, on);
}

}  // namespace

CellTableModel inputChannelsModel(Session& session, int slot) {
    return {session.tables.srd[slot], {}};
}

CellTableModel newChannelsModel(App& app, Session& session, FunctionChooser chooseFunction) {
    TableRules rules;
    rules.mayEdit = [&session](TableIndex row, TableIndex column) {
        return column > 0 && canEditNewChannel(session, row, column);
    };
    rules.pickList = [&](TableIndex row, TableIndex column) { return newChannelList(app, session, row, column); };
    rules.edit = [&app, &session, choose = std::move(chooseFunction)](const CellEdit& edit) {
        editNewChannel(app, session, edit, choose);
    };
    rules.check = [&](TableIndex row, TableIndex column, bool on) {
        editNewChannel(app, session, {row, column, on ? "1" : "2"}, {});
    };
    return {session.tables.outputs(), std::move(rules)};
}

CellTableModel propertiesModel(App& app, Session& session) {
    TableRules rules;
    rules.mayEdit = [&](TableIndex row, TableIndex column) {
        return canEditProperty(session, static_cast<PrdRow>(row), static_cast<PrdColumn>(column));
    };
    rules.pickList = [&](TableIndex row, TableIndex column) { return propertyList(session, row, column); };
    rules.edit = [&](const CellEdit& edit) { editProperty(app, session, edit); };
    rules.check = [&](TableIndex row, TableIndex, bool on) {
        checkProperty(app, session, static_cast<PrdRow>(row), on);
    };
    return {session.tables.prd, std::move(rules)};
}

CellTableModel sectionsModel(App& app, Session& session) {
    TableRules rules;
    rules.mayEdit = [](TableIndex row, TableIndex column) { return column > 0 && row != OrdRow::Order; };
    rules.pickList = [&](TableIndex row, TableIndex column) {
        return column > 0 && row == OrdRow::Name ? sectionList(session, column) : std::string();
    };
    rules.edit = [&](const CellEdit& edit) {
        if (edit.row != OrdRow::Name) return;
        renameSection(session, static_cast<int>(edit.column), edit.text);
    };
    rules.check = [&](TableIndex row, TableIndex column, bool on) { checkSection(app, session, row, column, on); };
    return {session.tables.ord, std::move(rules)};
}

CellTableModel filterModel(App& app, Session& session) {
    TableRules rules;
    rules.headColumns = 0;
    rules.mayEdit = [](TableIndex row, TableIndex) { return row == 1; };
    rules.pickList = [](TableIndex row, TableIndex column) {
        return std::string(row == 1 && column == FrdColumn::Path ? browseList : std::string_view());
    };
    rules.edit = [&](const CellEdit& edit) {
        const std::string path(trim(edit.text));
        if (edit.column != FrdColumn::Path) return;
        if (!path.empty() && !fileExists(path)) throw RunTimeFailure(path + ": no such file");
        takeFilterFile(app, session, path);
    };
    rules.check = [&](TableIndex row, TableIndex column, bool on) {
        if (on && column == FrdColumn::Apply && session.tables.frd.text(row, FrdColumn::Path).empty())
            throw RunTimeFailure("no filter is named");
        session.tables.frd.setCheck(row, column, on ? Check::Checked : Check::Unchecked);
    };
    return {session.tables.frd, std::move(rules)};
}

CellTableModel fieldsModel(Table& table) {
    TableRules rules;
    rules.headColumns = 0;
    rules.mayEdit = [](TableIndex row, TableIndex column) {
        return row > 0 && column != FieldColumn::Dot && column != FieldColumn::Colon;
    };
    rules.edit = [&](const CellEdit& edit) {
        if (edit.column == FieldColumn::Mnem)
            needMnem(edit.text);
        else if (edit.column == FieldColumn::Unit)
            needUnit(edit.text);
        else
            needOneLine(edit.text);
        table.text(edit.row, edit.column) = edit.text;
    };
    return {table, std::move(rules)};
}

CellTableModel surveyModel(Session& session) {
    TableRules rules;
    rules.headRows = at(TrdRow::Tie);
    rules.mayEdit = [](TableIndex row, TableIndex column) { return row >= at(TrdRow::Tie) && column > 0; };
    rules.edit = [&](const CellEdit& edit) {
        const bool isNumber = edit.column <= at(TrdColumn::Azimuth) && session.rules == FigureRules::trueFigures;
        isNumber ? needNumberOrBlank(edit.text) : needOneLine(edit.text);
        session.tables.trd.text(edit.row, edit.column) = trim(edit.text);
        markTrdChanged(session.tables.trd);
    };
    return {session.tables.trd, std::move(rules)};
}

CellTableModel listingOptionsModel(App& app, Table& ord) {
    TableRules rules;
    rules.mayEdit = [](TableIndex row, TableIndex column) {
        if (column == OrdColumn::Value) return row > 0;
        return column == OrdColumn::Price && row > 0 && row <= at(PriceRow::Comments) && row != PriceRow::Total;
    };
    rules.pickList = [](TableIndex row, TableIndex column) {
        const bool offers = column == OrdColumn::Value && row >= at(OptionRow::FirstMnemonic);
        return offers ? join({offeredMnemonics.begin(), offeredMnemonics.end()}, "|") : std::string();
    };
    rules.edit = [&](const CellEdit& edit) {
        if (edit.column == OrdColumn::Price && edit.row < at(PriceRow::Total))
            editPriceValue(app, ord, static_cast<PriceRow>(edit.row), edit.text);
        else if (ord.check(edit.row, edit.column) == Check::None || edit.row == OptionRow::FirstMnemonic)
            ord.text(edit.row, edit.column) = edit.text;
    };
    rules.check = [&](TableIndex row, TableIndex column, bool on) {
        ord.setCheck(row, column, on ? Check::Checked : Check::Unchecked);
    };
    return {ord, std::move(rules)};
}

CellTableModel runValuesModel(App& app, Table& vrd) {
    TableRules rules;
    rules.mayEdit = [](TableIndex row, TableIndex column) { return row > 0 && column == VrdColumn::Run; };
    rules.edit = [&](const CellEdit& edit) { editRun(app, vrd, edit.row, edit.text); };
    return {vrd, std::move(rules)};
}

std::string GenericTableModel::text(std::int64_t row, int column) const {
    return check(row, column) == Check::None ? grd_.cell(row, column) : std::string();
}

Check GenericTableModel::check(std::int64_t row, int column) const {
    if (row != at(GrdRow::Use) || column < 1) return Check::None;
    return grd_.used(column) ? Check::Checked : Check::Unchecked;
}

std::uint32_t GenericTableModel::backColour(std::int64_t row, int) const {
    return row >= at(GrdRow::Name) && row <= at(GrdRow::Use) ? grdHeadColour : 0;
}

bool GenericTableModel::mayEdit(std::int64_t row, int column) const {
    return column > 0 && row >= at(GrdRow::Name);
}

void GenericTableModel::applyEdit(std::int64_t row, int column, const std::string& text, int) {
    if (row == at(GrdRow::Use)) throw RunTimeFailure("this cell holds a check");
    if (row == at(GrdRow::Name))
        needMnem(text);
    else if (row == at(GrdRow::Unit))
        needUnit(text);
    else
        needOneLine(text);
    std::string before = grd_.cell(row, column);
    grd_.setCell(row, column, text);
    if (history_ == nullptr || grd_.cell(row, column) == before) return;
    const std::size_t bytes = before.size();
    const auto turn = [&grd = grd_, row, column, other = std::move(before)]() mutable {
        std::string now = grd.cell(row, column);
        grd.setCell(row, column, other);
        other = std::move(now);
    };
    history_->did("Edit row " + std::to_string(row) + ", column " + std::to_string(column) + " of the table", turn,
                  bytes);
}

void GenericTableModel::applyCheck(std::int64_t, int column, bool on) {
    if (grd_.used(column) == on) return;
    grd_.setUsed(column, on);
    if (history_ == nullptr) return;
    history_->did(
        "Edit Use? of column " + std::to_string(column),
        [&grd = grd_, column] { grd.setUsed(column, !grd.used(column)); }, 0);
}

void GenericTableModel::asOneStep(const std::string& text, const std::function<void()>& body) {
    if (history_ == nullptr) return body();
    const UndoHistory::Step step(*history_, text);
    body();
}

int StatisticsModel::columns() const {
    return static_cast<int>(statisticsColumns().size());
}

std::string_view StatisticsModel::meaning(int column) {
    return statisticsColumns()[column].meaning;
}

std::string StatisticsModel::text(std::int64_t row, int column) const {
    if (column < 0 || column >= columns() || row < 0 || row >= rows()) throw RunTimeFailure("subscript out of range");
    if (row == 0) return std::string(statisticsColumns()[column].head);
    std::string_view line = grid_.rows[row - 1];
    for (; column > 0 && line.find('\t') != npos; --column) line.remove_prefix(line.find('\t') + 1);
    return column > 0 ? std::string() : std::string(line.substr(0, line.find('\t')));
}

}  // namespace welvane
