#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "engine/pass_context.h"
#include "shared/number_fields.h"
#include "shared/numbers_fast.h"

/// Reading records of ~A onto the grid: what both roads of it share, and the one that several threads take.
namespace welvane {

/// True for a text of blanks and tabs, or none.
bool isBlankText(std::string_view text);

/// Where records have their places on the grid, and outside of it.
struct GridPlaces {
    double start, step;
    std::int32_t samples;

    bool hold(std::int64_t index) const { return index > 0 && index <= samples; }
    /// RunTimeFailure when it leaves 32 bits.
    std::int32_t of(double depth) const;
    /// Of a word of the line; RunTimeFailure where it is no number.
    std::int32_t of(const NumberField& field, std::string_view line) const;
};

/// Columns of samples, each by its first one.
using SampleColumns = std::vector<double*>;

/// A value of a line. A word that is no plain number is read on up to `limit`: what stands behind the line begins with
/// a line end, which continues no number.
inline void storeField(const NumberField& field, const char* line, const char* limit, double& cell) {
    if (field.plain)
        cell = field.value;
    else
        parseNumberFast(line + field.from, limit, cell);
}

/// What a thread says of a stretch of lines.
struct StretchVerdict {
    bool straight = false;
};

/// True where each line of a slot's file may hold a record whose fields are parted by blanks.
bool mayBeStraight(const PassContext& context, const InputSlot& slot);

/// Lines that each hold a record and follow each other over the grid, cut into stretches: each has the samples from its
/// first record up to that of the next stretch, the outer ones those beyond too, so that no two meet. Many threads may
/// ask at once.
class StraightLines {
  public:
    /// Of a slot that mayBeStraight; its file has to outlive this. Looks at the first record of each stretch.
    StraightLines(const PassContext& context, const InputSlot& slot);

    /// 0 where those first records are no depths that go one way.
    std::size_t stretches() const { return stretches_.size(); }
    /// +1 when records go up the grid, -1 when down, 0 when a single stretch has not been looked at.
    int direction() const { return direction_; }
    /// Grid samples of a stretch, both inside the grid; none where last lies before first.
    struct Samples {
        std::int64_t first, last;
        std::int64_t count() const { return last < first ? 0 : last - first + 1; }
    };
    Samples samplesOf(std::size_t piece) const;
    /// How far the text is read behind a stretch.
    float fractionBehind(std::size_t piece) const;

    /// Reads a stretch and writes each of its samples, null where no record hit it; sample `first` of the grid stands
    /// in front of each column. False where its records do not follow each other, or hold a depth that is none: then
    /// the samples mean nothing.
    bool read(std::size_t piece, const SampleColumns& columns, std::int64_t first) const;
    /// What read would say, by a look at the depths alone.
    bool follow(std::size_t piece) const;

  private:
    struct Stretch {
        std::size_t from, to;  ///< of the text
        std::int32_t first;    ///< grid index of its first record
    };

    bool nextStretch(LineReader& lines);
    template <class Take>
    bool walk(std::size_t piece, bool depthsAlone, int& direction, Take&& take) const;
    bool isLast(std::size_t piece) const { return piece + 1 == stretches_.size(); }

    const LasText& text_;
    GridPlaces grid_;
    double null_;
    std::size_t pieceBytes_;
    std::vector<Stretch> stretches_;
    int direction_ = 0;
};

}  // namespace welvane
