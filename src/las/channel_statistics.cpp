#include "las/channel_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "las/data_refusal.h"
#include "las/tops.h"
#include "shared/numbers.h"
#include "shared/text.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::size_t mostIntervals = 100'000;
/// Depths are written with four decimals at most as a rule, so two that mean the same differ by no more.
constexpr double sameDepth = 0.00006;

/// Depths that count, in the file's unit, `top` the smaller one.
struct DepthSpan {
    double top = -infinity, bottom = infinity;
    bool holds(double depth) const { return depth >= top - sameDepth && depth <= bottom + sameDepth; }
};

DepthSpan spanOf(const LasFile& file, const IndexUnit& unit, TrueStatistics& result) {
    if (result.formation.empty()) return {};
    if (unit.kind == IndexUnitKind::Time)
        throw DataRefusal(0, "its index is in " + unit.text + ", the tops are depths");
    const std::string wanted = utf8Text(trim(result.formation));
    const std::vector<Top> tops = readTops(file);
    const auto found =
        std::find_if(tops.begin(), tops.end(), [&](const Top& top) { return sameText(utf8Text(top.name), wanted); });
    result.formationFound = found != tops.end();
    if (!result.formationFound) return {};
    const double factor = unit.isLength() ? metresInFoot / unit.metres : 1;
    const double from = val(found->depth) * factor;
    const double to = found + 1 == tops.end() ? infinity : val((found + 1)->depth) * factor;
    return {std::min(from, to), std::max(from, to)};
}

/// What is summed up for one channel along the way.
struct Running {
    double minimum = infinity, maximum = -infinity, minimumDepth = 0, maximumDepth = 0;
    double mean = 0, squares = 0;  ///< of the deviations from the mean
    std::int64_t count = 0;
    double openedAt = 0;
    bool inside = false;  ///< an interval is open

    void extend(double value, double depth) {
        if (value < minimum) {
            minimum = value;
            minimumDepth = depth;
        }
        if (value > maximum) {
            maximum = value;
            maximumDepth = depth;
        }
    }
    void merge(double otherMean, double otherSquares, std::int64_t otherCount) {
        const auto before = static_cast<double>(count), more = static_cast<double>(otherCount);
        const double all = before + more, apart = otherMean - mean;
        mean += apart * more / all;
        squares += otherSquares + apart * apart * before * more / all;
        count += otherCount;
    }
};

class Statistician {
  public:
    Statistician(std::vector<ChannelStatistics>& channels, std::size_t columns, const DepthSpan& span)
        : channels_(channels), span_(span), running_(columns) {}

    void take(const RecordBlock& block) {
        kept_.clear();
        for (std::size_t record = 0; record < block.records; ++record) {
            const double depth = *block.record(record);
            if (!span_.holds(depth)) continue;
            kept_.push_back(block.record(record));
            followIndex(depth, block.lines[record]);
        }
        if (kept_.empty()) return;
        for (std::size_t column = 1; column < running_.size(); ++column) takeColumn(column);
        lastDepth_ = *kept_.back();
    }

    void finish(std::size_t depthDecimals) {
        for (std::size_t column = 1; column < running_.size(); ++column) {
            close(column, lastDepth_);
            conclude(running_[column], channels_[column], depthDecimals);
        }
    }
    bool sawDepth() const { return lowest_ <= highest_; }
    double lowest() const { return lowest_; }
    double highest() const { return highest_; }
    /// Records whose index goes against the direction of the first two.
    const Occurrence& turned() const { return turned_; }

  private:
    void followIndex(double depth, std::size_t line) {
        if (sawDepth()) {
            const double step = depth - followed_;
            if (direction_ == 0) direction_ = step;
            if (step * direction_ < 0) turned_.add(line);
        }
        followed_ = depth;
        lowest_ = std::min(lowest_, depth);
        highest_ = std::max(highest_, depth);
    }

    void takeColumn(std::size_t column) {
        Running& running = running_[column];
        double sum = 0, before = lastDepth_;
        std::int64_t count = 0;
        for (const double* const record : kept_) {
            const double value = record[column];
            if (std::isnan(value)) {
                close(column, before);
            } else {
                running.extend(value, *record);
                sum += value;
                ++count;
                if (!running.inside) running.openedAt = *record;
                running.inside = true;
            }
            before = *record;
        }
        if (count == 0) return;
        const double mean = sum / static_cast<double>(count);
        double squares = 0;
        for (const double* const record : kept_) {
            const double apart = record[column] - mean;
            if (!std::isnan(apart)) squares += apart * apart;
        }
        running.merge(mean, squares, count);
    }

