#pragma once

#include <cstdint>
#include <span>

namespace welvane {

/// Weighted mean of a sample and its two neighbours ("AVERAGE", mode 1); the sample itself where one of the three is
/// null. `index` from 0. At the ends the missing neighbour is the sample itself.
double weightedMean(std::span<const double> samples, std::size_t index, float nullValue);

/// Mean of the non-null samples within a half-width around each sample ("AVERAGE", mode 2), moving along the samples.
/// It is made for samples that are overwritten by their means on the way: it follows such a change.
class MovingMean {
  public:
    MovingMean(std::span<const double> samples, double halfWidth, float nullValue);

    /// Mean around the sample at `index` (from 0; call with rising ones), the null value where there is none, and no
    /// number (NaN) where it cannot be told: more than 32,767 samples, a bound beyond 32 bits, or an overflow.
    double at(std::size_t index);
    /// To be called when the sample at `index` may have changed from `before`.
    void changed(std::size_t index, double before);

  private:
    struct Span {
        std::int64_t low, high;
    };
    Span spanOf(std::size_t index) const;
    double directMean(Span span) const;
    void add(double value, int sign);

    std::span<const double> samples_;
    double halfWidth_;
    float null_;
    bool possible_, direct_;
    /// Of the running way: the stretch [low, high) that is summed, its count, and the sum in two parts, so that adding
    /// and taking away cancel.
    std::int64_t low_ = 0, high_ = 0, count_ = 0;
    double sum_ = 0, rest_ = 0;
};

}  // namespace welvane
