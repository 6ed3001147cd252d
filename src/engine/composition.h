#pragma once

#include "engine/pass_context.h"

namespace welvane {

/// The output channels, spliced from the inputs by the From and To of their links: a later slot overwrites an earlier
/// one, nulls included. Takes the output matrix.
void composeChannels(PassContext& context);

}  // namespace welvane
