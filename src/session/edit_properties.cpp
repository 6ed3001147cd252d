#include <algorithm>
#include <cmath>
#include <vector>

#include "las/sections.h"
#include "session/edit_rules.h"
#include "session/filters.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int settingColumn = static_cast<int>(PrdColumn::Setting), optionColumn = static_cast<int>(PrdColumn::Option),
              secondColumn = static_cast<int>(PrdColumn::SecondOption);

constexpr std::string_view stepList =
    "\" 1.0    f ( 0.3048 m)|\" 0.5    f ( 0.1524 m)|\" 0.25   f ( 0.0762 m)|\" 0.1667 f ( 0.0508 m)|\" 0.0833 f ( "
    "0.0254 m)";

bool isFormatRow(int row) {
    return row >= at(PrdRow::FormatDot) && row <= at(PrdRow::DataDecimals);
}

std::vector<std::string> loadedPaths(const Session& session) {
    std::vector<std::string> paths;
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot)) paths.push_back(session.slots[slot].path);
    return paths;
}

std::string formatSources(const Session& session) {
    std::string list = "User";
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot)) list += "|File" + std::to_string(slot + 1);
    return list;
}

std::string settingList(const Session& session, PrdRow row) {
    switch (row) {
        case PrdRow::SampleRate:
            return std::string(stepList);
        case PrdRow::DepthUnits:
            return "F|M|FT";
        case PrdRow::Direction:
            return "Deep to Shallow|Shallow to Deep";
        case PrdRow::Wrap:
            return "No|Yes";
        case PrdRow::Vers:
            return "1.2|2.0";
        case PrdRow::Null:
            return "|-999.25|-99999";
        case PrdRow::HeaderFile:
            return join(loadedPaths(session), "|");
        case PrdRow::NullFill:
            return "None|Linear|Flat Top";
        case PrdRow::ParsingOptions:
            return "Auto (preferred)|Column width of:";
        case PrdRow::OpenedFile:
            return std::string(browseList);
        case PrdRow::DivideFile:
            return "None|By Depth|By Curve";
        default:
            return {};
    }
}

/// Sample Rate typed or chosen: zero is refused, of a list item the number for the depth unit stays.
void editSampleRate(App& app, Session& session) {
    std::string& text = session.tables.setting(PrdRow::SampleRate);
    const std::string& unit = session.tables.setting(PrdRow::DepthUnits);
    const bool isItem = holdsText(text, "f") && holdsText(text, "m");
    if (sampleRateNumber(text, unit) == 0) {
        app.user.ask({"Invalid STEP Value",
                      "Please enter a STEP that is not zero. Welvane can only produce LAS files with a non-zero step.",
                      Buttons::Ok, Icon::Stop, Answer::Ok});
        text.clear();
        return;
    }
    if (!isItem) return;
    const std::size_t quote = text.find('"'), open = text.find('(');
    if (sameText(unit, "M") && open != npos) {
        const std::size_t end = std::min(findText(text, "m", open), text.size());
        text = std::string(trim(std::string_view(text).substr(open + 1, end - open - 1)));
    } else if (sameText(unit, "F") && quote != npos) {
        const std::size_t end = std::min(findText(text, "f", quote), text.size());
        text = std::string(trim(std::string_view(text).substr(quote + 1, end - quote - 1)));
    }
}

double feetOrMetres(std::string_view unit) {
    return sameText(unit, "M") ? static_cast<double>(metresPerFoot) : 1.0;
}

/// The Sample Rate keeps its length under a new depth unit.
void editDepthUnits(App& app, Session& session) {
    SessionTables& tables = session.tables;
    std::string& old = tables.prd.data(at(PrdRow::DepthUnits), settingColumn);
    const std::string unit = tables.setting(PrdRow::DepthUnits);
    const bool known = knownUnit(app.reference, unit) && knownUnit(app.reference, old);
    const double ratio = known ? unitFactor(app.reference, unit) / unitFactor(app.reference, old)
                               : feetOrMetres(unit) / feetOrMetres(old);
    std::string& rate = tables.setting(PrdRow::SampleRate);
    if (!trim(rate).empty()) rate = formatMask(sampleRateNumber(rate, old) * ratio, 4);
    old = unit;
}

/// "Min", "Max" or "Fit" chosen beside From or To.
void pickDepth(Session& session, PrdRow row) {
    SessionTables& tables = session.tables;
    std::string choice;
    choice.swap(tables.option(row));
    const DepthRange range = depthRange(session);
    std::string& depth = tables.setting(row);
    if (range.shallowest <= range.deepest && sameText(choice, "Min")) depth = depthText(range.shallowest, 8);
    if (range.shallowest <= range.deepest && sameText(choice, "Max")) depth = depthText(range.deepest, 8);
    if (!sameText(choice, "Fit")) return;
    const double step =
        std::abs(sampleRateNumber(tables.setting(PrdRow::SampleRate), tables.setting(PrdRow::DepthUnits)));
    if (step == 0) return;
    const double value = val(depth), below = std::floor(value / step) * step, above = below + step;
    depth = depthText(std::abs(value - above) < std::abs(value - below) ? above : below, 8);
}

