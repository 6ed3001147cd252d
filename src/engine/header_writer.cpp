#include "engine/header_writer.h"

#include <array>

#include "engine/curve_table.h"
#include "las/header_edit.h"
#include "las/sections.h"
#include "platform/mapped_file.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Lines of one section of the header source, up to the first that holds "~"; nothing when the section is absent.
std::optional<std::vector<std::string>> sectionLines(const std::string& path, char letter) {
    const auto file = MappedFile::open(path);
    if (!file) return std::nullopt;
    LineReader reader(file->bytes());
    if (seekSection(reader, letter) == 0) return std::nullopt;
    std::vector<std::string> lines;
    for (std::string_view line; reader.next(line) && line.find('~') == npos;) lines.emplace_back(line);
    return lines;
}

std::string laidOut(const PassContext& context, const HeaderField& fields, int extraColon = 0) {
    const FormatDefaults& format = context.app.settings.format;
    return formatHeaderLine(fields, format.dotColumn, format.colonColumn + extraColon, format.valueColumn);
}

void writeColumnHeads(const PassContext& context, OutputFile& file) {
    file.writeLine(laidOut(context, {"#MNEM", "UNIT", "VALUE", "DESCRIPTION"}));
    file.writeLine(laidOut(context, {"#----", "----", "---------------", "-------------------"}));
}

/// A line that is no header line: kept behind a "#" when bad lines are to be kept, else dropped.
void writeBadLine(const PassContext& context, OutputFile& file, const std::string& line) {
    if (context.app.settings.keepBadLines) file.writeLine("#" + line);
}

