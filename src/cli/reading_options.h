#pragma once

#include "cli/options.h"
#include "jobs/true_input.h"

namespace welvane {

/// The options of the verbs that read figures.
void addReadingOptions(VerbOptions& options, ReadingChoices& choices);
/// How many files are worked on at once; `jobs` stays as it is where nothing is said, 0 for as many as there are cores.
void addJobsOption(VerbOptions& options, int& jobs);

}  // namespace welvane
