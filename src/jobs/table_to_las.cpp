#include "jobs/table_to_las.h"

#include "convert/header_template.h"
#include "jobs/las_check.h"
#include "las/header_line.h"
#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A mnemonic or a unit as a header line can hold it.
void needHeaderWord(const std::string& choice, const std::string& text, std::string_view forbidden) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) <= ' ' || forbidden.find(c) != npos)
            throw senselessChoice(choice, "'" + text + "' holds what a header line has no place for");
}

void setHeads(GenericTable& grd, const std::string& choice, const std::vector<std::string>& texts, GrdRow row,
              std::string_view forbidden) {
    if (texts.size() > static_cast<std::size_t>(grd.columns() - 1))
        throw senselessChoice(choice,
                              std::to_string(texts.size()) + " for a table of " + counted(grd.columns() - 1, "column"));
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const std::string text(trim(texts[index]));
        needHeaderWord(choice, text, forbidden);
        // An empty place keeps what the table says.
        if (!text.empty()) grd.setCell(static_cast<std::int64_t>(row), static_cast<int>(index) + 1, text);
    }
}

/// Columns of this name, or the one of this number from 1.
void dropColumns(GenericTable& grd, const std::string& wanted) {
    bool found = false;
    for (int column = 1; column < grd.columns(); ++column) {
        if (!sameText(trim(grd.name(column)), trim(wanted)) || trim(wanted).empty()) continue;
        grd.setUsed(column, false);
        found = true;
    }
    if (found) return;
    for (int column = 1; column < grd.columns(); ++column) {
        if (std::to_string(column) != trim(wanted)) continue;
        grd.setUsed(column, false);
        return;
    }
    throw senselessChoice("drop", "there is no column '" + wanted + "'");
}

void checkFiles(Workbench& bench, const TableRequest& request) {
    std::vector<Input> inputs = {{request.table, request.table}};
    if (!request.header.empty()) inputs.insert(inputs.begin(), {request.header, request.header});
    for (const Input& input : inputs)
        if (const std::string why = whyUnreadable(input.path); !why.empty()) throw Refusal(input.given, why);
    if (!request.output.empty()) bench.checkOutput(request.output, inputs);
}

void readInto(Workbench& bench, const TableRequest& request, OpenedTable& table) {
    const WorkInHand work(bench.user(), {.file = request.table, .bytes = fileSize(request.table).value_or(0)});
    const LoadOptions options{request.delimiter, request.dataLine};
    table.loaded = request.decimalComma ? loadTableText(bench.app(), withDecimalPoints(mapFile(request.table).bytes()),
                                                        options, table.grd)
                                        : loadTable(bench.app(), request.table, options, table.grd);
    if (!table.loaded.done) throw Refusal(request.table, table.loaded.cancelled ? "stopped" : table.loaded.why);
    if (table.grd.columns() != 0 && table.grd.dataRows() != 0) return;
    if (request.dataLine == 0) throw Refusal(request.table, "no rows of numbers in it", Remedy::DataRow);
    throw Refusal(request.table, "no data in line " + std::to_string(request.dataLine));
}

void needTwoColumns(const GenericTable& grd, const TableRequest& request) {
    int used = 0;
    for (int column = 1; column < grd.columns(); ++column) used += grd.used(column) ? 1 : 0;
    if (used >= 2) return;
    throw Refusal(request.table,
                  "a LAS file needs a depth and a channel; " + counted(used, "column") + " of the table " +
                      (used == 1 ? "is" : "are") + " left",
                  request.delimiter == Delimiter::Guess ? Remedy::Delimiter : Remedy::None);
}

/// The unit of STRT of the request's header file; "" without one. Refusal for a header that cannot be read.
std::string headerUnit(const TableRequest& request) {
    if (request.header.empty()) return {};
    std::string why;
    const auto texts = readHeaderTexts(request.header, why);
    if (!texts) throw Refusal(request.table, why);
    for (const std::string& line : split(texts->well, '\n')) {
        HeaderField field;
        if (parseHeaderLine(std::string_view(line), field) && sameText(field.mnem, "STRT")) return field.unit;
    }
    return {};
}

