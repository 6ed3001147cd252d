#include "las/index_spacing.h"

#include <algorithm>
#include <cmath>

#include "las/depth_spacing.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

/// Number (from 1) of the first record that is not beyond the one before it in the direction of the data; 0 for none.
std::size_t firstTurn(const std::vector<double>& depths, int direction) {
    for (std::size_t index = 1; index < depths.size(); ++index)
        if (!((depths[index] - depths[index - 1]) * direction > 0)) return index;
    return 0;
}

/// What depths may lie beside their grid: a hundredth of the step, which is more than the rounding to singles that some
/// programs do takes; or what the rounding of their texts, the first one's among them, can have moved them.
class AllowedOff {
  public:
    AllowedOff(double step, std::size_t decimals)
        : close_(std::abs(step) / 100),
          far_(std::min(depthRounding(decimals), std::abs(step) / 4)),
          unit_(std::pow(10.0, -static_cast<double>(decimals))) {}

    bool allows(double off) {
        least_ = std::min(least_, off);
        most_ = std::max(most_, off);
        if (std::abs(off) <= close_) return true;
        // Texts rounded alike lie less than one unit of their last digit apart.
        return std::abs(off) <= far_ && most_ - least_ < unit_ * (1 - 1e-6);
    }

  private:
    double close_, far_, unit_;
    double least_ = 0, most_ = 0;
};

/// What a look at all depths along a grid finds.
struct GridFit {
    bool fits = false;
    std::size_t steps = 0;   ///< from the first to the last depth
    double off = 0;          ///< the most that a depth lies beside its place
    std::size_t misfit = 0;  ///< the first that does not fit
};

/// Whether every depth stands on the grid that the first one and the signed step make.
GridFit fitGrid(const std::vector<double>& depths, double step, std::size_t decimals) {
    GridFit fit;
    AllowedOff allowed(step, decimals);
    double before = -1;
    for (std::size_t index = 0; index < depths.size(); ++index) {
        const double place = std::round((depths[index] - depths.front()) / step);
        const double off = depths[index] - depths.front() - place * step;
        if (!(place > before) || !allowed.allows(off)) {
            fit.misfit = index;
            return fit;
        }
        fit.off = std::max(fit.off, std::abs(off));
        before = place;
    }
    fit.fits = true;
    fit.steps = static_cast<std::size_t>(before);
    return fit;
}

/// The spacing that most depths have, made exact over the whole length; 0 where they have none. Signed.
double commonSpacing(const std::vector<double>& depths) {
    std::vector<double> spacings;
    spacings.reserve(depths.size());
    for (std::size_t index = 1; index < depths.size(); ++index) spacings.push_back(depths[index] - depths[index - 1]);
    const auto middle = spacings.begin() + static_cast<std::ptrdiff_t>((spacings.size() - 1) / 2);
    std::nth_element(spacings.begin(), middle, spacings.end());
    const double median = *middle;
    double steps = 0;
    for (std::size_t index = 1; index < depths.size(); ++index)
        steps += std::round((depths[index] - depths[index - 1]) / median);
    return steps > 0 ? (depths.back() - depths.front()) / steps : 0;
}

void setStep(IndexSpacing& spacing, double step, bool own) {
    spacing.step = std::abs(step);
    spacing.ownStep = own;
}

/// The told step where all depths lie on its grid, else their own; else the first depth that is on neither.
void takeGrid(IndexSpacing& spacing, const std::vector<double>& depths, double told) {
    for (const double step : {told, commonSpacing(depths)}) {
        if (step == 0) continue;
        const GridFit fit = fitGrid(depths, step, spacing.decimals);
        spacing.misfit = std::max(spacing.misfit, fit.misfit);
        if (!fit.fits) continue;
        spacing.missing = fit.steps + 1 - depths.size();
        spacing.kind = spacing.missing == 0 ? IndexSpacing::Kind::Regular : IndexSpacing::Kind::Gaps;
        spacing.off = fit.off;
        setStep(spacing, step, step != told);
        return;
    }
    spacing.kind = IndexSpacing::Kind::Irregular;
}

}  // namespace

IndexSpacing judgeSpacing(const std::vector<double>& depths, std::size_t decimals, std::string_view headerStep) {
    IndexSpacing spacing;
    spacing.first = depths.front();
    spacing.last = depths.back();
    const auto [least, most] = std::minmax_element(depths.begin(), depths.end());
    spacing.top = *least;
    spacing.bottom = *most;
    spacing.decimals = decimals;
    spacing.direction = spacing.last < spacing.first ? -1 : 1;
    const double told = isNumeric(headerStep) ? std::abs(val(headerStep)) * spacing.direction : 0;
    if (depths.size() == 1) {
        // One record has no spacing; any step does.
        setStep(spacing, told == 0 ? 1 : told, told == 0);
        return spacing;
    }
    if (const std::size_t turn = firstTurn(depths, spacing.direction); turn != 0) {
        spacing.kind = IndexSpacing::Kind::Irregular;
        spacing.misfit = turn;
        return spacing;
    }
    const GridFit asTold = told == 0 ? GridFit() : fitGrid(depths, told, decimals);
    if (!asTold.fits || asTold.steps + 1 != depths.size())
        if (const std::string own = regularStep(depths, decimals); !own.empty()) {
            setStep(spacing, val(own), val(own) != told);
            return spacing;
        }
    takeGrid(spacing, depths, told);
    return spacing;
}

}  // namespace welvane
