#include "jobs/batch.h"

#include <chrono>
#include <filesystem>
#include <unordered_map>
#include <unordered_set>

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

/// The files of a batch, one after the other.
class Batch {
  public:
    Batch(Workbench& bench, const BatchRequest& request)
        : bench_(bench), request_(request), settings_(bench.app().settings) {
        for (const std::string& other : {request.pass.filter, request.pass.tvd})
            if (!other.empty()) bench.willRead(other);
        for (const std::string& file : request.files) {
            inputs_.insert(onlyPath(file));
            bytes_.push_back(fileSize(file).value_or(0));
            allBytes_ += bytes_.back();
        }
    }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    BatchReport run(const std::function<void(const BatchItem&)>& done);

  private:
    BatchItem oneFile(std::size_t index);
    void makeOutput(const std::string& file, BatchItem& item);
    void settleOutput(BatchItem& item);
    void passOver(const Input& input, BatchItem& item);
    void startAfresh();

    Workbench& bench_;
    const BatchRequest& request_;
    std::vector<std::uint64_t> bytes_;
    std::uint64_t allBytes_ = 0, doneBytes_ = 0;
    std::unordered_set<std::string> inputs_;
    std::unordered_map<std::string, std::string> taken_;  ///< output name to the input that has it
    StartupSettings settings_;
    bool choicesMakeSense_ = false;  ///< they were followed once, so what is wrong now is the file
    bool outputTried_ = false;       ///< the folder was written to once
};

void Batch::startAfresh() {
    App& app = bench_.app();
    app.settings = settings_;
    app.run.batchRunning = app.run.noInputRun = false;
    app.run.progressFraction = 0;
    for (std::string* text :
         {&app.run.statusText, &app.run.sourceLabel, &app.run.targetLabel, &app.run.lasFile, &app.run.targetFile})
        text->clear();
    // A step of zero, for one, sets the flag to end its own pass.
    if (!bench_.stopWanted()) app.run.cancelRequested = false;
}

/// Where the file goes: its own name in the folder. A plain table is no LAS file and is not called one.
void Batch::settleOutput(BatchItem& item) {
    std::string name = fileNameOf(item.path);
    if (request_.pass.plain) name = changeExtension(name, "txt");
    if (request_.pass.csv) name = changeExtension(name, "csv");
    item.output = withBackslash(request_.folder) + name;
    if (inputs_.contains(onlyPath(item.output)))
        throw Refusal(item.path, "its output " + item.output + " is one of the inputs");
    const auto [other, isNew] = taken_.emplace(name, item.path);
    if (!isNew) throw Refusal(item.path, "its output " + item.output + " is already that of " + other->second);
}

void Batch::passOver(const Input& input, BatchItem& item) {
    bench_.checkOutput(item.output, {input}, !outputTried_);
    outputTried_ = true;
    Session session;
    prepareSession(bench_, session, {input}, request_.pass);
    bench_.needOwnFile(item.output, {input});
    choicesMakeSense_ = true;
    RunOutcome outcome;
    {
        // The boxes that tell of a run that broke off say less than its refusal.
        const HeldBoxes held(bench_.user());
        outcome = passOnto(bench_, session, jobRun(bench_, request_.pass), request_.pass.csv, item.output);
    }
    for (const ItemReport& report : outcome.items) {
        if (outcome.completed) noteLeftOut(bench_, report);
        item.channels = report.pass.columns;
        item.samples = report.pass.records;
    }
    if (!outcome.completed) throw Refusal(item.path, outcome.refusal.empty() ? "not written" : outcome.refusal);
}

void Batch::makeOutput(const std::string& file, BatchItem& item) {
    settleOutput(item);
    const Input input = openForPass(bench_, file, request_.pass);
    try {
        passOver(input, item);
    } catch (...) {
        bench_.release(input);
        throw;
    }
    bench_.release(input);
    item.verdict = BatchVerdict::Written;
}

BatchItem Batch::oneFile(std::size_t index) {
    BatchItem item;
    item.path = request_.files[index];
    const auto begun = Clock::now();
    try {
        makeOutput(item.path, item);
    } catch (const std::exception&) {
        item.fault = faultInFlight();
        if (item.fault.senseless && !choicesMakeSense_) throw;
    }
    item.seconds = secondsSince(begun);
    if (item.verdict != BatchVerdict::Written) {
        item.channels = item.samples = 0;
        if (bench_.stopWanted()) item.verdict = BatchVerdict::Stopped;
    }
    item.notes = bench_.takeNotes();
    return item;
}

BatchReport Batch::run(const std::function<void(const BatchItem&)>& done) {
    const WorkInHand work(bench_.user(), {.bytes = allBytes_});
    const auto part = [&](std::uint64_t bytes) {
        return allBytes_ == 0 ? 0.0 : static_cast<double>(bytes) / static_cast<double>(allBytes_);
    };
    BatchReport report;
    for (std::size_t index = 0; index < request_.files.size() && !bench_.stopWanted(); ++index) {
        bench_.user().startWork({.label = "Batch",
                                 .file = request_.files[index],
                                 .begin = part(doneBytes_),
                                 .end = part(doneBytes_ + bytes_[index])});
        startAfresh();
        report.items.push_back(oneFile(index));
        doneBytes_ += bytes_[index];
        done(report.items.back());
    }
    report.left = request_.files.size() - report.items.size();
    startAfresh();
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
    return Batch(bench, request).run(done);
}

}  // namespace welvane
