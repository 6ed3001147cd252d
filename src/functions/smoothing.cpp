#include "functions/smoothing.h"

#include <algorithm>
#include <cmath>

#include "functions/samples.h"

namespace welvane {

namespace {

/// The count of a mean is a 16-bit number.
constexpr std::int64_t mostSamples = 32767;
/// Up to this half-width the samples of each span are summed anew, which costs no more than keeping a running sum.
constexpr double directHalfWidth = 16;

}  // namespace

double weightedMean(std::span<const double> samples, std::size_t index, float nullValue) {
    const double here = samples[index];
    const double before = samples[index == 0 ? 0 : index - 1];
    const double behind = samples[std::min(index + 1, samples.size() - 1)];
    if (isNull(before, nullValue) || isNull(behind, nullValue)) return here;
    return (behind / 2 + here + before / 2) / 2;
}

MovingMean::MovingMean(std::span<const double> samples, double halfWidth, float nullValue)
    : samples_(samples),
      halfWidth_(halfWidth),
      null_(nullValue),
      possible_(std::fabs(halfWidth) + static_cast<double>(samples.size()) < 2147483647.0),
      direct_(halfWidth <= directHalfWidth) {}

MovingMean::Span MovingMean::spanOf(std::size_t index) const {
    // nearbyint rounds ties to the even side, as all roundings to whole numbers here do.
    const auto position = static_cast<double>(index + 1);
    const auto low = static_cast<std::int64_t>(std::nearbyint(position - halfWidth_));
    const auto high = static_cast<std::int64_t>(std::nearbyint(position + halfWidth_));
    return {std::max<std::int64_t>(low, 1) - 1, std::min(high, static_cast<std::int64_t>(samples_.size()))};
}

double MovingMean::directMean(Span span) const {
    double sum = 0;
    std::int64_t count = 0;
    for (std::int64_t place = span.low; place < span.high; ++place) {
        const double value = samples_[place];
        if (isNull(value, null_)) continue;
        sum += value;
        if (++count > mostSamples) return notANumber;
    }
    return count == 0 ? null_ : sum / static_cast<double>(count);
}

void MovingMean::add(double value, int sign) {
    if (isNull(value, null_)) return;
    count_ += sign;
    // Exact sum of two numbers: what the rounded sum lost goes to the second part.
    const double part = sign * value;
    const double sum = sum_ + part;
    const double other = sum - sum_;
    rest_ += (sum_ - (sum - other)) + (part - other);
    sum_ = sum;
}

double MovingMean::at(std::size_t index) {
    if (!possible_) return notANumber;
    const Span span = spanOf(index);
    if (direct_) return directMean(span);
    for (; high_ < span.high; ++high_) add(samples_[high_], 1);
    for (; low_ < span.low; ++low_) add(samples_[low_], -1);
    if (count_ > mostSamples) return notANumber;
    if (count_ == 0) return null_;
    const double mean = (sum_ + rest_) / static_cast<double>(count_);
    if (std::isfinite(mean)) return mean;
    // A sum beyond all doubles never comes back by taking away: the next sample sums its span anew.
    low_ = high_ = span.low;
    count_ = 0;
    sum_ = rest_ = 0;
    return directMean(span);
}

void MovingMean::changed(std::size_t index, double before) {
    const auto place = static_cast<std::int64_t>(index);
    if (direct_ || place < low_ || place >= high_) return;
    add(before, -1);
    add(samples_[index], 1);
}

}  // namespace welvane
