#include "shared/ordered_work.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

namespace welvane {

std::size_t coreCount() {
    return std::max(1U, std::thread::hardware_concurrency());
}

struct WorkOrder::Inside {
    struct Place {
        bool done = false;
        std::exception_ptr failure;
    };

    Inside(std::size_t workers, std::size_t count, std::function<void(std::size_t)> wanted)
        : pieces(count), places(mostInHand(workers)), work(std::move(wanted)) {}

    const std::size_t pieces;
    std::mutex mutex;  ///< over all below
    std::condition_variable changed;
    std::vector<Place> places;  ///< of the pieces in hand, piece n at n % size
    std::size_t begun = 0;      ///< pieces that someone has begun
    std::size_t inHand = 0;     ///< the piece that is given out next, or is given out
    bool given = false;         ///< it is given out
    bool stopped = false;
    std::function<void(std::size_t)> work;
    std::vector<std::thread> threads;

    bool canBegin() const { return begun < pieces && begun < inHand + places.size(); }

    void doOne(std::unique_lock<std::mutex>& lock) {
        const std::size_t piece = begun++;
        lock.unlock();
        std::exception_ptr failure;
        try {
            work(piece);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        places[piece % places.size()] = {true, failure};
        changed.notify_all();
    }

    void serve() {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return stopped || begun == pieces || canBegin(); });
            if (stopped || begun == pieces) return;
            doOne(lock);
        }
    }
};

WorkOrder::WorkOrder(std::size_t workers, std::size_t pieces, std::function<void(std::size_t piece)> work)
    : inside_(std::make_unique<Inside>(workers, pieces, std::move(work))) {
    for (std::size_t others = std::min(workers, pieces); others > 1; --others) {
        try {
            inside_->threads.emplace_back([this] { inside_->serve(); });
        } catch (const std::system_error&) {
            return;
        }
    }
}

WorkOrder::~WorkOrder() {
    {
        const std::scoped_lock lock(inside_->mutex);
        inside_->stopped = true;
    }
    inside_->changed.notify_all();
    for (std::thread& thread : inside_->threads) thread.join();
}

std::optional<std::size_t> WorkOrder::next() {
    Inside& all = *inside_;
    std::unique_lock lock(all.mutex);
    if (all.given) {
        all.places[all.inHand % all.places.size()] = {};
        ++all.inHand;
        all.given = false;
        all.changed.notify_all();
    }
    if (all.inHand == all.pieces) return std::nullopt;
    Inside::Place& place = all.places[all.inHand % all.places.size()];
    while (!place.done) {
        if (all.canBegin())
            all.doOne(lock);
        else
            all.changed.wait(lock);
    }
    all.given = true;
    if (place.failure) std::rethrow_exception(place.failure);
    return all.inHand;
}

}  // namespace welvane
