#pragma once

#include <string>

#include "session/session.h"

/// What follows a file that was written, and files in other programs.
namespace welvane {

/// Opens a file in the program that the system has for it, or in the named one; a box tells when none could be started.
bool openFileWithShell(App& app, const std::string& path, const std::string& program = {});
/// The log viewer of the settings on a file.
bool viewAsLog(App& app, const std::string& path);

/// The toggles of the settings in their order: the editor, the checker, the log viewer. With the checker wanted, a file
/// whose name does not end in ".las" gets neither it nor the viewer. Nothing in command mode but the check.
void afterProcess(App& app, const std::string& path);

}  // namespace welvane
