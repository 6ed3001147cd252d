#pragma once

#include <string>
#include <string_view>

#include "session/session.h"

/// OText, the ~Other section of the new file, between the session (lines parted by CR LF) and a text box (by LF).
namespace welvane {

std::string shownOtherText(const Session& session);
/// A text that says the same as what there is keeps its bytes.
void setOtherText(Session& session, std::string_view text);

}  // namespace welvane
