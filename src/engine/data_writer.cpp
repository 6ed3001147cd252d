#include "engine/data_writer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "engine/layout.h"
#include "engine/true_columns.h"
#include "las/header_text.h"
#include "las/index_unit.h"
#include "las/wrap.h"
#include "session/tvd.h"
#include "shared/numbers.h"
#include "shared/numbers_fast.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The longest record that stands on one line in a file without wrapping.
constexpr int longestRecord = 254;

/// Columns up to this width are blanked at once.
constexpr std::size_t shortWidth = 16;
/// Bytes behind a column that printing its value may write over: it is followed by the next column, or by a line end.
constexpr std::size_t spill = shortWidth + 8;

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

/// The depths as they are written.
class DepthPrinter {
  public:
    explicit DepthPrinter(PassContext& context)
        : context_(context),
          decimals_(context.format().dataDecimals),
          cut_(context.grid.stepDecimals),
          toTvd_(context.session.inclinometry, 0) {
        if (context.options.rules == FigureRules::asLaidDown) return;
        // Depths that become others (in another unit, or vertical) take all decimals there are, and one more where a
        // unit is smaller than the other.
        const bool others = context.depthDivisor != 1 || context.applyTvd;
        if (others) cut_ = std::max(decimals_, context.depthDivisor > 1 ? cut_ + 1 : cut_);
        decimals_ = std::max(decimals_, cut_);
    }
    int decimals() const { return decimals_; }

    double depth(std::int32_t index) const {
        const PassGrid& grid = context_.grid;
        double depth = (index - 1) * grid.step + grid.start + grid.depthOffset;
        if (context_.applyTvd) {
            const double factor = static_cast<double>(context_.tvdUnitFactor);
            depth = factor == 1 ? toTvd_(depth) : toTvd_(depth / factor) * factor;
        }
        return depth / context_.depthDivisor;
    }

    /// The depth cut to the step's precision and shown at the data's decimals; its length. `target` holds
    /// formatMaskCapacity characters and 16 more.
    std::size_t print(char* target, std::int32_t index) const {
        const double value = depth(index);
        if (cut_ >= decimals_)
            return formatMaskFast(target, cut_ == decimals_ ? value : val(formatMask(value, cut_)), decimals_);
        std::size_t length = formatMaskFast(target, value, cut_);
        if (cut_ == 0) target[length++] = '.';
        std::memset(target + length, '0', static_cast<std::size_t>(decimals_ - cut_));
        return length + static_cast<std::size_t>(decimals_ - cut_);
    }
    std::string text(std::int32_t index) const {
        std::string text(formatMaskCapacity(decimals_) + 16, ' ');
        text.resize(print(text.data(), index));
        return text;
    }

  private:
    const PassContext& context_;
    int decimals_, cut_;  ///< shown, and those of them that are figures
    DepthMapper toTvd_;
};

/// Prints depths and values of one pass.
class RecordPrinter {
  public:
    RecordPrinter(PassContext& context, OutputFile& file)
        : context_(context),
          file_(file),
          columns_(context.outputColumns),
          depths_(context),
          depthWidth_(static_cast<std::size_t>(std::max(0, context.depthWidth))),
          decimals_(depths_.decimals()),
          null_(context.nullValue),
          overflow_(overflowText(context.format().dataWidth, context.format().dataDecimals)) {
        length_ = depthWidth_;
        for (const OutputColumn& column : columns_) {
            widths_.push_back(static_cast<std::size_t>(std::max(0, column.width)));
            nullTexts_.push_back(nullText(context, column.decimals));
            length_ += widths_.back();
            decimals_ = std::max(decimals_, column.decimals);
        }
        scratch_.resize(formatMaskCapacity(decimals_) + 16);
    }

    bool fixed() {
        return eachRecord([this](std::int32_t index) { printFixed(index); });
    }
    bool delimited(char delimiter) {
        return eachRecord([this, delimiter](std::int32_t index) { printDelimited(index, delimiter); });
    }

  private:
    PassContext& context_;
    OutputFile& file_;
    const std::vector<OutputColumn>& columns_;
    DepthPrinter depths_;
    std::size_t depthWidth_, length_ = 0;  ///< of the index column and of a record, in characters
    int decimals_;                         ///< the most of any column
    double null_;
    std::vector<std::size_t> widths_;     ///< by column
    std::vector<std::string> nullTexts_;  ///< by column
    std::string overflow_;
    std::string scratch_, record_;

