#include "jobs/batch.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "jobs/batch_log.h"
#include "jobs/each_file.h"
#include "jobs/pass_notes.h"
#include "jobs/prepare_session.h"
#include "jobs/run.h"
#include "shared/files.h"

namespace welvane {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begun) {
    return std::chrono::duration<double>(Clock::now() - begun).count();
}

/// An output may be written and not yet told while so many files are ahead of it, and while so many wait for a sync.
constexpr std::size_t filesAhead = batchGroup / 2, filesPerSync = batchGroup / 2;

/// The files of a batch.
class Batch {
  public:
    Batch(Workbench& bench, const BatchRequest& request, const std::function<void(const BatchItem&)>& done)
        : bench_(bench), request_(request), done_(done), settings_(bench.app().settings) {
        for (const std::string& other : {request.pass.filter, request.pass.tvd})
            if (!other.empty()) bench.willRead(other);
        settleOutputs();
        for (const BatchItem& item : items_) {
            bytes_.push_back(fileSize(item.path).value_or(0));
            allBytes_ += bytes_.back();
        }
    }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    BatchReport run();

  private:
    void settleOutputs();
    bool isInput(const std::string& file);
    void openLog();
    void oneFile(Workbench& bench, BatchItem& item);
    void makeOutput(Workbench& bench, BatchItem& item);
    void passOver(Workbench& bench, const Input& input, BatchItem& item);
    void takePlace(Workbench& bench, const Input& input, const BatchItem& item);
    void startAfresh(Workbench& bench) const;
    BatchLogLine lineOf(const BatchItem& item, const char* verdict) const;
    bool isDone(const BatchItem& item) const;
    bool isOwn(const BatchItem& item) const;
    void alone();
    void together();
    void showPlace(std::size_t index);
    void take(std::size_t index);
    void settleGroup();

    Workbench& bench_;
    const BatchRequest& request_;
    const std::function<void(const BatchItem&)>& done_;
    std::vector<BatchItem> items_;  ///< of the share
    std::once_flag inputsResolved_;
    std::unordered_set<std::string> inputs_;  ///< by their only paths, once an output is there already
    std::vector<bool> ended_;
    std::vector<std::uint64_t> bytes_;
    std::uint64_t allBytes_ = 0, doneBytes_ = 0;
    std::size_t next_ = 0;
    std::vector<std::size_t> group_;  ///< ended, not yet in the log
    std::optional<BatchLog> log_;
    StartupSettings settings_;
    std::atomic<bool> choicesMakeSense_ = false;  ///< they were followed once, so what is wrong now is the file
    std::atomic<bool> outputTried_ = false;       ///< the folder was written to once
};

void Batch::startAfresh(Workbench& bench) const {
    App& app = bench.app();
    app.settings = settings_;
    app.run.batchRunning = app.run.noInputRun = false;
    app.run.progressFraction = 0;
    for (std::string* text :
         {&app.run.statusText, &app.run.sourceLabel, &app.run.targetLabel, &app.run.lasFile, &app.run.targetFile})
        text->clear();
    // A step of zero, for one, sets the flag to end its own pass.
    if (!bench.stopWanted()) app.run.cancelRequested = false;
}

/// Where the files go: their own names in the folder. A plain table is no LAS file and is not called one. What stands
/// against a name is told of its file; all shares of a list find the same. The list may be far longer than the share.
void Batch::settleOutputs() {
    const std::string_view extension = request_.pass.csv ? "csv" : request_.pass.plain ? "txt" : "";
    std::unordered_map<std::string_view, std::size_t> taken;
    taken.reserve(request_.files.size());
    for (std::size_t index = 0; index < request_.files.size(); ++index) {
        const std::string_view path = request_.files[index];
        std::string_view name = path.substr(path.find_last_of("/\\") + 1);
        // Names that differ behind their last dot alone become one.
        if (!extension.empty()) name = name.substr(0, name.rfind('.'));
        const auto [other, isNew] = taken.emplace(name, index);
        if (index % request_.share.count != request_.share.index - 1) continue;
        BatchItem item;
        item.path = path;
        item.output = withBackslash(request_.folder) + fileNameOf(path);
        if (!extension.empty()) item.output = changeExtension(item.output, extension);
        if (!isNew)
            item.fault = {
                .file = item.path,
                .reason = {"its output " + item.output + " is already that of " + request_.files[other->second]}};
        items_.push_back(std::move(item));
    }
    ended_.resize(items_.size());
}

/// Whether a file that is there is one of the inputs, by whatever name.
bool Batch::isInput(const std::string& file) {
    std::call_once(inputsResolved_, [this] {
        for (const std::string& input : request_.files) inputs_.insert(onlyPath(input));
    });
    return inputs_.contains(onlyPath(file));
}