void writeVersion(PassContext& context, OutputFile& file, const std::string& title) {
    const auto lines = sectionLines(context.headerSource, 'V');
    if (!lines) return;
    file.writeLine(title);
    for (const std::string& line : *lines) {
        const LineKind kind = lineKind(line);
        HeaderField fields;
        if (kind == LineKind::Data && parseHeaderLine(std::string_view(line), fields))
            file.writeLine(laidOut(context, fields));
        if (kind == LineKind::Comment) file.writeLine(line);
        if (kind == LineKind::Blank || kind == LineKind::Other) writeBadLine(context, file, line);
    }
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

void writeWellOfFilter(PassContext& context, OutputFile& file, const std::string& title) {
    const Table& wrd = context.tables().wrd;
    file.writeLine(title);
    file.writeLine("");
    for (int row = 1; row < wrd.rows(); ++row) {
        const HeaderField fields{
            wrd.text(row, static_cast<int>(FieldColumn::Mnem)), wrd.text(row, static_cast<int>(FieldColumn::Unit)),
            wrd.text(row, static_cast<int>(FieldColumn::Value)), wrd.text(row, static_cast<int>(FieldColumn::Desc))};
        const bool spare = fields.mnem.empty() && fields.unit.empty() && fields.value.empty() && fields.desc.empty();
        if (!wrd.rowHidden(row) && !spare) file.writeLine(laidOut(context, fields, context.format().wellExtraColon));
    }
}

void writeWell(PassContext& context, OutputFile& file, const std::string& title) {
    if (context.tables().filterInUse()) {
        writeWellOfFilter(context, file, title);
        return;
    }
    const auto lines = sectionLines(context.headerSource, 'W');
    if (!lines) return;
    file.writeLine(title);
    const double inputVersion = val(context.session.slots[static_cast<std::size_t>(context.headerSlot)].lasVersion);
    const double outputVersion = val(context.tables().setting(PrdRow::Vers));
    for (const std::string& line : *lines) {
        const LineKind kind = lineKind(line);
        HeaderField fields;
        if (kind == LineKind::Data && parseHeaderLine(std::string_view(line), fields)) {
            swapForVersions(fields, inputVersion, outputVersion);
            file.writeLine(laidOut(context, fields, context.format().wellExtraColon));
        }
        if (kind == LineKind::Comment && isNotTitleLine(line, context.headerCurveNames)) file.writeLine(line);
        if (kind == LineKind::Blank || kind == LineKind::Other) writeBadLine(context, file, line);
    }
}

void writeCurves(PassContext& context, OutputFile& file, const std::string& title) {
    if (context.curveTable.empty()) return;
    const bool fill = context.tables().checked(PrdRow::FillEmpty);
    const StartupSettings& settings = context.app.settings;
    file.writeLine(title);
    writeColumnHeads(context, file);
    for (std::size_t entry = 0; entry < context.curveTable.size(); ++entry) {
        const OutputCurve& curve = context.curveTable[entry];
        HeaderField fields{curve.mnem, curve.unit.substr(curve.unit.find('^') + 1), curve.apiCode, curve.description};
        if (fill && settings.fillCurveValue && fields.value.empty())
            fields.value = apiCodeForMnem(context.app.reference, curve.mnem);
        if (fill && settings.fillCurveDescription && fields.desc.empty())
            fields.desc = entry == 0 ? "Depth" : descriptionForMnem(context.app.reference, curve.mnem);
        file.writeLine(laidOut(context, fields));
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

void writeRunLines(PassContext& context, OutputFile& file, const std::vector<int>& slots) {
    for (const int slot : slots) {
        const std::string number = std::to_string(slot + 1);
        file.writeLine(
            laidOut(context, {"RUN" + number, "", number, "Run Identification mnemonic for Run #" + number}));
    }
    file.writeLine(laidOut(context, {"RUNS", "", std::to_string(slots.size()), "Number of runs available"}));
}

void writeParameters(PassContext& context, OutputFile& file, const std::string& title) {
    const std::vector<int> slots = parameterSlots(context);
    const bool merge = context.tables().checked(PrdRow::MergeParameters);
    bool anyLine = sectionLines(context.headerSource, 'P').has_value();
    for (const int slot : slots) anyLine = anyLine || context.tables().parg[static_cast<std::size_t>(slot)].rows() > 1;
    if (!anyLine) return;

    file.writeLine(title);
    writeColumnHeads(context, file);
    if (merge || context.tables().filterInUse()) writeRunLines(context, file, slots);
    for (const int slot : slots) {
        const Table& parg = context.tables().parg[static_cast<std::size_t>(slot)];
        for (int row = 1; row < parg.rows(); ++row) {
            HeaderField fields{parg.text(row, static_cast<int>(FieldColumn::Mnem)),
                               parg.text(row, static_cast<int>(FieldColumn::Unit)),
                               parg.text(row, static_cast<int>(FieldColumn::Value)),
                               parg.text(row, static_cast<int>(FieldColumn::Desc))};
            if (trim(fields.mnem).empty()) continue;
            if (merge) fields.desc += " | RUN" + std::to_string(slot + 1);
            file.writeLine(laidOut(context, fields));
        }
    }
}

void writeOther(PassContext& context, OutputFile& file, const std::string& title) {
    const std::string text(trimBreaks(context.tables().otherText));
    if (text.empty()) return;
    file.writeLine(title);
    std::string oneFeed = text;
    for (char& c : oneFeed)
        if (c == '\n') c = ' ';
    for (const std::string& line : split(oneFeed, '\r')) {
        if (!isNotTitleLine(line, context.headerCurveNames)) continue;
        const std::string_view trimmed = trim(line);
        file.writeLine(!trimmed.empty() && trimmed.front() == '#' ? line : "#" + line);
    }
}

using SectionWriter = void (*)(PassContext&, OutputFile&, const std::string&);

SectionWriter sectionWriter(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, SectionWriter>, 5> writers = {
        {{"~V", writeVersion}, {"~W", writeWell}, {"~C", writeCurves}, {"~P", writeParameters}, {"~O", writeOther}}};
    for (const auto& [kind, writer] : writers)
        if (beginsWith(name, kind)) return writer;
    return nullptr;
}

void readHeaderSource(PassContext& context) {
    if (context.options.noInputRun) return;
    const std::string& named = context.tables().setting(PrdRow::HeaderFile);
    context.headerSource = named.empty() ? context.session.slots[0].path : named;
    SectionTable curves;
    readSection(curves, context.headerSource, 'C');
    for (const HeaderField& curve : curves) context.headerCurveNames.push_back(curve.mnem);
}

}  // namespace

void writePlainHeader(const PassContext& context, OutputFile& file, std::string_view style) {
    if (style.empty() || sameText(style, "No Header")) return;
    const auto width = static_cast<std::size_t>(std::max<int>(0, context.app.settings.format.dataWidth));
    std::string mnems, units, both;
    for (const OutputCurve& curve : context.curveTable) {
        const std::string unit = curve.unit.substr(curve.unit.find('^') + 1);
        mnems += rightAligned(curve.mnem, width);
        units += rightAligned(unit, width);
        both += rightAligned(curve.mnem + "." + unit, width);
    }
    if (sameText(style, "MNEM")) {
        file.writeLine(mnems);
    } else if (sameText(style, "MNEM.UNIT")) {
        file.writeLine(both);
    } else if (sameText(style, "One line each")) {
        file.writeLine(mnems);
        file.writeLine(units);
    } else {
        file.writeLine("");
    }
}

void writeHeader(PassContext& context, OutputFile& file) {
    readHeaderSource(context);
    context.app.run.statusText = "Writing new header sections ...";
    buildCurveTable(context);
    SessionTables& tables = context.tables();
    if (tables.checked(PrdRow::PlainAscii)) {
        writePlainHeader(context, file, tables.option(PrdRow::PlainAscii));
        return;
    }
    for (int column = 1; column < tables.ord.columns() - 1; ++column) {
        const std::string& name = tables.ord.text(static_cast<int>(OrdRow::Name), column);
        const SectionWriter writer = sectionWriter(name);
        if (writer == nullptr || !tables.ord.checked(static_cast<int>(OrdRow::Include), column)) continue;
        attempt(context.report.failures, "writing a header section", [&] { writer(context, file, name); });
    }
}

void correctHeader(PassContext& context, const std::string& path) {
    const SessionTables& tables = context.tables();
    struct Edit {
        std::string_view mnem;
        EditPart part;
        char section;
        std::string text;
    };
    const std::string& unit = tables.setting(PrdRow::DepthUnits);
    const double step = context.options.exactDepthUnit ? context.grid.step / context.depthDivisor : context.grid.step;
    const std::array<Edit, 9> edits = {{
        {"STRT", EditPart::Value, 'W', context.report.firstDepth},
        {"STOP", EditPart::Value, 'W', context.report.lastDepth},
        {"STEP", EditPart::Value, 'W', formatMask(context.grid.direction * step, 5)},
        {"NULL", EditPart::Value, 'W', formatMask(static_cast<double>(context.nullValue), 5)},
        {"VERS", EditPart::Value, 'V', val(tables.setting(PrdRow::Vers)) == 2 ? "2.00" : "1.2"},
        {"WRAP", EditPart::Value, 'V', context.wrapPerLine > 0 ? "YES" : "NO"},
        {"STRT", EditPart::Unit, 'W', unit},
        {"STOP", EditPart::Unit, 'W', unit},
        {"STEP", EditPart::Unit, 'W', unit},
    }};
    for (const Edit& edit : edits)
        attempt(context.report.failures, "correcting the header",
                [&] { editHeaderField(path, edit.mnem, edit.part, edit.text, edit.section, context.app.user); });
}

}  // namespace welvane
