#include "engine/data_writer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "engine/layout.h"
#include "engine/record_printer.h"
#include "engine/streaming.h"
#include "engine/true_columns.h"
#include "las/header_text.h"
#include "las/index_unit.h"
#include "las/wrap.h"
#include "session/tvd.h"
#include "shared/numbers.h"
#include "shared/ordered_work.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The longest record that stands on one line in a file without wrapping.
constexpr int longestRecord = 254;

float unitScale(const PassContext& context, std::string_view wanted, std::string_view input) {
    return toSingle(unitFactor(context.app.reference, wanted) / unitFactor(context.app.reference, input));
}

std::vector<OutputColumn> outputColumns(PassContext& context) {
    const SessionTables& tables = context.tables();
    std::vector<OutputColumn> columns;
    for (int column = 1; column < tables.outputs().columns(); ++column) {
        if (!tables.outputs().checked(SrdRow::Use, column) || tables.output(SrdRow::Mnem, column).empty()) continue;
        attempt(context.report.failures, "output column", [&] {
            float scale = 1.0F;
            const std::string_view wanted = trim(tables.output(SrdRow::Unit, column));
            const std::string_view input = trim(tables.output(SrdRow::InputUnit, column));
            if (sameText(tables.output(SrdRow::Function, column), noneText) && !sameText(wanted, input))
                scale = unitScale(context, wanted, input);
            columns.push_back({context.outputMatrix.column(column - 1).data(), static_cast<double>(scale), column,
                               context.format().dataWidth, context.format().dataDecimals});
        });
    }
    return columns;
}

double depthDivisor(PassContext& context) {
    if (context.curveTable.empty()) return 1;
    const OutputCurve& depth = context.curveTable.front();
    if (sameText(depth.inputUnit, depth.unit)) return 1;
    // By true figures a depth unit other than the input's is carried through exactly; as laid down by singles. What is
    // no length stays as it is.
    if (context.options.rules == FigureRules::trueFigures) {
        const IndexUnit input = readIndexUnit(depth.inputUnit), wanted = readIndexUnit(depth.unit);
        return input.isLength() && wanted.isLength() ? wanted.metres / input.metres : 1;
    }
    double divisor = 1;
    attempt(context.report.failures, "depth unit",
            [&] { divisor = static_cast<double>(1.0F / unitScale(context, depth.unit, depth.inputUnit)); });
    return divisor;
}

int checkedColumns(const SessionTables& tables) {
    int count = 0;
    for (int column = 1; column < tables.outputs().columns(); ++column)
        if (tables.outputs().checked(SrdRow::Use, column)) ++count;
    return count;
}

void decideWrap(PassContext& context, int columns) {
    SessionTables& tables = context.tables();
    std::string& wrap = tables.setting(PrdRow::Wrap);
    const int width = context.format().dataWidth;
    const bool tooWide = (columns + 1) * width > longestRecord;
    if (context.app.run.commandMode) {
        if (!tables.filterInUse() && tooWide && decode<Wrap>(wrap) == Wrap::No) {
            wrap = textOf(Wrap::Yes);
            context.wrapPerLine = static_cast<std::int16_t>(wrapLineLength / width);
        }
        return;
    }
    if (decode<Wrap>(wrap) != Wrap::Yes || tooWide || context.options.wrapSettled) return;
    const std::string text =
        "The LAS file does not need to be in WRAP=YES mode for the number of requested channels (" +
        std::to_string(columns) + "), at the set width(" + std::to_string(width) +
        "). Are you sure you want WRAP set to YES?";
    if (context.app.user.ask({"WRAP Yes Mode Un-Necessary!", text, Buttons::YesNo, Icon::Question, Answer::Yes}) !=
        Answer::No)
        return;
    wrap = textOf(Wrap::No);
    context.wrapPerLine = 0;
}

/// Records that a thread prints at a time: of a little more text than an output holds back, so that no byte of them is
/// copied once more.
std::size_t printedAtOnce(const Workers& workers, std::size_t recordLength) {
    return std::max<std::size_t>(1, (workers.pieceBytes + workers.pieceBytes / 16) / recordLength);
}

/// Tells a person of values that were too wide.
void tellOverflow(PassContext& context) {
    if (context.report.overflowCount == 0 || context.app.run.commandMode) return;
    context.app.user.ask({"Some Data Changed to Fit Format Width!",
                          "One or more data values were changed due to the numbers being too large to fit the format "
                          "width. You might want to re-do the "
                          "manipulation with a wider Data width. Changes were made to" +
                              std::to_string(context.report.overflowCount) + " data value(s).",
                          Buttons::Ok, Icon::Information, Answer::Ok});
}

/// Values as a column shows them, NaN for what reads back as the null.
std::vector<double> shownValues(const OutputColumn& column, std::int32_t count, double null) {
    constexpr int exactPowers = 15;
    const bool rounds = column.decimals >= 0 && column.decimals <= exactPowers;
    const double power = rounds ? std::pow(10.0, column.decimals) : 1;
    std::vector<double> values(static_cast<std::size_t>(count));
    for (std::size_t sample = 0; sample < values.size(); ++sample) {
        const double value = column.samples[sample];
        const double scaled = column.scale * value;
        // Beyond so many digits a single step of the value is more than its last decimal.
        const double shown = rounds && std::abs(scaled) * power < 9e15 ? std::round(scaled * power) / power : scaled;
        values[sample] = value == null || shown == null ? std::numeric_limits<double>::quiet_NaN() : shown;
    }
    return values;
}

}  // namespace

