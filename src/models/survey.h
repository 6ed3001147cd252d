#pragma once

#include "session/session.h"

/// The survey tab around trd: files that a person chooses, and clearing.
namespace welvane {

/// "Open TVD File": asks for a file, keeps its path as the setting `tvdFile`, and reads it. False when cancelled or
/// unreadable.
bool openTVDFile(App& app, Session& session);
/// "Save Inclinometry Data": asks for a name. False when cancelled or failed.
bool saveInclinometryData(App& app, Session& session);

/// Asks, then clears the texts of the selected cells (heads and labels stay). Rows and columns count from 0, both ends
/// included.
void clearTrdSelection(Table& trd, int firstRow, int firstColumn, int lastRow, int lastColumn, UserInterface& user);

}  // namespace welvane