BatchLogLine Batch::lineOf(const BatchItem& item, const char* verdict) const {
    return {.verdict = verdict,
            .path = item.path,
            .output = item.output,
            .why = item.why(),
            .options = request_.choicesKey,
            .size = item.identity.size,
            .time = item.identity.changed,
            .channels = item.channels,
            .samples = item.samples,
            .seconds = item.seconds};
}

void Batch::openLog() {
    if (request_.log.empty()) return;
    bench_.needOwnFile(request_.log, {});
    for (const BatchItem& item : items_)
        if (onlyPath(item.path) == onlyPath(request_.log)) throw Refusal(request_.log, "is one of the inputs");
    log_.emplace(request_.log, request_.resume        ? BatchLog::Start::Resume
                               : bench_.rules().force ? BatchLog::Start::Replace
                                                      : BatchLog::Start::New);
    bench_.willRead(request_.log);
    BatchLogLine head{.verdict = "batch", .output = request_.folder, .options = request_.choicesKey};
    if (request_.share.count > 1)
        head.part = std::to_string(request_.share.index) + "/" + std::to_string(request_.share.count);
    head.files = items_.size();
    log_->append({head});
}

/// Whether the log tells that the file is written as it would be now.
bool Batch::isDone(const BatchItem& item) const {
    const BatchLogLine* said = log_ && request_.resume ? log_->said(item.path) : nullptr;
    return said != nullptr && said->verdict == "written" && said->output == item.output &&
           said->options == request_.choicesKey && said->size == item.identity.size &&
           said->time == item.identity.changed && fileExists(item.output);
}

/// Whether an interrupted run may have put the output there and could not log it.
bool Batch::isOwn(const BatchItem& item) const {
    const BatchLogLine* said = log_ ? log_->said(item.path) : nullptr;
    return said != nullptr && said->verdict == "begun" && said->output == item.output;
}

/// The output's name is free, or becomes so.
void Batch::takePlace(Workbench& bench, const Input& input, const BatchItem& item) {
    bench.needOwnFile(item.output, {input});
    if (isOwn(item)) removeFile(item.output);
    bench.checkOutput(item.output, {input}, !outputTried_);
    outputTried_ = true;
    if (log_) log_->append({lineOf(item, "begun")});
}

void Batch::passOver(Workbench& bench, const Input& input, BatchItem& item) {
    takePlace(bench, input, item);
    Session session;
    prepareSession(bench, session, {input}, request_.pass);
    bench.needOwnFile(item.output, {input});
    choicesMakeSense_ = true;
    // A file that is replaced is synced before it is: without power one of both is whole.
    const bool isNew = !fileExists(item.output);
    bench.leaveUnsynced(!request_.synced || isNew);
    RunOutcome outcome;
    {
        // The boxes that tell of a run that broke off say less than its refusal.
        const HeldBoxes held(bench.user());
        outcome = passOnto(bench, session, jobRun(bench, request_.pass), request_.pass.csv, item.output);
    }
    for (const ItemReport& report : outcome.items) {
        if (outcome.completed) noteLeftOut(bench, report);
        item.channels = report.pass.columns;
        item.samples = report.pass.records;
    }
    if (!outcome.completed) throw Refusal(item.path, outcome.refusal.empty() ? "not written" : outcome.refusal);
    item.waitsForSync = request_.synced && isNew;
}

void Batch::makeOutput(Workbench& bench, BatchItem& item) {
    if (!item.fault.reason.none()) throw Refusal(item.fault);
    if (log_) item.identity = identifyFile(resolvePath(item.path)).value_or(FileIdentity{});
    if (isDone(item)) {
        item.verdict = BatchVerdict::Skipped;
        return;
    }
    if (fileExists(item.output) && !isOwn(item) && isInput(item.output))
        throw Refusal(item.path, "its output " + item.output + " is one of the inputs");
    const Input input = openForPass(bench, item.path, request_.pass);
    try {
        passOver(bench, input, item);
    } catch (...) {
        bench.release(input);
        throw;
    }
    bench.release(input);
    item.verdict = BatchVerdict::Written;
}

/// Lets nothing be thrown.
void Batch::oneFile(Workbench& bench, BatchItem& item) {
    startAfresh(bench);
    const auto begun = Clock::now();
    try {
        makeOutput(bench, item);
    } catch (const std::exception&) {
        item.fault = faultInFlight();
    }
    item.seconds = secondsSince(begun);
    if (item.verdict == BatchVerdict::Failed) {
        item.channels = item.samples = 0;
        if (bench.stopWanted()) item.verdict = BatchVerdict::Stopped;
    }
    item.notes = bench.takeNotes();
}

