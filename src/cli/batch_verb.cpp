#include <CLI/CLI.hpp>
#include <chrono>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <unordered_set>

#include "cli/pass_options.h"
#include "cli/run_report.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "platform/terminal.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using Clock = std::chrono::steady_clock;

struct BatchChoices {
    std::vector<std::string> files;
    std::string folder;
    PassChoices pass;
};

enum class Verdict { Written, Failed, Stopped };

/// What came of one file.
struct BatchItem {
    std::string path, output, why;
    Verdict verdict = Verdict::Failed;
    int channels = 0;
    std::int32_t samples = 0;
    double seconds = 0;
};

std::string_view nameOf(Verdict verdict) {
    switch (verdict) {
        case Verdict::Written:
            return "written";
        case Verdict::Failed:
            return "failed";
        case Verdict::Stopped:
            return "stopped";
    }
    return "";
}

/// One spelling per file, links followed, whether it is there or not.
std::string onlyPath(std::string_view path) {
    std::error_code error;
    const std::string given = resolvePath(path);
    const fs::path only = fs::weakly_canonical(given, error);
    return error ? given : only.string();
}

double secondsSince(Clock::time_point begun) {
    return std::chrono::duration<double>(Clock::now() - begun).count();
}

/// The files of a batch, one after the other. Every one of them finds the process as it was at the start: formats that
/// a filter sets, the current files and a refusal's cancel flag do not reach the next.
class Batch {
  public:
    Batch(Workbench& bench, const BatchChoices& choices, std::vector<std::string> files)
        : bench_(bench), choices_(choices), files_(std::move(files)), settings_(bench.app().settings) {
        for (const std::string& file : files_) {
            inputs_.insert(onlyPath(file));
            bytes_.push_back(fileSize(file).value_or(0));
            allBytes_ += bytes_.back();
        }
        bench_.user().bar().setTotal(allBytes_);
    }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    void run();
    const std::vector<BatchItem>& items() const { return items_; }
    std::size_t left() const { return files_.size() - items_.size(); }

  private:
    void oneFile(const std::string& file, BatchItem& item);
    void settleOutput(BatchItem& item);
    void makeOutput(const Input& input, BatchItem& item);
    void startAfresh();

    Workbench& bench_;
    const BatchChoices& choices_;
    std::vector<std::string> files_;
    std::vector<std::uint64_t> bytes_;
    std::uint64_t allBytes_ = 0, doneBytes_ = 0;
    std::unordered_set<std::string> inputs_;
    std::unordered_map<std::string, std::string> taken_;  ///< output name to the input that has it
    StartupSettings settings_;
    bool optionsMakeSense_ = false;  ///< they were followed once, so what is wrong now is the file
    std::vector<BatchItem> items_;
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
    if (!wasInterrupted()) app.run.cancelRequested = false;
}

/// Where the file goes: its own name in the folder. A plain table is no LAS file and is not called one.
void Batch::settleOutput(BatchItem& item) {
    std::string name = fileNameOf(item.path);
    if (!choices_.pass.ascii.empty()) name = changeExtension(name, "txt");
    item.output = withBackslash(choices_.folder) + name;
    if (inputs_.contains(onlyPath(item.output)))
        throw Refusal(item.path, "its output " + item.output + " is one of the inputs");
    const auto [other, isNew] = taken_.emplace(name, item.path);
    if (!isNew) throw Refusal(item.path, "its output " + item.output + " is already that of " + other->second);
}

void Batch::makeOutput(const Input& input, BatchItem& item) {
    bench_.checkOutput(item.output, {input}, items_.empty());
    Session session;
    prepareSession(bench_, session, {input}, choices_.pass);
    optionsMakeSense_ = true;
    bench_.app().run.targetFile = item.output;
    RunRequest request;
    request.outputMode = OutputFile::Mode::Beside;
    request.filterApplied = true;
    request.wholeInputs = !choices_.pass.loose;
    request.exactDepthUnit = true;
    // The boxes that tell of a run that broke off say less than its refusal.
    bench_.user().mute(true);
    const RunOutcome outcome = processMMM(bench_.app(), session, request);
    bench_.user().mute(false);
    for (const ItemReport& report : outcome.items) {
        if (outcome.completed) tellLeftOut(bench_.user(), report);
        item.channels = report.pass.columns;
        item.samples = report.pass.records;
    }
    if (!outcome.completed) throw Refusal(item.path, outcome.refusal.empty() ? "not written" : outcome.refusal);
}

void Batch::oneFile(const std::string& file, BatchItem& item) {
    item.path = file;
    settleOutput(item);
    const Input input = bench_.openLas(file, choices_.pass.loose);
    try {
        makeOutput(input, item);
    } catch (...) {
        bench_.release(input);
        throw;
    }
    bench_.release(input);
    item.verdict = Verdict::Written;
}

