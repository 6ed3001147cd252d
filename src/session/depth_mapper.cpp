#include <algorithm>

#include "session/tvd.h"

/// Depths through the survey table.
namespace welvane {

namespace {
constexpr float endOfTable = static_cast<float>(lasNull);
}

double mapDepth(const InclinometryTable& table, double depth, int direction) {
    return DepthMapper(table, direction)(depth);
}

DepthMapper::DepthMapper(const InclinometryTable& table, int direction) : rows_(&table.rows), toTvd_(direction == 0) {
    // Few rows are walked as fast as they are searched; where depths rise and fall, the first pair that encloses a
    // depth counts.
    rising_ = rows_->size() > 16 &&
              std::is_sorted(rows_->begin(), rows_->end(), [this](const SurveyRow& one, const SurveyRow& other) {
                  return toTvd_ ? one.md < other.md : one.tvd < other.tvd;
              });
}

double DepthMapper::source(std::size_t row) const {
    return toTvd_ ? (*rows_)[row].md : (*rows_)[row].tvd;
}
double DepthMapper::target(std::size_t row) const {
    return toTvd_ ? (*rows_)[row].tvd : (*rows_)[row].md;
}

/// The straight line through two rows; the depth itself where they do not make one.
double DepthMapper::onLine(std::size_t row, std::size_t other, double depth) const {
    const double run = source(other) - source(row);
    if (run == 0) return depth;
    return target(row) + (target(other) - target(row)) / run * (depth - source(row));
}

double DepthMapper::inside(double depth) const {
    const std::size_t last = rows_->size() - 1;
    std::size_t row = 0;
    if (rising_) {
        // The first row whose successor is not above the depth.
        std::size_t beyond = last - 1;
        while (row < beyond) {
            const std::size_t middle = (row + beyond) / 2;
            if (source(middle + 1) >= depth)
                beyond = middle;
            else
                row = middle + 1;
        }
    } else {
        const auto encloses = [&](std::size_t place) {
            const auto [low, high] = std::minmax({source(place), source(place + 1)});
            return depth >= low && depth <= high;
        };
        while (row < last && !encloses(row)) {
            if ((*rows_)[row + 1].md == endOfTable) return depth;
            ++row;
        }
        if (row == last) return depth;
    }
    const double run = source(row + 1) - source(row);
    if (run == 0) return target(row);
    return target(row) + (depth - source(row)) / run * (target(row + 1) - target(row));
}

double DepthMapper::operator()(double depth) const {
    const std::size_t count = rows_->size();
    if (count < 2) return depth;
    const double first = source(0);
    const double last = source(count - 1);
    const auto [low, high] = std::minmax({first, last});
    if (depth >= low && depth <= high) return inside(depth);
    const bool aboveTable = first <= last ? depth < first : depth > first;
    if (!aboveTable) return onLine(count - 1, count - 2, depth);
    if (first == target(0)) return depth;
    // The tie point may repeat the first station; then the next one gives the slope.
    const std::size_t other = source(1) == first && count > 2 ? 2 : 1;
    return onLine(0, other, depth);
}

}  // namespace welvane
