#pragma once

#include <atomic>
#include <string>

#include "shared/ordered_work.h"

namespace welvane {

/// The shared run values of one process: which files are in play, how far the run is, whether to stop.
struct RunState {
    bool commandMode = false;
    bool batchRunning = false;
    /// Set from a signal handler or a dialog; read at each record and each input line.
    std::atomic<bool> cancelRequested{false};
    std::string statusText;
    float progressFraction = 0;  ///< 0 to 1
    std::string sourceLabel, targetLabel;
    std::string lasFile;     ///< the current input
    std::string targetFile;  ///< the current output
    bool noInputRun = false;
    Workers workers;
};

}  // namespace welvane
