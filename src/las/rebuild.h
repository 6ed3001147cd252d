#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "las/rebuild_settings.h"
#include "las/wrap.h"
#include "shared/prompts.h"
#include "shared/run_state.h"

namespace welvane {

struct RebuildResult {
    StepResult result = StepResult::Failed;  ///< Cancelled also when no other name was given
    std::string target;                      ///< the name written to: the user may have chosen another one
    std::size_t linesWritten = 0;            ///< data lines
    std::size_t badLines = 0;  ///< data lines dropped, because their number of values is not that of the curves
    std::vector<std::size_t> firstBadLines;  ///< 1-based numbers of the first 100 of them in the source
};

/// Writes a clean LAS 2.0 from a file whose header breaks the standard. The target takes its name only when it is
/// whole; with a box when lines were dropped.
RebuildResult rewriteLas(std::string_view source, std::string_view target, RebuildKind kind,
                         const RebuildSettings& settings, RunState& run, UserInterface& user);

}  // namespace welvane