void Batch::run() {
    for (std::size_t index = 0; index < files_.size() && !wasInterrupted(); ++index) {
        const auto part = [&](std::uint64_t bytes) {
            return allBytes_ == 0 ? 0.0 : static_cast<double>(bytes) / static_cast<double>(allBytes_);
        };
        bench_.user().setSpan("Batch", part(doneBytes_), part(doneBytes_ + bytes_[index]));
        bench_.user().setSubject(files_[index]);
        startAfresh();
        BatchItem item;
        const auto begun = Clock::now();
        try {
            oneFile(files_[index], item);
        } catch (const UsageFault& fault) {
            if (!optionsMakeSense_) throw;
            item.why = fault.what();
        } catch (const std::bad_alloc&) {
            item.why = "out of memory";
        } catch (const std::exception& error) {
            item.why = error.what();
        }
        item.seconds = secondsSince(begun);
        doneBytes_ += bytes_[index];
        if (item.verdict != Verdict::Written) {
            item.channels = item.samples = 0;
            if (wasInterrupted()) item.verdict = Verdict::Stopped;
        }
        // A refusal names its file already.
        if (item.verdict == Verdict::Failed)
            bench_.user().say(item.why.starts_with(item.path) ? item.why : item.path + ": " + item.why);
        items_.push_back(std::move(item));
    }
    bench_.user().setSubject("");
    bench_.user().setSpan("", 0, 1);
    bench_.user().bar().clear();
    startAfresh();
}

struct BatchTotal {
    std::size_t written = 0, failed = 0, stopped = 0;
    std::int64_t channels = 0, samples = 0;
    double seconds = 0;
};

BatchTotal totalOf(const std::vector<BatchItem>& items) {
    BatchTotal total;
    for (const BatchItem& item : items) {
        ++(item.verdict == Verdict::Written  ? total.written
           : item.verdict == Verdict::Failed ? total.failed
                                             : total.stopped);
        total.channels += item.channels;
        total.samples += item.samples;
        total.seconds += item.seconds;
    }
    return total;
}

Json asJson(const std::vector<BatchItem>& items, const BatchTotal& total, std::size_t left) {
    Json files = Json::array();
    for (const BatchItem& item : items) {
        files.push_back({{"path", utf8Text(item.path)},
                         {"output", utf8Text(item.output)},
                         {"verdict", nameOf(item.verdict)},
                         {"why", utf8Text(item.why)},
                         {"channels", item.channels},
                         {"samples", item.samples},
                         {"seconds", item.seconds}});
    }
    return {{"files", files},
            {"total",
             {{"files", items.size() + left},
              {"written", total.written},
              {"failed", total.failed},
              {"stopped", total.stopped},
              {"notReached", left},
              {"channels", total.channels},
              {"samples", total.samples},
              {"seconds", total.seconds}}}};
}

std::string asTable(const std::vector<BatchItem>& items, const BatchTotal& total, std::size_t left) {
    std::vector<std::array<std::string, 5>> rows = {{"File", "Channels", "Samples", "Seconds", "Verdict"}};
    for (const BatchItem& item : items) {
        const bool written = item.verdict == Verdict::Written;
        rows.push_back({shownText(item.path), written ? std::to_string(item.channels) : "-",
                        written ? std::to_string(item.samples) : "-", formatMask(item.seconds, 3),
                        std::string(nameOf(item.verdict))});
    }
    std::string verdict = std::to_string(total.written) + " written";
    for (const auto& [count, word] :
         {std::pair{total.failed, " failed"}, {total.stopped, " stopped"}, {left, " not reached"}})
        if (count != 0) verdict += ", " + std::to_string(count) + word;
    rows.push_back({"Total of " + counted(static_cast<std::int64_t>(items.size() + left), "file"),
                    std::to_string(total.channels), std::to_string(total.samples), formatMask(total.seconds, 3),
                    verdict});
    std::array<std::size_t, 4> widths{};
    for (const auto& row : rows)
        for (std::size_t cell = 0; cell < widths.size(); ++cell)
            widths[cell] = std::max(widths[cell], characterCount(row[cell]));
    std::string text;
    for (const auto& row : rows) {
        text += padded(row[0], widths[0]);
        for (std::size_t cell = 1; cell < widths.size(); ++cell) text += "  " + paddedLeft(row[cell], widths[cell]);
        text += "  " + row[4] + "\n";
    }
    return text;
}

void makeFolder(const std::string& folder) {
    if (folderExists(folder)) return;
    std::error_code error;
    fs::create_directories(resolvePath(folder), error);
    if (error) throw Refusal(folder, error.message());
}

ExitCode performBatch(Workbench& bench, const BatchChoices& choices) {
    const std::vector<std::string> files = bench.expandLists(choices.files);
    if (files.empty()) throw UsageFault("no input is named");
    if (choices.pass.splice) throw UsageFault("--splice joins several inputs; a batch takes one at a time");
    makeFolder(choices.folder);
    Batch batch(bench, choices, files);
    batch.run();
    const BatchTotal total = totalOf(batch.items());
    bench.print(bench.options().json ? asJson(batch.items(), total, batch.left()).dump(2) + "\n"
                                     : asTable(batch.items(), total, batch.left()));
    return total.written == files.size() ? ExitCode::Done : ExitCode::Negative;
}

}  // namespace

VerbRun declareBatch(CLI::App& command) {
    const auto choices = std::make_shared<BatchChoices>();
    command.add_option("FILE", choices->files, "LAS files; @LIST or - for a list of paths")->required()->type_name("");
    command
        .add_option("--out-dir", choices->folder,
                    "Folder of the outputs, each under its input's name; made when missing")
        ->required()
        ->type_name("DIR");
    declarePassOptions(command, choices->pass);
    return [choices](Workbench& bench) { return performBatch(bench, *choices); };
}

}  // namespace welvane
