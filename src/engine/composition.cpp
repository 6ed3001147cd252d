#include "engine/composition.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

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

/// What of an input's column goes into an output's.
struct LinkedSamples {
    int inputColumn = 0;
    std::int32_t first = 1, last = 0;  ///< samples, from 1; none where last lies before first

    bool any() const { return last >= first; }
    bool whole(const PassContext& context) const { return first == 1 && last == context.grid.sampleCount; }
    template <class Sample>
    std::span<Sample> of(std::span<Sample> column) const {
        return column.subspan(first - 1, last - first + 1);
    }
};

LinkedSamples readLink(const PassContext& context, int channel, int slot) {
    const Table& outputs = context.session.tables.outputs();
    const int column = channel + 1;
    const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
    if (mnem.empty() || sameText(mnem, noneText)) return {};
    const double place = context.session.columnBase(slot) + val(outputs.text(linkRow(slot, Link::Curve), column)) - 1;
    const std::int32_t inputColumn = roundToEven(std::trunc(place));
    const std::string &from = outputs.text(linkRow(slot, Link::From), column),
                      &to = outputs.text(linkRow(slot, Link::To), column);
    std::int32_t first = linkSample(context, from), last = linkSample(context, to);
    if (first > last) std::swap(first, last);
    // As laid down a single sample gives nothing, as a range wholly outside on one side does.
    if (first == last && (context.options.rules == FigureRules::asLaidDown || !reachesGrid(context, from, to)))
        return {};
    if (inputColumn < 0 || inputColumn >= std::max(1, context.session.columnBase(slotCount)))
        throw RunTimeFailure("subscript out of range");
    return {inputColumn, first, last};
}

using ChannelLinks = std::array<LinkedSamples, slotCount>;

std::vector<ChannelLinks> readLinks(PassContext& context, int count) {
    std::vector<ChannelLinks> links(static_cast<std::size_t>(count));
    for (int channel = 0; channel < count; ++channel)
        for (int slot = 0; slot < slotCount; ++slot)
            attempt(context.report.failures, "composing a channel",
                    [&] { links[channel][slot] = readLink(context, channel, slot); });
    return links;
}

void copyLinks(PassContext& context, int channel, const ChannelLinks& links) {
    const std::span<double> target = context.outputMatrix.column(channel);
    std::ranges::fill(target, context.nullValue);
    for (int slot = 0; slot < slotCount; ++slot) {
        const LinkedSamples& link = links[slot];
        if (!link.any()) continue;
        const std::span<const double> source = link.of(std::as_const(context.inputMatrix).column(link.inputColumn));
        if (context.options.rules == FigureRules::trueFigures)
            noteCovered(context, slot, context.tables().outputs().text(linkRow(slot, Link::Mnem), channel + 1), source,
                        link.of(target));
        std::ranges::copy(source, link.of(target).begin());
    }
}

}  // namespace

int countOutputChannels(const SessionTables& tables) {
    int count = 0;
    for (int column = 1; column < tables.outputs().columns(); ++column)
        if (!tables.output(SrdRow::Mnem, column).empty()) ++count;
    return count;
}

std::optional<std::vector<std::optional<int>>> wholeLinks(const PassContext& context) {
    std::vector<std::optional<int>> sources;
    try {
        for (int channel = 0; channel < countOutputChannels(context.session.tables); ++channel) {
            std::optional<int>& source = sources.emplace_back();
            for (int slot = 0; slot < slotCount; ++slot) {
                const LinkedSamples link = readLink(context, channel, slot);
                if (!link.any()) continue;
                if (source || !link.whole(context)) return std::nullopt;
                source = link.inputColumn;
            }
        }
    } catch (const RunTimeFailure&) {
        return std::nullopt;
    }
    return sources;
}

void composeChannels(PassContext& context) {
    const int count = countOutputChannels(context.tables());
    context.outputMatrix = Matrix(count, context.grid.sampleCount);
    const std::vector<ChannelLinks> all = readLinks(context, count);
    std::vector<int> uses(static_cast<std::size_t>(context.inputMatrix.columns()));
    for (const ChannelLinks& links : all)
        for (const LinkedSamples& link : links) uses[link.inputColumn] += link.any() ? 1 : 0;
    for (int channel = 0; channel < count; ++channel) {
        const ChannelLinks& links = all[channel];
        const auto one = std::ranges::find_if(links, &LinkedSamples::any);
        const bool single = std::ranges::count_if(links, &LinkedSamples::any) == 1;
        // The one column that a channel takes whole, and nobody else has, needs no copy: nobody reads the inputs
        // after this.
        if (single && one->whole(context) && uses[one->inputColumn] == 1)
            context.outputMatrix.takeOver(channel, context.inputMatrix.column(one->inputColumn));
        else
            copyLinks(context, channel, links);
    }
}

}  // namespace welvane
