#include "engine/header_writer.h"

#include <array>
#include <cmath>
#include <utility>

#include "engine/curve_table.h"
#include "las/header_edit.h"
#include "session/loading.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The header source has this section.
bool hasSection(const PassContext& context, char letter) {
    return context.headerSource && context.headerSource->text().seekSection(letter);
}

/// Hands out the lines of one section of the header source, up to the first that holds "~".
template <class Take>
void eachLine(const PassContext& context, char letter, Take take) {
    const LasText& text = context.headerSource->text();
    LineReader lines = text.lines(text.seekSection(letter).value_or(npos));
    for (std::string_view line; lines.next(line) && line.find('~') == npos;) take(line);
}

std::string laidOut(const PassContext& context, const HeaderField& fields, int extraColon = 0) {
    const FormatDefaults& format = context.app.settings.format;
    return formatHeaderLine(fields, format.dotColumn, format.colonColumn + extraColon, format.valueColumn);
}

void writeColumnHeads(const PassContext& context, HeaderText& text) {
    text.line(laidOut(context, {"#MNEM", "UNIT", "VALUE", "DESCRIPTION"}));
    text.line(laidOut(context, {"#----", "----", "---------------", "-------------------"}));
}

/// A line that is no header line: kept behind a "#" when bad lines are to be kept, else dropped.
void writeBadLine(const PassContext& context, HeaderText& text, std::string_view line) {
    if (context.app.settings.keepBadLines) text.line("#" + std::string(line));
}

void writeVersion(PassContext& context, HeaderText& text, const std::string& title) {
    if (!hasSection(context, 'V')) return;
    text.line(title);
    eachLine(context, 'V', [&](std::string_view line) {
        const LineKind kind = lineKind(line);
        HeaderField fields;
        if (kind == LineKind::Data && parseHeaderLine(line, fields)) text.line(laidOut(context, fields));
        if (kind == LineKind::Comment) text.line(line);
        if (kind == LineKind::Blank || kind == LineKind::Other) writeBadLine(context, text, line);
    });
}

bool isDepthLine(const std::string& mnem) {
    for (const std::string_view name : {"STRT", "STOP", "STEP", "NULL"})
        if (sameText(mnem, name)) return true;
    return false;
}

/// LAS 1.2 carries the text of a ~Well line behind the colon, 2.0 in front of it.
void swapForVersions(HeaderField& fields, double inputVersion, double outputVersion) {
    if (isDepthLine(fields.mnem)) return;
    if (inputVersion == 1.2) std::swap(fields.value, fields.desc);
    if (outputVersion != 2 && outputVersion != 3) std::swap(fields.value, fields.desc);
}

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

void writeWell(PassContext& context, HeaderText& text, const std::string& title) {
    if (context.tables().filterInUse()) {
        writeWellOfFilter(context, text, title);
        return;
    }
    if (!hasSection(context, 'W')) return;
    text.line(title);
    const double inputVersion = val(context.session.slots[static_cast<std::size_t>(context.headerSlot)].lasVersion);
    const double outputVersion = val(context.tables().setting(PrdRow::Vers));
    eachLine(context, 'W', [&](std::string_view line) {
        const LineKind kind = lineKind(line);
        HeaderField fields;
        if (kind == LineKind::Data && parseHeaderLine(line, fields)) {
            swapForVersions(fields, inputVersion, outputVersion);
            text.line(laidOut(context, fields, context.format().wellExtraColon));
        }
        if (kind == LineKind::Comment && isNotTitleLine(line, context.headerCurveNames)) text.line(line);
        if (kind == LineKind::Blank || kind == LineKind::Other) writeBadLine(context, text, line);
    });
}

