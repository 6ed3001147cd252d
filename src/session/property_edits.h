#pragma once

#include <string>

#include "session/session.h"

/// What follows from an edit of prd; nothing here asks anybody.
namespace welvane {

/// True for the six rows that hold the format: PrdRow::FormatDot to DataDecimals.
bool isFormatRow(PrdRow row);
/// Sets a cell of prd by its text or by item `item` of its list (from 0, -1 for none), with all that follows from it.
/// False for a step of zero, which leaves its cell empty. RunTimeFailure ("... is not a number", "overflow") for a
/// format value that is no 16-bit number; the cell then keeps its text.
bool setProperty(App& app, Session& session, PrdRow row, PrdColumn column, const std::string& text, int item = -1);
/// Sets a check of prd or takes it off. Checking "Apply TVD" sorts the survey table, which the pass reads.
void checkProperty(App& app, Session& session, PrdRow row, bool checked);

}  // namespace welvane
