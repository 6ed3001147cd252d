#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "jobs/pass_request.h"
#include "jobs/workbench.h"
#include "platform/file_identity.h"

/// The same pass once per file, each into a folder under its input's name.
namespace welvane {

/// The `index`-th, from 1, of `count` equal shares: every `count`-th file.
struct BatchShare {
    std::size_t index = 1, count = 1;
};

struct BatchRequest {
    std::vector<std::string> files{};
    std::string folder{};  ///< made when missing
    PassRequest pass{};
    std::size_t workers = 1;
    bool synced = true;  ///< a file counts as written once the disk has it; outputs are synced in groups
    BatchShare share{};
    std::string log{};         ///< a line for each input as it ends (batch_log.h); "" for none
    bool resume = false;       ///< goes on where the log ends
    std::string choicesKey{};  ///< what `pass` is known by in the log: other choices, another text
};

/// Skipped: the log tells that it was written before from the same input by the same choices.
enum class BatchVerdict { Written, Skipped, Failed, Stopped };

/// What came of one file.
struct BatchItem : JobReport {
    std::string path, output;
    BatchVerdict verdict = BatchVerdict::Failed;
    Fault fault;            ///< of a file that was not written
    FileIdentity identity;  ///< of the input, where there is a log
    int channels = 0;
    std::int32_t samples = 0;
    double seconds = 0;
    bool waitsForSync = false;  ///< written under its name, and the disk was not waited for

    /// Why it was not written, without the name of the input.
    std::string why() const {
        return (fault.file.empty() || fault.file == path ? "" : fault.file + ": ") + fault.reason.text;
    }
};

struct BatchReport {
    std::vector<BatchItem> items;
    std::size_t left = 0;  ///< files that were not reached
};
/// Files that a run with a log may have done and not yet told as written.
inline constexpr std::size_t batchGroup = 64;
/// Every file finds the process as it was at the start: formats that a filter sets, the current files and a refusal's
/// cancel flag do not reach the next. `done` is told of each file that ended, in the order of the files, but for
/// outputs that could not be synced, which are told with their group. Whatever the number of workers, the same file
/// gets the same output name, and of two that would get one name the first of the whole list. After a kill, a run with
/// `resume` does what is missing, and again at most the last `batchGroup` files whose output was there and not in the
/// log yet. Refusal for choices that make no sense, for a folder that cannot be made, and for a log that cannot be
/// used; what is wrong with one file stands in its item.
BatchReport runBatch(Workbench& bench, const BatchRequest& request, const std::function<void(const BatchItem&)>& done);

}  // namespace welvane