    template <class Print>
    bool eachRecord(Print print) {
        const PassGrid& grid = context_.grid;
        RunState& run = context_.app.run;
        const double range = std::max(1, std::abs(grid.lastIndex - grid.firstIndex));
        for (std::int32_t index = grid.firstIndex;; index += grid.direction) {
            print(index);
            ++context_.report.records;
            run.progressFraction = static_cast<float>(std::abs(index - grid.firstIndex) / range);
            if (context_.cancelled()) return false;
            if (!run.commandMode) context_.app.user.pumpEvents();
            if (index == grid.lastIndex) return true;
        }
    }

    static void putRight(char* column, std::size_t width, const char* text, std::size_t length) {
        const std::size_t kept = std::min(length, width);
        std::memset(column, ' ', width - kept);
        std::memcpy(column + width - kept, text + (length - kept), kept);
    }

    /// A value right-aligned in its column; one that would leave no blank becomes the overflow text. Up to `spill`
    /// bytes behind the column are written over.
    void putValue(char* place, std::size_t number, std::int32_t index) {
        const OutputColumn& column = columns_[number];
        const std::size_t width = widths_[number];
        const double sample = column.samples[index - 1];
        if (sample == null_) {
            putText(place, width, nullTexts_[number].data(), nullTexts_[number].size());
            return;
        }
        const double value = column.scale == 1.0 ? sample : column.scale * sample;
        detail::FixedText text;
        if (!detail::splitFixed(value, column.decimals, text)) {
            putText(place, width, scratch_.data(), detail::formatMaskGeneral(scratch_.data(), value, column.decimals));
            return;
        }
        const auto length = static_cast<std::size_t>(text.length(column.decimals));
        if (length >= width) {
            putOverflow(place, width);
            return;
        }
        // So many blanks of one size take no call.
        std::memset(place, ' ', shortWidth);
        if (width > shortWidth) std::memset(place, ' ', width - length);
        detail::writeFixed(place + width - length, text, column.decimals);
    }

    void putText(char* column, std::size_t width, const char* text, std::size_t length) {
        if (length >= width)
            putOverflow(column, width);
        else
            putRight(column, width, text, length);
    }

    void putOverflow(char* column, std::size_t width) {
        std::memcpy(column, overflow_.data(), std::min(width, overflow_.size()));
        ++context_.report.overflowCount;
    }

    void printFixed(std::int32_t index) {
        const std::size_t length = length_;
        const bool wrapped = context_.wrapPerLine > 0;
        if (wrapped) record_.resize(length + spill);
        char* const record = wrapped ? record_.data() : file_.reserve(length + spill);
        const std::size_t depthLength = depths_.print(scratch_.data(), index);
        putRight(record, depthWidth_, scratch_.data(), depthLength);
        char* place = record + depthWidth_;
        for (std::size_t number = 0; number < columns_.size(); place += widths_[number++])
            putValue(place, number, index);
        if (wrapped) {
            eachWrappedLine(std::string_view(record_).substr(0, length), depthWidth_,
                            static_cast<std::size_t>(context_.wrapPerLine), context_.wrapLines,
                            [this](std::string_view line) { file_.writeLine(line); });
            return;
        }
        record[length] = '\r';
        record[length + 1] = '\n';
        file_.advance(length + 2);
    }

    void printDelimited(std::int32_t index, char delimiter) {
        const std::size_t cell = formatMaskCapacity(decimals_) + 16;
        record_.resize((columns_.size() + 1) * (cell + 1));
        std::size_t length = context_.options.rules == FigureRules::trueFigures
                                 ? depths_.print(record_.data(), index)
                                 : formatMaskFast(record_.data(), depths_.depth(index), decimals_);
        for (std::size_t number = 0; number < columns_.size(); ++number) {
            record_[length++] = delimiter;
            const double value = columns_[number].samples[index - 1];
            if (value == null_) {
                std::memcpy(record_.data() + length, nullTexts_[number].data(), nullTexts_[number].size());
                length += nullTexts_[number].size();
            } else {
                length +=
                    formatMaskFast(record_.data() + length, columns_[number].scale * value, columns_[number].decimals);
            }
        }
        file_.writeLine(std::string_view(record_).substr(0, length));
    }
};

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

/// Columns of one width; otherwise a delimiter stands between the values.
bool fixedLayout(const SessionTables& tables) {
    return !tables.checked(PrdRow::PlainAscii) ||
           decode<Separator>(tables.secondOption(PrdRow::PlainAscii)) == Separator::Space;
}

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

bool writeData(PassContext& context, OutputFile& file) {
    context.app.run.statusText = "Writing ~Ascii section ...";
    const SessionTables& tables = context.tables();
    RecordPrinter printer(context, file);
    const auto separator = decode<Separator>(tables.secondOption(PrdRow::PlainAscii)).value_or(Separator::Space);
    if (!(fixedLayout(tables) ? printer.fixed() : printer.delimited(delimiterOf(separator)))) return false;
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
