#include "session/property_edits.h"

#include <cmath>

#include "las/sections.h"
#include "session/choices.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "session/step_text.h"
#include "session/tvd.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The unit that the Sample Rate counts in. By true figures it is the inputs', as that of all depths of the table: the
/// pass carries what it makes into the output's.
std::string rateUnit(const Session& session) {
    if (session.rules == FigureRules::trueFigures)
        for (int slot = 0; slot < slotCount; ++slot)
            if (session.loaded(slot))
                return std::string(
                    textOf(beginsWith(session.slots[slot].depthUnit, "M") ? DepthUnit::M : DepthUnit::F));
    return session.tables.setting(PrdRow::DepthUnits);
}

/// Of a list item only the number for the depth unit stays. False for a step of zero, whose cell is emptied.
bool editSampleRate(Session& session) {
    std::string& text = session.tables.setting(PrdRow::SampleRate);
    const std::string unit = rateUnit(session);
    if (stepNumber(text, unit) == 0) {
        text.clear();
        return false;
    }
    const auto known = decode<DepthUnit>(unit);
    const std::string_view piece = stepPiece(text, unit);
    const bool isItem = piece.size() < text.size();
    if (isItem && (known == DepthUnit::M || known == DepthUnit::F)) text = std::string(trim(piece));
    return true;
}

double feetOrMetres(std::string_view unit) {
    return decode<DepthUnit>(unit) == DepthUnit::M ? static_cast<double>(metresPerFoot) : 1.0;
}

/// The Sample Rate keeps its length under a new depth unit. By true figures it stays as it is.
void editDepthUnits(App& app, Session& session) {
    SessionTables& tables = session.tables;
    std::string& old = tables.prd.data(PrdRow::DepthUnits, PrdColumn::Setting);
    const std::string unit = tables.setting(PrdRow::DepthUnits);
    const bool known = knownUnit(app.reference, unit) && knownUnit(app.reference, old);
    const double ratio = known ? unitFactor(app.reference, unit) / unitFactor(app.reference, old)
                               : feetOrMetres(unit) / feetOrMetres(old);
    std::string& rate = tables.setting(PrdRow::SampleRate);
    if (!trim(rate).empty() && session.rules == FigureRules::asLaidDown)
        rate = formatMask(stepNumber(rate, old) * ratio, 4);
    old = unit;
}

/// "Min", "Max" or "Fit" chosen beside From or To.
void pickDepth(Session& session, PrdRow row) {
    SessionTables& tables = session.tables;
    const auto pick = decode<DepthPick>(tables.option(row));
    tables.option(row).clear();
    const DepthRange range = depthRange(session);
    std::string& depth = tables.setting(row);
    if (range.shallowest <= range.deepest && pick == DepthPick::Min) depth = depthText(range.shallowest, 8);
    if (range.shallowest <= range.deepest && pick == DepthPick::Max) depth = depthText(range.deepest, 8);
    if (pick != DepthPick::Fit) return;
    const double step = std::abs(stepNumber(tables.setting(PrdRow::SampleRate), tables.setting(PrdRow::DepthUnits)));
    if (step == 0) return;
    const double value = val(depth), below = std::floor(value / step) * step, above = below + step;
    depth = depthText(std::abs(value - above) < std::abs(value - below) ? above : below, 8);
}

void pickFormat(App& app, Session& session, int item) {
    if (item == 0) {
        app.settings.format = session.userFormat;
        showFormat(app, session);
        return;
    }
    // Kept: the index counts the listed files but is taken for a slot's number, and the fourth is not followed.
    // Test: formatRowsFromAFile
    const int slot = item - 1;
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
    session.tables.prd.text(row, column) = text;
    session.tables.prd.setBackColour(row, column, text.empty() ? colours::fixed : colours::editable);
}

bool editSetting(App& app, Session& session, PrdRow row, const std::string& text, int item) {
    SessionTables& tables = session.tables;
    if (isFormatRow(row)) {
        setFormatRow(app, session, row, strictInt16(text));
        session.userFormat = app.settings.format;
        checkFormatSpec(app, session);
        return true;
    }
    tables.setting(row) = text;
    if (row == PrdRow::SampleRate) return editSampleRate(session);
    if (row == PrdRow::DepthUnits) editDepthUnits(app, session);
    if (row == PrdRow::HeaderFile) {
        tables.prd.data(row, PrdColumn::Setting) = std::to_string(item);
        tables.otherText = fileExists(text) ? fileNamed(session, std::string(text))->sectionText('O') : std::string();
    }
    if (row == PrdRow::ParsingOptions)
        setOption(session, row, PrdColumn::Option,
                  decode<Parsing>(text) == Parsing::ColumnWidth ? tables.setting(PrdRow::DataWidth) : std::string());
    if (row == PrdRow::DivideFile)
        setOption(session, row, PrdColumn::Option, decode<Divide>(text) == Divide::None ? "" : "1");
    return true;
}

}  // namespace

bool isFormatRow(PrdRow row) {
    return row >= PrdRow::FormatDot && row <= PrdRow::DataDecimals;
}

bool setProperty(App& app, Session& session, PrdRow row, PrdColumn column, const std::string& text, int item) {
    if (column == PrdColumn::Setting) return editSetting(app, session, row, text, item);
    session.tables.prd.text(row, column) = text;
    if (column != PrdColumn::Option) return true;
    if (row == PrdRow::From || row == PrdRow::To) pickDepth(session, row);
    if (isFormatRow(row)) {
        if (item >= 0) pickFormat(app, session, item);
        checkFormatSpec(app, session);
    }
    return true;
}

void checkProperty(App& app, Session& session, PrdRow row, bool checked) {
    session.tables.setChecked(row, checked);
    switch (row) {
        case PrdRow::ApplyTvd:
            if (checked) sortGrd(session);
            break;
        case PrdRow::RenameDuplicates:
            app.platform.settings().put("renamedups", checked ? "1" : "2");
            break;
        case PrdRow::FillEmpty:
            app.settings.fillCurveValue = checked;
            app.settings.fillCurveDescription = checked;
            break;
        case PrdRow::PlainAscii:
            setOption(session, row, PrdColumn::Option, checked ? textOf(TitleStyle::NoHeader) : "");
            setOption(session, row, PrdColumn::SecondOption, checked ? textOf(Separator::Space) : "");
            break;
        default:
            break;
    }
}

}  // namespace welvane