namespace {

/// The names of the columns that are written, each at the right of its column, the index first.
std::string trueTitle(const PassContext& context, const std::string& indexName, const std::string& section) {
    const auto depthWidth = static_cast<std::size_t>(context.depthWidth);
    const bool both = context.wrapPerLine > 0 || section.size() + indexName.size() <= depthWidth;
    std::string title = rightAligned(both ? std::string_view(indexName) : std::string_view(), depthWidth);
    title.resize(std::max(title.size(), section.size()), ' ');
    for (std::size_t number = 0; number < context.outputColumns.size(); ++number)
        if (number + 1 < context.curveTable.size())
            title += rightAligned(context.curveTable[number + 1].mnem,
                                  static_cast<std::size_t>(context.outputColumns[number].width));
    return title;
}

}  // namespace

std::string writeDataTitle(PassContext& context) {
    const SessionTables& tables = context.tables();
    const bool isTrue = context.options.rules == FigureRules::trueFigures;
    const int columns = tables.filterInUse() ? static_cast<int>(context.curveTable.size()) - 1 : checkedColumns(tables);
    const bool plain = tables.checked(PrdRow::PlainAscii);
    if (!plain) decideWrap(context, columns);
    if (isTrue) settleTrueColumns(context);
    if (context.wrapPerLine > 0) context.wrapLines = (columns + context.wrapPerLine - 1) / context.wrapPerLine;
    if (plain) return {};

    const auto width = static_cast<std::size_t>(std::max<int>(0, context.format().dataWidth));
    const std::string indexName = context.headerCurveNames.empty() ? std::string() : context.headerCurveNames.front();
    const Table& ord = tables.ord;
    std::string section = std::string(trim(ord.text(OrdRow::Name, ord.columns() - 1))) + " ";
    // What an input's title says behind its name are that file's columns.
    if (isTrue) section.resize(section.find_first_of(" \t") + 1);
    std::string title =
        isTrue ? trueTitle(context, indexName, section) : rightAligned(indexName, width) + context.titleLine;
    HeaderText text;
    if (context.wrapPerLine > 0) {
        title = wrapTitle(title, isTrue ? context.depthWidth : context.format().dataWidth, "#");
        if (!title.empty()) title.front() = '#';
        text.line(title);
        text.line(section);
    } else {
        text.line(section.size() < title.size() ? section + title.substr(section.size()) : section);
    }
    return text.take();
}

void settleColumns(PassContext& context) {
    context.outputColumns = outputColumns(context);
    context.depthDivisor = depthDivisor(context);
    context.report.columns = static_cast<int>(context.outputColumns.size());
    context.depthWidth = context.format().dataWidth;
    if (!fixedLayout(context.tables())) return;
    const DepthPrinter depths(context);
    context.report.firstDepth = depths.text(context.grid.firstIndex);
    context.report.lastDepth = depths.text(context.grid.lastIndex);
}

namespace {

bool writeMatrix(PassContext& context, OutputFile& file) {
    RunState& run = context.app.run;
    run.statusText = "Writing ~Ascii section ...";
    const PassGrid& grid = context.grid;
    const RecordPrinter printer(context);
    std::vector<const double*> samples;
    for (const OutputColumn& column : context.outputColumns) samples.push_back(column.samples);
    const auto all = static_cast<std::size_t>(std::abs(std::int64_t{grid.lastIndex} - grid.firstIndex)) + 1;
    const std::size_t most = printedAtOnce(run.workers, printer.recordLength());
    const auto recordsOf = [&](std::size_t piece) { return std::min(most, all - piece * most); };
    OrderedWork<PrintedRecords> work(run.workers.count, (all + most - 1) / most,
                                     [&](std::size_t piece, PrintedRecords& to) {
                                         to.clear();
                                         const auto before = static_cast<std::int32_t>(piece * most);
                                         printer.print({samples}, grid.firstIndex + before * grid.direction,
                                                       static_cast<std::int32_t>(recordsOf(piece)), to);
                                     });
    for (std::size_t piece = 0; const PrintedRecords* printed = work.next(); ++piece) {
        file.write(printed->text());
        context.report.overflowCount += printed->overflows;
        context.report.records += static_cast<std::int32_t>(recordsOf(piece));
        run.progressFraction =
            static_cast<float>(static_cast<double>(context.report.records) / static_cast<double>(all));
        if (context.cancelled()) return false;
        if (!run.commandMode) context.app.user.pumpEvents();
    }
    return true;
}

}  // namespace

bool writeData(PassContext& context, OutputFile& file) {
    if (!(context.stream ? writeStream(context, file) : writeMatrix(context, file))) return false;
    context.app.run.progressFraction = 1;
    tellOverflow(context);
    return true;
}

bool writtenRecords(PassContext& context, std::vector<std::vector<double>>& columns) {
    const DepthPrinter printer(context);
    const std::int32_t count = context.grid.sampleCount;
    columns.clear();
    std::vector<double>& depths = columns.emplace_back();
    depths.reserve(static_cast<std::size_t>(count));
    std::string text(formatMaskCapacity(printer.decimals()) + 16, ' ');
    for (std::int32_t index = 1; index <= count; ++index)
        depths.push_back(val(std::string_view(text.data(), printer.print(text.data(), index))));
    for (const OutputColumn& column : context.outputColumns) {
        if (context.cancelled()) return false;
        columns.push_back(shownValues(column, count, static_cast<double>(context.nullValue)));
        context.app.user.pumpEvents();
    }
    return true;
}

}  // namespace welvane