/// Where the display is, at the begin of a file or behind it.
void Batch::showPlace(std::size_t index) {
    const auto part = [&](std::uint64_t bytes) {
        return allBytes_ == 0 ? 0.0 : static_cast<double>(bytes) / static_cast<double>(allBytes_);
    };
    bench_.user().startWork({.label = "Batch",
                             .file = items_[index].path,
                             .begin = part(doneBytes_),
                             .end = part(doneBytes_ + bytes_[index])});
}

void Batch::take(std::size_t index) {
    const BatchItem& item = items_[index];
    ended_[index] = true;
    doneBytes_ += bytes_[index];
    if (item.verdict != BatchVerdict::Written) done_(item);
    if (item.verdict == BatchVerdict::Written || item.verdict == BatchVerdict::Failed) group_.push_back(index);
    if (group_.size() >= filesPerSync) settleGroup();
}

/// What ended is safe from here on: outputs on the disk, then the lines that tell of them.
void Batch::settleGroup() {
    std::vector<std::size_t> written;
    for (const std::size_t index : group_)
        if (items_[index].verdict == BatchVerdict::Written) written.push_back(index);
    std::vector<std::size_t> waiting;
    std::vector<std::string> paths;
    for (const std::size_t index : written)
        if (items_[index].waitsForSync) {
            waiting.push_back(index);
            paths.push_back(items_[index].output);
        }
    const std::vector<std::string> reasons = syncFiles(paths);
    for (std::size_t place = 0; place < waiting.size(); ++place) {
        if (reasons[place].empty()) continue;
        // Nobody knows whether the disk has it whole, and it was not there before.
        BatchItem& item = items_[waiting[place]];
        removeFile(item.output);
        item.verdict = BatchVerdict::Failed;
        item.channels = item.samples = 0;
        item.fault = {.file = item.output, .reason = {reasons[place]}};
        done_(item);
    }
    if (log_) {
        std::vector<BatchLogLine> lines;
        for (const std::size_t index : group_)
            lines.push_back(
                lineOf(items_[index], items_[index].verdict == BatchVerdict::Written ? "written" : "failed"));
        log_->append(lines);
        if (request_.synced) log_->sync();
    }
    for (const std::size_t index : written)
        if (items_[index].verdict == BatchVerdict::Written) done_(items_[index]);
    group_.clear();
}

/// In this thread: all files of a batch without further workers, else those up to the first that shows whether the
/// choices make sense.
void Batch::alone() {
    for (; next_ < items_.size() && !bench_.stopWanted() && (request_.workers < 2 || !choicesMakeSense_); ++next_) {
        showPlace(next_);
        BatchItem& item = items_[next_];
        oneFile(bench_, item);
        if (item.fault.senseless && !choicesMakeSense_) throw Refusal(item.fault);
        take(next_);
    }
}

void Batch::together() {
    if (next_ >= items_.size() || bench_.stopWanted()) return;
    const std::size_t first = next_;
    std::vector<char> worked(items_.size());
    {
        Crew crew(
            bench_, items_.size() - first, request_.workers,
            [&](Workbench& bench, std::size_t number) {
                bench.user().startWork({.file = items_[first + number].path});
                oneFile(bench, items_[first + number]);
                worked[first + number] = 1;
            },
            filesAhead, true);
        while (next_ < items_.size() && crew.wait()) {
            const std::unique_lock<std::mutex> quiet = crew.holdQuestions();
            showPlace(next_);
            for (const Note& note : items_[next_].notes) bench_.user().tell(note);
            bench_.user().progress({"Batch", 1});
            take(next_++);
        }
    }
    // A stop: what was under way is done, or was given up.
    for (; next_ < items_.size(); ++next_)
        if (worked[next_] != 0) take(next_);
}

BatchReport Batch::run() {
    const WorkInHand work(bench_.user(), {.bytes = allBytes_});
    openLog();
    alone();
    together();
    settleGroup();
    bench_.leaveUnsynced(false);
    startAfresh(bench_);
    BatchReport report;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        if (ended_[index])
            report.items.push_back(std::move(items_[index]));
        else
            ++report.left;
    }
    return report;
}

void makeFolder(const std::string& folder) {
    if (folderExists(folder)) return;
    std::error_code error;
    fs::create_directories(resolvePath(folder), error);
    if (error) throw Refusal(folder, error.message());
}

}  // namespace

BatchReport runBatch(Workbench& bench, const BatchRequest& request, const std::function<void(const BatchItem&)>& done) {
    makeFolder(request.folder);
    return Batch(bench, request, done).run();
}

}  // namespace welvane
