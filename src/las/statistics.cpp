#include "las/statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "las/data_words.h"
#include "las/run_turn.h"
#include "las/tops.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/settings.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr double noMinimum = 1e10;
constexpr double noMaximum = -1e10;
constexpr double footMetres = 0.3048;
constexpr std::size_t intervalLimit = 100'000;

float readNull(const LasFile& file, UserInterface& user) {
    const std::string text = file.value("NULL").text;
    if (trim(text).empty()) {
        showWarning(user, "Null Value Absent!", "Null Value not specified in header of this LAS. Assuming -999.25.");
        return static_cast<float>(lasNull);
    }
    const double value = val(text);
    // No sample equals a null that no single can hold.
    if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        return std::numeric_limits<float>::quiet_NaN();
    return static_cast<float>(value);
}

std::string readDepthUnit(const LasFile& file, UserInterface& user) {
    std::string unit = file.value("STRT").unit;
    if (trim(unit).empty()) unit = file.value(indexMnem).unit;
    if (trim(unit).empty()) {
        showWarning(user, "Depth Units Absent!", "Depth Units not specifed in header of this LAS. Assuming FT.");
        return "FT";
    }
    if (!beginsWith(unit, "F") && !beginsWith(unit, "M")) {
        showWarning(user, "Unusual Depth Units", "Depth Units, " + unit + ", are not as expected (F or M). Using FT");
        return "FT";
    }
    return unit;
}

/// Depths that count, in feet, in either order.
struct DepthRange {
    double top = 0, bottom = 0;
    double factor = 1;     ///< metres in a foot when the file's depths are in metres
    double tolerance = 0;  ///< the first depth is known to four decimals only
    bool open = false;     ///< the last depth is not known: everything counts

    bool holds(double feet) const {
        return open || (feet >= std::min(top, bottom) - tolerance && feet <= std::max(top, bottom) + tolerance);
    }
};

/// What is summed up for one channel along the way.
struct Sums {
    double minimum = noMinimum, maximum = noMaximum, sum = 0, squares = 0;
    double minimumDepth = 0, maximumDepth = 0;
    std::int64_t count = 0;
    bool inside = false;  ///< an interval is open
    double openedAt = 0;

    void add(double value, double depth) {
        if (value > maximum) {
            maximum = value;
            maximumDepth = depth;
        }
        if (value < minimum) {
            minimum = value;
            minimumDepth = depth;
        }
        sum += value;
        squares += value * value;
        ++count;
    }
};

class StatisticsPass {
  public:
    StatisticsPass(std::vector<ChannelStatistics>& channels, float null, const DepthRange& range)
        : channels_(channels), null_(null), range_(range), sums_(channels.size()), row_(channels.size()) {}

    void takeLine(std::string_view line) {
        const std::size_t words = fillRow(line, 0);
        if (words == row_.size() && !widthKnown_) {
            widthKnown_ = true;
            if (line.size() % words == 0) width_ = line.size() / words;
        }
        // Columns that touch, or an empty one: the words do not match the channels, but the places still do.
        if (words != row_.size() && width_ > 0 && line.size() == width_ * row_.size()) {
            for (std::size_t index = 0; index < row_.size(); ++index)
                row_[index] = val(line.substr(index * width_, width_));
            takeRow(row_.size());
        } else {
            takeRow(words);
        }
    }

    /// Lines of wrapped data; the record is taken with its last line.
    void takeWrappedLine(std::string_view line, int linesPerStep) {
        words_ = fillRow(line, words_);
        if (++lines_ == linesPerStep) takeRecord();
    }
    void takeRecord() {
        if (lines_ > 0) takeRow(words_);
        lines_ = 0;
        words_ = 0;
    }

    void finish() {
        for (std::size_t index = 1; index < channels_.size(); ++index) {
            close(index);
            conclude(sums_[index], channels_[index]);
        }
    }
    double lowest() const { return lowest_; }
    double highest() const { return highest_; }

  private:
    /// Values of the line's words from place `from` of the row on; returns the place behind the last. Words too many
    /// are counted only.
    std::size_t fillRow(std::string_view line, std::size_t from) {
        for (std::string_view word = nextDataWord(line); !word.empty(); word = nextDataWord(line), ++from)
            if (from < row_.size()) row_[from] = parseNumber(word).value;
        return from;
    }

    bool isNull(double value) const {
        constexpr double largest = static_cast<double>(std::numeric_limits<float>::max());
        return value >= -largest && value <= largest && static_cast<float>(value) == null_;
    }

    void takeRow(std::size_t words) {
        if (words == 0) return;
        const double depth = row_[0];
        if (!range_.holds(depth / range_.factor)) return;
        const std::size_t known = std::min(words, row_.size());
        for (std::size_t index = 1; index < row_.size(); ++index) {
            Sums& sums = sums_[index];
            if (index >= known || isNull(row_[index])) {
                if (sums.inside) close(index);
                continue;
            }
            sums.add(row_[index], depth);
            if (sums.inside) continue;
            sums.inside = true;
            sums.openedAt = depth;
        }
        lastDepth_ = depth;
        lowest_ = sawDepth_ ? std::min(lowest_, depth) : depth;
        highest_ = sawDepth_ ? std::max(highest_, depth) : depth;
        sawDepth_ = true;
    }

    /// Ends an open interval at the depth before.
    void close(std::size_t index) {
        Sums& sums = sums_[index];
        if (!sums.inside) return;
        sums.inside = false;
        ChannelStatistics& channel = channels_[index];
        const DepthInterval piece = {std::min(sums.openedAt, lastDepth_), std::max(sums.openedAt, lastDepth_)};
        if (channel.intervals.size() < intervalLimit) channel.intervals.push_back(piece);
        // The running thickness is kept with the decimals that it is shown with.
        channel.footage = val(formatMask(channel.footage + piece.bottom - piece.top, 4));
    }

