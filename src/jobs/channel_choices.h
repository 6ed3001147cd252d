#pragma once

#include <string>
#include <vector>

#include "jobs/pass_request.h"
#include "session/session.h"

/// Choices that act on channels and sections of a loaded session. Each routine throws a Refusal for an input, a channel
/// or a column that is not there.
namespace welvane {

void applyLinks(Session& session, const std::vector<ChannelLink>& links);
void applyInputDepths(Session& session, const std::vector<InputDepths>& intervals);
void applyShifts(Session& session, const std::vector<ChannelShift>& shifts);
void applyClips(Session& session, const std::vector<ChannelClip>& clips);
void selectColumns(Session& session, const std::vector<std::string>& wanted);
/// Letters of V, W, C, P, O: those named are included in this order, the others follow and are left out. The data
/// section stays last.
void arrangeSections(Session& session, const std::string& letters);

}  // namespace welvane
