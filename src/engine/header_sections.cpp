#include "engine/header_sections.h"

#include <utility>

#include "las/header_line.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

std::string laidOut(const PassContext& context, const HeaderField& fields, int extraColon) {
    const FormatDefaults& format = context.app.settings.format;
    return formatHeaderLine(fields, format.dotColumn, format.colonColumn + extraColon, format.valueColumn,
                            context.options.rules == FigureRules::trueFigures);
}

bool isDepthLine(std::string_view mnem) {
    for (const std::string_view name : {"STRT", "STOP", "STEP", "NULL"})
        if (sameText(mnem, name)) return true;
    return false;
}

void swapForVersions(HeaderField& fields, double inputVersion, double outputVersion) {
    if (isDepthLine(fields.mnem)) return;
    if (inputVersion == 1.2) std::swap(fields.value, fields.desc);
    if (outputVersion != 2 && outputVersion != 3) std::swap(fields.value, fields.desc);
}

namespace {

void writeColumnHeads(const PassContext& context, HeaderText& text) {
    text.line(laidOut(context, {"#MNEM", "UNIT", "VALUE", "DESCRIPTION"}));
    text.line(laidOut(context, {"#----", "----", "---------------", "-------------------"}));
}

/// Slots whose ~Parameter lines go out: all with Merge, else the header's; only those loaded.
std::vector<int> parameterSlots(PassContext& context) {
    std::vector<int> slots;
    const bool merge = context.tables().checked(PrdRow::MergeParameters);
    for (int slot = 0; slot < slotCount; ++slot)
        if (context.session.loaded(slot) && context.tables().parg[slot].visible() &&
            (merge || slot == context.headerSlot))
            slots.push_back(slot);
    return slots;
}

void writeRunLines(PassContext& context, HeaderText& text, const std::vector<int>& slots) {
    for (const int slot : slots) {
        const std::string number = std::to_string(slot + 1);
        text.line(laidOut(context, {"RUN" + number, "", number, "Run Identification mnemonic for Run #" + number}));
    }
    text.line(laidOut(context, {"RUNS", "", std::to_string(slots.size()), "Number of runs available"}));
}

}  // namespace

void writeWellOfFilter(PassContext& context, HeaderText& text, const std::string& title) {
    const Table& wrd = context.tables().wrd;
    text.line(title);
    text.line("");
    for (int row = 1; row < wrd.rows(); ++row) {
        const HeaderField fields{wrd.text(row, FieldColumn::Mnem), wrd.text(row, FieldColumn::Unit),
                                 wrd.text(row, FieldColumn::Value), wrd.text(row, FieldColumn::Desc)};
        const bool spare = fields.mnem.empty() && fields.unit.empty() && fields.value.empty() && fields.desc.empty();
        if (!wrd.rowHidden(row) && !spare) text.line(laidOut(context, fields, context.format().wellExtraColon));
    }
}

void writeCurves(PassContext& context, HeaderText& text, const std::string& title,
                 std::span<const std::string> comments) {
    if (context.curveTable.empty()) return;
    const bool fill = context.tables().checked(PrdRow::FillEmpty);
    const StartupSettings& settings = context.app.settings;
    text.line(title);
    writeColumnHeads(context, text);
    for (const std::string& comment : comments) text.line(comment);
    for (std::size_t entry = 0; entry < context.curveTable.size(); ++entry) {
        const OutputCurve& curve = context.curveTable[entry];
        HeaderField fields{curve.mnem, curve.unit, curve.apiCode, curve.description};
        if (fill && settings.fillCurveValue && fields.value.empty())
            fields.value = apiCodeForMnem(context.app.reference, curve.mnem);
        if (fill && settings.fillCurveDescription && fields.desc.empty())
            fields.desc = entry == 0 ? "Depth" : descriptionForMnem(context.app.reference, curve.mnem);
        text.line(laidOut(context, fields));
    }
}

void writeParameters(PassContext& context, HeaderText& text, const std::string& title,
                     std::span<const std::string> comments) {
    const std::vector<int> slots = parameterSlots(context);
    const bool merge = context.tables().checked(PrdRow::MergeParameters);
    bool anyLine = context.headerSource && context.headerSource->text().seekSection('P');
    // As laid down, a section that the header's file lacks is left out, whatever a filter or a merge would put there.
    if (!anyLine && context.options.rules == FigureRules::asLaidDown) return;
    for (const int slot : slots) anyLine = anyLine || context.tables().parg[slot].rows() > 1;
    if (!anyLine) return;

    text.line(title);
    writeColumnHeads(context, text);
    for (const std::string& comment : comments) text.line(comment);
    if (merge || context.tables().filterInUse()) writeRunLines(context, text, slots);
    for (const int slot : slots) {
        const Table& parg = context.tables().parg[slot];
        for (int row = 1; row < parg.rows(); ++row) {
            HeaderField fields{parg.text(row, FieldColumn::Mnem), parg.text(row, FieldColumn::Unit),
                               parg.text(row, FieldColumn::Value), parg.text(row, FieldColumn::Desc)};
            if (trim(fields.mnem).empty()) continue;
            if (merge) fields.desc += " | RUN" + std::to_string(slot + 1);
            text.line(laidOut(context, fields));
        }
    }
}

}  // namespace welvane
