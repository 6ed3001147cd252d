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

void copyLink(PassContext& context, int channel, int slot) {
    const Table& outputs = context.tables().outputs();
    const int column = channel + 1;
    const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
    if (mnem.empty() || sameText(mnem, noneText)) return;
    const double place = context.session.columnBase(slot) + val(outputs.text(linkRow(slot, Link::Curve), column)) - 1;
    const std::int32_t inputColumn = roundToEven(std::trunc(place));
    std::int32_t first = linkSample(context, outputs.text(linkRow(slot, Link::From), column));
    std::int32_t last = linkSample(context, outputs.text(linkRow(slot, Link::To), column));
    if (first > last) std::swap(first, last);
    if (first == last) return;  // a single sample, or a range wholly outside on one side, gives nothing
    const std::span<const double> source = std::as_const(context.inputMatrix).column(inputColumn);
    const std::span<double> target = context.outputMatrix.column(channel);
    std::copy(source.begin() + (first - 1), source.begin() + last, target.begin() + (first - 1));
}

}  // namespace

void composeChannels(PassContext& context) {
    const int count = countOutputChannels(context.tables());
    context.outputMatrix = Matrix(count, context.grid.sampleCount);
    for (int channel = 0; channel < count; ++channel) {
        std::ranges::fill(context.outputMatrix.column(channel), static_cast<double>(context.nullValue));
        for (int slot = 0; slot < slotCount; ++slot)
            attempt(context.report.failures, "composing a channel", [&] { copyLink(context, channel, slot); });
    }
}

}  // namespace welvane
