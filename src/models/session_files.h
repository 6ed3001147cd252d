#pragma once

#include <string>
#include <string_view>

#include "models/frame.h"
#include "session/filters.h"

/// The filter of a session as a person chooses, applies and removes it; and all its files loaded anew.
namespace welvane {

/// Names the filter of frd, in the session and in the settings; "" takes it away.
void takeFilterFile(App& app, Session& session, const std::string& path);
/// Asks for a filter file and stores the choice; false when cancelled.
bool doOpenFilter(App& app, Session& session, const std::string& title = "Open Filter File");
/// The button that turns the filter of frd on or off for the loaded files, after a question. Returns the state that
/// holds now; `report`, when given, takes what became of the filter.
bool filBut(App& app, Session& session, bool on, FilterReport* report = nullptr);
/// The same as a step of the frame's session: what could not be followed joins the problems. Not done where the button
/// went back, with why when it was not cancelled.
EditOutcome switchFilter(Frame& frame, bool on);
/// Row 23's browse button of prd: a chosen filter's path. False when cancelled.
bool browseFilter(App& app, Session& session);
/// Opens every slot that holds a path, in order, and then applies the filter that frd has in use, once. An empty
/// `trigger` does nothing.
FilterReport loadAllSlots(App& app, Session& session, std::string_view trigger);

}  // namespace welvane
