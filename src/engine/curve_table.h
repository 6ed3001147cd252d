#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// Fills context.curveTable (entry 0 the depth) and context.titleLine (each mnemonic but the
/// depth's right-aligned in a data column), then renames duplicates. The table stays empty when the header source has
/// no ~Curve section.
void buildCurveTable(PassContext& context);

/// Equal mnemonics get endings, as makeDistinct tells.
void renameDuplicates(OutputCurveTable& table, FigureRules rules);

}  // namespace welvane
