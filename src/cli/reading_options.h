#pragma once

#include "cli/options.h"
#include "jobs/true_input.h"

namespace welvane {

/// The options of the verbs that read figures.
void addReadingOptions(VerbOptions& options, ReadingChoices& choices);
/// How many files are read at once; 1 where nothing is said.
void addJobsOption(VerbOptions& options, int& jobs);

}  // namespace welvane
