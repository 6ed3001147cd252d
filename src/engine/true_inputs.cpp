#include "engine/true_inputs.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "engine/null_fill.h"
#include "engine/placing.h"
#include "las/input_data.h"
#include "shared/files.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

/// One input on its way onto the grid.
class SlotPlacer {
  public:
    SlotPlacer(PassContext& context, int slot)
        : context_(context),
          slot_(context.session.slots[slot]),
          channels_(context.session.channels[slot]),
          data_(*slot_.data),
          base_(context.session.columnBase(slot)),
          null_(context.nullValue),
          plain_(placeRecords(context.grid, data_, 0)) {}

    void place() {
        noteUnplaced();
        for (std::size_t index = 1; index < channels_.size(); ++index) placeChannel(index);
    }

  private:
    /// Records that follow no step stand where they are nearest, and some of them nowhere.
    void noteUnplaced() {
        if (data_.spacing.step != 0) return;
        std::vector<bool> taken(data_.depths().size());
        for (const Placing::Sample& sample : plain_.samples)
            if (sample.record >= 0) taken[sample.record] = true;
        const auto lost = static_cast<std::size_t>(std::count(taken.begin(), taken.end(), false)) - plain_.outside;
        if (lost > 0 && lost <= taken.size())
            note(NoteKind::Dropped, "", lost, "records have no place of their own on the step of the output");
    }

    void placeChannel(std::size_t index) {
        const SlotChannel& channel = channels_[index];
        const std::span<double> target = context_.inputMatrix.column(base_ + static_cast<int>(index) - 1);
        if (index >= data_.channels.columns.size()) {
            std::ranges::fill(target, null_);  // the data have no such column, as the notes tell
            return;
        }
        const bool moved = channel.spliced && channel.channelOffset != 0 && !context_.options.noInputRun;
        const Placing own = moved ? placeMoved(channel) : Placing();
        const std::size_t equal = fill(target, data_.channels.columns[index], moved ? own : plain_, clipOf(channel));
        if (equal > 0)
            note(NoteKind::Nulls, channel.field.mnem, equal,
                 "values are the null of the output, so that nobody can tell them from it");
        if (context_.nullFillMode != NullFill::None && !context_.options.noInputRun)
            fillColumn(target, context_.nullFillMode, null_);
    }

    /// Depths (as the input has them) that a channel is cut to.
    struct Clip {
        double top = -std::numeric_limits<double>::infinity(), bottom = std::numeric_limits<double>::infinity();
        bool holds(double depth) const { return depth >= top && depth <= bottom; }
    };
    Clip clipOf(const SlotChannel& channel) const {
        Clip clip;
        if (!channel.spliced || context_.options.noInputRun) return clip;
        // A limit is a single; a depth that is the same as one belongs to the interval.
        const double slack = context_.grid.step * 1e-3;
        if (channel.channelTop != 0) clip.top = channel.channelTop - slack;
        if (channel.channelBottom != 0) clip.bottom = channel.channelBottom + slack;
        return clip;
    }

    Placing placeMoved(const SlotChannel& channel) {
        const double shift = plainShift(channel.channelOffset), steps = shift / context_.grid.step;
        Placing placing = placeRecords(context_.grid, data_, shift);
        if (std::abs(steps - std::round(steps)) > 1e-4)
            note(NoteKind::Setting, channel.field.mnem, 0,
                 "a shift of " + plainNumber(shift) + " is no multiple of the step " + plainNumber(context_.grid.step) +
                     "; each depth takes the nearest sample");
        if (placing.outside > plain_.outside)
            note(NoteKind::Dropped, channel.field.mnem, placing.outside - plain_.outside,
                 "samples are shifted beyond the ends of the output");
        return placing;
    }
    /// A shift is held as a single, but was given in decimals.
    static double plainShift(float shift) { return val(plainNumber(shift)); }

    /// The same as fill where records follow each other as the samples do, all of them wanted.
    std::size_t fillStraight(std::span<double> target, const double* values) const {
        std::size_t equal = 0;
        for (std::size_t index = 0; index < target.size(); ++index) {
            const double value = values[index];
            equal += value == null_ ? 1 : 0;
            target[index] = std::isnan(value) ? null_ : value;
        }
        return equal;
    }

    /// The samples of a column; returns how many of them are the output's null without being null.
    std::size_t fill(std::span<double> target, const std::vector<double>& values, const Placing& placing,
                     const Clip& clip) const {
        if (placing.straight && std::isinf(clip.top) && std::isinf(clip.bottom))
            return fillStraight(target, values.data() + placing.samples.front().record);
        std::size_t equal = 0;
        const std::vector<double>& depths = data_.depths();
        for (std::size_t index = 0; index < target.size(); ++index) {
            const Placing::Sample& sample = placing.samples[index];
            double& cell = target[index];
            cell = null_;
            if (sample.record < 0) continue;
            const auto record = static_cast<std::size_t>(sample.record);
            double value = values[record];
            if (!clip.holds(depths[record])) continue;
            if (sample.share > 0) {
                const auto next = static_cast<std::size_t>(sample.next);
                if (!clip.holds(depths[next])) continue;
                value += sample.share * (values[next] - value);
            }
            if (std::isnan(value)) continue;
            equal += value == null_ ? 1 : 0;
            cell = value;
        }
        return equal;
    }

    void note(NoteKind kind, const std::string& channel, std::size_t count, const std::string& text) {
        context_.report.notes.push_back(
            {.kind = kind, .file = slot_.path, .channel = channel, .count = count, .text = text});
    }

    PassContext& context_;
    const InputSlot& slot_;
    const SlotChannels& channels_;
    const InputData& data_;
    int base_;
    double null_;
    Placing plain_;
};

}  // namespace

void placeInputs(PassContext& context) {
    for (int slot = 0; slot < slotCount; ++slot) {
        const InputSlot& input = context.session.slots[slot];
        if (!context.session.loaded(slot) || !input.data) continue;
        context.app.run.statusText = "Placing " + fileNameOf(input.path) + " ...";
        SlotPlacer(context, slot).place();
        if (context.options.noInputRun) return;
    }
}

}  // namespace welvane