void pickFormat(App& app, Session& session, int comboIndex) {
    if (comboIndex == 0) {
        app.settings.format = session.userFormat;
        showFormat(app, session);
        return;
    }
    // Kept: the index counts the listed files but is taken for a slot's number, and the fourth is not followed.
    // Test: formatRowsFromAFile
    const int slot = comboIndex - 1;
    if (slot < 0 || slot >= slotCount - 1) return;
    const InputSlot& facts = session.slots[slot];
    setFormatRow(app, session, PrdRow::FormatDot, facts.dotColumn);
    setFormatRow(app, session, PrdRow::FormatValue, facts.valueColumn);
    setFormatRow(app, session, PrdRow::FormatColon, facts.colonColumn);
    setFormatRow(app, session, PrdRow::WellPlus, app.settings.format.wellExtraColon);
    setFormatRow(app, session, PrdRow::DataWidth, facts.firstColumnWidth);
    setFormatRow(app, session, PrdRow::DataDecimals, facts.firstColumnDecimals);
}

void setOption(Session& session, PrdRow row, PrdColumn column, std::string_view text) {
    session.tables.prd.text(at(row), at(column)) = text;
    session.tables.prd.setBackColour(at(row), at(column), text.empty() ? colours::fixed : colours::editable);
}

void editSetting(App& app, Session& session, const CellEdit& edit) {
    SessionTables& tables = session.tables;
    const PrdRow row = static_cast<PrdRow>(edit.row);
    if (isFormatRow(edit.row)) {
        setFormatRow(app, session, row, strictInt16(edit.text));
        session.userFormat = app.settings.format;
        checkFormatSpec(app, session);
        return;
    }
    tables.setting(row) = edit.text;
    if (row == PrdRow::SampleRate) editSampleRate(app, session);
    if (row == PrdRow::DepthUnits) editDepthUnits(app, session);
    if (row == PrdRow::HeaderFile) {
        tables.prd.data(edit.row, settingColumn) = std::to_string(edit.comboIndex);
        tables.otherText = getSectionText(edit.text, 'O');
    }
    if (row == PrdRow::ParsingOptions)
        setOption(session, row, PrdColumn::Option,
                  sameText(edit.text, "Column width of:") ? tables.setting(PrdRow::DataWidth) : std::string());
    if (row == PrdRow::DivideFile) setOption(session, row, PrdColumn::Option, sameText(edit.text, "None") ? "" : "1");
}

}  // namespace

std::string propertyList(const Session& session, int row, int column) {
    const PrdRow name = static_cast<PrdRow>(row);
    if (column == settingColumn) return settingList(session, name);
    if (column == optionColumn && (name == PrdRow::From || name == PrdRow::To)) return "Min|Max|Fit";
    if (column == optionColumn && isFormatRow(row)) return formatSources(session);
    if (name != PrdRow::PlainAscii || !session.tables.checked(name)) return {};
    if (column == optionColumn) return "No Header|MNEM|MNEM.UNIT|One line each";
    return column == secondColumn ? "Space|Tab|Comma" : std::string();
}

void editProperty(App& app, Session& session, const CellEdit& edit) {
    if (edit.column == settingColumn) {
        editSetting(app, session, edit);
        return;
    }
    session.tables.prd.text(edit.row, edit.column) = edit.text;
    if (edit.column != optionColumn) return;
    const PrdRow row = static_cast<PrdRow>(edit.row);
    if (row == PrdRow::From || row == PrdRow::To) pickDepth(session, row);
    if (isFormatRow(edit.row)) {
        if (edit.comboIndex >= 0) pickFormat(app, session, edit.comboIndex);
        checkFormatSpec(app, session);
    }
}

PropertyEffect checkProperty(App& app, Session& session, PrdRow row, bool checked) {
    session.tables.setChecked(row, checked);
    PropertyEffect effect;
    switch (row) {
        case PrdRow::ApplyTvd:
            effect.sortSurvey = checked;
            break;
        case PrdRow::RenameDuplicates:
            app.platform.settings().put("renamedups", checked ? "1" : "2");
            break;
        case PrdRow::FillEmpty:
            app.settings.fillCurveValue = checked;
            app.settings.fillCurveDescription = checked;
            break;
        case PrdRow::PlainAscii:
            setOption(session, row, PrdColumn::Option, checked ? "No Header" : "");
            setOption(session, row, PrdColumn::SecondOption, checked ? "Space" : "");
            break;
        default:
            break;
    }
    return effect;
}

bool browseFilter(App& app, Session& session) {
    if (!doOpenFilter(app, session)) return false;
    session.tables.setting(PrdRow::OpenedFile) = session.filterFile;
    return true;
}

}  // namespace welvane
