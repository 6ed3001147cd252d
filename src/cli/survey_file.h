#pragma once

#include <string>

#include "cli/workbench.h"
#include "session/tvd.h"

/// Surveys as the verbs read them.
namespace welvane {

/// Reads a survey into the session's table and computes it; a line on stderr tells what was passed over, another what
/// was put right. A file that names no unit of its own counts as in `unit`. Refusal when no station is found.
SurveyReport readSurveyFile(Workbench& bench, Session& session, const std::string& path, SurveyUnit unit);

}  // namespace welvane
