#pragma once

#include <string>
#include <string_view>

#include "las/data_access.h"
#include "shared/prompts.h"
#include "shared/run_state.h"

namespace welvane {

/// How a long step ended.
enum class StepResult { Done, Failed, Cancelled };

/// Writes a wrapped file unwrapped, or the reverse. `wrap` receives the source's state, "YES" or "NO" by the shape of
/// its data. The target takes its name only when it is whole. Failed without a word for a missing source; with a box
/// when something unexpected happened, which data of no regular shape are.
StepResult convertWrap(std::string_view path, std::string_view target, std::string& wrap, RunState& run,
                       UserInterface& user);

/// Why data of this shape are of no use, naming the two lines that differ.
std::string shapeProblem(const DataShape& shape);
/// The box of a conversion that went wrong.
void tellConversionFailure(UserInterface& user, std::string_view why);

}  // namespace welvane
