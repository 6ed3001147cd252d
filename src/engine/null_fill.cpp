#include "engine/null_fill.h"

namespace welvane {

namespace {

void fillLinear(std::span<double> samples, double null) {
    const std::size_t count = samples.size();
    std::size_t place = 0;
    while (true) {
        // The last data sample before a gap; a gap without one is never filled.
        while (place + 1 < count && !(samples[place] != null && samples[place + 1] == null)) ++place;
        if (place + 1 >= count) return;
        const std::size_t above = place;
        std::size_t below = above + 1;
        while (below < count && samples[below] == null) ++below;
        if (below >= count) return;
        const double span = static_cast<double>(below - above);
        for (std::size_t index = above + 1; index < below; ++index)
            samples[index] =
                (static_cast<double>(index - above) / span) * (samples[below] - samples[above]) + samples[above];
        place = below;
    }
}

void fillFlatTop(std::span<double> samples, double null) {
    double last = null;
    for (double& sample : samples) {
        if (sample != null) last = sample;
        if (sample == null) sample = last;
    }
}

}  // namespace

void fillColumn(std::span<double> samples, NullFill mode, double null) {
    if (mode == NullFill::Linear) fillLinear(samples, null);
    if (mode == NullFill::FlatTop) fillFlatTop(samples, null);
}

void applyNullFill(PassContext& context, NullFill mode, int firstColumn, int lastColumn) {
    context.app.run.statusText = "Doing Null Filling ...";
    for (int column = firstColumn; column <= lastColumn; ++column)
        attempt(context.report.failures, "null fill", [&] { fillColumn(context.inputMatrix.column(column), mode); });
}

}  // namespace welvane
