#include "jobs/stats.h"

#include "las/tops.h"
#include "shared/files.h"

namespace welvane {

namespace {

std::string topsOf(const LasFile& file) {
    std::string names;
    for (const Top& top : readTops(file)) names += (names.empty() ? "" : ", ") + top.name;
    return names.empty() ? "it has no [TOPS] block" : "it has " + names;
}

}  // namespace

LasStatistics readStatistics(Workbench& bench, const std::string& file, const StatsRequest& request) {
    const Input input = bench.openLas(file, request.loose);
    RunState& run = bench.app().run;
    run.statusText = "Reading " + fileNameOf(file);
    const WorkInHand work(bench.user(), {.bytes = fileSize(input.path).value_or(0)});
    LasStatistics statistics;
    const StepResult result = readLasStatistics(*input.file, request.top, statistics, run, bench.user());
    if (result == StepResult::Cancelled) throw Refusal(file, "stopped");
    if (result != StepResult::Done) throw Refusal(file, "its data cannot be read");
    if (!request.top.empty() && !statistics.formationFound)
        throw Refusal(file, "no top is named " + request.top + "; " + topsOf(*input.file));
    // The index is no channel of its own: it has no numbers.
    if (!statistics.channels.empty()) statistics.channels.erase(statistics.channels.begin());
    return statistics;
}

}  // namespace welvane
