#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "shared/run_state.h"

/// The arithmetic of a progress display; what draws it, and the clock, belong to others.
namespace welvane {

/// What a display shows of a piece of work.
struct ProgressReading {
    double fraction = 0;        ///< 0 to 1
    int percent = 0;            ///< whole percents that are done
    double bytesPerSecond = 0;  ///< 0 when it cannot be told
    double secondsLeft = -1;    ///< below 0 when it cannot be told
};

/// Follows a piece of work through its steps. A step begins with another status, or with less done than before.
class ProgressMeter {
  public:
    /// Bytes that the fraction 1 stands for, 0 for no rate. Begins a new step.
    void setTotal(std::uint64_t bytes, double seconds);
    /// `fraction` is held to 0 to 1, for no number to 0; `seconds` by any clock that only goes on.
    ProgressReading read(std::string_view status, double fraction, double seconds);
    /// Seconds since the step began.
    double elapsed(double seconds) const { return seconds - begun_; }

  private:
    void begin(std::string_view status, double seconds);

    std::uint64_t total_ = 0;
    std::string status_;
    double begun_ = 0, last_ = 0;
    bool running_ = false;
};

/// A span of time: "0:07", "12:30", "1:02:03"; at most 99:59:59.
std::string clockText(double seconds);
/// "  12.5 MB/s  0:07 left", without what cannot be told.
std::string rateText(const ProgressReading& reading);

/// What the progress dialog shows at one moment: its bar of 0 to 100 and its labels, the input's first.
struct ProgressLabels {
    int percent = 0;
    std::string status, source, target;
};
/// Reads the run's values; its fraction is held to 0 to 1 and stored back.
ProgressLabels progressLabels(RunState& run);

}  // namespace welvane
