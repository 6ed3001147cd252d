#include "cli/reading_options.h"

namespace welvane {

void addReadingOptions(VerbOptions& options, ReadingChoices& choices) {
    options.insert(options.end(),
                   {{"--loose", &choices.loose, "", "Place what can be placed of records of another length"},
                    {"--index-unit", &choices.indexUnit, "U", "The unit of the index, whatever the header says"},
                    {"--decimal-comma", &choices.decimalComma, "", "A comma inside a number is its point"}});
}

void addJobsOption(VerbOptions& options, int& jobs) {
    constexpr double most = 64;
    options.push_back({"--jobs",
                       &jobs,
                       "N",
                       "Files that are worked on at once (as many as there are cores)",
                       {.least = 1, .most = most}});
}

}  // namespace welvane
