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

}  // namespace

void allocateInputs(PassContext& context) {
    context.inputMatrix = Matrix(std::max(1, context.session.columnBase(slotCount)), context.grid.sampleCount);
    // By true figures each column is written whole, once; a slot whose data are not read is none.
    if (context.options.rules == FigureRules::trueFigures && !context.options.noInputRun) return;
    for (int column = 0; column < context.inputMatrix.columns(); ++column)
        std::ranges::fill(context.inputMatrix.column(column), context.nullValue);
}

void readInputs(PassContext& context) {
    if (context.options.rules == FigureRules::trueFigures) {
        placeInputs(context);
        return;
    }
    for (int slot = 0; slot < slotCount; ++slot) {
        // As laid down the first input takes part in the rate check also where it has no channels.
        const bool checked = slot == 0 && context.options.rules == FigureRules::asLaidDown;
        if (!context.session.loaded(slot) || (context.session.channelCount(slot) == 0 && !checked)) continue;
        attempt(context.report.failures, "reading an input", [&] { readSlot(context, slot); });
        if (context.options.noInputRun) return;
    }
}

}  // namespace welvane
