#pragma once

#include <string>

#include "models/table_model.h"
#include "session/session.h"

/// prd as a window edits it.
namespace welvane {

/// Pick list of a cell, "|"-joined; "" where it offers none, "..." for a browse button.
std::string propertyList(const Session& session, TableIndex row, TableIndex column);
/// An edit of prd by text or by a list choice, as setProperty; a step of zero is told in a box.
void editProperty(App& app, Session& session, const CellEdit& edit);

}  // namespace welvane
