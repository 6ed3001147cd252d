#pragma once

#include <string>

#include "models/frame.h"

/// The current file written anew, wrapped when it is not and the other way. The work is for a job, on copies.
namespace welvane {

/// The file that would be converted: the first that is selected in the browser; "" for none.
std::string fileToWrap(const Frame& frame);
/// Asks for the name of the new file; "" when cancelled.
std::string askWrapOutput(Frame& frame, const std::string& file);
/// Writes it. Not done, with the reason and nothing written, where the file cannot be converted.
EditOutcome wrapInto(App& app, const std::string& file, const std::string& output);

}  // namespace welvane
