#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "functions/charts.h"
#include "functions/functions.h"
#include "functions/samples.h"
#include "functions/smoothing.h"
#include "shared/numbers.h"

/// The sample loop.
namespace welvane {

namespace {

/// Samples are worked through in blocks of this many: a block's results stand in the first-level cache, so that looking
/// for failures and leaving nulls alone cost no second trip to memory, and loops of a fixed length are made into vector
/// code.
constexpr std::size_t blockSize = 512;
using Block = std::array<double, blockSize>;

/// The doubles that become the null value as singles, from the lowest to the highest: two comparisons where a
/// conversion and back would cost the loop more than the function itself.
struct NullRange {
    double lowest, highest;

    explicit NullRange(float null) : lowest(edge(null, -HUGE_VALF)), highest(edge(null, HUGE_VALF)) {}
    bool holds(double value) const { return (value >= lowest) & (value <= highest); }

  private:
    /// Halfway to the next single, or the double before it where the half goes to that neighbour.
    static double edge(float null, float towards) {
        const double half = (static_cast<double>(null) + static_cast<double>(std::nextafter(null, towards))) / 2;
        return static_cast<float>(half) == null ? half : std::nextafter(half, static_cast<double>(null));
    }
};

/// What the loop of one channel needs.
struct Channel {
    const FunctionEntry& function;
    std::span<const double> source;
    std::span<double> target;
    float nullValue;
    FunctionState& state;
    FailureList& failures;

    std::size_t size() const { return std::min(source.size(), target.size()); }

    /// Counts a sample that failed; only the first ones get a text.
    void failed(std::size_t index) const {
        if (failures.first.size() < FailureList::kept)
            failures.add(std::string(function.key) + ", sample " + plainNumber(static_cast<double>(index + 1)),
                         "no result for its value");
        else
            ++failures.count;
    }
    /// Stores y for one sample; a y that no number holds leaves the y of the sample before, which then is stored again
    /// where nothing else was asked for.
    void store(std::size_t index, double y) const {
        if (std::isfinite(y)) {
            target[index] = state.y = y;
            return;
        }
        failed(index);
        target[index] = state.failedSample.value_or(state.y);
    }
};

/// The bits of a result with the highest one set only where its exponent is all ones: infinity or no number. In whole
/// numbers, which the compiler handles several at once.
std::uint64_t failureBits(double result) {
    constexpr std::uint64_t allButSign = ~std::uint64_t{0} >> 1;
    constexpr std::uint64_t oneExponent = std::uint64_t{1} << 52;
    return (std::bit_cast<std::uint64_t>(result) & allButSign) + oneExponent;
}

/// Every non-null sample x of the source becomes y = body(x) of the target; `body` gives the same for the same x. The
/// loop works on local blocks of fixed length, which cannot overlap: so it becomes vector code where the body allows
/// it.
template <class Body>
void eachSample(const Channel& channel, Body body) {
    const auto nullValue = static_cast<double>(channel.nullValue);
    const NullRange null(channel.nullValue);
    Block x, result;
    for (std::size_t first = 0; first < channel.size(); first += blockSize) {
        const std::size_t count = std::min(blockSize, channel.size() - first);
        // What fills the last block up is null, and so left out.
        if (count < blockSize) {
            x.fill(nullValue);
            result.fill(nullValue);
        }
        std::copy_n(channel.source.data() + first, count, x.data());
        std::copy_n(channel.target.data() + first, count, result.data());
        std::uint64_t failures = 0;
        for (std::size_t index = 0; index < blockSize; ++index) {
            const double y = body(x[index]);
            const double kept = result[index];
            failures |= failureBits(y);
            result[index] = null.holds(x[index]) ? kept : y;
        }
        if ((failures >> 63) != 0) {
            for (std::size_t index = 0; index < count; ++index)
                if (!isNull(x[index], channel.nullValue)) channel.store(first + index, body(x[index]));
            continue;
        }
        std::copy_n(result.data(), count, channel.target.data() + first);
        std::size_t last = count;
        while (last > 0 && isNull(x[last - 1], channel.nullValue)) --last;
        if (last > 0) channel.state.y = result[last - 1];
    }
}

/// The coefficients with what is unset as 0, and the two unit factors.
struct Figures {
    double a1, a2, a3, a4, inFactor;
};

Figures figuresOf(const ParsedFunction& function, std::string_view outputUnit, std::string_view inputUnit,
                  const ReferenceTables& reference) {
    const CoefficientSet& set = function.coefficients;
    Figures figures = {set.a1.value_or(0), set.a2.value_or(0), set.a3.value_or(0), set.a4.value_or(0),
                       unitFactor(reference, inputUnit)};
    switch (*function.code) {
        case FunctionCode::Scale:
        case FunctionCode::Math:
            break;
        case FunctionCode::NeutCr2Poro:
            figures.a4 = 1;
            break;
        default:
            figures.a4 = unitFactor(reference, outputUnit);
    }
    return figures;
}

void linear(const Channel& channel, const Figures& f) {
    // Dividing by 1 changes nothing but the time it takes.
    if (f.inFactor == 1)
        eachSample(channel, [f](double x) { return f.a4 * (f.a1 * x + f.a2); });
    else
        eachSample(channel, [f](double x) { return f.a4 * (f.a1 * x / f.inFactor + f.a2); });
}

void powerLaw(const Channel& channel, const Figures& f) {
    if (f.a4 == 1)
        eachSample(channel, [f](double x) { return f.a1 * x + f.a2 * x + f.a3; });
    else
        eachSample(channel, [f](double x) { return std::pow(f.a1 * x, f.a4) + f.a2 * x + f.a3; });
}

void clip(const Channel& channel, const Figures& f) {
    const bool hasLow = f.a1 != lasNull;
    const bool hasHigh = f.a2 != lasNull;
    eachSample(channel, [=](double x) {
        const double raised = hasLow && x < f.a1 ? f.a1 : x;
        return hasHigh && raised > f.a2 ? f.a2 : raised;
    });
}

void scale(const Channel& channel, const Figures& f) {
    double slope = (f.a2 - f.a1) / (std::fabs(f.a4) - f.a3);
    if (!std::isfinite(slope)) {
        // The statement is dropped and the slope stays 0, so that every sample becomes the left scale.
        channel.failures.add(std::string(channel.function.key) + ", slope", "the old tracks have the same position");
        slope = 0;
    }
    const double intercept = f.a1 - f.a3 * slope;
    if (f.a4 >= 0) {
        eachSample(channel, [=](double x) { return slope * x + intercept; });
        return;
    }
    const double left = log10Of(f.a1);
    const double right = log10Of(f.a2);
    eachSample(channel, [=](double x) {
        const double t = slope * x + intercept;
        const double exponent = left + (right - left) * (t - f.a1) / (f.a2 - f.a1);
        return std::isnan(exponent) ? exponent : antiLog10(exponent);
    });
}

/// Kept: where source and target are the same samples, the neighbours before a sample are already smoothed. Test:
/// smoothingInPlaceRunsOn
void smooth(const Channel& channel, const Figures& f) {
    const std::span<const double> samples = channel.source.first(channel.size());
    const bool weighted = f.a1 == 1;
    const bool moving = f.a1 == 2;
    MovingMean mean(samples, f.a2, channel.nullValue);
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double x = samples[index];
        if (isNull(x, channel.nullValue)) continue;
        // Kept: any other mode stores what y was before. Test: smoothingOfNoModeStoresTheStaleY
        channel.store(index, weighted ? weightedMean(samples, index, channel.nullValue)
                             : moving ? mean.at(index)
                                      : channel.state.y);
        if (moving && channel.source.data() == channel.target.data()) mean.changed(index, x);
    }
}

}  // namespace

