#include "jobs/reopen.h"

#include "session/loading.h"

namespace welvane {

FilterReport reopenSlots(App& app, Session& session, FigureRules rules) {
    for (int slot = 0; slot < slotCount; ++slot)
        if (!session.slots[slot].path.empty()) Open4Files(app, session, slot);
    if (!session.tables.filterInUse()) return {};
    session.filterFile = session.tables.frd.text(1, FrdColumn::Path);
    return openFilter(app, session, rules);
}

}  // namespace welvane
