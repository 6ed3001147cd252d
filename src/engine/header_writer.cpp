#include "engine/header_writer.h"

#include <array>
#include <cmath>
#include <utility>

#include "engine/curve_table.h"
#include "engine/header_sections.h"
#include "engine/true_header.h"
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

void writeWell(PassContext& context, HeaderText& text, const std::string& title) {
    if (context.tables().filterInUse()) {
        writeWellOfFilter(context, text, title);
        return;
    }
    if (!hasSection(context, 'W')) return;
    text.line(title);
    const double inputVersion = val(context.session.slots[context.headerSlot].lasVersion);
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

void curvesAlone(PassContext& context, HeaderText& text, const std::string& title) {
    writeCurves(context, text, title);
}
void parametersAlone(PassContext& context, HeaderText& text, const std::string& title) {
    writeParameters(context, text, title);
}

SectionWriter sectionWriter(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, SectionWriter>, 5> writers = {
        {{"~V", writeVersion}, {"~W", writeWell}, {"~C", curvesAlone}, {"~P", parametersAlone}, {"~O", writeOther}}};
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
    if (context.options.rules == FigureRules::trueFigures) return writeTrueHeader(context);
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
    const double version = val(tables.setting(PrdRow::Vers));
    const bool version12 = isTrue ? version == 1.2 : version != 2;
    const std::array<HeaderEdit, 9> edits = {{
        {"STRT", EditPart::Value, 'W', context.report.firstDepth},
        {"STOP", EditPart::Value, 'W', context.report.lastDepth},
        {"STEP", EditPart::Value, 'W', stepText},
        {"NULL", EditPart::Value, 'W', formatMask(context.nullValue, 5)},
        {"VERS", EditPart::Value, 'V', version12 ? "1.2" : "2.00"},
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
