#pragma once

#include <functional>
#include <vector>

#include "jobs/pass_request.h"
#include "jobs/workbench.h"

namespace welvane {

/// What happens to a session between the loading of its inputs and the choices of the request.
struct SessionStart {
    std::function<void()> loaded{};
    bool settled = false;      ///< what the inputs leave open, such as their spacing, was settled before
    std::vector<int> slots{};  ///< where each input goes; in a row from the first one when empty
};

/// Puts the inputs, opened as LAS files, into the slots of a fresh session and does to its tables what the request
/// says, in the order: splice, filter, curve lines, properties, links, depths, shifts, clips, selection, sections.
/// Refusal for a choice that makes no sense, or that these inputs cannot follow.
void prepareSession(Workbench& bench, Session& session, const std::vector<Input>& inputs, const PassRequest& request,
                    const SessionStart& start = {});

}  // namespace welvane
