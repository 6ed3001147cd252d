#pragma once

#include <string>

#include "models/frame.h"

/// A session kept in a file from the window, and opened again. The work is for jobs, on copies.
namespace welvane {

/// What a session file gave.
struct RestoredSession {
    Session session;
    StartupSettings settings;  ///< with what a run of it reads
};

/// Ask for the name of a session file; "" when cancelled.
std::string askSessionToSave(Frame& frame);
std::string askSessionToOpen(Frame& frame);

/// Writes the session. RunTimeFailure or Refusal, with nothing written, where it cannot be kept.
void keepSession(App& app, const Session& session, const std::string& path);
/// Reads a session back. RunTimeFailure or Refusal tells what is missing or changed.
RestoredSession restoreKeptSession(App& app, const std::string& path);
/// The frame goes on with a restored session, which is opened where none was. A step that can be taken back.
void takeSession(Frame& frame, RestoredSession&& restored, const std::string& path);

}  // namespace welvane
