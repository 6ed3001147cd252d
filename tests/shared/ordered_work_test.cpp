#include "shared/ordered_work.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace welvane {
namespace {

/// Takes so long that pieces end in another order than they begin.
void dawdle(std::size_t piece) {
    std::this_thread::sleep_for(std::chrono::microseconds(piece % 7 * 50));
}

TEST(OrderedWork, productsComeInOrderAndFewAtATime) {
    constexpr std::size_t pieces = 200;
    for (const std::size_t workers : {0U, 1U, 2U, 5U, 500U}) {
        std::atomic<std::size_t> begun = 0, taken = 0, most = 0;
        OrderedWork<std::size_t> work(workers, pieces, [&](std::size_t piece, std::size_t& product) {
            const std::size_t ahead = ++begun - taken;
            for (std::size_t seen = most; seen < ahead && !most.compare_exchange_weak(seen, ahead);) {
            }
            dawdle(piece);
            product = piece * piece;
        });
        std::size_t count = 0;
        for (; const std::size_t* const product = work.next(); ++count, ++taken) ASSERT_EQ(*product, count * count);
        EXPECT_EQ(count, pieces);
        EXPECT_LE(most, WorkOrder::mostInHand(workers)) << workers;
        EXPECT_EQ(work.next(), nullptr);
    }
}

TEST(OrderedWork, aFailureComesInItsTurnAndTheRestIsLeft) {
    for (const std::size_t workers : {1U, 4U}) {
        std::atomic<std::size_t> begun = 0;
        {
            OrderedWork<int> work(workers, 1000, [&](std::size_t piece, int& product) {
                ++begun;
                dawdle(piece);
                if (piece == 10) throw std::runtime_error("ten");
                product = 1;
            });
            for (int piece = 0; piece < 10; ++piece) ASSERT_NE(work.next(), nullptr);
            EXPECT_THROW(work.next(), std::runtime_error);
        }
        EXPECT_LE(begun, 11 + WorkOrder::mostInHand(workers));
    }
}

TEST(OrderedWork, nothingToDo) {
    OrderedWork<int> work(3, 0, [](std::size_t, int&) { FAIL(); });
    EXPECT_EQ(work.next(), nullptr);
}

}  // namespace
}  // namespace welvane
