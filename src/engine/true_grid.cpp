#include "engine/true_grid.h"

#include <algorithm>
#include <cmath>

#include "engine/depth_limit.h"
#include "las/depth_spacing.h"
#include "las/input_data.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Parts of a step that two depths may differ by and still be the same.
constexpr double sameDepth = 1e-4;

bool stop(PassContext& context, std::string why) {
    context.report.refusal = std::move(why);
    return false;
}

const InputData* firstData(const Session& session) {
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot) && session.slots[slot].data) return session.slots[slot].data.get();
    return nullptr;
}

/// Decimals that the depths of all inputs have.
int inputDecimals(const Session& session) {
    std::size_t decimals = 0;
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot) && session.slots[slot].data)
            decimals = std::max(decimals, session.slots[slot].data->spacing.decimals);
    return static_cast<int>(std::min(decimals, mostDepthDecimals));
}

/// Top and bottom of the output before they are laid on the grid. `topGiven` tells whether somebody named one.
struct Limits {
    double top = 0, bottom = 0;
    bool topGiven = false, bottomGiven = false;
};

Limits readLimits(PassContext& context) {
    const DepthRange range = depthRange(context.session);
    const std::string &from = context.tables().setting(PrdRow::From), &to = context.tables().setting(PrdRow::To);
    Limits limits{depthLimit(from, range.shallowest), depthLimit(to, range.deepest)};
    limits.topGiven = from != depthText(range.shallowest);
    limits.bottomGiven = to != depthText(range.deepest);
    if (limits.top > limits.bottom) {
        std::swap(limits.top, limits.bottom);
        std::swap(limits.topGiven, limits.bottomGiven);
    }
    if (!limits.topGiven) limits.top = range.shallowest;
    if (!limits.bottomGiven) limits.bottom = range.deepest;
    return limits;
}

/// Steps from the origin to the last depth. Onto a coarser grid each sample has a depth within half a step, the last
/// one too.
double lastStep(const Limits& limits, double steps, bool ownGrid, bool coarser) {
    if (ownGrid && !limits.bottomGiven) return std::round(steps);
    if (coarser && !limits.bottomGiven) return std::max(0.0, std::ceil(steps - 0.5 - sameDepth));
    return std::floor(steps + sameDepth);
}

std::string noRecord(const Limits& limits) {
    return "no record lies between " + plainNumber(limits.top) + " and " + plainNumber(limits.bottom);
}

/// Decimals that the written depths take: on the records' own grid those of the inputs; on another one those that its
/// numbers need too.
int depthDecimals(const PassContext& context, bool ownGrid) {
    const PassGrid& grid = context.grid;
    int decimals = inputDecimals(context.session);
    if (!ownGrid) decimals = std::max({decimals, decimalsToShow(grid.start), decimalsToShow(grid.step)});
    return std::max(decimals, decimalsToShow(grid.depthOffset));
}

}  // namespace

bool deriveTrueGrid(PassContext& context) {
    PassGrid& grid = context.grid;
    const InputData* const data = firstData(context.session);
    if (data == nullptr) return stop(context, "no input has data");
    const double own = data->spacing.step;
    const bool ownGrid = own != 0 && std::abs(grid.step - own) <= 1e-9 * own;
    if (ownGrid) grid.step = own;
    const Limits limits = readLimits(context);
    const DepthRange range = depthRange(context.session);
    if (limits.bottom < range.shallowest || limits.top > range.deepest) return stop(context, noRecord(limits));
    const double origin = ownGrid ? data->spacing.first : limits.top;
    const double first = (limits.top - origin) / grid.step, last = (limits.bottom - origin) / grid.step;
    const double from = limits.topGiven ? std::ceil(first - sameDepth) : std::round(first);
    const double to = lastStep(limits, last, ownGrid, grid.step >= own * (1 - sameDepth));
    if (to < from) return stop(context, noRecord(limits));
    grid.start = origin + from * grid.step;
    grid.stop = origin + to * grid.step;
    grid.depthOffset = val(context.tables().setting(PrdRow::DepthOffset));
    grid.stepDecimals = depthDecimals(context, ownGrid);
    return true;
}

}  // namespace welvane
