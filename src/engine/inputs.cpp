#include "engine/inputs.h"

#include <algorithm>

#include "engine/data_reader.h"
#include "engine/null_fill.h"
#include "engine/resampling.h"
#include "engine/true_inputs.h"

namespace welvane {

namespace {

void treatInput(PassContext& context, int slot, int firstColumn, int lastColumn) {
    const InputSlot& input = context.session.slots[slot];
    const bool filled = checkSampleRate(context, input, firstColumn, lastColumn);
    if (!filled && context.nullFillMode != NullFill::None)
        applyNullFill(context, context.nullFillMode, firstColumn, lastColumn);
    const SlotChannels& channels = context.session.channels[slot];
    clipChannels(context, channels);
    offsetChannels(context, channels);
}

void readSlot(PassContext& context, int slot) {
    const int firstColumn = context.session.columnBase(slot);
    const int lastColumn = firstColumn + context.session.channelCount(slot) - 1;
    context.app.run.statusText = "Loading " + context.session.slots[slot].path + " ...";
    readDataIntoMatrix(context, context.session.slots[slot], firstColumn, lastColumn);
    if (context.options.noInputRun) return;
    context.app.run.statusText.clear();
    treatInput(context, slot, firstColumn, lastColumn);
}

/// True where readInputs reads the slot's file.
bool readsSlot(const PassContext& context, int slot) {
    // As laid down the first input takes part in the rate check also where it has no channels.
    const bool checked = slot == 0 && context.options.rules == FigureRules::asLaidDown;
    return context.session.loaded(slot) && (context.session.channelCount(slot) > 0 || checked);
}

/// True where reading an input writes all of a column.
bool isRead(const PassContext& context, int column) {
    if (context.options.rules == FigureRules::trueFigures) return false;
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!readsSlot(context, slot)) continue;
        const int base = context.session.columnBase(slot);
        if (column >= base && column < base + context.session.channelCount(slot)) return true;
        if (context.options.noInputRun) return false;
    }
    return false;
}

}  // namespace

void allocateInputs(PassContext& context) {
    // Each column of an input that is read is written whole, once: by whoever reads it.
    context.inputMatrix = Matrix(std::max(1, context.session.columnBase(slotCount)), context.grid.sampleCount);
    if (context.options.rules == FigureRules::trueFigures && !context.options.noInputRun) return;
    for (int column = 0; column < context.inputMatrix.columns(); ++column)
        if (!isRead(context, column)) std::ranges::fill(context.inputMatrix.column(column), context.nullValue);
}

void readInputs(PassContext& context) {
    if (context.options.rules == FigureRules::trueFigures) {
        placeInputs(context);
        return;
    }
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!readsSlot(context, slot)) continue;
        attempt(context.report.failures, "reading an input", [&] { readSlot(context, slot); });
        if (context.options.noInputRun) return;
    }
}

}  // namespace welvane
