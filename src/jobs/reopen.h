#pragma once

#include "session/filters.h"
#include "session/session.h"

namespace welvane {

/// Opens every slot that holds a path, in order, and then applies the filter that frd has in use, once.
FilterReport reopenSlots(App& app, Session& session, FigureRules rules);

}  // namespace welvane
