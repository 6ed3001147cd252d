#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/command_line.h"
#include "session/session.h"

/// The run without prompts that a command line asks for.
namespace welvane {

/// What a headless run did. Nobody is shown this but somebody who traces it: success is told by the output file alone.
struct HeadlessReport {
    bool written = false;
    std::vector<std::string> notes;  ///< why nothing was written, or what was left out
};

/// Opens the named files in a session, does what the line says, and runs the pass. Puts app.run in command mode. Never
/// throws.
HeadlessReport runHeadless(App& app, const CommandLine& line);

}  // namespace welvane
