#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "las/las_file.h"
#include "las/wrap.h"
#include "shared/prompts.h"
#include "shared/run_state.h"

namespace welvane {

/// A stretch of samples without a null between them, in the file's depth unit; `top` is the smaller depth.
struct DepthInterval {
    double top = 0, bottom = 0;
};

/// One channel over the depths looked at. Depths are in the file's unit. All numbers are 0 for a channel without
/// samples.
struct ChannelStatistics {
    HeaderField field;  ///< its ~Curve line, upper-cased
    double minimum = 0, maximum = 0, mean = 0;
    std::int64_t count = 0;  ///< of samples that are not null
    double minimumDepth = 0, maximumDepth = 0;
    double standardDeviation = 0;          ///< of a sample (division by count - 1); 0 for a single value
    double footage = 0;                    ///< thickness that the intervals cover
    std::string footageText;               ///< with the mask "0.0000"
    std::vector<DepthInterval> intervals;  ///< the first 100,000
    std::string intervalText;              ///< "top- bottom /top- bottom" with the mask "0.0"
};

struct LasStatistics {
    std::string depthUnit;
    double top = 0, bottom = 0;  ///< depths looked at, in the file's unit, `top` the smaller one
    std::string formation;       ///< as asked for; a blank at its end says that the file has no such top
    bool formationFound = false;
    std::vector<ChannelStatistics> channels;  ///< element 0 is the index, whose numbers stay 0
};

/// Statistics of all channels in one pass over the data, of the whole file or of one formation of its [TOPS] block. A
/// gap in the header is told in a box, and an assumption goes on. Wrapped data are read as they stand. Failed without
/// ~A or ~Curve lines; FileFailure when a part of the file cannot be read.
StepResult readLasStatistics(const LasFile& file, std::string_view formation, LasStatistics& result, RunState& run,
                             UserInterface& user);

}  // namespace welvane
