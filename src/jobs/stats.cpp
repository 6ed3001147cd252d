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

TrueStatistics readStatistics(Workbench& bench, const std::string& file, const StatsRequest& request) {
    const LasFilePointer opened = openTrue(file);
    RunState& run = bench.app().run;
    run.statusText = "Reading " + fileNameOf(file);
    const WorkInHand work(bench.user(), {.bytes = opened->bytes().size()});
    RunTurn turn(run, bench.user(), opened->bytes().size());
    std::optional<TrueStatistics> statistics = readingOf(file, [&] {
        return readTrueStatistics(*opened,
                                  {.how = request.choices.reading(bench.app().run),
                                   .indexUnit = request.choices.indexUnit,
                                   .formation = request.top},
                                  file, turn);
    });
    if (!statistics) throw Refusal(file, "stopped");
    if (!request.top.empty() && !statistics->formationFound)
        throw Refusal(file, "no top is named " + request.top + "; " + topsOf(*opened));
    tellNotes(bench, file, statistics->notes);
    // The index is no channel of its own: it has no numbers.
    statistics->channels.erase(statistics->channels.begin());
    return std::move(*statistics);
}

}  // namespace welvane
