#pragma once

#include "cli/options.h"
#include "jobs/pass_texts.h"

/// The options that shape a run, the same for one output and for one per file.
namespace welvane {

/// Adds the options to those of a verb.
void addPassOptions(VerbOptions& rows, PassTexts& choices);

}  // namespace welvane
