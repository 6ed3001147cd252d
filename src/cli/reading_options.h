#pragma once

#include "cli/options.h"
#include "jobs/true_input.h"

namespace welvane {

/// The options of the verbs that read figures.
void addReadingOptions(VerbOptions& options, ReadingChoices& choices);

}  // namespace welvane
