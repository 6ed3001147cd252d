#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// Work in pieces that several threads do side by side, and whose products one thread takes in their order.
namespace welvane {

/// Cores that this process may use, at least 1.
std::size_t coreCount();

/// Who works on one file.
struct Workers {
    std::size_t count = 1;               ///< threads, the one that asks among them
    std::size_t pieceBytes = 1U << 20U;  ///< of a text that each of them takes at a time
};

/// The order of pieces 0 to `pieces` - 1. The thread that asks works too: with one worker it does all of it, each piece
/// when its turn comes. So many pieces at most are begun before the one in hand is given back, that memory does not
/// grow with their number.
class WorkOrder {
  public:
    /// Pieces that are begun and not given back, at most.
    static std::size_t mostInHand(std::size_t workers) { return workers < 2 ? 1 : 2 * workers; }

    /// `work` does one piece; it is called by many threads at once. Where the system gives no further thread, those
    /// there are do it.
    WorkOrder(std::size_t workers, std::size_t pieces, std::function<void(std::size_t piece)> work);
    /// What is begun is ended, the rest never begun.
    ~WorkOrder();
    WorkOrder(const WorkOrder&) = delete;
    WorkOrder& operator=(const WorkOrder&) = delete;

    /// The number of the next piece, done, which is in hand until the next call; nothing behind the last. Throws what
    /// its work threw.
    std::optional<std::size_t> next();

  private:
    struct Inside;
    std::unique_ptr<Inside> inside_;
};

/// The same where each piece fills a product, which is used again for a later piece.
template <class Product>
class OrderedWork {
  public:
    template <class Make>
    OrderedWork(std::size_t workers, std::size_t pieces, Make make)
        : products_(WorkOrder::mostInHand(workers)), order_(workers, pieces, [this, make](std::size_t piece) {
              make(piece, products_[piece % products_.size()]);
          }) {}

    /// The next product, good until the next call; nullptr behind the last. Throws what its making threw.
    Product* next() {
        const std::optional<std::size_t> piece = order_.next();
        return piece ? &products_[*piece % products_.size()] : nullptr;
    }

  private:
    std::vector<Product> products_;
    WorkOrder order_;  // behind the products, which its threads use
};

}  // namespace welvane
