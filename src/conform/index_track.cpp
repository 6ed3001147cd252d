#include "conform/index_track.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace welvane {

IndexTrack::IndexTrack(std::optional<Decimal> step) {
    if (!step) return;
    step_ = std::abs(step->units);
    scale_ = step->decimals;
}

bool IndexTrack::rescale(int decimals) {
    const std::array<std::int64_t*, 5> all = {&step_, &previous_, &predicted_, &first_, &last_};
    std::array<std::int64_t, 5> scaled{};
    for (std::size_t place = 0; place < all.size(); ++place) {
        const auto units = unitsAt({*all[place], scale_}, decimals);
        if (!units) return false;
        scaled[place] = *units;
    }
    for (std::size_t place = 0; place < all.size(); ++place) *all[place] = scaled[place];
    scale_ = decimals;
    return true;
}

IndexTrack::Kind IndexTrack::take(const Decimal& index) {
    if (lost_) return Kind::Unknown;
    lost_ = index.decimals > scale_ && !rescale(index.decimals);
    const auto value = lost_ ? std::nullopt : unitsAt(index, scale_);
    if (!value) {
        // Figures on which nothing can be built any more.
        lost_ = true;
        constant_ = false;
        return Kind::Unknown;
    }
    printed_ = std::max(printed_, index.decimals);
    if (!hasPrevious_) {
        previous_ = predicted_ = *value;
        before_ = anchor_ = index.decimals;
        hasPrevious_ = true;
        return Kind::First;
    }
    // The zeros of a whole number were left out where its neighbours have decimals.
    const int decimals = index.decimals == 0 ? before_ : index.decimals;
    const Kind kind = judge(*value, decimals);
    before_ = decimals;
    return kind;
}

IndexTrack::Kind IndexTrack::judge(std::int64_t value, int decimals) {
    const std::int64_t difference = value - previous_;
    previous_ = value;
    if (differences_++ == 0) first_ = difference;
    constant_ = constant_ && difference == first_;
    last_ = difference;
    if (difference == 0) return Kind::Same;
    const int direction = difference > 0 ? 1 : -1;
    if (direction_ == 0) direction_ = direction;
    if (direction != direction_) {
        predicted_ = value;
        anchor_ = decimals;
        return Kind::Back;
    }
    return step_ == 0 ? Kind::Regular : againstStep(value, decimals);
}

bool IndexTrack::expects(const Decimal& index) const {
    const auto value = unitsAt(index, std::max(scale_, index.decimals));
    if (!value || !hasSpacing() || index.decimals > scale_) return false;
    return std::abs(*value - previous_ - first_) * 2 < std::abs(first_);
}

/// Half a unit of the last digit of a value with so many decimals. A first one without any has as many as others.
double IndexTrack::half(int decimals) const {
    double unit = 0.5;
    for (int more = decimals == 0 ? printed_ : decimals; more < scale_; ++more) unit *= 10;
    return unit;
}

IndexTrack::Kind IndexTrack::againstStep(std::int64_t value, int decimals) {
    predicted_ += direction_ * step_;
    if (last_ == direction_ * step_ && predicted_ == value) return Kind::Regular;
    // Each depth was rounded to the digits that it shows. What is no step away in itself begins anew.
    const auto off = static_cast<double>(std::abs(last_ - direction_ * step_));
    const auto drift = static_cast<double>(std::abs(value - predicted_));
    if (off <= half(before_) + half(decimals) && drift <= half(anchor_) + half(decimals)) return Kind::Rounded;
    predicted_ = value;
    anchor_ = decimals;
    return Kind::Other;
}

}  // namespace welvane
