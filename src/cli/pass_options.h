#pragma once

#include <string>
#include <vector>

#include "cli/workbench.h"
#include "session/session.h"

namespace CLI {
class App;
}

/// The options that shape a run, the same for one output and for one per file.
namespace welvane {

/// As typed; "" and empty lists are options that were not given.
struct PassChoices {
    std::string from, to, step, unit, offset, direction, wrap, vers, null, header, format, tvd, fill, renameDuplicates,
        columnWidth, mergeParameters, ascii, separator, sections, filter;
    bool fillEmpty = false, keepDetails = false, smooth = false, splice = false, loose = false;
    std::vector<std::string> curves, links, applyDepths, shifts, clips;
    std::string select;
};

/// Declares the options on a verb's command.
void declarePassOptions(CLI::App& command, PassChoices& choices);
/// Puts the inputs into the slots of a fresh session and does to its tables what the options say, in the order: filter,
/// curve lines, properties, splice, links, depths, selection, sections. UsageFault for an option that makes no sense,
/// Refusal for one that these inputs cannot follow.
void prepareSession(Workbench& bench, Session& session, const std::vector<Input>& inputs, const PassChoices& choices);

}  // namespace welvane
