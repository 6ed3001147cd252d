#include <CLI/CLI.hpp>
#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <thread>
#include <unordered_set>

#include "certify/batch.h"
#include "cli/checker_choice.h"
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

/// Files that may be done while an earlier one still runs: their logs wait in memory to be printed in order.
constexpr std::size_t filesAhead = 64;
constexpr int mostJobs = 64;

struct CertifyChoices {
    std::vector<std::string> files;
    std::string checker, region;
    int jobs = 1;
    double timeout = checkerPatience;
    bool wrapChecks = false, repair = false, inPlace = false, saveLogs = false;
};

/// One file on its way.
struct Item {
    std::string path;
    std::string why;  ///< what there is to say about it; set before the start for a file that is not checked
    std::string log;
    bool done = false;
};

/// The system with a note of how the last program ended.
class NotingPlatform : public Platform {
  public:
    SettingsStore& settings() override { return system_->settings(); }
    std::string programFolder() const override { return system_->programFolder(); }
    std::string scratchFolder() override { return system_->scratchFolder(); }
    bool openWithShell(const std::string& path) override { return system_->openWithShell(path); }
    ProcessResult runAndWait(const std::vector<std::string>& arguments, double timeoutSeconds,
                             const std::function<bool()>& turn) override {
        return last = system_->runAndWait(arguments, timeoutSeconds, turn);
    }
    std::uint64_t freeMemory() const override { return system_->freeMemory(); }

    ProcessResult last;

  private:
    std::unique_ptr<Platform> system_ = makeSystemPlatform();
};

/// Says nothing, and hears of a stop.
class WorkerInterface : public SilentInterface {
  public:
    explicit WorkerInterface(std::function<bool()> stopped) : stopped_(std::move(stopped)) {}
    void watch(RunState& run) { run_ = &run; }
    void pumpEvents() override {
        if (run_ != nullptr && stopped_()) run_->cancelRequested = true;
    }

  private:
    std::function<bool()> stopped_;
    RunState* run_ = nullptr;
};

std::string howItEnded(const ProcessResult& ended, const CertifyChoices& choices, bool hasLog) {
    if (ended.timedOut) return "the checker was ended after " + plainNumber(choices.timeout) + " s (--timeout)";
    if (ended.signal != 0) return "the checker was ended by signal " + std::to_string(ended.signal);
    if (hasLog) return {};
    return "the checker left no log" +
           (ended.exitCode == 0 ? std::string() : ", exit status " + std::to_string(ended.exitCode));
}

/// The checker over all files, several at once, each worker with a process state of its own.
class Crew {
  public:
    Crew(Workbench& bench, const CertifyChoices& choices, std::vector<Item> items)
        : choices_(choices),
          settings_(bench.app().settings),
          stop_(bench.app().run.cancelRequested),
          items_(std::move(items)) {
        const auto wanted = std::min(static_cast<std::size_t>(choices.jobs), items_.size());
        try {
            while (workers_.size() < wanted) workers_.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            // The system gives no more threads: those that stand do the work.
            if (workers_.empty()) throw;
        }
    }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;
    ~Crew() {
        giveUp_ = true;
        turn_.notify_all();
        for (std::thread& worker : workers_) worker.join();
    }

    std::size_t size() const { return items_.size(); }
    /// Waits for the next file in order and hands it out; false when it was stopped before. Refusal when the checker
    /// could not be started.
    bool take(Item& item) {
        std::unique_lock<std::mutex> lock(mutex_);
        // A signal notifies nobody.
        while (!items_[taken_].done && !stopped()) turn_.wait_for(lock, std::chrono::milliseconds(50));
        if (!notStarted_.empty()) throw Refusal(checkerArguments(settings_.certProgram).front(), notStarted_);
        if (!items_[taken_].done) return false;
        item = std::move(items_[taken_++]);
        turn_.notify_all();
        return true;
    }

  private:
    bool stopped() const { return stop_ || giveUp_; }

    bool nextFile(std::size_t& file) {
        std::unique_lock<std::mutex> lock(mutex_);
        while (!stopped() && next_ < items_.size() && next_ >= taken_ + filesAhead)
            turn_.wait_for(lock, std::chrono::milliseconds(50));
        if (stopped() || next_ >= items_.size()) return false;
        file = next_++;
        return true;
    }

