#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace welvane {

/// Starts a program found by its path or on PATH, with nothing on its input and its output dropped, in a process group
/// of its own that ends with ours; waits as Platform::runAndWait tells.
ProcessResult runProgram(const std::vector<std::string>& arguments, double timeoutSeconds,
                         const std::function<bool()>& turn);

/// Starts a program that lives on without us; false when it could not be started.
bool startDetached(const std::vector<std::string>& arguments);

/// This process becomes the program; returns only when that could not be done.
void becomeProgram(const std::vector<std::string>& arguments);

}  // namespace welvane
