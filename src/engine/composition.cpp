#include "engine/composition.h"

#include <algorithm>
#include <cmath>

#include "engine/data_reader.h"
#include "engine/grid.h"
#include "engine/null_fill.h"
#include "engine/resampling.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

void treatInput(PassContext& context, int slot, int firstColumn, int lastColumn) {
    const InputSlot& input = context.session.slots[static_cast<std::size_t>(slot)];
    const bool filled = checkSampleRate(context, input, firstColumn, lastColumn);
    if (!filled && context.nullFillMode != NullFill::None)
        applyNullFill(context, context.nullFillMode, firstColumn, lastColumn);
    const SlotChannels& channels = context.session.channels[static_cast<std::size_t>(slot)];
    clipChannels(context, channels);
    offsetChannels(context, channels);
}

void readSlot(PassContext& context, int slot) {
    const int firstColumn = context.session.columnBase(slot);
    const int lastColumn = firstColumn + context.session.channelCount(slot) - 1;
    context.app.run.statusText = "Loading " + context.session.slots[static_cast<std::size_t>(slot)].path + " ...";
    readDataIntoMatrix(context, context.session.slots[static_cast<std::size_t>(slot)], firstColumn, lastColumn);
    if (context.options.noInputRun) return;
    context.app.run.statusText.clear();
    treatInput(context, slot, firstColumn, lastColumn);
}

/// The sample (from 1) that a link's From or To text falls on, held inside the grid.
std::int32_t linkSample(const PassContext& context, const std::string& text) {
    const std::int32_t sample = roundToEven((val(text) - context.grid.start) / context.grid.step + 1);
    return std::clamp(sample, 1, context.grid.sampleCount);
}

void copyLink(PassContext& context, int channel, int slot) {
    const Table& outputs = context.tables().outputs();
    const int column = channel + 1;
    const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
    if (mnem.empty() || sameText(mnem, "<none>")) return;
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

/// Channel of the output matrix that a function reads. A function that a filter made reads its own channel, into which
/// the links of its input were copied; otherwise field 6 of the descriptor counts output channels from 1.
int sourceChannel(const PassContext& context, const std::string& descriptor, int own) {
    if (context.session.tables.filterInUse()) return own;
    const double position = val(FunctionDescriptor::parse(descriptor).fields[5]);
    return position >= 1 && position <= context.outputMatrix.columns() ? static_cast<int>(position) - 1 : own;
}

void applyFunction(PassContext& context, int column) {
    const SessionTables& tables = context.tables();
    const SessionCell& cell = tables.outputs().cell(static_cast<int>(SrdRow::Function), column);
    const ParsedFunction function = parseFunction(cell.data, context.app.settings.matrix);
    const int own = column - 1;
    // The input unit stands in the data of the wanted unit's cell; where that is empty the input channel came with row
    // 2's.
    const SessionCell& unit = tables.outputs().cell(static_cast<int>(SrdRow::Unit), column);
    const std::string& inputUnit = unit.data.empty() ? tables.output(SrdRow::InputUnit, column) : unit.data;
    FailureList failures;
    evaluateFunction(function, unit.text, inputUnit,
                     std::as_const(context.outputMatrix).column(sourceChannel(context, cell.data, own)),
                     context.outputMatrix.column(own), context.nullValue, context.app.reference,
                     context.app.settings.matrix, context.functionState, failures);
    if (failures.count > 0)
        context.report.failures.add(tables.output(SrdRow::Mnem, column) + " (" + cell.text + ")",
                                    std::to_string(failures.count) +
                                        " samples could not be computed and keep the value before them, the first: " +
                                        failures.first.front().why);
}

}  // namespace

void allocateInputs(PassContext& context) {
    context.inputMatrix = Matrix(std::max(1, context.session.columnBase(slotCount)), context.grid.sampleCount);
    for (int column = 0; column < context.inputMatrix.columns(); ++column)
        std::ranges::fill(context.inputMatrix.column(column), static_cast<double>(context.nullValue));
}

void readInputs(PassContext& context) {
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!context.session.loaded(slot) || context.session.channelCount(slot) == 0) continue;
        attempt(context.report.failures, "reading an input", [&] { readSlot(context, slot); });
        if (context.options.noInputRun) return;
    }
}

void composeChannels(PassContext& context) {
    const int count = countOutputChannels(context.tables());
    context.outputMatrix = Matrix(count, context.grid.sampleCount);
    for (int channel = 0; channel < count; ++channel) {
        std::ranges::fill(context.outputMatrix.column(channel), static_cast<double>(context.nullValue));
        for (int slot = 0; slot < slotCount; ++slot)
            attempt(context.report.failures, "composing a channel", [&] { copyLink(context, channel, slot); });
    }
}

void applyFunctions(PassContext& context) {
    const Table& outputs = context.tables().outputs();
    for (int column = 1; column < outputs.columns(); ++column) {
        const SessionCell& function = outputs.cell(static_cast<int>(SrdRow::Function), column);
        if (!outputs.checked(static_cast<int>(SrdRow::Use), column) || function.data.empty() ||
            sameText(function.text, "<none>"))
            continue;
        attempt(context.report.failures, "channel function", [&] { applyFunction(context, column); });
    }
}

void applyDovranFilter(PassContext& context) {
    if (!context.tables().checked(PrdRow::DovranFilter)) return;
    const double null = static_cast<double>(context.nullValue);
    for (int channel = 0; channel < context.outputMatrix.columns(); ++channel) {
        const std::span<double> samples = context.outputMatrix.column(channel);
        // Kept: the sample above is already filtered, so the smoothing runs forward through its own results.
        for (std::size_t i = 1; i + 1 < samples.size(); ++i)
            if (samples[i - 1] != null && samples[i] != null && samples[i + 1] != null)
                samples[i] = (samples[i - 1] / 2 + samples[i] + samples[i + 1] / 2) / 2;
    }
}

}  // namespace welvane
