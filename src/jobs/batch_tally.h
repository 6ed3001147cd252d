#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "jobs/workbench.h"

/// The logs of a batch joined, of all its shares and all its turns: what is written, and what is not.
namespace welvane {

struct BatchTallyRequest {
    std::vector<std::string> logs{};
    std::vector<std::string> inputs{};  ///< the inputs of the whole batch, so that those missing can be named; or empty
};

/// A file that is told by name.
struct TalliedFile {
    std::string path{};
    std::string why{};  ///< of a failed one; of a missing one how far it came; of one written twice the logs
};

/// What one log tells. A file counts once for each output, by the last that is said of it; one that was written stays
/// written.
struct LogTally {
    std::string path{};
    Fault fault{};       ///< of a log that cannot be read
    std::string part{};  ///< "2/8", "" for a batch in one piece, several with blanks between
    std::size_t files = 0, written = 0, failed = 0;
    std::size_t missing = 0;  ///< of the files that the runs of this log were to do
    std::int64_t samples = 0;
    double seconds = 0;  ///< of work, summed up over the files
};

struct BatchTally : JobReport {
    std::vector<LogTally> logs;
    std::size_t files = 0, written = 0, missing = 0;  ///< of the whole batch; known shares alone, where others lack
    std::vector<TalliedFile> failed;
    std::vector<TalliedFile> named;         ///< missing files whose names are known
    std::vector<TalliedFile> twice;         ///< written by more than one log
    std::vector<std::string> missingParts;  ///< shares of which there is no log, "3/8"

    bool whole() const { return failed.empty() && missing == 0 && missingParts.empty(); }
};
/// Notes tell of logs of unlike options or divisions, and of lines that are none of a log. A log that cannot be read
/// has its fault. Refusal when a person stopped it.
BatchTally tallyBatchLogs(Workbench& bench, const BatchTallyRequest& request);

}  // namespace welvane
