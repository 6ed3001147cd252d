#include "engine/straight_lines.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "las/las_file.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

/// The line up to the end of its first word.
std::string_view firstWordOf(std::string_view line) {
    std::size_t end = 0;
    while (end < line.size() && isBlank(line[end])) ++end;
    while (end < line.size() && !isBlank(line[end])) ++end;
    return line.substr(0, end);
}

bool follows(std::int64_t index, std::int64_t before, int direction) {
    return (index - before) * direction > 0;
}

/// The samples of one stretch, by their grid indices.
struct StretchTarget {
    const SampleColumns& columns;
    std::int64_t first, samples;
    double null;

    void store(std::span<const NumberField> words, const char* line, const char* limit, std::int64_t index) const {
        const std::size_t given = std::min(words.size(), columns.size());
        for (std::size_t column = 0; column < given; ++column)
            storeField(words[column], line, limit, columns[column][index - first]);
        for (std::size_t column = given; column < columns.size(); ++column) columns[column][index - first] = 0;
    }
    /// Null from one grid index to another, as far as the grid goes.
    void clear(std::int64_t from, std::int64_t to) const {
        from = std::max<std::int64_t>(from, 1);
        to = std::min<std::int64_t>(to, samples);
        if (from > to) return;
        for (double* const column : columns) std::fill(column + (from - first), column + (to - first + 1), null);
    }
    void clearBetween(std::int64_t one, std::int64_t other) const {
        clear(std::min(one, other) + 1, std::max(one, other) - 1);
    }
};

}  // namespace

bool isBlankText(std::string_view text) {
    return std::ranges::all_of(text, isBlank);
}

std::int32_t GridPlaces::of(double depth) const {
    const double place = (depth - start) / step + 1;
    if (!(std::abs(place) < 2147483647.0))
        throw RunTimeFailure("depth " + plainNumber(depth) + " is beyond the grid's 32 bits");
    return static_cast<std::int32_t>(std::lrint(place));
}

std::int32_t GridPlaces::of(const NumberField& field, std::string_view line) const {
    if (field.plain) return of(field.value);
    const std::string_view word = line.substr(field.from, field.length);
    const ParsedNumber number = parseNumber(word);
    if (number.length != word.size() || word.empty())
        throw RunTimeFailure("depth \"" + std::string(word.substr(0, 40)) + "\" is not a number");
    return of(number.value);
}

bool mayBeStraight(const PassContext& context, const InputSlot& slot) {
    return context.fixedColumnWidth == 0 && !sameText(slot.wrap, "YES") && slot.dataStart > 0 && slot.file;
}

/// Cuts the text into stretches.
StraightLines::StraightLines(const PassContext& context, const InputSlot& slot)
    : text_(slot.file->text()),
      grid_{context.grid.start, context.grid.step, context.grid.sampleCount},
      null_(context.nullValue),
      pieceBytes_(context.app.run.workers.pieceBytes) {
    try {
        for (LineReader lines = text_.lines(static_cast<std::size_t>(slot.dataStart) - 1); nextStretch(lines);) {
        }
    } catch (const RunTimeFailure&) {
        stretches_.clear();
        return;
    }
    if (stretches_.size() < 2) return;
    direction_ = stretches_[1].first < stretches_[0].first ? -1 : 1;
    for (std::size_t piece = 1; piece < stretches_.size(); ++piece)
        if (!follows(stretches_[piece].first, stretches_[piece - 1].first, direction_)) {
            stretches_.clear();
            return;
        }
}

bool StraightLines::nextStretch(LineReader& lines) {
    std::size_t place = lines.position();
    std::string_view line;
    for (;; place = lines.position()) {
        if (!lines.next(line)) return false;
        if (!isBlankText(line)) break;
    }
    line = firstWordOf(line);
    LineFields fields(text_.bytes());
    const std::int32_t first = grid_.of(fields.cut(line).front(), line);
    const std::size_t size = text_.bytes().size(), wanted = place + std::min(pieceBytes_, size - place);
    if (wanted == size) {
        lines.seek(size);
    } else if (lines.position() < wanted) {
        lines.seek(wanted);
        lines.next(line);
    }
    stretches_.push_back({place, lines.position(), first});
    return true;
}

StraightLines::Samples StraightLines::samplesOf(std::size_t piece) const {
    Samples samples{1, grid_.samples};
    std::int64_t& begin = direction_ < 0 ? samples.last : samples.first;
    std::int64_t& end = direction_ < 0 ? samples.first : samples.last;
    if (piece > 0) begin = stretches_[piece].first;
    if (!isLast(piece)) end = std::int64_t{stretches_[piece + 1].first} - direction_;
    return {std::max<std::int64_t>(samples.first, 1), std::min<std::int64_t>(samples.last, grid_.samples)};
}

float StraightLines::fractionBehind(std::size_t piece) const {
    return static_cast<float>(static_cast<double>(stretches_[piece].to) / static_cast<double>(text_.bytes().size()));
}

/// Hands each record to `take`: its place on the grid, that of the record before it (its own for the first), its words
/// and its line. False where they do not follow each other. `direction` becomes theirs.
template <class Take>
bool StraightLines::walk(std::size_t piece, bool depthsAlone, int& direction, Take&& take) const {
    const Stretch& stretch = stretches_[piece];
    LineReader lines = text_.lines(stretch.from, stretch.to - stretch.from);
    LineFields fields(text_.bytes());
    std::int64_t before = 0;
    bool any = false;
    try {
        for (std::string_view line; lines.next(line);) {
            if (isBlankText(line)) continue;
            if (depthsAlone) line = firstWordOf(line);
            const std::span<const NumberField> words = fields.cut(line);
            const std::int64_t index = grid_.of(words.front(), line);
            if (any) {
                if (direction == 0) direction = index < before ? -1 : 1;
                if (!follows(index, before, direction)) return false;
            }
            if (!isLast(piece) && !follows(stretches_[piece + 1].first, index, direction)) return false;
            take(index, any ? before : index, words, line);
            before = index;
            any = true;
        }
    } catch (const RunTimeFailure&) {
        return false;  // told where the lines are read one by one
    }
    return any;
}

bool StraightLines::follow(std::size_t piece) const {
    int direction = direction_;
    return walk(piece, true, direction, [](auto&&...) {});
}

bool StraightLines::read(std::size_t piece, const SampleColumns& columns, std::int64_t first) const {
    const StretchTarget target{columns, first, grid_.samples, null_};
    const char* const limit = text_.bytes().data() + text_.bytes().size();
    int direction = direction_;
    std::int64_t last = 0;
    const bool straight =
        walk(piece, false, direction,
             [&](std::int64_t index, std::int64_t before, std::span<const NumberField> words, std::string_view line) {
                 target.clearBetween(before, index);
                 if (grid_.hold(index)) target.store(words.subspan(1), line.data(), limit, index);
                 last = index;
             });
    if (!straight) return false;
    // Samples on either side of the records, which are none of another stretch.
    const std::int64_t begin = stretches_[piece].first;
    if (piece == 0) direction < 0 ? target.clear(begin + 1, grid_.samples) : target.clear(1, begin - 1);
    if (!isLast(piece))
        target.clearBetween(last, stretches_[piece + 1].first);
    else
        direction < 0 ? target.clear(1, last - 1) : target.clear(last + 1, grid_.samples);
    return true;
}

}  // namespace welvane
