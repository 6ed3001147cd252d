#include "session/session_setup.h"

#include <array>
#include <utility>

#include "session/properties.h"
#include "session/tvd.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::array<std::string_view, 8> newChannelLabels = {"New -->", "Mnem",        "Unit", "Unit",
                                                              "Value",   "Description", "Use?", "Function"};

constexpr std::array<std::string_view, slotRowCount> slotLabels = {"", "Mnem", "Unit", "Value", "Desc", "Index"};

std::int16_t& formatValue(FormatDefaults& format, PrdRow row) {
    switch (row) {
        case PrdRow::FormatDot:
            return format.dotColumn;
        case PrdRow::FormatValue:
            return format.valueColumn;
        case PrdRow::FormatColon:
            return format.colonColumn;
        case PrdRow::WellPlus:
            return format.wellExtraColon;
        case PrdRow::DataWidth:
            return format.dataWidth;
        case PrdRow::DataDecimals:
            return format.dataDecimals;
        default:
            throw RunTimeFailure("subscript out of range");
    }
}

void colourColumn(Table& table, int column) {
    for (int row = 0; row < table.rows(); ++row) {
        const int band = row < linkRow(1, Link::Mnem) ? 0 : row / 4 - 2;
        table.setBackColour(row, column, colours::slots[band]);
    }
}

/// Labels and hidden rows of srd(4).
void labelNewChannels(Session& session) {
    Table& table = session.tables.outputs();
    for (int row = 0; row < at(SrdRow::FirstLink); ++row) table.text(row, 0) = newChannelLabels[row];
    table.setRowHidden(SrdRow::InputUnit, true);
    for (int slot = 0; slot < slotCount; ++slot) {
        const std::string path = session.loaded(slot) ? session.slots[slot].path : std::string();
        SessionCell& head = table.cell(linkRow(slot, Link::Mnem), 0);
        head.text = fileLabel(slot, path);
        head.data = path;
        table.text(linkRow(slot, Link::Curve), 0) = "Curve";
        table.text(linkRow(slot, Link::From), 0) = "From";
        table.text(linkRow(slot, Link::To), 0) = "To";
        table.setRowHidden(linkRow(slot, Link::Curve), true);
    }
}

/// Header rows of one output channel from the first loaded slot that has a channel in its column.
void takeHeader(Session& session, int column) {
    Table& target = session.tables.outputs();
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!target.text(SrdRow::Mnem, column).empty() || !session.loaded(slot)) continue;
        const Table& source = session.tables.srd[slot];
        target.text(SrdRow::Number, column) = std::to_string(column);
        const auto both = [&](SlotRow from, SrdRow to) {
            SessionCell& cell = target.cell(at(to), column);
            cell.text = cell.data = source.text(at(from), column);
        };
        both(SlotRow::Mnem, SrdRow::Mnem);
        both(SlotRow::Unit, SrdRow::InputUnit);
        target.text(SrdRow::Unit, column) = source.text(SlotRow::Unit, column);
        both(SlotRow::Value, SrdRow::Value);
        both(SlotRow::Desc, SrdRow::Description);
    }
    target.text(SrdRow::Function, column) = noneText;
}

}  // namespace

std::string fileLabel(int slot, std::string_view path) {
    return "File " + std::to_string(slot + 1) + " :" + fileNameOf(path);
}

std::string depthText(double depth, int decimals) {
    return stripZeros(formatMask(depth, decimals));
}

void setupFieldTable(Table& table) {
    constexpr std::array<std::string_view, 6> heads = {"MNEM", ".", "UNIT", "VALUE", ":", "DESC"};
    table.clear();
    table.resize(1, static_cast<int>(heads.size()));
    for (std::size_t column = 0; column < heads.size(); ++column) table.text(0, column) = heads[column];
}

void allowStuff(Session& session, bool available) {
    session.available = available;
    if (!available) session.tables.outputs().setCaption("New Channels");
}

