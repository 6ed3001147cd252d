#pragma once

#include "models/table_model.h"
#include "session/session.h"

/// Lines of the tables wrd and parg, added and taken away.
namespace welvane {

/// A blank line in front of `row`; behind the last one for a number beyond it. Returns its row. RunTimeFailure for a
/// row of heads.
int addHeaderLine(Table& table, int row);
/// Takes a line away. Refused for the heads, for a line that is hidden since only a filter reads it, and for the lines
/// that no ~Well section can do without: STRT, STOP, STEP and NULL.
EditOutcome deleteHeaderLine(Table& table, int row);

}  // namespace welvane
