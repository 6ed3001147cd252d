#pragma once

#include <string>

#include "models/frame.h"

/// What a person who has nothing open yet is offered.
namespace welvane {

/// "Open the example wells": copies them into a folder that is asked for, opens the two runs of one well in a session
/// and splices them. A file of that name that is there already stays as it is. False when cancelled, or, after a box,
/// where there are none or they cannot be copied.
bool openExamples(Frame& frame);

/// A file that was chosen elsewhere, such as from the list of recent ones, into the session, which is opened first.
bool openFromList(Frame& frame, const std::string& path);

/// Files and folders dropped on the main window: a folder becomes the source folder; files go into the session.
void dropOnFrame(Frame& frame, const std::vector<std::string>& paths);

}  // namespace welvane
