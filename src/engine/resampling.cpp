#include "engine/resampling.h"

#include <algorithm>
#include <cmath>

#include "engine/null_fill.h"
#include "shared/files.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

/// First and last sample (from 1) that a channel's clip limits leave.
struct SampleRange {
    std::int64_t first = 1, last = 0;
};

SampleRange clipRange(const PassContext& context, const SlotChannel& channel) {
    const PassGrid& grid = context.grid;
    SampleRange range;
    range.last = context.inputMatrix.samples();
    const auto sampleOf = [&grid](float depth) {
        return std::abs(static_cast<std::int64_t>(roundToEven((static_cast<double>(depth) - grid.start) / grid.step))) +
               1;
    };
    if (channel.channelTop != 0) range.first = sampleOf(channel.channelTop);
    if (channel.channelBottom != 0) range.last = sampleOf(channel.channelBottom);
    return range;
}

void clip(PassContext& context, const SlotChannel& channel) {
    if (channel.channelTop == 0 && channel.channelBottom == 0) return;
    const SampleRange range = clipRange(context, channel);
    const std::span<double> samples = context.inputMatrix.column(channel.channelDataColumn);
    const auto count = static_cast<std::int64_t>(samples.size());
    const std::int64_t end =
        static_cast<std::int64_t>(floorToInt32((context.grid.stop - context.grid.start) / context.grid.step)) + 1;
    // Kept: the clipped samples become 0, not null, and print as 0.
    std::fill(samples.begin(), samples.begin() + std::clamp<std::int64_t>(range.first - 1, 0, count), 0.0);
    const std::int64_t from = std::clamp<std::int64_t>(range.last, 0, count);
    std::fill(samples.begin() + from, samples.begin() + std::clamp<std::int64_t>(end, from, count), 0.0);
}

/// Sample i (from 1) of a column; a failure outside it.
double& sampleAt(std::span<double> samples, std::int64_t index) {
    if (index < 1 || index > static_cast<std::int64_t>(samples.size())) throw RunTimeFailure("subscript out of range");
    return samples[index - 1];
}

void shift(PassContext& context, const SlotChannel& channel) {
    if (channel.channelOffset == 0) return;
    const SampleRange range = clipRange(context, channel);
    const std::span<double> samples = context.inputMatrix.column(channel.channelDataColumn);
    // Kept: floor makes the two signs differ, 2.5 steps move 2 samples and -2.5 steps move 3.
    const std::int64_t moved =
        std::abs(static_cast<std::int64_t>(floorToInt32(channel.channelOffset / context.grid.step)));
    const std::int64_t first = range.first;
    const std::int64_t last = range.last;
    if (channel.channelOffset >= 0) {
        for (std::int64_t i = last - moved; i >= first; --i) sampleAt(samples, i + moved) = sampleAt(samples, i);
        for (std::int64_t i = first + moved - 1; i >= first; --i)
            sampleAt(samples, i) = sampleAt(samples, first + moved);
    } else {
        for (std::int64_t i = first; i <= last - moved; ++i) sampleAt(samples, i) = sampleAt(samples, i + moved);
        for (std::int64_t i = last - moved + 1; i <= last; ++i) sampleAt(samples, i) = sampleAt(samples, last - moved);
    }
}

}  // namespace

bool checkSampleRate(PassContext& context, const InputSlot& slot, int firstColumn, int lastColumn) {
    if (slot.step == 0) {
        const std::string text = fileNameOf(slot.path) +
                                 " has a non-constant sample rate. Do you want to linearly fill any possible NULL gaps "
                                 "between non-null data "
                                 "(using the specified Null Fill technique), " +
                                 formatMask(context.grid.step, 4) +
                                 " (Yes), or leave discrete values, moved to closest sample depth? (No)";
        if (context.app.user.ask({"Fill in Samples?", text, Buttons::YesNo, Icon::Question, Answer::No}) ==
            Answer::Yes) {
            context.nullFillMode = NullFill::Linear;
            applyNullFill(context, context.nullFillMode, firstColumn, lastColumn);
        }
        return true;
    }
    if (std::abs(slot.step) > std::abs(context.grid.step)) {
        context.nullFillMode = NullFill::Linear;
        applyNullFill(context, context.nullFillMode, firstColumn, lastColumn);
        return true;
    }
    return false;
}

void clipChannels(PassContext& context, const SlotChannels& channels) {
    context.app.run.statusText = "Null filling as required...";
    for (const SlotChannel& channel : channels)
        if (channel.spliced) attempt(context.report.failures, "clip", [&] { clip(context, channel); });
}

void offsetChannels(PassContext& context, const SlotChannels& channels) {
    context.app.run.statusText = "Depth Offseting selected curves...";
    for (const SlotChannel& channel : channels)
        if (channel.spliced) attempt(context.report.failures, "depth offset", [&] { shift(context, channel); });
}

}  // namespace welvane