/// The first column that is used is the depth.
void makeDepthColumn(OpenedTable& table, const TableRequest& request) {
    GenericTable& grd = table.grd;
    std::size_t source = 0;  // of the depth, among the table's columns
    const auto given = [&](const std::vector<std::string>& texts) {
        return source < texts.size() && !trim(texts[source]).empty();
    };
    for (; !grd.used(1); ++source) grd.dropColumn(1);
    for (int column = grd.columns() - 1; column > 1; --column)
        if (!grd.used(column)) grd.dropColumn(column);
    const auto setHead = [&grd](GrdRow row, const std::string& text) {
        grd.setCell(static_cast<std::int64_t>(row), 1, text);
    };
    if (source > 0 && !given(request.names)) setHead(GrdRow::Name, "DEPT");
    table.depthUnitTold = given(request.units) || (source == 0 ? table.loaded.depthUnitTold : !grd.unit(1).empty());
    const std::string unit = headerUnit(request);
    if (unit.empty()) return;
    if (!table.depthUnitTold) setHead(GrdRow::Unit, unit);
    if (table.depthUnitTold && !given(request.units) && upperChar(unit.front()) != upperChar(grd.unit(1).front()))
        throw Refusal(request.table, "its depths are in " + grd.unit(1) + ", those of the header in " + unit,
                      Remedy::Units);
    table.depthUnitTold = true;
}

}  // namespace

OpenedTable openTable(Workbench& bench, const TableRequest& request) {
    checkFiles(bench, request);
    OpenedTable table;
    readInto(bench, request, table);
    const std::string siteUnit = bench.app().settings.units.depthUnit;
    setHeads(table.grd, "names", request.names, GrdRow::Name, ".:#~");
    setHeads(table.grd, "units", request.units, GrdRow::Unit, ":");
    for (const std::string& column : request.drop) dropColumns(table.grd, column);
    needTwoColumns(table.grd, request);
    makeDepthColumn(table, request);
    if (table.grd.unit(1).empty()) table.grd.setCell(static_cast<std::int64_t>(GrdRow::Unit), 1, siteUnit);
    if (request.order != RowOrder::AsTheyStand) table.grd.sortDepth(request.order == RowOrder::DeepFirst);
    return table;
}

TableToLasReport writeTable(Workbench& bench, OpenedTable& table, const TableRequest& request) {
    LasRequest las;
    las.targetPath = request.output;
    las.headerFile = request.header;
    if (request.null) las.nullText = request.null->text();
    las.mode = bench.outputMode();
    las.rules = FigureRules::trueFigures;
    TableToLasReport report;
    report.depthUnit = table.grd.unit(1);
    {
        const WorkInHand work(bench.user(), {});
        // What the boxes of the conversion tell stands in its result too.
        const HeldBoxes held(bench.user());
        report.made = makeLas(bench.app(), table.grd, las);
    }
    const LasResult& made = report.made;
    if (!made.done)
        throw Refusal(request.table, made.cancelled ? "stopped" : made.why,
                      made.decimalComma ? Remedy::DecimalComma : Remedy::None);
    if (!table.depthUnitTold)
        bench.note(NoteKind::Unit, request.table,
                   "nothing tells the unit of its depths; " + table.grd.unit(1) + " is taken");
    if (made.stepVaries)
        bench.note(NoteKind::StepVaries, request.output, "the depth interval is not constant; STEP is written as 0");
    for (const TextCells& texts : made.noNumbers)
        bench.note({.kind = NoteKind::NoNumber,
                    .file = request.table,
                    .channel = texts.channel,
                    .line = table.grd.lineNumber(texts.firstRow),
                    .count = static_cast<std::size_t>(texts.count),
                    .text = "no number; null is written"});
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
