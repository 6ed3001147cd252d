#include "engine/data_writer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "engine/layout.h"
#include "session/tvd.h"
#include "shared/numbers.h"
#include "shared/numbers_fast.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The longest record that stands on one line in a file without wrapping.
constexpr int longestRecord = 254;
constexpr int wrapLineLength = 78;

/// One written column.
struct OutputColumn {
    const double* samples;  ///< sample i at index i - 1
    double scale;           ///< a single's value
};

float unitScale(const PassContext& context, std::string_view wanted, std::string_view input) {
    return toSingle(unitFactor(context.app.reference, wanted) / unitFactor(context.app.reference, input));
}

std::vector<OutputColumn> outputColumns(PassContext& context) {
    const SessionTables& tables = context.tables();
    std::vector<OutputColumn> columns;
    for (int column = 1; column < tables.outputs().columns(); ++column) {
        if (!tables.outputs().checked(static_cast<int>(SrdRow::Use), column) ||
            tables.output(SrdRow::Mnem, column).empty())
            continue;
        attempt(context.report.failures, "output column", [&] {
            float scale = 1.0F;
            const std::string_view wanted = trim(tables.output(SrdRow::Unit, column));
            const std::string_view input = trim(tables.output(SrdRow::InputUnit, column));
            if (sameText(tables.output(SrdRow::Function, column), "<none>") && !sameText(wanted, input))
                scale = unitScale(context, wanted, input);
            columns.push_back({context.outputMatrix.column(column - 1).data(), static_cast<double>(scale)});
        });
    }
    return columns;
}

/// What depths are divided by on their way into the wanted unit.
double depthDivisor(PassContext& context) {
    if (context.curveTable.empty()) return 1;
    const std::string& pair = context.curveTable.front().unit;
    const std::size_t mark = pair.find('^');
    if (mark == npos) return 1;
    const std::string input = pair.substr(0, mark), wanted = pair.substr(mark + 1);
    if (sameText(input, wanted)) return 1;
    const ReferenceTables& reference = context.app.reference;
    if (context.options.exactDepthUnit) return unitFactor(reference, input) / unitFactor(reference, wanted);
    double divisor = 1;
    attempt(context.report.failures, "depth unit",
            [&] { divisor = static_cast<double>(1.0F / unitScale(context, wanted, input)); });
    return divisor;
}

