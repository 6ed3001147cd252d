#pragma once

#include <cstdint>
#include <optional>

#include "conform/decimal.h"

namespace welvane {

/// Follows the index from row to row in whole units of its last digit, and tells whether it keeps the step that the
/// header names.
class IndexTrack {
  public:
    enum class Kind {
        First,    ///< nothing to compare with
        Regular,  ///< one step further, or no step is known
        Rounded,  ///< one step further within what rounding each depth to its last digit explains
        Other,    ///< another spacing
        Same,     ///< the value before once more
        Back,     ///< against the direction
        Unknown   ///< has more digits than can be computed with
    };

    /// Without a step, or with one of 0, none is looked for.
    explicit IndexTrack(std::optional<Decimal> step = std::nullopt);

    Kind take(const Decimal& index);
    /// The next value has no one before it.
    void interrupt() { hasPrevious_ = false; }

    /// True for a value that lies nearer to where the next row is to be than to any other.
    bool expects(const Decimal& index) const;

    int direction() const { return direction_; }
    /// Two differences or more, all the same.
    bool constant() const { return differences_ > 1 && constant_; }
    bool hasSpacing() const { return differences_ > 0; }
    /// The first difference, with its sign.
    Decimal spacing() const { return {first_, scale_}; }
    /// The difference that came last.
    Decimal lastSpacing() const { return {last_, scale_}; }

  private:
    bool rescale(int decimals);
    Kind judge(std::int64_t value, int decimals);
    Kind againstStep(std::int64_t value, int decimals);
    double half(int decimals) const;

    std::int64_t step_ = 0;  ///< without its sign; 0 for none
    std::int64_t previous_ = 0, predicted_ = 0, first_ = 0, last_ = 0;
    std::size_t differences_ = 0;
    int scale_ = 0;                ///< decimals of all units here
    int printed_ = 0;              ///< most decimals of a value so far
    int before_ = 0, anchor_ = 0;  ///< decimals printed of the value before, and of the one that steps are counted from
    int direction_ = 0;
    bool hasPrevious_ = false, constant_ = true, lost_ = false;
};

}  // namespace welvane
