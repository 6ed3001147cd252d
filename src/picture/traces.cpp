#include "picture/traces.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace welvane {

namespace {

/// A row with more samples is thinned out.
constexpr std::size_t fewSamples = 6;

class TraceMaker {
  public:
    TraceMaker(std::span<const double> depths, std::span<const double> values, const DepthAxis& axis,
               const Scale& scale, const Area& track)
        : depths_(depths), values_(values), axis_(axis), scale_(scale), track_(track), extremes_(values) {}

    Trace make(const PixelRows& rows) {
        for (std::size_t index = rows.first; index < rows.begins.front(); ++index) addSample(index);
        for (std::size_t row = 0; row + 1 < rows.begins.size(); ++row) addRow(rows.begins[row], rows.begins[row + 1]);
        for (std::size_t index = rows.begins.back(); index < rows.last; ++index) addSample(index);
        endPiece();
        return std::move(trace_);
    }

  private:
    void addRow(std::size_t begin, std::size_t end) {
        if (end - begin <= fewSamples) {
            for (std::size_t index = begin; index < end; ++index) addSample(index);
            return;
        }
        const Extremes::Found found = extremes_.over(begin, end);
        if (!found.any || found.first != begin) endPiece();
        if (!found.any) return;
        std::array<std::size_t, 4> order = {found.first, found.least, found.greatest, found.last};
        std::sort(order.begin(), order.end());
        for (std::size_t place = 0; place < order.size(); ++place)
            if (place == 0 || order[place] != order[place - 1]) addSample(order[place]);
        if (found.last + 1 != end) endPiece();
    }

    void addSample(std::size_t index) {
        if (std::isnan(values_[index])) {
            endPiece();
            return;
        }
        const double share = scale_.share(values_[index]);
        const int side = share < 0 ? -1 : share > 1 ? 1 : 0;
        const Point point{track_.left + std::clamp(share, 0.0, 1.0) * track_.width(), axis_.place(depths_[index])};
        piece_.push_back(point);
        markEdge(side, point);
    }

    /// Follows the edge while the curve stays beyond it.
    void markEdge(int side, const Point& point) {
        if (side != side_) endEdge();
        side_ = side;
        if (side != 0) edge_.push_back(point);
    }
    void endEdge() {
        if (edge_.size() > 2) edge_ = {edge_.front(), edge_.back()};
        if (!edge_.empty()) trace_.beyond.pieces.push_back(std::move(edge_));
        edge_.clear();
        side_ = 0;
    }
    void endPiece() {
        if (!piece_.empty()) trace_.inside.pieces.push_back(std::move(piece_));
        piece_.clear();
        endEdge();
    }

    std::span<const double> depths_, values_;
    const DepthAxis& axis_;
    const Scale& scale_;
    const Area& track_;
    Extremes extremes_;
    Trace trace_;
    std::vector<Point> piece_, edge_;
    int side_ = 0;
};

}  // namespace

PixelRows pixelRows(std::span<const double> depths, const DepthAxis& axis) {
    const auto begin = depths.begin();
    const auto firstAt = [&](double depth) {
        return static_cast<std::size_t>(std::lower_bound(begin, depths.end(), depth) - begin);
    };
    PixelRows rows;
    const std::size_t count =
        std::max<std::size_t>(1, static_cast<std::size_t>(std::ceil(axis.lowerEdge - axis.upperEdge)));
    rows.begins.reserve(count + 1);
    for (std::size_t row = 0; row < count; ++row)
        rows.begins.push_back(
            firstAt(axis.top + (axis.bottom - axis.top) * static_cast<double>(row) / static_cast<double>(count)));
    rows.begins.push_back(static_cast<std::size_t>(std::upper_bound(begin, depths.end(), axis.bottom) - begin));
    rows.first = rows.begins.front() == 0 ? 0 : rows.begins.front() - 1;
    rows.last = std::min(rows.begins.back() + 1, depths.size());
    return rows;
}

Trace traceOf(std::span<const double> depths, std::span<const double> values, const PixelRows& rows,
              const DepthAxis& axis, const Scale& scale, const Area& track) {
    return TraceMaker(depths, values, axis, scale, track).make(rows);
}

}  // namespace welvane