void openSession(App& app, Session& session) {
    session.tables = SessionTables{};
    session.channels = {};
    session.opened = {};
    session.userFormat = app.settings.format;
    for (int slot = 0; slot < slotCount; ++slot) {
        Table& table = session.tables.srd[slot];
        table.resize(slotRowCount, 1);
        for (int row = 1; row < slotRowCount; ++row) table.text(row, 0) = slotLabels[row];
        table.text(0, 0) = fileLabel(slot);
        table.setRowHidden(SlotRow::Index, true);
        table.setVisible(false);
        setupFieldTable(session.tables.parg[slot]);
        session.tables.parg[slot].setCaption(std::string(parametersCaption));
        session.tables.parg[slot].setVisible(false);
    }
    setupFieldTable(session.tables.wrd);
    setupTVD(session.tables.trd);
    fillPrd(app, session);
    setupFrd(app, session);
    fillNewGrid(session);
    resetOrd(session);
    session.tvdFile = app.platform.settings().get("tvdFile", "");
}

void fillPrd(App& app, Session& session) {
    SessionTables& tables = session.tables;
    tables.prd.clear();
    tables.prd.resize(prdRowCount, 4);
    tables.prd.setCaption(std::string(settingsCaption));
    for (int row = 0; row < prdRowCount; ++row)
        for (const PrdColumn column : {PrdColumn::Setting, PrdColumn::Option, PrdColumn::SecondOption})
            tables.prd.setBackColour(row, column, colours::editable);
    for (const Property& property : properties()) {
        if (!property.label.empty()) tables.prd.text(property.row, PrdColumn::Label) = property.label;
        tables.prd.text(property.row, property.column) = property.initial;
        if (property.isCheck) tables.setChecked(property.row, false);
    }
    tables.setting(PrdRow::DepthUnits) = app.settings.units.depthUnit;
    tables.prd.data(PrdRow::DepthUnits, PrdColumn::Setting) = app.settings.units.depthUnit;
    showFormat(app, session);
    tables.prd.setRowHidden(PrdRow::OpenedFile, true);
    tables.setChecked(PrdRow::RenameDuplicates, val(app.platform.settings().get("renamedups", "1")) == 1);
    tables.setChecked(PrdRow::FillEmpty, app.settings.fillCurveValue || app.settings.fillCurveDescription);
    tables.setChecked(PrdRow::MergeParameters, session.loaded(1));
    for (const PrdRow row : {PrdRow::ParsingOptions, PrdRow::DivideFile, PrdRow::PlainAscii})
        tables.prd.setBackColour(row, PrdColumn::Option, colours::fixed);
}

void setupFrd(App& app, Session& session) {
    session.filterFile = app.platform.settings().get("filFile", "");
    Table& table = session.tables.frd;
    table.clear();
    table.resize(2, 4);
    table.text(0, FrdColumn::Apply) = "Processing?\nApply when";
    table.text(0, FrdColumn::Path) = "Filter File";
    table.text(0, FrdColumn::UseCurve) = "~Curve\nUse";
    table.text(0, FrdColumn::UseParameter) = "~Parameter\nUse";
    table.setCheck(1, FrdColumn::Apply, Check::Unchecked);
    table.text(1, FrdColumn::Path) = session.filterFile;
    table.setCheck(1, FrdColumn::UseCurve, Check::Checked);
    table.setCheck(1, FrdColumn::UseParameter, Check::Checked);
}

void resetOrd(Session& session) {
    constexpr std::array<std::string_view, 7> names = {"Section Name",
                                                       "~Version Information",
                                                       "~Well Information",
                                                       "~Curve Information",
                                                       "~Parameter Information",
                                                       "~Other Information",
                                                       "~ASCII"};
    constexpr int otherColumn = 5;
    Table& table = session.tables.ord;
    table.clear();
    table.resize(3, static_cast<int>(names.size()));
    table.text(OrdRow::Order, 0) = "Order";
    table.text(OrdRow::Include, 0) = "Include?";
    for (int column = 0; column < table.columns(); ++column) {
        table.text(OrdRow::Name, column) = names[column];
        if (column == 0) continue;
        table.text(OrdRow::Order, column) = std::to_string(column);
        table.setCheck(OrdRow::Include, column, column == otherColumn ? Check::Unchecked : Check::Checked);
    }
}

