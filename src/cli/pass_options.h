#pragma once

#include <string>
#include <vector>

#include "cli/options.h"
#include "jobs/pass_request.h"

/// The options that shape a run, the same for one output and for one per file.
namespace welvane {

/// What is taken as it stands, and the rest as typed; "" and empty lists are options that were not given.
struct PassChoices {
    PassRequest request;
    std::string from, to, unit, offset, direction, wrap, vers, null, format, fill, renameDuplicates, columnWidth,
        mergeParameters, ascii, separator, sections, select, tvdUnit, rules;
    std::vector<std::string> links, applyDepths, shifts, clips;
};

/// Adds the options to those of a verb.
void addPassOptions(VerbOptions& rows, PassChoices& choices);
/// The request that the options make. UsageFault for a text that cannot be read.
PassRequest passRequest(const PassChoices& choices);

}  // namespace welvane
