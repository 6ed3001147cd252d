#include "engine/record_printer.h"

#include <algorithm>
#include <cstring>

#include "engine/layout.h"
#include "engine/true_columns.h"
#include "shared/numbers.h"
#include "shared/numbers_fast.h"

namespace welvane {

namespace {

/// Columns up to this width are blanked at once.
constexpr std::size_t shortWidth = 16;
/// Bytes behind a column that printing its value may write over: it is followed by the next column, or by a line end.
constexpr std::size_t spill = shortWidth + 8;

void putRight(char* column, std::size_t width, std::string_view text) {
    const std::size_t kept = std::min(text.size(), width);
    std::memset(column, ' ', width - kept);
    std::memcpy(column + width - kept, text.data() + (text.size() - kept), kept);
}

}  // namespace

bool fixedLayout(const SessionTables& tables) {
    return !tables.checked(PrdRow::PlainAscii) ||
           decode<Separator>(tables.secondOption(PrdRow::PlainAscii)) == Separator::Space;
}

DepthPrinter::DepthPrinter(const PassContext& context)
    : context_(context),
      decimals_(context.app.settings.format.dataDecimals),
      cut_(context.grid.stepDecimals),
      toTvd_(context.session.inclinometry, 0) {
    if (context.options.rules == FigureRules::asLaidDown) return;
    // Depths that become others (in another unit, or vertical) take all decimals there are, and one more where a unit
    // is smaller than the other.
    const bool others = context.depthDivisor != 1 || context.applyTvd;
    if (others) cut_ = std::max(decimals_, context.depthDivisor > 1 ? cut_ + 1 : cut_);
    decimals_ = std::max(decimals_, cut_);
}

double DepthPrinter::depth(std::int32_t index) const {
    const PassGrid& grid = context_.grid;
    double depth = (index - 1) * grid.step + grid.start + grid.depthOffset;
    if (context_.applyTvd) {
        const double factor = static_cast<double>(context_.tvdUnitFactor);
        depth = factor == 1 ? toTvd_(depth) : toTvd_(depth / factor) * factor;
    }
    return depth / context_.depthDivisor;
}

std::size_t DepthPrinter::print(char* target, std::int32_t index) const {
    const double value = depth(index);
    if (cut_ >= decimals_)
        return formatMaskFast(target, cut_ == decimals_ ? value : val(formatMask(value, cut_)), decimals_);
    std::size_t length = formatMaskFast(target, value, cut_);
    if (cut_ == 0) target[length++] = '.';
    std::memset(target + length, '0', static_cast<std::size_t>(decimals_ - cut_));
    return length + static_cast<std::size_t>(decimals_ - cut_);
}

std::string DepthPrinter::text(std::int32_t index) const {
    std::string text(formatMaskCapacity(decimals_) + 16, ' ');
    text.resize(print(text.data(), index));
    return text;
}

void PrintedRecords::clear() {
    used_ = 0;
    overflows = 0;
}

char* PrintedRecords::reserve(std::size_t size) {
    if (capacity_ - used_ < size) {
        const std::size_t capacity = std::max(2 * capacity_, used_ + size);
        auto larger = std::make_unique_for_overwrite<char[]>(capacity);
        if (used_ > 0) std::memcpy(larger.get(), text_.get(), used_);
        text_ = std::move(larger);
        capacity_ = capacity;
    }
    return text_.get() + used_;
}

void PrintedRecords::writeLine(std::string_view line) {
    char* const room = reserve(line.size() + 2);
    std::memcpy(room, line.data(), line.size());
    room[line.size()] = '\r';
    room[line.size() + 1] = '\n';
    advance(line.size() + 2);
}

RecordPrinter::RecordPrinter(const PassContext& context)
    : context_(context),
      columns_(context.outputColumns),
      depths_(context),
      fixed_(fixedLayout(context.session.tables)),
      delimiter_(delimiterOf(
          decode<Separator>(context.session.tables.secondOption(PrdRow::PlainAscii)).value_or(Separator::Space))),
      depthWidth_(static_cast<std::size_t>(std::max(0, context.depthWidth))),
      decimals_(depths_.decimals()),
      null_(context.nullValue),
      overflow_(overflowText(context.app.settings.format.dataWidth, context.app.settings.format.dataDecimals)) {
    length_ = depthWidth_;
    for (const OutputColumn& column : columns_) {
        widths_.push_back(static_cast<std::size_t>(std::max(0, column.width)));
        nullTexts_.push_back(nullText(context, column.decimals));
        length_ += widths_.back();
        decimals_ = std::max(decimals_, column.decimals);
    }
}

void RecordPrinter::print(const PrintedSamples& samples, std::int32_t begin, std::int32_t count,
                          PrintedRecords& to) const {
    to.scratch.resize(formatMaskCapacity(decimals_) + 16);
    for (std::int32_t index = begin; count > 0; --count, index += context_.grid.direction) {
        if (fixed_)
            printFixed(samples, index, to);
        else
            printDelimited(samples, index, to);
    }
}

/// A value right-aligned in its column; one that would leave no blank becomes the overflow text. Up to `spill` bytes
/// behind the column are written over.
inline void RecordPrinter::putValue(char* place, std::size_t number, double sample, PrintedRecords& to) const {
    const OutputColumn& column = columns_[number];
    const std::size_t width = widths_[number];
    if (sample == null_) {
        putText(place, width, nullTexts_[number], to);
        return;
    }
    const double value = column.scale == 1.0 ? sample : column.scale * sample;
    detail::FixedText text;
    if (!detail::splitFixed(value, column.decimals, text)) {
        const std::size_t length = detail::formatMaskGeneral(to.scratch.data(), value, column.decimals);
        putText(place, width, {to.scratch.data(), length}, to);
        return;
    }
    const auto length = static_cast<std::size_t>(text.length(column.decimals));
    if (length >= width) {
        putOverflow(place, width, to);
        return;
    }
    // So many blanks of one size take no call.
    std::memset(place, ' ', shortWidth);
    if (width > shortWidth) std::memset(place, ' ', width - length);
    detail::writeFixed(place + width - length, text, column.decimals);
}

void RecordPrinter::putText(char* column, std::size_t width, std::string_view text, PrintedRecords& to) const {
    if (text.size() >= width)
        putOverflow(column, width, to);
    else
        putRight(column, width, text);
}

void RecordPrinter::putOverflow(char* column, std::size_t width, PrintedRecords& to) const {
    std::memcpy(column, overflow_.data(), std::min(width, overflow_.size()));
    ++to.overflows;
}

void RecordPrinter::printFixed(const PrintedSamples& samples, std::int32_t index, PrintedRecords& to) const {
    const std::size_t length = length_;
    const bool wrapped = context_.wrapPerLine > 0;
    if (wrapped) to.wrapped.resize(length + spill);
    char* const record = wrapped ? to.wrapped.data() : to.reserve(length + spill);
    putRight(record, depthWidth_, {to.scratch.data(), depths_.print(to.scratch.data(), index)});
    char* place = record + depthWidth_;
    for (std::size_t number = 0; number < columns_.size(); place += widths_[number++])
        putValue(place, number, samples.columns[number][index - samples.first], to);
    if (wrapped) {
        eachWrappedLine(std::string_view(to.wrapped).substr(0, length), depthWidth_,
                        static_cast<std::size_t>(context_.wrapPerLine), context_.wrapLines,
                        [&to](std::string_view line) { to.writeLine(line); });
        return;
    }
    record[length] = '\r';
    record[length + 1] = '\n';
    to.advance(length + 2);
}

void RecordPrinter::printDelimited(const PrintedSamples& samples, std::int32_t index, PrintedRecords& to) const {
    const std::size_t cell = formatMaskCapacity(decimals_) + 16;
    char* const record = to.reserve((columns_.size() + 1) * (cell + 1) + 2);
    std::size_t length = context_.options.rules == FigureRules::trueFigures
                             ? depths_.print(record, index)
                             : formatMaskFast(record, depths_.depth(index), decimals_);
    for (std::size_t number = 0; number < columns_.size(); ++number) {
        record[length++] = delimiter_;
        const double value = samples.columns[number][index - samples.first];
        if (value == null_) {
            length += nullTexts_[number].copy(record + length, nullTexts_[number].size());
        } else {
            length += formatMaskFast(record + length, columns_[number].scale * value, columns_[number].decimals);
        }
    }
    record[length++] = '\r';
    record[length++] = '\n';
    to.advance(length);
}

}  // namespace welvane
