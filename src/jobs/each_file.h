#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "jobs/true_input.h"
#include "jobs/workbench.h"

/// One thing done to each of many files, in this thread or by several workers.
namespace welvane {

/// Workers over the numbers 0 to `items` - 1. Each has a thread and a process of its own: an App with the settings and
/// reference tables of the owner's, a scratch folder, a user interface that shows nothing and hears of a stop.
class Crew {
  public:
    /// Does item `item`. Lets nothing be thrown.
    using Work = std::function<void(Workbench& bench, std::size_t item)>;
    /// Items that may be done while an earlier one is not taken: what came of them waits for its turn.
    static constexpr std::size_t usualAhead = 64;
    /// Begins at once. With `asking` the questions of the workers are asked by the owner's interface, one at a time;
    /// otherwise they have the answers of a run without anybody to ask. RunTimeFailure when the system gives no thread
    /// at all.
    Crew(Workbench& owner, std::size_t items, std::size_t workers, Work work, std::size_t ahead = usualAhead,
         bool asking = false);
    /// Whoever still works is told to stop, and waited for.
    ~Crew();
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

    /// Waits for the next item in order; false when a stop came first.
    bool wait();
    /// While it is held no worker asks, so that the owner may use its interface.
    [[nodiscard]] std::unique_lock<std::mutex> holdQuestions();

  private:
    struct Inside;
    std::unique_ptr<Inside> inside_;
};

/// What came of one file.
template <class Report>
struct FileResult {
    std::string file;
    std::optional<Report> report{};
    Fault fault{};  ///< why there is none
    std::vector<Note> notes{};
};

/// The fault that a failure under way stands for; to be called where it was caught.
Fault faultInFlight();

/// Workers for so many files, where `wanted` of them were asked for or, with 0, as many as there are cores: 0 where
/// this thread does as well.
std::size_t workersFor(std::size_t files, int wanted);

/// Makes the report of a file; `item` is its number in the list, from 0.
template <class Report>
using FileWork = std::function<Report(Workbench& bench, const std::string& file, std::size_t item)>;
template <class Report>
using FileTaker = std::function<void(FileResult<Report> result)>;

template <class Report>
void workOn(Workbench& bench, const FileWork<Report>& work, std::size_t item, FileResult<Report>& result) {
    try {
        result.report = work(bench, result.file, item);
    } catch (...) {
        result.fault = faultOf(result.file);
    }
    result.notes = bench.takeNotes();
    if constexpr (std::is_base_of_v<JobReport, Report>)
        if (result.report && result.notes.empty()) result.notes = std::exchange(result.report->notes, {});
}

/// Hands each file to `work` and its result to `take`, in the order of the files. With `workers` 0 both happen in this
/// thread, one file after the other; otherwise so many workers do the work, and notes are told when a file's turn
/// comes. False when a stop came before the last file.
template <class Report>
bool eachFile(Workbench& bench, const std::vector<std::string>& files, std::size_t workers,
              const FileWork<Report>& work, const FileTaker<Report>& take) {
    if (workers == 0) {
        for (std::size_t item = 0; item < files.size(); ++item) {
            if (bench.stopWanted()) return false;
            FileResult<Report> result{files[item]};
            workOn(bench, work, item, result);
            take(std::move(result));
        }
        return true;
    }
    std::vector<FileResult<Report>> results;
    for (const std::string& file : files) results.push_back({file});
    Crew crew(bench, files.size(), workers,
              [&](Workbench& own, std::size_t item) { workOn(own, work, item, results[item]); });
    const auto count = static_cast<double>(files.size());
    for (std::size_t item = 0; item < results.size(); ++item) {
        if (!crew.wait()) return false;
        for (const Note& note : results[item].notes) bench.user().tell(note);
        take(std::move(results[item]));
        bench.user().progress({"Files", static_cast<double>(item + 1) / count});
    }
    return true;
}

}  // namespace welvane
