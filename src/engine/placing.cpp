#include "engine/placing.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "las/depth_spacing.h"

namespace welvane {

namespace {

/// Records by increasing depth.
class OrderedRecords {
  public:
    OrderedRecords(const std::vector<double>& depths, double shift) : depths_(depths), shift_(shift) {
        if (std::is_sorted(depths.begin(), depths.end())) return;
        turned_ = std::is_sorted(depths.rbegin(), depths.rend());
        if (turned_) return;
        order_.resize(depths.size());
        std::iota(order_.begin(), order_.end(), std::size_t{0});
        std::stable_sort(order_.begin(), order_.end(),
                         [&](std::size_t one, std::size_t other) { return depths[one] < depths[other]; });
    }

    std::size_t count() const { return depths_.size(); }
    std::size_t record(std::size_t place) const {
        if (turned_) return depths_.size() - 1 - place;
        return order_.empty() ? place : order_[place];
    }
    double depth(std::size_t place) const { return depths_[record(place)] + shift_; }

  private:
    const std::vector<double>& depths_;
    double shift_;
    bool turned_ = false;
    std::vector<std::size_t> order_;
};

/// Walks down grid and records side by side.
class Placer {
  public:
    Placer(const PassGrid& grid, const InputData& data, double shift)
        : grid_(grid),
          records_(data.depths(), shift),
          step_(data.spacing.step),
          finer_(step_ != 0 && grid.step < step_ * (1 - 1e-6)),
          rounding_(std::min(depthRounding(data.spacing.decimals), std::min(grid.step, spacingOr(grid.step)) / 4)),
          reach_(std::max(grid.step, spacingOr(grid.step)) / 2 + std::min(rounding_, grid.step / 1000)) {}

    Placing place() {
        Placing placing;
        placing.samples.resize(static_cast<std::size_t>(grid_.sampleCount));
        std::size_t at = 0;
        for (std::size_t index = 0; index < placing.samples.size(); ++index) {
            const double depth = grid_.start + static_cast<double>(index) * grid_.step;
            while (at + 1 < records_.count() && records_.depth(at + 1) <= depth) ++at;
            placing.samples[index] = sampleAt(depth, at);
        }
        placing.straight = isStraight(placing.samples);
        const double top = grid_.start - reach_, bottom = grid_.stop + reach_;
        for (std::size_t place = 0; place < records_.count(); ++place)
            placing.outside += records_.depth(place) < top || records_.depth(place) > bottom ? 1 : 0;
        return placing;
    }

  private:
    static bool isStraight(const std::vector<Placing::Sample>& samples) {
        const std::int32_t first = samples.empty() ? -1 : samples.front().record;
        if (first < 0) return false;
        for (std::size_t index = 0; index < samples.size(); ++index)
            if (samples[index].record != first + static_cast<std::int32_t>(index) || samples[index].share > 0)
                return false;
        return true;
    }

    double spacingOr(double otherwise) const { return step_ == 0 ? otherwise : step_; }
    std::int32_t number(std::size_t place) const { return static_cast<std::int32_t>(records_.record(place)); }

    /// `at` is the last record at or above the depth, or the first one of all.
    Placing::Sample sampleAt(double depth, std::size_t at) const {
        const double above = depth - records_.depth(at);
        const bool hasNext = at + 1 < records_.count();
        if (above < 0 || !hasNext)
            return std::abs(above) <= (finer_ ? rounding_ : reach_) ? one(at) : Placing::Sample();
        const double below = records_.depth(at + 1) - depth;
        // What rounding moves makes no difference between two that are equally near.
        const std::size_t nearest = above <= below + rounding_ / 4 ? at : at + 1;
        if (!finer_) return std::min(above, below) <= reach_ ? one(nearest) : Placing::Sample();
        if (std::min(above, below) <= rounding_) return one(above <= below ? at : at + 1);
        if (above + below > 1.5 * step_) return {};
        return {number(at), number(at + 1), above / (above + below)};
    }
    Placing::Sample one(std::size_t place) const { return {number(place), -1, 0}; }

    const PassGrid& grid_;
    OrderedRecords records_;
    double step_;  ///< of the records; 0 for none
    bool finer_;
    double rounding_;  ///< what a depth may be out by
    double reach_;     ///< how far a sample may lie from the record that it takes
};

}  // namespace

Placing placeRecords(const PassGrid& grid, const InputData& data, double shift) {
    return Placer(grid, data, shift).place();
}

}  // namespace welvane
