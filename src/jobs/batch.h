#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "jobs/pass_request.h"
#include "jobs/workbench.h"

/// The same pass once per file, each into a folder under its input's name.
namespace welvane {

struct BatchRequest {
    std::vector<std::string> files{};
    std::string folder{};  ///< made when missing
    PassRequest pass{};
};

enum class BatchVerdict { Written, Failed, Stopped };

/// What came of one file.
struct BatchItem : JobReport {
    std::string path, output;
    BatchVerdict verdict = BatchVerdict::Failed;
    Fault fault;  ///< of a file that was not written
    int channels = 0;
    std::int32_t samples = 0;
    double seconds = 0;
};

struct BatchReport {
    std::vector<BatchItem> items;
    std::size_t left = 0;  ///< files that were not reached
};
/// Every file finds the process as it was at the start: formats that a filter sets, the current files and a refusal's
/// cancel flag do not reach the next. `done` is told of each file as it ends. Refusal for choices that make no sense,
/// and for a folder that cannot be made; what is wrong with one file stands in its item.
BatchReport runBatch(Workbench& bench, const BatchRequest& request, const std::function<void(const BatchItem&)>& done);

}  // namespace welvane
