#pragma once

#include <string>
#include <string_view>

#include "models/undo.h"

/// OText, the ~Other section of the new file, between the session (lines parted by CR LF) and a text box (by LF).
namespace welvane {

std::string shownOtherText(const Session& session);
/// A text that says the same as what there is keeps its bytes.
void setOtherText(Session& session, std::string_view text);
/// A text as it stands after a key: what is typed in one go is taken back as one step.
void typeOtherText(UndoHistory& history, App& app, Session& session, std::string_view text);

}  // namespace welvane