bool moveSection(Session& session, int from, int to) {
    Table& table = session.tables.ord;
    const int last = table.columns() - 1;
    const auto movable = [&](int column) { return column > 0 && column < last; };
    if (!movable(from) || !movable(to)) return false;
    table.moveColumn(from, to);
    for (int column = 1; column <= last; ++column) table.text(OrdRow::Order, column) = std::to_string(column);
    return true;
}

void fillColDefaults(Session& session, int column) {
    Table& table = session.tables.outputs();
    table.text(SrdRow::Number, column) = std::to_string(column);
    for (int row = at(SrdRow::Mnem); row <= at(SrdRow::Description); ++row) table.text(row, column).clear();
    table.setCheck(SrdRow::Use, column, Check::Checked);
    table.text(SrdRow::Function, column) = noneText;
    table.text(linkRow(0, Link::From), column) = session.tables.setting(PrdRow::From);
    table.text(linkRow(0, Link::To), column) = session.tables.setting(PrdRow::To);
    colourColumn(table, column);
}

void fillNewGrid(Session& session) {
    SessionTables& tables = session.tables;
    Table& target = tables.outputs();
    session.filterApplied = false;
    target.clear();
    target.resize(srdRowCount, tables.srd[0].columns());
    labelNewChannels(session);
    for (int column = 0; column < target.columns(); ++column) colourColumn(target, column);
    std::array<std::string, slotCount> tops, bottoms;
    for (int slot = 0; slot < slotCount; ++slot) {
        tops[slot] = depthText(session.slots[slot].topDepth);
        bottoms[slot] = depthText(session.slots[slot].bottomDepth);
    }
    for (int column = 1; column < target.columns(); ++column) {
        target.setCheck(SrdRow::Use, column, Check::Unchecked);
        takeHeader(session, column);
        for (int slot = 0; slot < slotCount; ++slot) {
            if (!session.loaded(slot)) continue;
            const Table& source = tables.srd[slot];
            const std::string& mnem = source.text(SlotRow::Mnem, column);
            if (mnem.empty()) continue;
            target.text(linkRow(slot, Link::Mnem), column) = mnem;
            target.text(linkRow(slot, Link::Curve), column) = source.text(SlotRow::Index, column);
            target.text(linkRow(slot, Link::From), column) = tops[slot];
            target.text(linkRow(slot, Link::To), column) = bottoms[slot];
            target.setCheck(SrdRow::Use, column, Check::Checked);
        }
    }
}

void recalculateUse(Session& session, bool byCurve) {
    Table& table = session.tables.outputs();
    for (int column = 1; column < table.columns(); ++column) {
        bool fed = false;
        for (int slot = 0; slot < slotCount; ++slot)
            fed = fed || !table.text(linkRow(slot, byCurve ? Link::Curve : Link::Mnem), column).empty();
        table.setCheck(SrdRow::Use, column, fed ? Check::Checked : Check::Unchecked);
    }
}

int appendChannels(Session& session, int count) {
    const int first = session.tables.outputs().columns();
    if (count > maxColumns - first) throw RunTimeFailure("overflow: no room for another channel");
    for (Table& table : session.tables.srd) table.resize(table.rows(), table.columns() + count);
    for (int column = first; column < first + count; ++column) fillColDefaults(session, column);
    return first;
}

