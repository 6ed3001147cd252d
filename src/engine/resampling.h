#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// What is done after reading an input whose rate differs from the grid's: a non-constant rate (STEP 0) asks whether to
/// fill, a coarser input always fills linearly (and the fill mode stays linear for the inputs behind it). True when the
/// fill was settled here.
bool checkSampleRate(PassContext& context, const InputSlot& slot, int firstColumn, int lastColumn);

/// Spliced channels with a clip limit: samples outside it become 0.
void clipChannels(PassContext& context, const SlotChannels& channels);

/// Spliced channels with a depth offset: samples within the clip limits move by whole steps; freed samples take the
/// value of the first (last) moved one.
void offsetChannels(PassContext& context, const SlotChannels& channels);

}  // namespace welvane
