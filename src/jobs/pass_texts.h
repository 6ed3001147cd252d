#pragma once

#include <string>
#include <vector>

#include "jobs/pass_request.h"

namespace welvane {

/// The choices of a pass as people give them, behind options or as keywords: those that need no reading stand in
/// `request`, the others as typed. "" and empty lists are choices that were not made. Slots count from 1 here.
struct PassTexts {
    PassRequest request;
    std::string from, to, unit, offset, direction, wrap, vers, null, format, fill, renameDuplicates, columnWidth,
        mergeParameters, ascii, separator, sections, select, tvdUnit, rules;
    std::vector<std::string> links, applyDepths, shifts, clips;
};

/// The request that the choices make. Refusal (senseless) for a text that cannot be read and for choices that exclude
/// each other.
PassRequest passRequest(const PassTexts& choices);

}  // namespace welvane