void evaluateFunction(const ParsedFunction& function, std::string_view outputUnit, std::string_view inputUnit,
                      std::span<const double> source, std::span<double> target, float nullValue,
                      const ReferenceTables& reference, const MatrixTable& matrix, FunctionState& state,
                      FailureList& failures) {
    if (!function.code) return;
    const FunctionEntry& entry = functionCatalogue()[static_cast<std::size_t>(*function.code)];
    const Channel channel = {entry, source, target, nullValue, state, failures};
    const Figures f = figuresOf(function, outputUnit, inputUnit, reference);
    const int change = static_cast<int>(f.a3);
    switch (*function.code) {
        case FunctionCode::Res2Cond:
        case FunctionCode::Cond2Res:
            eachSample(channel, [](double x) { return 1000 / x; });
            return;
        case FunctionCode::BulkDen2Poro:
        case FunctionCode::Poro2BulkDen:
        case FunctionCode::Dt2Poro:
        case FunctionCode::Poro2Dt:
            linear(channel, f);
            return;
        case FunctionCode::DenMatrix:
            eachSample(channel, [&](double x) {
                return f.a4 * convertDensityMatrix(static_cast<float>(x / f.inFactor), change, matrix);
            });
            return;
        case FunctionCode::NporCp1e:
            eachSample(channel, [&](double x) { return f.a4 * chartCP1e(static_cast<float>(x / f.inFactor), change); });
            return;
        case FunctionCode::NphiCp1c:
            eachSample(channel, [&](double x) { return f.a4 * convertNeutronCP1c(x / f.inFactor, change); });
            return;
        case FunctionCode::NeutCr2Poro:
            eachSample(channel, [f](double x) { return std::pow(10.0, f.a1 * x + f.a2) * f.a4; });
            return;
        case FunctionCode::Math:
            powerLaw(channel, f);
            return;
        case FunctionCode::MinMax:
            clip(channel, f);
            return;
        case FunctionCode::AvePoro: {
            // Kept: there is no arithmetic behind this entry; it stores what y was before. Test:
            // averagePorosityStoresTheStaleY
            const double stale = state.y;
            eachSample(channel, [stale](double) { return stale; });
            return;
        }
        case FunctionCode::Replace:
            eachSample(channel, [f](double x) { return x == f.a1 ? f.a2 : x; });
            return;
        case FunctionCode::Average:
            smooth(channel, f);
            return;
        case FunctionCode::Scale:
            scale(channel, f);
            return;
    }
}

}  // namespace welvane
