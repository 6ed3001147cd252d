#pragma once

#include <optional>
#include <vector>

#include "engine/pass_context.h"

namespace welvane {

/// Output channels: columns of srd(4) from 1 with a mnemonic.
int countOutputChannels(const SessionTables& tables);

/// The output channels, spliced from the inputs by the From and To of their links: a later slot overwrites an earlier
/// one, nulls included. Takes the output matrix.
void composeChannels(PassContext& context);

/// The one input column that each output channel takes over the whole grid, none where it takes nothing; nothing at all
/// where a channel takes parts, several columns, or one that is not there.
std::optional<std::vector<std::optional<int>>> wholeLinks(const PassContext& context);

}  // namespace welvane