    void work() {
        WorkerInterface user([this] { return stopped(); });
        NotingPlatform platform;
        App app(user, platform);
        app.settings = settings_;
        user.watch(app.run);
        for (std::size_t file = 0; nextFile(file);) {
            std::string log, why = items_[file].why;
            try {
                if (why.empty()) log = checkOne(app, platform, items_[file].path, file, why);
            } catch (const std::exception& error) {
                why = error.what();
            }
            const std::lock_guard<std::mutex> lock(mutex_);
            if (app.run.cancelRequested) return;
            items_[file].log = std::move(log);
            items_[file].why = std::move(why);
            items_[file].done = true;
            turn_.notify_all();
        }
    }

    std::string checkOne(App& app, NotingPlatform& platform, const std::string& path, std::size_t number,
                         std::string& why) {
        BatchCertification batch;
        batch.kind = choices_.wrapChecks ? CheckKind::Wrap : CheckKind::Basic;
        batch.attemptRepair = choices_.repair;
        batch.saveLogs = choices_.saveLogs;
        batch.timeoutSeconds = choices_.timeout;
        // What stands beside the file under the log's name may be the user's own.
        if (!choices_.saveLogs) {
            batch.logFolder = platform.scratchFolder() + std::to_string(number) + "/";
            fs::create_directory(batch.logFolder);
        }
        fillCr(batch, std::vector<std::string>{path});
        platform.last = {};
        doBatchChecks(app, batch);
        if (!batch.logFolder.empty()) fs::remove_all(batch.logFolder);
        if (!platform.last.started && !app.run.cancelRequested) {
            const std::lock_guard<std::mutex> lock(mutex_);
            notStarted_ =
                "the checker could not be started: " + (platform.last.why.empty() ? "not found" : platform.last.why);
            giveUp_ = true;
        }
        why = howItEnded(platform.last, choices_, !batch.files.front().log.empty());
        return std::move(batch.files.front().log);
    }

    const CertifyChoices& choices_;
    const StartupSettings settings_;
    const std::atomic<bool>& stop_;
    std::atomic<bool> giveUp_{false};
    std::mutex mutex_;
    std::condition_variable turn_;
    std::vector<Item> items_;
    std::size_t next_ = 0, taken_ = 0;
    std::string notStarted_;
    std::vector<std::thread> workers_;
};

std::string onlyPath(std::string_view path) {
    std::error_code error;
    const fs::path only = fs::weakly_canonical(resolvePath(path), error);
    return error ? resolvePath(path) : only.string();
}

/// The files with what already stands against one: it is not there, or the log to be kept would replace another file.
std::vector<Item> itemsOf(Workbench& bench, const CertifyChoices& choices, const std::vector<std::string>& files) {
    std::unordered_set<std::string> taken;
    if (choices.saveLogs)
        for (const std::string& file : files) taken.insert(onlyPath(file));
    std::vector<Item> items;
    for (const std::string& file : files) {
        Item& item = items.emplace_back();
        item.path = file;
        if (folderExists(file))
            item.why = "Is a directory";
        else if (!fileExists(file))
            item.why = "No such file or directory";
        if (!item.why.empty() || !choices.saveLogs) continue;
        const std::string log = certifyLogPath(file);
        try {
            bench.checkOutput(log, {});
            if (!taken.insert(onlyPath(log)).second)
                item.why = "its log " + log + " is one of the inputs or the log of another";
        } catch (const std::exception& refused) {
            item.why = std::string("its log ") + refused.what();
        }
    }
    return items;
}

Json asJson(const Item& item, Verdict verdict) {
    return {{"path", utf8Text(item.path)}, {"verdict", verdictText(verdict)}, {"log", utf8Text(item.log)}};
}

std::string asText(const Item& item, Verdict verdict) {
    std::string text = padded(verdictText(verdict), verdictText(Verdict::CheckIncomplete).size());
    if (isTerminal(Stream::Output) && std::getenv("NO_COLOR") == nullptr)
        text = (verdictColour(verdict) == passedColour ? "\033[32m" : "\033[31m") + text + "\033[0m";
    text += "  " + shownText(item.path) + "\n";
    if (verdict != Verdict::Failed) return text;
    for (const std::string& line : firstFaults(item.log)) text += "    " + shownText(line) + "\n";
    return text;
}

