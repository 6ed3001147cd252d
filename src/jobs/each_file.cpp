#include "jobs/each_file.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

#include "shared/failure.h"
#include "shared/ordered_work.h"

namespace welvane {

namespace {

/// A signal notifies nobody, so a stop is looked for this often.
constexpr auto lookOut = std::chrono::milliseconds(50);

/// Says nothing, and hears of a stop. Questions go to the owner where there is one.
class WorkerInterface : public SilentInterface {
  public:
    WorkerInterface(std::function<bool()> stopped, UserInterface* owner, std::mutex& questions)
        : stopped_(std::move(stopped)), owner_(owner), questions_(questions) {}
    void watch(RunState& run) { run_ = &run; }
    void pumpEvents() override {
        if (run_ != nullptr && stopped_()) run_->cancelRequested = true;
    }
    void startWork(const Work& work) override {
        if (!work.file.empty()) file_ = work.file;
    }
    void holdBoxes(bool held) override { held_ = held; }
    Answer ask(const Prompt& prompt) override {
        if (owner_ == nullptr) return SilentInterface::ask(prompt);
        if (prompt.buttons == Buttons::Ok && held_) return Answer::Ok;
        const std::lock_guard<std::mutex> lock(questions_);
        owner_->startWork({.file = file_});
        return owner_->ask(prompt);
    }

  private:
    std::function<bool()> stopped_;
    UserInterface* owner_;
    std::mutex& questions_;
    RunState* run_ = nullptr;
    std::string file_;
    bool held_ = false;
};

}  // namespace

struct Crew::Inside {
    Workbench& owner;
    const std::size_t items;
    const Work work;
    const std::size_t ahead;
    const bool asking;
    const StartupSettings settings;
    const ReferenceTables reference;
    std::atomic<bool> givenUp{false};
    const std::set<std::string> alsoRead;
    std::mutex mutex, questions;
    std::condition_variable turn;
    std::vector<bool> done;
    std::size_t next = 0, taken = 0;
    std::vector<std::thread> workers;

    Inside(Workbench& whose, std::size_t count, Work what, std::size_t howFar, bool withQuestions)
        : owner(whose),
          items(count),
          work(std::move(what)),
          ahead(howFar),
          asking(withQuestions),
          settings(whose.app().settings),
          reference(whose.app().reference),
          alsoRead(whose.alsoRead()),
          done(count) {}

    bool stopped() const { return givenUp || owner.stopWanted(); }

    bool nextItem(std::size_t& item) {
        std::unique_lock<std::mutex> lock(mutex);
        while (!stopped() && next < items && next >= taken + ahead) turn.wait_for(lock, lookOut);
        if (stopped() || next >= items) return false;
        item = next++;
        return true;
    }

    void perform() {
        WorkerInterface user([this] { return stopped(); }, asking ? &owner.user() : nullptr, questions);
        const std::unique_ptr<Platform> platform = makeSystemPlatform();
        App app(user, *platform);
        app.settings = settings;
        app.reference = reference;
        user.watch(app.run);
        Workbench bench(app, owner.rules(), [this] { return stopped(); });
        for (const std::string& file : alsoRead) bench.willRead(file);
        for (std::size_t item = 0; nextItem(item);) {
            work(bench, item);
            if (stopped()) return;
            // A pass that ends itself, such as one with a step of zero, sets the flag too.
            app.run.cancelRequested = false;
            const std::lock_guard<std::mutex> lock(mutex);
            done[item] = true;
            turn.notify_all();
        }
    }
};

Crew::Crew(Workbench& owner, std::size_t items, std::size_t workers, Work work, std::size_t ahead, bool asking)
    : inside_(std::make_unique<Inside>(owner, items, std::move(work), ahead, asking)) {
    const std::size_t wanted = std::min(workers, items);
    try {
        while (inside_->workers.size() < wanted)
            inside_->workers.emplace_back([inside = inside_.get()] { inside->perform(); });
    } catch (const std::system_error& failed) {
        // The system gives no more threads: those that stand do the work.
        if (inside_->workers.empty()) throw RunTimeFailure(failed.what());
    }
}

Crew::~Crew() {
    inside_->givenUp = true;
    inside_->turn.notify_all();
    for (std::thread& worker : inside_->workers) worker.join();
}

bool Crew::wait() {
    Inside& inside = *inside_;
    std::unique_lock<std::mutex> lock(inside.mutex);
    while (!inside.done[inside.taken] && !inside.stopped()) {
        inside.turn.wait_for(lock, lookOut);
        // Whoever waits here is the one that hears a person's wish to stop.
        lock.unlock();
        inside.owner.user().pumpEvents();
        lock.lock();
    }
    if (!inside.done[inside.taken]) return false;
    ++inside.taken;
    inside.turn.notify_all();
    return true;
}

std::unique_lock<std::mutex> Crew::holdQuestions() {
    return std::unique_lock<std::mutex>(inside_->questions);
}

std::size_t workersFor(std::size_t files, int wanted) {
    const std::size_t workers = std::min(files, wanted > 0 ? static_cast<std::size_t>(wanted) : coreCount());
    return workers > 1 ? workers : 0;
}

Fault faultInFlight() {
    try {
        throw;
    } catch (const Refusal& refused) {
        return refused.fault;
    } catch (const std::bad_alloc&) {
        return {.reason = {"out of memory"}};
    } catch (const std::exception& failed) {
        return {.reason = {failed.what()}};
    }
}

}  // namespace welvane
