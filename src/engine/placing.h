#pragma once

#include <cstdint>
#include <vector>

#include "engine/pass_context.h"
#include "las/input_data.h"

namespace welvane {

/// Which records of an input stand at which samples of the grid, by FigureRules::trueFigures.
struct Placing {
    /// One sample: the record (from 0) whose value it takes, -1 for none. With a share above 0 it lies between that
    /// record and `next`, `share` of the way.
    struct Sample {
        std::int32_t record = -1, next = -1;
        double share = 0;
    };
    std::vector<Sample> samples;  ///< sample i of the grid at index i - 1
    std::size_t outside = 0;      ///< records that lie above or below the grid
    bool straight = false;        ///< sample i takes the record behind that of sample i - 1, and none lies between two
};

/// Places the records of an input, moved down by `shift`. Onto the records' own step, a coarser one or one between,
/// each sample takes the nearest record within half a step of the coarser of the two, of two equally near ones the
/// shallower. Onto a finer step a sample between two neighbouring records lies between them; nothing spans a gap.
Placing placeRecords(const PassGrid& grid, const InputData& data, double shift);

}  // namespace welvane
