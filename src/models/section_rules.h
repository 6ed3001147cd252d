#pragma once

#include <string>

#include "session/session.h"

/// ord, the sections of the new file, as a window edits it; moveSection of session_setup.h is its drag.
namespace welvane {

/// Pick list of a section's name, by the letter behind its "~"; "" for a section of its own.
std::string sectionList(const Session& session, int column);
/// Gives a section another name. RunTimeFailure for one that would make another section of it.
void renameSection(Session& session, int column, const std::string& text);
/// Includes a section or leaves it out; leaving out ~V, ~W or ~C asks first. Returns the state that holds now.
bool includeSection(App& app, Session& session, int column, bool include);

}  // namespace welvane
