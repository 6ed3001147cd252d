#pragma once

#include <cstdint>
#include <string>

#include "cli/terminal_interface.h"
#include "engine/driver.h"

/// What the verbs tell of a finished pass.
namespace welvane {

/// "1 sample", "2 samples".
std::string counted(std::int64_t number, const std::string& thing);
/// What was left out on the way, in a line each.
void tellLeftOut(TerminalInterface& user, const ItemReport& item);

}  // namespace welvane
