#pragma once

#include <string>
#include <string_view>

#include "session/filters.h"
#include "session/session.h"

/// Files that a person chooses for a session: inputs into its slots, and the filter.
namespace welvane {

/// The browse button of a file row: asks for a file and opens it in the slot. False when cancelled or not loaded.
bool browseSlotFile(App& app, Session& session, int slot);
/// Names the filter of frd, in the session and in the settings; "" takes it away.
void takeFilterFile(App& app, Session& session, const std::string& path);
/// Asks for a filter file and stores the choice; false when cancelled.
bool doOpenFilter(App& app, Session& session, const std::string& title = "Open Filter File");
/// The button that turns the filter of frd on or off for the loaded files, after a question. Returns the state that
/// holds now.
bool filBut(App& app, Session& session, bool on);
/// Row 23's browse button of prd: a chosen filter's path. False when cancelled.
bool browseFilter(App& app, Session& session);
/// Opens every slot that holds a path, in order, and then applies the filter that frd has in use, once. An empty
/// `trigger` does nothing.
FilterReport loadAllSlots(App& app, Session& session, std::string_view trigger);

}  // namespace welvane
