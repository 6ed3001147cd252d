#pragma once

#include <string>
#include <vector>

#include "session/session.h"

/// Options that act on channels and sections of a loaded session. Each raises UsageFault for a text that cannot be read
/// and Refusal for a channel that is not there.
namespace welvane {

/// SLOT:CHANNEL>COLUMN[:FROM:TO]. COLUMN is the number of an output column, its mnemonic, or "new".
void applyLinks(Session& session, const std::vector<std::string>& links);
/// SLOT:FROM:TO.
void applyDepthIntervals(Session& session, const std::vector<std::string>& intervals);
/// SLOT:CHANNEL:OFFSET.
void applyShifts(Session& session, const std::vector<std::string>& shifts);
/// SLOT:CHANNEL:TOP:BOTTOM.
void applyClips(Session& session, const std::vector<std::string>& clips);
/// A,B,C.
void selectColumns(Session& session, const std::string& names);
/// V,W,C,P,O: those named are included in this order, the others follow and are left out. The data section stays last.
void arrangeSections(Session& session, const std::string& letters);

}  // namespace welvane
