#pragma once

#include "las/index_unit.h"
#include "las/las_file.h"
#include "session/load_result.h"
#include "session/session.h"

namespace welvane {

/// What readHeader does, by FigureRules::trueFigures: reads the whole file into `slot.data` and takes the facts from
/// there, the index in the unit of the other inputs. False, with `why` in `result`, when that cannot be done.
bool readTrueSlot(App& app, const Session& session, int number, const LasFile& file, InputSlot& slot,
                  SlotChannels& channels, SlotLoadResult& result);

/// The text of row 4 for the unit of an index: M and F for metres and feet however they are written, any other as it
/// stands.
std::string depthUnitText(const IndexUnit& unit);

}  // namespace welvane
