#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "models/function_dialog.h"

/// What the function dialog of a session's channel works on.
namespace welvane {

/// The function dialog over one channel of srd(4): its fields, and what they need. Lives as long as the dialog's
/// window; app and session outlive it.
struct FunctionChoice {
    /// Opened at the old descriptor; the function picked in the cell, when it is another one, is chosen.
    FunctionChoice(App& app, const Session& session, int column, std::string_view oldDescriptor,
                   std::string_view chosen);

    FunctionDialogContext context;
    FunctionDialog dialog;
    /// What holds when the dialog is left without a choice: the old function, if there was one.
    std::optional<FunctionDescriptor> old;
};

}  // namespace welvane