    /// Ends an open interval at the depth before.
    void close(std::size_t column, double before) {
        Running& running = running_[column];
        if (!running.inside) return;
        running.inside = false;
        ChannelStatistics& channel = channels_[column];
        const DepthInterval piece = {std::min(running.openedAt, before), std::max(running.openedAt, before)};
        if (channel.intervals.size() < mostIntervals) channel.intervals.push_back(piece);
        channel.footage += piece.bottom - piece.top;
    }

    static void conclude(const Running& running, ChannelStatistics& channel, std::size_t depthDecimals) {
        channel.count = running.count;
        if (running.count == 0) return;
        channel.minimum = running.minimum;
        channel.minimumDepth = running.minimumDepth;
        channel.maximum = running.maximum;
        channel.maximumDepth = running.maximumDepth;
        channel.mean = running.mean;
        if (running.count > 1)
            channel.standardDeviation = std::sqrt(running.squares / static_cast<double>(running.count - 1));
        // A sum of differences of such depths has no more decimals than they have.
        constexpr std::size_t known = 9;
        const double unit = std::pow(10, static_cast<double>(std::min(depthDecimals, known)));
        if (depthDecimals <= known) channel.footage = std::round(channel.footage * unit) / unit;
        channel.footageText = formatMask(channel.footage, 4);
        const auto decimals = static_cast<int>(std::clamp<std::size_t>(depthDecimals, 1, 4));
        for (const DepthInterval& piece : channel.intervals) {
            if (!channel.intervalText.empty()) channel.intervalText += " /";
            channel.intervalText += formatMask(piece.top, decimals) + "- " + formatMask(piece.bottom, decimals);
        }
    }

    std::vector<ChannelStatistics>& channels_;
    DepthSpan span_;
    std::vector<Running> running_;
    std::vector<const double*> kept_;  ///< records of the block in hand that count
    double lastDepth_ = 0, followed_ = 0, direction_ = 0;
    double lowest_ = infinity, highest_ = -infinity;
    Occurrence turned_;
};

void addNotes(const ChannelReader& reader, const Statistician& statistician, const std::string& name,
              TrueStatistics& result) {
    result.notes = reader.notes(name);
    for (Note& note : indexNotes(result.unit, name)) result.notes.push_back(std::move(note));
    if (const Occurrence& turned = statistician.turned(); turned.count > 0)
        result.notes.push_back({.kind = NoteKind::StepVaries,
                                .file = name,
                                .line = turned.firstLine,
                                .count = turned.count,
                                .text = "the index turns back; intervals follow the order of the records"});
}

}  // namespace

std::optional<TrueStatistics> readTrueStatistics(const LasFile& file, const StatisticsWish& wish,
                                                 const std::string& name, RunTurn& turn) {
    TrueStatistics result;
    result.formation = wish.formation;
    result.unit = chooseIndexUnit(file.text(), wish.indexUnit);
    result.depthUnit = shownUnit(result.unit);
    ChannelReader reader(file, wish.how);
    for (const HeaderField& field : reader.names().channels) result.channels.emplace_back().field = field;
    const DepthSpan span = spanOf(file, result.unit, result);
    Statistician statistician(result.channels, reader.shape().columns, span);
    file.willReadAll();
    for (RecordBlock block; reader.next(block);) {
        if (!turn.goesOn(reader.place())) return std::nullopt;
        statistician.take(block);
    }
    file.needWhole();
    const DataFacts& facts = reader.facts();
    result.records = facts.records;
    if (facts.records == 0) throw DataRefusal(0, "no record behind its ~A line");
    statistician.finish(facts.channels.front().decimals);
    result.top = std::isinf(span.top) ? statistician.lowest() : span.top;
    result.bottom = std::isinf(span.bottom) ? std::max(result.top, statistician.highest()) : span.bottom;
    addNotes(reader, statistician, name, result);
    return result;
}

}  // namespace welvane