/// Prints each file as it comes, so that nothing but the log in hand is kept.
class Printer {
  public:
    Printer(Workbench& bench, std::size_t files) : bench_(bench), files_(files) {}

    void add(const Item& item) {
        const Verdict verdict = verdictOf(item.log);
        ++counts_[static_cast<std::size_t>(verdict)];
        if (!item.why.empty()) bench_.user().say(item.path + ": " + item.why);
        if (!bench_.options().json) {
            bench_.print(asText(item, verdict));
        } else if (files_ == 1) {
            bench_.print(asJson(item, verdict).dump(2) + "\n");
        } else {
            bench_.print((open_ ? ",\n" : "[\n") + asJson(item, verdict).dump());
            open_ = true;
        }
    }
    /// Also after a stop: what was printed is a whole document.
    ~Printer() {
        if (bench_.options().json && files_ != 1) bench_.print(open_ ? "\n]\n" : "[]\n");
    }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    std::size_t count(Verdict verdict) const { return counts_[static_cast<std::size_t>(verdict)]; }

  private:
    Workbench& bench_;
    std::size_t files_;
    std::array<std::size_t, 3> counts_{};
    bool open_ = false;
};

ExitCode performCertify(Workbench& bench, const CertifyChoices& choices) {
    if (choices.repair && !choices.inPlace)
        throw UsageFault("--repair lets the checker change the files; --in-place allows it");
    if (!(choices.timeout >= 0)) throw UsageFault("--timeout: not a number of seconds");
    const std::vector<std::string> files = bench.expandLists(choices.files);
    if (files.empty()) throw UsageFault("no input is named");
    StartupSettings& settings = bench.app().settings;
    if (!choices.checker.empty()) settings.certProgram = choices.checker;
    if (!choices.region.empty()) settings.country = choices.region;
    needChecker(settings.certProgram);

    Crew crew(bench, choices, itemsOf(bench, choices, files));
    Printer printer(bench, files.size());
    Item item;
    for (std::size_t file = 0; file < files.size(); ++file) {
        bench.user().progress({"Running the checker", static_cast<double>(file) / static_cast<double>(files.size())});
        if (!crew.take(item)) return ExitCode::Negative;
        printer.add(item);
    }
    bench.user().bar().clear();
    const std::size_t passed = printer.count(Verdict::Passed);
    if (files.size() > 1)
        bench.user().note(counted(static_cast<std::int64_t>(files.size()), "file") + ": " + std::to_string(passed) +
                          " passed, " + std::to_string(printer.count(Verdict::Failed)) + " failed, " +
                          std::to_string(printer.count(Verdict::CheckIncomplete)) + " not checked to the end");
    return passed == files.size() ? ExitCode::Done : ExitCode::Negative;
}

}  // namespace

VerbRun declareCertify(CLI::App& command) {
    const auto choices = std::make_shared<CertifyChoices>();
    command.add_option("FILE", choices->files, "Files to check; @LIST or - for a list of paths")
        ->required()
        ->type_name("");
    command
        .add_option("--checker", choices->checker,
                    "The checker's program and arguments in place of the setting cert_prog")
        ->type_name("PROG");
    command.add_option("--jobs", choices->jobs, "Checkers that run at once (1)")
        ->check(CLI::Range(1, mostJobs))
        ->type_name("N");
    command
        .add_option("--timeout", choices->timeout, "Seconds that the checker gets for a file (600); 0 waits for ever")
        ->check(CLI::Range(0.0, 1e7))
        ->type_name("S");
    command
        .add_option("--region", choices->region,
                    "Check by the rules of this region, canada or other, in place of the setting country")
        ->check(CLI::IsMember({"canada", "other"}, CLI::ignore_case))
        ->type_name("NAME");
    command.add_flag("--wrap-checks", choices->wrapChecks, "Let the checker look at the wrapping too");
    command.add_flag("--repair", choices->repair, "Let the checker repair what it can; needs --in-place");
    command.add_flag("--in-place", choices->inPlace, "The files may be changed");
    command.add_flag("--save-logs", choices->saveLogs, "Keep each log beside its file, with the extension log");
    return [choices](Workbench& bench) { return performCertify(bench, *choices); };
}

}  // namespace welvane
