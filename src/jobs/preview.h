#pragma once

#include <string>

#include "engine/driver.h"
#include "jobs/plot_input.h"

/// The output of a run that is not written.
namespace welvane {

/// The samples as the file would hold them, its well and its channels' names. `name` stands in place of a file's. By
/// rules as laid down and for true vertical depths, whose second pass reads what the first one wrote, it goes through a
/// file in the scratch folder. The pass may change the session's tables, as a run does. Refusal where the run would be
/// refused, for a plain table, which has no channels, and when it is cancelled.
PlotInput previewOutput(Workbench& bench, Session& session, const RunRequest& run, const std::string& name);

}  // namespace welvane
