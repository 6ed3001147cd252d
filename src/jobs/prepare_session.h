#pragma once

#include <vector>

#include "jobs/pass_request.h"
#include "jobs/workbench.h"

namespace welvane {

/// Puts the inputs, opened as LAS files, into the slots of a fresh session and does to its tables what the request
/// says, in the order: splice, filter, curve lines, properties, links, depths, shifts, clips, selection, sections.
/// Refusal for a choice that makes no sense, or that these inputs cannot follow.
void prepareSession(Workbench& bench, Session& session, const std::vector<Input>& inputs, const PassRequest& request);

}  // namespace welvane