/// Prints depths and values of one pass.
class RecordPrinter {
  public:
    RecordPrinter(PassContext& context, OutputFile& file)
        : context_(context),
          file_(file),
          columns_(outputColumns(context)),
          divisor_(depthDivisor(context)),
          width_(static_cast<std::size_t>(std::max<int>(0, context.format().dataWidth))),
          decimals_(context.format().dataDecimals),
          null_(static_cast<double>(context.nullValue)),
          nullText_(formatMask(null_, decimals_)),
          overflow_(overflowText(context.format().dataWidth, decimals_)),
          toTvd_(context.session.inclinometry, 0) {
        context.depthDivisor = divisor_;
        context.report.columns = static_cast<int>(columns_.size());
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
    std::vector<OutputColumn> columns_;
    double divisor_;
    std::size_t width_;
    int decimals_;
    double null_;
    std::string nullText_, overflow_;
    DepthMapper toTvd_;
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

    double writtenDepth(std::int32_t index) const {
        const PassGrid& grid = context_.grid;
        double depth = (index - 1) * grid.step + grid.start + grid.depthOffset;
        if (context_.applyTvd) {
            const double factor = static_cast<double>(context_.tvdUnitFactor);
            depth = factor == 1 ? toTvd_(depth) : toTvd_(depth / factor) * factor;
        }
        return depth / divisor_;
    }

    /// The depth cut to the step's precision and shown at the data's decimals, in scratch_; its length.
    std::size_t formatDepth(std::int32_t index) {
        const double depth = writtenDepth(index);
        const bool carriedThrough = context_.options.exactDepthUnit && divisor_ != 1;
        const int cut = carriedThrough ? decimals_ : context_.grid.stepDecimals;
        if (cut >= decimals_)
            return formatMaskFast(scratch_.data(), cut == decimals_ ? depth : val(formatMask(depth, cut)), decimals_);
        std::size_t length = formatMaskFast(scratch_.data(), depth, cut);
        if (cut == 0) scratch_[length++] = '.';
        std::memset(scratch_.data() + length, '0', static_cast<std::size_t>(decimals_ - cut));
        return length + static_cast<std::size_t>(decimals_ - cut);
    }

    void keepDepth(std::size_t length) {
        std::string& last = context_.report.lastDepth;
        last.assign(scratch_.data(), length);
        if (context_.report.records == 0) context_.report.firstDepth = last;
    }

    static void putRight(char* column, std::size_t width, const char* text, std::size_t length) {
        const std::size_t kept = std::min(length, width);
        std::memset(column, ' ', width - kept);
        std::memcpy(column + width - kept, text + (length - kept), kept);
    }

    /// A value right-aligned in `width_` characters; one that would leave no blank becomes the overflow text.
    void putValue(char* column, double value, double scale) {
        if (value == null_) {
            putText(column, nullText_.data(), nullText_.size());
            return;
        }
        const std::size_t length = formatMaskFast(scratch_.data(), scale == 1.0 ? value : scale * value, decimals_);
        putText(column, scratch_.data(), length);
    }

    void putText(char* column, const char* text, std::size_t length) {
        if (length >= width_) {
            std::memcpy(column, overflow_.data(), width_);
            ++context_.report.overflowCount;
            return;
        }
        putRight(column, width_, text, length);
    }

    void printFixed(std::int32_t index) {
        const std::size_t length = (columns_.size() + 1) * width_;
        const bool wrapped = context_.wrapPerLine > 0;
        if (wrapped) record_.resize(length);
        char* const record = wrapped ? record_.data() : file_.reserve(length + 2);
        const std::size_t depthLength = formatDepth(index);
        keepDepth(depthLength);
        putRight(record, width_, scratch_.data(), depthLength);
        char* place = record;
        for (const OutputColumn& column : columns_) putValue(place += width_, column.samples[index - 1], column.scale);
        if (wrapped) {
            eachWrappedLine(record_, width_, static_cast<std::size_t>(context_.wrapPerLine), context_.wrapLines,
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
        std::size_t length = formatMaskFast(record_.data(), writtenDepth(index), decimals_);
        for (const OutputColumn& column : columns_) {
            record_[length++] = delimiter;
            const double value = column.samples[index - 1];
            if (value == null_) {
                std::memcpy(record_.data() + length, nullText_.data(), nullText_.size());
                length += nullText_.size();
            } else {
                length += formatMaskFast(record_.data() + length, column.scale * value, decimals_);
            }
        }
        file_.writeLine(std::string_view(record_).substr(0, length));
    }
};

int checkedColumns(const SessionTables& tables) {
    int count = 0;
    for (int column = 1; column < tables.outputs().columns(); ++column)
        if (tables.outputs().checked(static_cast<int>(SrdRow::Use), column)) ++count;
    return count;
}

void decideWrap(PassContext& context, int columns) {
    SessionTables& tables = context.tables();
    std::string& wrap = tables.setting(PrdRow::Wrap);
    const int width = context.format().dataWidth;
    const bool tooWide = (columns + 1) * width > longestRecord;
    if (context.app.run.commandMode) {
        if (!tables.filterInUse() && tooWide && sameText(wrap, "No")) {
            wrap = "Yes";
            context.wrapPerLine = static_cast<std::int16_t>(wrapLineLength / width);
        }
        return;
    }
    if (!sameText(wrap, "Yes") || tooWide) return;
    const std::string text =
        "The LAS file does not need to be in WRAP=YES mode for the number of requested channels (" +
        std::to_string(columns) + "), at the set width(" + std::to_string(width) +
        "). Are you sure you want WRAP set to YES?";
    if (context.app.user.ask({"WRAP Yes Mode Un-Necessary!", text, Buttons::YesNo, Icon::Question, Answer::Yes}) !=
        Answer::No)
        return;
    wrap = "No";
    context.wrapPerLine = 0;
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

}  // namespace

void writeDataTitle(PassContext& context, OutputFile& file) {
    const SessionTables& tables = context.tables();
    const int columns = tables.filterInUse() ? static_cast<int>(context.curveTable.size()) - 1 : checkedColumns(tables);
    if (tables.checked(PrdRow::PlainAscii)) {
        if (context.wrapPerLine > 0) context.wrapLines = (columns + context.wrapPerLine - 1) / context.wrapPerLine;
        return;
    }
    decideWrap(context, columns);
    if (context.wrapPerLine > 0) context.wrapLines = (columns + context.wrapPerLine - 1) / context.wrapPerLine;

    const auto width = static_cast<std::size_t>(std::max<int>(0, context.format().dataWidth));
    const std::string indexName = context.headerCurveNames.empty() ? std::string() : context.headerCurveNames.front();
    std::string title = rightAligned(indexName, width) + context.titleLine;
    const Table& ord = tables.ord;
    const std::string section = std::string(trim(ord.text(static_cast<int>(OrdRow::Name), ord.columns() - 1))) + " ";
    if (context.wrapPerLine > 0) {
        title = wrapTitle(title, context.format().dataWidth, "#");
        if (!title.empty()) title.front() = '#';
        file.writeLine(title);
        file.writeLine(section);
        return;
    }
    file.writeLine(section.size() < title.size() ? section + title.substr(section.size()) : section);
}

bool writeData(PassContext& context, OutputFile& file) {
    context.app.run.statusText = "Writing ~Ascii section ...";
    SessionTables& tables = context.tables();
    RecordPrinter printer(context, file);
    const bool plain = tables.checked(PrdRow::PlainAscii);
    const bool fixed = !plain || sameText(tables.secondOption(PrdRow::PlainAscii), "Space");
    if (!(fixed ? printer.fixed() : printer.delimited(delimiterOf(tables.secondOption(PrdRow::PlainAscii)))))
        return false;
    context.app.run.progressFraction = 1;
    tellOverflow(context);
    return true;
}

}  // namespace welvane
