#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/append_file.h"
#include "platform/file_identity.h"

/// The log of a batch: one JSON object on each line, in the order in which things happened. A line of a file says
/// "begun" before its output gets its name, "written" once that is safe, "failed" with the reason. A run begins with a
/// line that says "batch". A line that a kill cut short counts as not there.
namespace welvane {

struct BatchLogLine {
    std::string verdict{};         ///< "batch", "begun", "written", "failed"
    std::string path{}, output{};  ///< of the file; in a line "batch" empty and the folder
    std::string why{};             ///< of "failed"
    std::string options{};         ///< what the run's choices are known by
    std::uint64_t size = 0;        ///< of the input, in bytes
    std::int64_t time = 0;         ///< when the input was last written, in nanoseconds since 1970
    int channels = 0;
    std::int32_t samples = 0;
    double seconds = 0;
    std::string part{};     ///< of "batch": "2/8", or "" for all
    std::size_t files = 0;  ///< of "batch": inputs that the run was to do
};
/// The line, with its end.
std::string textOf(const BatchLogLine& line);
/// Nothing for a text that is no whole line of a log.
std::optional<BatchLogLine> parseBatchLine(std::string_view text);
/// Gives each whole line of a log in its order, and returns the number of others that are not empty. FileFailure when
/// it cannot be read.
std::size_t readBatchLog(const std::string& path, const std::function<void(BatchLogLine& line)>& take);

/// The log of a run under way.
class BatchLog {
  public:
    enum class Start { New, Replace, Resume };
    /// FileFailure when it cannot be opened or read; with New also when it is there.
    BatchLog(const std::string& path, Start start);

    /// What the log said of an input when it was opened: the last line, nullptr when there is none.
    const BatchLogLine* said(const std::string& path) const;
    /// Several threads may append.
    void append(const std::vector<BatchLogLine>& lines) const;
    void sync() const { file_.sync(); }

  private:
    AppendFile file_;
    std::unordered_map<std::string, BatchLogLine> said_;
};

}  // namespace welvane
