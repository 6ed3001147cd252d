#include "engine/true_columns.h"

#include <algorithm>
#include <cmath>

#include "las/depth_spacing.h"
#include "las/input_data.h"
#include "las/wrap.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The most decimals that a column is written with where nobody says how many: room for 1E-30 with ten figures.
constexpr int mostDecimals = 40;

/// The least and the largest sample that is no null, as written.
struct Range {
    double least = 0, most = 0;
    bool any = false;
};

Range rangeOf(const OutputColumn& column, std::int32_t samples, double null) {
    Range range;
    for (std::int32_t index = 0; index < samples; ++index) {
        const double value = column.samples[index];
        if (value == null) continue;
        range.least = range.any ? std::min(range.least, value) : value;
        range.most = range.any ? std::max(range.most, value) : value;
        range.any = true;
    }
    range.least *= column.scale;
    range.most *= column.scale;
    return range;
}

int lengthOf(double value, int decimals) {
    return static_cast<int>(formatMask(value, decimals).size());
}

/// Decimals of the values of all channels that feed a column.
int inputDecimals(const PassContext& context, int column) {
    const Table& outputs = context.session.tables.outputs();
    int decimals = 0;
    for (int slot = 0; slot < slotCount; ++slot) {
        const InputSlot& input = context.session.slots[slot];
        const auto channel =
            static_cast<std::size_t>(std::max(0.0, val(outputs.text(linkRow(slot, Link::Curve), column))));
        if (!input.data || channel == 0 || channel >= input.data->channels.facts.channels.size()) continue;
        decimals = std::max(decimals, static_cast<int>(input.data->channels.facts.channels[channel].decimals));
    }
    return decimals;
}

/// Values that are neither 0 nor null and become 0, or the null, with so many decimals.
struct Lost {
    std::size_t zeros = 0, nulls = 0;
};
Lost lostValues(const PassContext& context, const OutputColumn& column) {
    const double null = context.nullValue, half = 0.5 * std::pow(10.0, -column.decimals);
    const bool nullFits = decimalsToShow(null) <= column.decimals;
    Lost lost;
    for (std::int32_t index = 0; index < context.grid.sampleCount; ++index) {
        const double value = column.samples[index];
        if (value == null) continue;
        if (value != 0 && std::abs(value * column.scale) < half) ++lost.zeros;
        if (nullFits && std::abs(value * column.scale - null) < half) ++lost.nulls;
    }
    return lost;
}

void noteRounding(PassContext& context, const OutputColumn& column, int needed) {
    constexpr int figuresThatMayGo = 2;
    const Lost lost = lostValues(context, column);
    const std::string digits = counted(static_cast<std::int64_t>(column.decimals), "decimal");
    const std::string channel = context.session.tables.output(SrdRow::Mnem, column.column);
    const auto tell = [&](std::size_t count, const char* becomes) {
        if (count == 0) return;
        context.report.notes.push_back({.kind = NoteKind::Setting,
                                        .channel = channel,
                                        .count = count,
                                        .text = std::string("values become ") + becomes + " with " + digits});
    };
    tell(lost.zeros, "0");
    tell(lost.nulls, "the null");
    if (lost.zeros + lost.nulls == 0 && needed - column.decimals > figuresThatMayGo)
        context.report.notes.push_back(
            {.kind = NoteKind::Setting,
             .channel = channel,
             .text = "values have up to " + std::to_string(needed) + " decimals and are rounded to " + digits});
}

}  // namespace

std::string nullText(const PassContext& context, int decimals) {
    const bool isTrue = context.options.rules == FigureRules::trueFigures;
    return formatMask(context.nullValue, isTrue ? std::max(decimals, decimalsToShow(context.nullValue)) : decimals);
}

void settleTrueColumns(PassContext& context) {
    const FormatDefaults& format = context.format();
    const double null = context.nullValue;
    std::size_t entry = 0;
    int widest = 0;
    for (OutputColumn& column : context.outputColumns) {
        const int needed = inputDecimals(context, column.column);
        column.decimals = format.dataDecimals;
        if (!context.session.decimalsAsked)
            column.decimals = std::max<int>(column.decimals, std::min(needed, mostDecimals));
        if (needed > column.decimals) noteRounding(context, column, needed);
        const Range range = rangeOf(column, context.grid.sampleCount, null);
        int length = std::max({lengthOf(range.least, column.decimals), lengthOf(range.most, column.decimals),
                               static_cast<int>(nullText(context, column.decimals).size())});
        if (++entry < context.curveTable.size())
            length = std::max(length, static_cast<int>(context.curveTable[entry].mnem.size()));
        column.width = std::max<int>(format.dataWidth, length + 1);
        widest = std::max(widest, column.width);
    }
    const int depths = static_cast<int>(std::max(context.report.firstDepth.size(), context.report.lastDepth.size()));
    context.depthWidth = std::max<int>(format.dataWidth, depths + 1);
    if (context.wrapPerLine == 0) return;
    // Columns of a wrapped record stand below each other, so all have one width.
    widest = std::max(widest, context.depthWidth);
    for (OutputColumn& column : context.outputColumns) column.width = widest;
    context.depthWidth = widest;
    context.wrapPerLine = static_cast<std::int16_t>(std::max(1, wrapLineLength / widest));
}

}  // namespace welvane
