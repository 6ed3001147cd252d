#pragma once

#include <cstddef>

#include "shared/prompts.h"
#include "shared/run_state.h"

namespace welvane {

/// One turn per line of a long step: pending events run, progress is told now and then, and a wish to stop is heard.
class RunTurn {
  public:
    /// `total` is the length of the whole step in bytes.
    RunTurn(RunState& run, UserInterface& user, std::size_t total)
        : run_(run), user_(user), total_(total), stride_(total / 200 + 1) {}

    /// False when the step is to stop. `done` is the place reached.
    bool goesOn(std::size_t done) {
        if (!run_.commandMode) user_.pumpEvents();
        if (done >= nextTold_) tell(done);
        return !run_.cancelRequested.load(std::memory_order_relaxed);
    }

  private:
    void tell(std::size_t done) {
        run_.progressFraction =
            total_ == 0 ? 1.0F : static_cast<float>(static_cast<double>(done) / static_cast<double>(total_));
        user_.progress({run_.statusText, run_.progressFraction});
        nextTold_ = done + stride_;
    }

    RunState& run_;
    UserInterface& user_;
    std::size_t total_;
    std::size_t stride_;
    std::size_t nextTold_ = 0;
};

}  // namespace welvane
