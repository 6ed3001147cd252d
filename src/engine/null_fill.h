#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Closes gaps of -999.25 (that fixed number, whatever null the output has) in columns firstColumn to lastColumn of the
/// input matrix. Linear fills gaps with data on both sides by a straight line; Flat Top gives every gap the value above
/// it. Leading gaps stay.
void applyNullFill(PassContext& context, NullFill mode, int firstColumn, int lastColumn);

/// The same over one column whose gaps are of `null`. Samples from index 0.
void fillColumn(std::span<double> samples, NullFill mode, double null = lasNull);

}  // namespace welvane
