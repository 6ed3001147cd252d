#include "jobs/each_file.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

#include "shared/failure.h"

namespace welvane {

namespace {

/// Items that may be done while an earlier one still runs: what came of them waits in memory for its turn.
constexpr std::size_t itemsAhead = 64;
/// A signal notifies nobody, so a stop is looked for this often.
constexpr auto lookOut = std::chrono::milliseconds(50);

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

}  // namespace

struct Crew::Inside {
    Workbench& owner;
    const std::size_t items;
    const Work work;
    const StartupSettings settings;
    const ReferenceTables reference;
    std::atomic<bool> givenUp{false};
    std::mutex mutex;
    std::condition_variable turn;
    std::vector<bool> done;
    std::size_t next = 0, taken = 0;
    std::vector<std::thread> workers;

    Inside(Workbench& whose, std::size_t count, Work what)
        : owner(whose),
          items(count),
          work(std::move(what)),
          settings(whose.app().settings),
          reference(whose.app().reference),
          done(count) {}

    bool stopped() const { return givenUp || owner.stopWanted(); }

    bool nextItem(std::size_t& item) {
        std::unique_lock<std::mutex> lock(mutex);
        while (!stopped() && next < items && next >= taken + itemsAhead) turn.wait_for(lock, lookOut);
        if (stopped() || next >= items) return false;
        item = next++;
        return true;
    }

    void perform() {
        WorkerInterface user([this] { return stopped(); });
        const std::unique_ptr<Platform> platform = makeSystemPlatform();
        App app(user, *platform);
        app.settings = settings;
        app.reference = reference;
        user.watch(app.run);
        Workbench bench(app, owner.rules(), [this] { return stopped(); });
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

Crew::Crew(Workbench& owner, std::size_t items, std::size_t workers, Work work)
    : inside_(std::make_unique<Inside>(owner, items, std::move(work))) {
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
    while (!inside.done[inside.taken] && !inside.stopped()) inside.turn.wait_for(lock, lookOut);
    if (!inside.done[inside.taken]) return false;
    ++inside.taken;
    inside.turn.notify_all();
    return true;
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