void writeCurves(PassContext& context, HeaderText& text, const std::string& title) {
    if (context.curveTable.empty()) return;
    const bool fill = context.tables().checked(PrdRow::FillEmpty);
    const StartupSettings& settings = context.app.settings;
    text.line(title);
    writeColumnHeads(context, text);
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

/// Slots whose ~Parameter lines go out: all with Merge, else the header's; only those loaded.
std::vector<int> parameterSlots(PassContext& context) {
    std::vector<int> slots;
    const bool merge = context.tables().checked(PrdRow::MergeParameters);
    for (int slot = 0; slot < slotCount; ++slot)
        if (context.session.loaded(slot) && context.tables().parg[static_cast<std::size_t>(slot)].visible() &&
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

void writeParameters(PassContext& context, HeaderText& text, const std::string& title) {
    const std::vector<int> slots = parameterSlots(context);
    const bool merge = context.tables().checked(PrdRow::MergeParameters);
    bool anyLine = hasSection(context, 'P');
    // As laid down, a section that the header's file lacks is left out, whatever a filter or a merge would put there.
    if (!anyLine && context.options.rules == FigureRules::asLaidDown) return;
    for (const int slot : slots) anyLine = anyLine || context.tables().parg[static_cast<std::size_t>(slot)].rows() > 1;
    if (!anyLine) return;

    text.line(title);
    writeColumnHeads(context, text);
    if (merge || context.tables().filterInUse()) writeRunLines(context, text, slots);
    for (const int slot : slots) {
        const Table& parg = context.tables().parg[static_cast<std::size_t>(slot)];
        for (int row = 1; row < parg.rows(); ++row) {
            HeaderField fields{parg.text(row, FieldColumn::Mnem), parg.text(row, FieldColumn::Unit),
                               parg.text(row, FieldColumn::Value), parg.text(row, FieldColumn::Desc)};
            if (trim(fields.mnem).empty()) continue;
            if (merge) fields.desc += " | RUN" + std::to_string(slot + 1);
            text.line(laidOut(context, fields));
        }
    }
}

void writeOther(PassContext& context, HeaderText& text, const std::string& title) {
    std::string oneFeed(trimBreaks(context.tables().otherText));
    if (oneFeed.empty()) return;
    text.line(title);
    for (char& c : oneFeed)
        if (c == '\n') c = ' ';
    for (const std::string& line : split(oneFeed, '\r')) {
        if (!isNotTitleLine(line, context.headerCurveNames)) continue;
        const std::string_view trimmed = trim(line);
        text.line(!trimmed.empty() && trimmed.front() == '#' ? line : "#" + line);
    }
}

using SectionWriter = void (*)(PassContext&, HeaderText&, const std::string&);

SectionWriter sectionWriter(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, SectionWriter>, 5> writers = {
        {{"~V", writeVersion}, {"~W", writeWell}, {"~C", writeCurves}, {"~P", writeParameters}, {"~O", writeOther}}};
    for (const auto& [kind, writer] : writers)
        if (beginsWith(name, kind)) return writer;
    return nullptr;
}

}  // namespace

void writePlainHeader(const PassContext& context, HeaderText& text, std::string_view style) {
    const auto titles = decode<TitleStyle>(style);
    if (style.empty() || titles == TitleStyle::NoHeader) return;
    const auto width = static_cast<std::size_t>(std::max<int>(0, context.app.settings.format.dataWidth));
    std::string mnems, units, both;
    for (const OutputCurve& curve : context.curveTable) {
        const std::string unit = curve.unit;
        mnems += rightAligned(curve.mnem, width);
        units += rightAligned(unit, width);
        both += rightAligned(curve.mnem + "." + unit, width);
    }
    if (titles == TitleStyle::Mnem) {
        text.line(mnems);
    } else if (titles == TitleStyle::MnemUnit) {
        text.line(both);
    } else if (titles == TitleStyle::OneLineEach) {
        text.line(mnems);
        text.line(units);
    } else {
        text.line("");
    }
}

void openHeaderSource(PassContext& context) {
    if (context.options.noInputRun) return;
    const std::string& named = context.tables().setting(PrdRow::HeaderFile);
    const std::string& path = named.empty() ? context.session.slots[0].path : named;
    if (path.empty()) return;
    context.headerSource = fileNamed(context.session, path);
    for (const HeaderField& curve : context.headerSource->section('C').value_or(SectionTable()))
        context.headerCurveNames.push_back(curve.mnem);
}

std::string writeHeader(PassContext& context) {
    context.app.run.statusText = "Writing new header sections ...";
    buildCurveTable(context);
    HeaderText text;
    const SessionTables& tables = context.tables();
    if (tables.checked(PrdRow::PlainAscii)) {
        writePlainHeader(context, text, tables.option(PrdRow::PlainAscii));
        return text.take();
    }
    for (int column = 1; column < tables.ord.columns() - 1; ++column) {
        const std::string& name = tables.ord.text(OrdRow::Name, column);
        const SectionWriter writer = sectionWriter(name);
        if (writer == nullptr || !tables.ord.checked(OrdRow::Include, column)) continue;
        attempt(context.report.failures, "writing a header section", [&] { writer(context, text, name); });
    }
    if (context.headerSource) context.headerSource->needWhole();
    return text.take();
}

namespace {

/// The fewest decimals (at least five) with which a step still leads to the last depth.
int stepDecimals(double step, std::int32_t samples) {
    constexpr int least = 5, most = 12;
    constexpr double sameDepth = 1e-6;
    int decimals = least;
    while (decimals < most && std::abs(val(formatMask(step, decimals)) - step) * samples > sameDepth) ++decimals;
    return decimals;
}

}  // namespace

std::vector<std::string> correctHeader(PassContext& context, std::string& header) {
    const SessionTables& tables = context.tables();
    const std::string& unit = tables.setting(PrdRow::DepthUnits);
    // By true figures STEP stands in the wanted depth unit, as laid down in the input's.
    const bool isTrue = context.options.rules == FigureRules::trueFigures;
    const double step = isTrue ? context.grid.step / context.depthDivisor : context.grid.step;
    const std::string stepText =
        formatMask(context.grid.direction * step, isTrue ? stepDecimals(step, context.grid.sampleCount) : 5);
    const std::array<HeaderEdit, 9> edits = {{
        {"STRT", EditPart::Value, 'W', context.report.firstDepth},
        {"STOP", EditPart::Value, 'W', context.report.lastDepth},
        {"STEP", EditPart::Value, 'W', stepText},
        {"NULL", EditPart::Value, 'W', formatMask(static_cast<double>(context.nullValue), 5)},
        {"VERS", EditPart::Value, 'V', val(tables.setting(PrdRow::Vers)) == 2 ? "2.00" : "1.2"},
        {"WRAP", EditPart::Value, 'V', context.wrapPerLine > 0 ? "YES" : "NO"},
        {"STRT", EditPart::Unit, 'W', unit},
        {"STOP", EditPart::Unit, 'W', unit},
        {"STEP", EditPart::Unit, 'W', unit},
    }};
    std::vector<std::string> shortLines;
    for (const HeaderEdit& edit : edits) {
        std::string shortLine;
        editHeaderText(header, edit, shortLine);
        if (!shortLine.empty()) shortLines.push_back(std::move(shortLine));
    }
    return shortLines;
}

}  // namespace welvane
