#pragma once

#include <string>

#include "jobs/true_input.h"
#include "las/channel_statistics.h"

namespace welvane {

struct StatsRequest {
    std::string top{};  ///< only the formation of this name in the [TOPS] block; "" for the whole file
    ReadingChoices choices{};
};
/// Statistics and covered intervals of each channel of a file, the index left out. Refusal for data that cannot be
/// read, and for a formation that is not in its [TOPS] block.
TrueStatistics readStatistics(Workbench& bench, const std::string& file, const StatsRequest& request);

}  // namespace welvane