int AddChannel(Session& session, int currentColumn) {
    Table& table = session.tables.outputs();
    const int last = table.columns();
    if (currentColumn < 0 || currentColumn >= last) throw RunTimeFailure("subscript out of range");
    appendChannels(session, 1);
    // Kept: only srd(4) gets the column at its place; the slots' tables keep their blank one at the end, so behind this
    // place their columns no longer stand opposite each other. The links were read off before. Test:
    // addKeepsTheSlotsColumns
    const int column = last == 1 ? last : currentColumn + 1;
    table.moveColumn(last, column);
    fillColDefaults(session, column);
    table.text(SrdRow::Mnem, column) = "Added";
    return column;
}

bool DeleteChannel(Session& session, int currentColumn) {
    Table& table = session.tables.outputs();
    if (table.columns() <= 1 || currentColumn <= 0 || currentColumn >= table.columns()) return false;
    table.moveColumn(currentColumn, table.columns() - 1);
    // Kept: the slots' tables lose their last column, whatever stands there; the links in srd(4) are not touched by
    // that.
    for (Table& each : session.tables.srd) each.resize(each.rows(), each.columns() - 1);
    return true;
}

void clearFunction(Session& session, int column) {
    Table& table = session.tables.outputs();
    table.data(SrdRow::Function, column).clear();
    table.data(SrdRow::Number, column).clear();
    table.text(SrdRow::Function, column) = noneText;
    for (int row = at(SrdRow::Mnem); row <= at(SrdRow::Description); ++row)
        table.text(row, column) = table.data(row == at(SrdRow::Unit) ? at(SrdRow::InputUnit) : row, column);
}

void checkFormatSpec(const App& app, Session& session) {
    Table& table = session.tables.prd;
    for (int row = at(PrdRow::FormatDot); row <= at(PrdRow::DataDecimals); ++row)
        table.setBackColour(row, PrdColumn::Setting, colours::editable);
    const int dot = app.settings.format.dotColumn, value = app.settings.format.valueColumn,
              colon = app.settings.format.colonColumn;
    struct Rule {
        bool broken;
        PrdRow row;
        std::uint32_t colour;
    };
    const std::array<Rule, 8> rules = {{{dot < 1, PrdRow::FormatDot, colours::error},
                                        {value < 1, PrdRow::FormatValue, colours::error},
                                        {colon < 1, PrdRow::FormatColon, colours::error},
                                        {value < dot + 2, PrdRow::FormatValue, colours::error},
                                        {colon < value + 2, PrdRow::FormatColon, colours::error},
                                        {dot < 5, PrdRow::FormatDot, colours::warning},
                                        {value < 7, PrdRow::FormatValue, colours::warning},
                                        {colon < 9, PrdRow::FormatColon, colours::warning}}};
    for (const Rule& rule : rules) {
        if (!rule.broken) continue;
        table.setBackColour(rule.row, PrdColumn::Setting, rule.colour);
        return;
    }
}

void setFormatRow(App& app, Session& session, PrdRow row, std::int16_t value) {
    formatValue(app.settings.format, row) = value;
    session.decimalsAsked = session.decimalsAsked || row == PrdRow::DataDecimals;
    session.tables.setting(row) = std::to_string(value);
}

void showFormat(const App& app, Session& session) {
    FormatDefaults format = app.settings.format;
    for (int row = at(PrdRow::FormatDot); row <= at(PrdRow::DataDecimals); ++row)
        session.tables.setting(static_cast<PrdRow>(row)) =
            std::to_string(formatValue(format, static_cast<PrdRow>(row)));
}

std::int32_t setGridColWid(App& app, int column) {
    constexpr std::int32_t stockWidth = 600;
    const double stored = val(app.platform.settings().get("gridFontWidth", std::to_string(stockWidth)));
    const std::int32_t width = stored > 0 && stored <= 32767 ? roundToEven(stored) : stockWidth;
    app.settings.gridFont.columnWidth = column == -1 ? -1 : width;
    app.platform.settings().put("gridFontWidth", std::to_string(app.settings.gridFont.columnWidth));
    return app.settings.gridFont.columnWidth;
}

}  // namespace welvane
