#pragma once

#include "engine/pass.h"

namespace welvane {

/// Fills context.curveTable (entry 0 the depth, its unit "input^wanted") and context.titleLine (each mnemonic but the
/// depth's right-aligned in a data column), then renames duplicates. The table stays empty when the header source has
/// no ~Curve section.
void buildCurveTable(PassContext& context);

/// Duplicates get an ending "_1", "_2" ...; every entry is held against every later one.
void renameDuplicates(OutputCurveTable& table);

}  // namespace welvane
