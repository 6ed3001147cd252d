#include "shared/progress.h"

#include <algorithm>
#include <cmath>

#include "shared/numbers.h"

namespace welvane {

namespace {

/// No number counts as nothing done.
double heldFraction(double fraction) {
    return fraction > 0 ? std::min(fraction, 1.0) : 0;
}

}  // namespace

void ProgressMeter::setTotal(std::uint64_t bytes, double seconds) {
    total_ = bytes;
    begin("", seconds);
}

void ProgressMeter::begin(std::string_view status, double seconds) {
    status_ = status;
    begun_ = seconds;
    last_ = 0;
    running_ = true;
}

ProgressReading ProgressMeter::read(std::string_view status, double fraction, double seconds) {
    ProgressReading reading;
    reading.fraction = heldFraction(fraction);
    if (!running_ || status != status_ || reading.fraction < last_) begin(status, seconds);
    last_ = reading.fraction;
    reading.percent = static_cast<int>(reading.fraction * 100);
    const double passed = elapsed(seconds);
    if (passed <= 0 || reading.fraction <= 0) return reading;
    reading.bytesPerSecond = reading.fraction * static_cast<double>(total_) / passed;
    reading.secondsLeft = passed * (1 - reading.fraction) / reading.fraction;
    return reading;
}

std::string clockText(double seconds) {
    constexpr double longest = 359999;
    const long whole = std::lround(std::clamp(seconds, 0.0, longest));
    const auto twoDigits = [](long number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    if (whole < 3600) return std::to_string(whole / 60) + ":" + twoDigits(whole % 60);
    return std::to_string(whole / 3600) + ":" + twoDigits(whole / 60 % 60) + ":" + twoDigits(whole % 60);
}

std::string rateText(const ProgressReading& reading) {
    std::string text;
    if (reading.bytesPerSecond > 0) text = "  " + formatMask(reading.bytesPerSecond / 1e6, 1) + " MB/s";
    if (reading.secondsLeft >= 0) text += "  " + clockText(reading.secondsLeft) + " left";
    return text;
}

ProgressLabels progressLabels(RunState& run) {
    run.progressFraction = static_cast<float>(heldFraction(run.progressFraction));
    return {toInt16(static_cast<double>(run.progressFraction) * 100), run.statusText, run.sourceLabel, run.targetLabel};
}

}  // namespace welvane