    static void conclude(const Sums& sums, ChannelStatistics& channel) {
        channel.count = sums.count;
        const auto count = static_cast<double>(sums.count);
        if (sums.count > 0) channel.mean = sums.sum / count;
        if (sums.count > 1) {
            const double spread = (count * sums.squares - sums.sum * sums.sum) / (count * count - count);
            channel.standardDeviation =
                spread > 0 ? std::sqrt(spread) : 0;  // rounding can leave a little less than nothing
        }
        if (sums.minimum < noMinimum) {
            channel.minimum = sums.minimum;
            channel.minimumDepth = sums.minimumDepth;
        }
        if (sums.maximum > noMaximum) {
            channel.maximum = sums.maximum;
            channel.maximumDepth = sums.maximumDepth;
        }
        channel.footageText = formatMask(channel.footage, 4);
        for (const DepthInterval& piece : channel.intervals) {
            if (!channel.intervalText.empty()) channel.intervalText += " /";
            channel.intervalText += formatMask(piece.top, 1) + "- " + formatMask(piece.bottom, 1);
        }
    }

    std::vector<ChannelStatistics>& channels_;
    float null_;
    DepthRange range_;
    std::vector<Sums> sums_;
    std::vector<double> row_;
    bool widthKnown_ = false;
    std::size_t width_ = 0;  ///< of a column, by the first whole line; 0 where lines cannot be cut by place
    std::size_t words_ = 0;
    int lines_ = 0;
    double lastDepth_ = 0, lowest_ = 0, highest_ = 0;
    bool sawDepth_ = false;
};

DepthRange wholeRange(const DataEnds& ends, bool inFeet) {
    DepthRange range;
    range.factor = inFeet ? 1 : footMetres;
    range.top = std::min(ends.firstDepth, ends.lastDepth) / range.factor;
    range.bottom = std::max(ends.firstDepth, ends.lastDepth) / range.factor;
    range.tolerance = 0.00006 / range.factor;
    range.open = !ends.hasLastDepth;
    return range;
}

/// Narrows the range to the formation. Kept: depths of the block are taken as feet as they stand, also in a file in
/// metres.
void narrowToFormation(const LasFile& file, DepthRange& range, LasStatistics& result) {
    if (result.formation.empty()) return;
    const std::vector<Top> tops = readTops(file);
    const auto found = std::find_if(tops.begin(), tops.end(),
                                    [&result](const Top& top) { return sameText(top.name, trim(result.formation)); });
    result.formationFound = found != tops.end();
    if (!result.formationFound) {
        result.formation += ' ';
        return;
    }
    range.top = val(found->depth);
    if (found + 1 != tops.end())
        range.bottom = val((found + 1)->depth);
    else if (range.open)
        range.bottom = std::numeric_limits<double>::infinity();  // to the data's end
    range.open = false;
    range.tolerance = 0;
}

bool readData(const LasFile& file, StatisticsPass& pass, RunTurn& turn) {
    const DataShape& shape = file.shape();
    LineReader data = file.text().lines(static_cast<std::size_t>(file.ends().firstPosition - 1));
    const bool wrapped = shape.layout == DataLayout::Wrapped;
    for (std::string_view line; data.next(line);) {
        if (!turn.goesOn(data.position())) return false;
        if (!wrapped)
            pass.takeLine(line);
        else if (!firstDataWord(line).empty())
            pass.takeWrappedLine(line, shape.linesPerStep);
    }
    pass.takeRecord();
    pass.finish();
    return true;
}

StepResult readStatistics(const LasFile& file, LasStatistics& result, RunState& run, UserInterface& user) {
    const float null = readNull(file, user);
    result.depthUnit = readDepthUnit(file, user);
    auto curves = file.section('C');
    if (!curves || curves->empty()) return StepResult::Failed;
    for (HeaderField& field : *curves) result.channels.emplace_back().field = std::move(field);

    const DataShape& shape = file.shape();
    if (shape.layout == DataLayout::Undecided && sameText(file.value("WRAP", 'V').text, "YES")) {
        tellConversionFailure(user, shapeProblem(shape));
        return StepResult::Failed;
    }
    const DataEnds& ends = file.ends();
    if (!ends.found) return StepResult::Failed;
    DepthRange range = wholeRange(ends, beginsWith(result.depthUnit, "F"));
    narrowToFormation(file, range, result);

    StatisticsPass pass(result.channels, null, range);
    file.willReadAll();
    RunTurn turn(run, user, file.bytes().size());
    if (!readData(file, pass, turn)) return StepResult::Cancelled;

    if (range.open) {
        result.top = pass.lowest();
        result.bottom = pass.highest();
    } else if (result.formationFound) {
        result.top = std::min(range.top, range.bottom) * range.factor;
        result.bottom = std::max(range.top, range.bottom) * range.factor;
        if (std::isinf(result.bottom)) result.bottom = pass.highest();
    } else {
        result.top = std::min(ends.firstDepth, ends.lastDepth);
        result.bottom = std::max(ends.firstDepth, ends.lastDepth);
    }
    return StepResult::Done;
}

}  // namespace

StepResult readLasStatistics(const LasFile& file, std::string_view formation, LasStatistics& result, RunState& run,
                             UserInterface& user) {
    result = {};
    result.formation = formation;
    StepResult read = StepResult::Failed;
    try {
        read = readStatistics(file, result, run, user);
    } catch (const RunTimeFailure&) {
        read = StepResult::Failed;
    }
    file.needWhole();
    return read;
}

}  // namespace welvane
