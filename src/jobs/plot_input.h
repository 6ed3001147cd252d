#pragma once

#include <string>
#include <vector>

#include "jobs/workbench.h"
#include "las/index_unit.h"
#include "las/read_channels.h"
#include "picture/log_plot.h"

namespace welvane {

/// A file read for a plot: its channels as they stand, by increasing index.
struct PlotInput {
    IndexUnit unit{};
    std::vector<std::vector<double>> columns{};  ///< the index first; NaN for null
    PlotSource source{};                         ///< looks into the columns; they keep their place when this is moved
};
/// Notes tell what of the data is no figure, and an index that is out of order. Refusal for a file that cannot be read,
/// and when a person stopped it. `shownName` stands in its place in notes and on the plot.
PlotInput readPlotInput(Workbench& bench, const std::string& file, const std::string& shownName,
                        const ChannelReading& how);
/// Columns that are in memory, by increasing index, under a header of their own.
PlotInput plotInputOf(const LasText& header, std::vector<std::vector<double>> columns, const std::string& shownName);
/// The index in another unit. Refusal for a length and a time; a blank or unknown unit scales nothing.
void convertIndex(PlotInput& input, const IndexUnit& wanted);
/// How many of the unit `wanted` make one of `unit`: 1 where one of them is unknown, nothing for a length and a time.
std::optional<double> indexFactor(const IndexUnit& unit, const IndexUnit& wanted);

}  // namespace welvane
