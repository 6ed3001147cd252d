#include "engine/composition.h"

#include <algorithm>
#include <cmath>

#include "engine/grid.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The sample (from 1) that a link's From or To text falls on, held inside the grid.
std::int32_t linkSample(const PassContext& context, const std::string& text) {
    const std::int32_t sample = roundToEven((val(text) - context.grid.start) / context.grid.step + 1);
    return std::clamp(sample, 1, context.grid.sampleCount);
}

/// True when the depths from one text to the other share one with the grid.
bool reachesGrid(const PassContext& context, const std::string& from, const std::string& to) {
    const auto [top, bottom] = std::minmax({val(from), val(to)});
    const double slack = context.grid.step / 2;
    return top <= context.grid.stop + slack && bottom >= context.grid.start - slack;
}

/// In an overlap the later input stands, its nulls too: figures that go by that are told.
void noteCovered(PassContext& context, int slot, const std::string& mnem, std::span<const double> later,
                 std::span<const double> earlier) {
    std::size_t count = 0;
    for (std::size_t index = 0; index < later.size(); ++index)
        count += later[index] == context.nullValue && earlier[index] != context.nullValue ? 1 : 0;
    if (count == 0) return;
    context.report.notes.push_back({.kind = NoteKind::Nulls,
                                    .file = context.session.slots[slot].path,
                                    .channel = mnem,
                                    .count = count,
                                    .text = "nulls stand over figures of an earlier input (--link names its depths)"});
}

void copyLink(PassContext& context, int channel, int slot) {
    const Table& outputs = context.tables().outputs();
    const int column = channel + 1;
    const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
    if (mnem.empty() || sameText(mnem, noneText)) return;
    const double place = context.session.columnBase(slot) + val(outputs.text(linkRow(slot, Link::Curve), column)) - 1;
    const std::int32_t inputColumn = roundToEven(std::trunc(place));
    const std::string &from = outputs.text(linkRow(slot, Link::From), column),
                      &to = outputs.text(linkRow(slot, Link::To), column);
    std::int32_t first = linkSample(context, from), last = linkSample(context, to);
    if (first > last) std::swap(first, last);
    // As laid down a single sample gives nothing, as a range wholly outside on one side does.
    if (first == last && (context.options.rules == FigureRules::asLaidDown || !reachesGrid(context, from, to))) return;
    const std::span<const double> source = std::as_const(context.inputMatrix).column(inputColumn);
    const std::span<double> target = context.outputMatrix.column(channel);
    if (context.options.rules == FigureRules::trueFigures)
        noteCovered(context, slot, mnem, source.subspan(first - 1, last - first + 1),
                    target.subspan(first - 1, last - first + 1));
    std::copy(source.begin() + (first - 1), source.begin() + last, target.begin() + (first - 1));
}

}  // namespace

void composeChannels(PassContext& context) {
    const int count = countOutputChannels(context.tables());
    context.outputMatrix = Matrix(count, context.grid.sampleCount);
    for (int channel = 0; channel < count; ++channel) {
        std::ranges::fill(context.outputMatrix.column(channel), context.nullValue);
        for (int slot = 0; slot < slotCount; ++slot)
            attempt(context.report.failures, "composing a channel", [&] { copyLink(context, channel, slot); });
    }
}

}  // namespace welvane
