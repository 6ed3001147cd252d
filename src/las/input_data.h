#pragma once

#include <memory>
#include <string>
#include <vector>

#include "las/index_spacing.h"
#include "las/index_unit.h"
#include "las/read_channels.h"
#include "las/sections.h"

namespace welvane {

/// All that stands behind ~A of an input, read by FigureRules::trueFigures, and how its records lie.
struct InputData {
    ChannelData channels;  ///< the index in the depth unit of the session
    IndexSpacing spacing;  ///< in the same
    IndexUnit unit;        ///< of that index
    std::string nullText;  ///< the file's null, -999.25 where it has none
    std::vector<Note> notes;

    const std::vector<double>& depths() const { return channels.columns.front(); }
};
using InputDataPointer = std::shared_ptr<const InputData>;

/// What is to be told of a file's depths: where STRT, STOP and STEP say otherwise, depths beside their grid, records
/// that are missing. `name` is the file's for people.
std::vector<Note> depthNotes(const DepthHeader& header, const IndexSpacing& spacing, const std::string& name);

/// Reads them; nothing when a person stopped it. `indexUnit` is what a person says, or "". DataRefusal for data that
/// cannot be read as they should be, RunTimeFailure where there are none.
std::shared_ptr<InputData> readInputData(const LasFile& file, const ChannelReading& how, std::string_view indexUnit,
                                         RunTurn& turn);

/// Brings the index into another unit; false, with nothing changed, where that cannot be done (a time and a length).
/// Without a known unit on both sides nothing is converted. A note tells of a conversion.
bool convertIndex(InputData& data, const IndexUnit& wanted, const std::string& name);

}  // namespace welvane
