#include "session/true_slot.h"

#include <algorithm>
#include <utility>

#include "las/data_access.h"
#include "las/input_data.h"
#include "shared/failure.h"

namespace welvane {

namespace {

/// The unit that the other inputs' depths are in; nothing while there is none.
const InputData* otherInput(const Session& session, int number) {
    for (int slot = 0; slot < slotCount; ++slot)
        if (slot != number && session.loaded(slot) && session.slots[slot].data) return session.slots[slot].data.get();
    return nullptr;
}

void takeFacts(const InputData& data, InputSlot& slot) {
    const IndexSpacing& spacing = data.spacing;
    slot.start = slot.firstDepth = spacing.first;
    slot.stop = slot.lastDepth = spacing.last;
    slot.step = spacing.direction * spacing.step;
    slot.topDepth = spacing.top;
    slot.bottomDepth = spacing.bottom;
    slot.nullText = data.nullText;
    slot.depthUnit = data.unit.text;
}

/// The index first. Its unit is the one that its depths are in.
SlotChannels channelsOf(const InputData& data) {
    SlotChannels channels;
    for (const HeaderField& field : data.channels.names.channels) channels.emplace_back().field = field;
    if (!channels.empty()) channels.front().field.unit = data.unit.text;
    return channels;
}

}  // namespace

std::string depthUnitText(const IndexUnit& unit) {
    if (unit.kind == IndexUnitKind::Metre) return "M";
    return unit.kind == IndexUnitKind::Foot ? "F" : unit.text;
}

bool readTrueSlot(App& app, const Session& session, int number, const LasFile& file, InputSlot& slot,
                  SlotChannels& channels, SlotLoadResult& result) {
    fillInputSlot(file, slot);
    if (slot.lasVersion.empty()) slot.lasVersion = lasVersionOf(file);
    try {
        RunTurn turn(app.run, app.user, file.bytes().size());
        const std::shared_ptr<InputData> data =
            readInputData(file, {session.loose, session.decimalComma, app.run.workers}, session.indexUnit, turn);
        if (!data) {
            result.why = "stopped";
            return false;
        }
        const InputData* const other = otherInput(session, number);
        if (other != nullptr && !convertIndex(*data, other->unit, file.path())) {
            result.why = "its index is in " + data->unit.text + ", that of the first input in " + other->unit.text;
            return false;
        }
        takeFacts(*data, slot);
        slot.wrap = slot.wrap.empty() ? "NO" : slot.wrap;
        channels = channelsOf(*data);
        result.notes = data->notes;
        slot.data = data;
    } catch (const FileFailure&) {
        throw;
    } catch (const DataRefusal& refused) {
        result.why = refused.what();
        result.help = refused.help;
        return false;
    } catch (const RunTimeFailure& failure) {
        result.why = failure.what();
        return false;
    }
    std::vector<std::string> units;
    for (const SlotChannel& channel : channels) units.push_back(channel.field.unit);
    result.unknownUnits = checkUnits(app.reference, units);
    return true;
}

}  // namespace welvane
