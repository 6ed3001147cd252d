#pragma once

#include <optional>
#include <string>
#include <vector>

#include "las/index_unit.h"
#include "las/read_channels.h"
#include "las/run_turn.h"
#include "las/statistics.h"
#include "shared/notes.h"

namespace welvane {

struct StatisticsWish {
    ChannelReading how{};
    std::string indexUnit{};  ///< "" for the file's own
    std::string formation{};  ///< only this one of the [TOPS] block; "" for the whole file
};

struct TrueStatistics : LasStatistics {
    IndexUnit unit{};
    std::size_t records = 0;  ///< read, whether they count or not
    std::vector<Note> notes{};
};

/// Statistics of a file's channels by FigureRules::trueFigures: every cell a number or counted, names and unit as they
/// stand, mean and deviation summed up block by block (Chan, Golub and LeVeque 1979), so that large values beside a
/// small spread lose nothing. A formation's depths are feet and are converted to the file's unit; where it is unknown
/// they count as they stand. A formation that the file does not have is told by formationFound, and everything counts.
/// Nothing when a person stopped it. DataRefusal as ChannelReader::next, for units that contradict each other, and for
/// a formation over an index that is no depth. `name` is the file's for people.
std::optional<TrueStatistics> readTrueStatistics(const LasFile& file, const StatisticsWish& wish,
                                                 const std::string& name, RunTurn& turn);

}  // namespace welvane
