#include "engine/data_reader.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "las/las_file.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/number_fields.h"
#include "shared/numbers.h"
#include "shared/numbers_fast.h"
#include "shared/ordered_work.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t wrappedLineLength = 80;

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isBlankText(std::string_view text) {
    for (const char c : text)
        if (!isBlank(c)) return false;
    return true;
}

/// Where records have their places on the grid, and outside of it.
struct GridPlaces {
    double start, step;
    std::int32_t samples;

    bool hold(std::int64_t index) const { return index > 0 && index <= samples; }
    /// RunTimeFailure when it leaves 32 bits.
    std::int32_t of(double depth) const {
        const double place = (depth - start) / step + 1;
        if (!(std::abs(place) < 2147483647.0))
            throw RunTimeFailure("depth " + plainNumber(depth) + " is beyond the grid's 32 bits");
        return static_cast<std::int32_t>(std::lrint(place));
    }
    /// Of a word; RunTimeFailure where it is no number.
    std::int32_t of(const NumberField& field, std::string_view line) const {
        if (field.plain) return of(field.value);
        const std::string_view word = line.substr(field.from, field.length);
        const ParsedNumber number = parseNumber(word);
        if (number.length != word.size() || word.empty())
            throw RunTimeFailure("depth \"" + std::string(word.substr(0, 40)) + "\" is not a number");
        return of(number.value);
    }
};

/// Columns of the input matrix, sample i of each at index i - 1.
using Columns = std::vector<double*>;

/// A value of a line. A word that is no plain number is read on up to `limit`: what stands behind the line begins with
/// a line end, which continues no number.
inline void storeField(const NumberField& field, const char* line, const char* limit, double& cell) {
    if (field.plain)
        cell = field.value;
    else
        parseNumberFast(line + field.from, limit, cell);
}

/// One reading of one file, line after line: where it stands and where its samples go.
class Reading {
  public:
    Reading(PassContext& context, const InputSlot& slot, const Columns& columns)
        : context_(context),
          slot_(slot),
          lines_(slot.file->text().lines(slot.dataStart > 0 ? static_cast<std::size_t>(slot.dataStart) - 1 : npos)),
          fields_(lines_.bytes()),
          grid_{context.grid.start, context.grid.step, context.inputMatrix.samples()},
          fixedWidth_(static_cast<std::size_t>(context.fixedColumnWidth)),
          blankBuffer_(context.options.rules == FigureRules::asLaidDown),
          columns_(columns) {}

    ReadResult run() { return sameText(slot_.wrap, "YES") ? readWrapped() : readLines(); }

  private:
    PassContext& context_;
    const InputSlot& slot_;
    LineReader lines_;
    LineFields fields_;
    GridPlaces grid_;
    std::size_t fixedWidth_;
    bool blankBuffer_;  ///< a wrapped record is as long as its buffer, so that a field beyond its text reads as 0
    const Columns& columns_;
    std::size_t recordPlace_ = 0;  ///< byte at which the record in hand begins

    // Fields of a wrapped record come from several lines; these two carry the place in the record from line to line.
    std::size_t field_ = 0;
    std::int32_t index_ = 0;

    /// Once per record: progress, the user's cancel, a turn for events. False when cancelled.
    bool nextRecord() {
        RunState& run = context_.app.run;
        run.progressFraction =
            static_cast<float>(static_cast<double>(lines_.position()) / static_cast<double>(lines_.bytes().size()));
        if (context_.cancelled()) return false;
        if (!run.commandMode) context_.app.user.pumpEvents();
        return true;
    }

    /// Stores the values of a text that begins at field_ of the record, as storeField does. False when the record falls
    /// outside the grid.
    bool storeFields(std::string_view text, const char* limit) {
        std::span<const NumberField> fields = fields_.cut(text);
        if (fields.empty()) return true;
        if (field_ == 0) {
            index_ = grid_.of(fields.front(), text);
            if (!grid_.hold(index_)) return false;
            fields = fields.subspan(1);
            field_ = 1;
        }
        fields = fields.first(std::min(fields.size(), columns_.size() + 1 - std::min(field_, columns_.size() + 1)));
        for (const NumberField& field : fields)
            storeField(field, text.data(), limit, columns_[field_++ - 1][index_ - 1]);
        return true;
    }

    void fillMissingFields() {
        if (!grid_.hold(index_)) return;
        for (std::size_t field = field_ == 0 ? 1 : field_; field <= columns_.size(); ++field)
            columns_[field - 1][index_ - 1] = 0;
    }

    void storeFixedWidth(std::string_view record) {
        const std::int32_t index = grid_.of(val(record.substr(0, fixedWidth_)));
        if (!grid_.hold(index)) return;
        std::size_t place = fixedWidth_;
        for (double* column : columns_) {
            column[index - 1] = place < record.size() ? val(record.substr(place, fixedWidth_)) : lasNull;
            place += fixedWidth_;
        }
    }

    void storeRecord(std::string_view record) {
        if (fixedWidth_ > 0) {
            storeFixedWidth(record);
            return;
        }
        field_ = 0;
        index_ = 0;
        const char* const limit = lines_.bytes().data() + lines_.bytes().size();
        if (storeFields(record, limit)) fillMissingFields();
    }

    ReadResult readLines() {
        while (!lines_.atEnd()) {
            recordPlace_ = lines_.position();
            std::string_view line;
            lines_.next(line);
            if (isBlankText(line)) continue;
            if (!nextRecord()) return ReadResult::Cancelled;
            storeRecord(line);
        }
        return ReadResult::ToTheEnd;
    }

    /// Lays `line` behind what the record's buffer of `capacity` characters holds; text beyond it is lost. Returns the
    /// part that fits.
    static std::string_view fitIntoRecord(std::string_view line, bool first, std::size_t capacity, std::size_t& used) {
        if (!first && !line.empty() && line.front() != ' ') ++used;
        const std::size_t room = used < capacity ? capacity - used : 0;
        used += line.size();
        return line.substr(0, room);
    }

    ReadResult readWrapped() {
        const int linesPerRecord = slot_.linesPerStep;
        const std::size_t capacity = (static_cast<std::size_t>(linesPerRecord) + 1) * wrappedLineLength;
        std::string buffer;
        while (!lines_.atEnd()) {
            field_ = 0;
            index_ = 0;
            bool inside = true;
            std::size_t used = 0;
            buffer.clear();
            recordPlace_ = lines_.position();
            for (int count = 0; count < linesPerRecord && !lines_.atEnd();) {
                std::string_view line;
                lines_.next(line);
                if (isBlankText(line)) continue;  // a blank line inside a record is passed over
                if (count == 0 && !nextRecord()) return ReadResult::Cancelled;
                const std::size_t before = used;
                const std::string_view part = fitIntoRecord(line, count == 0, capacity, used);
                if (fixedWidth_ > 0) {
                    buffer.append(used - line.size() - before, ' ').append(part);
                } else if (inside) {
                    // A part that lost its end must not be read on behind it.
                    const char* const end = part.data() + part.size();
                    inside = storeFields(
                        part, part.size() == line.size() ? lines_.bytes().data() + lines_.bytes().size() : end);
                }
                ++count;
            }
            if (used == 0) continue;
            if (fixedWidth_ > 0) {
                if (blankBuffer_) buffer.resize(capacity, ' ');
                storeFixedWidth(buffer);
            }
            if (fixedWidth_ == 0 && inside) fillMissingFields();
        }
        return ReadResult::ToTheEnd;
    }

  public:
    std::size_t recordPlace() const { return recordPlace_; }
};

/// Lines that each hold a record and follow each other over the grid, read by several threads: each takes a stretch of
/// them, and with it the samples from its first record up to that of the next stretch, so that no two meet. What does
/// not go that way, records that go back or stand on one sample with others, is for Reading.
class StraightReading {
  public:
    StraightReading(PassContext& context, const LasText& text, std::size_t from, const Columns& columns)
        : context_(context),
          text_(text),
          columns_(columns),
          grid_{context.grid.start, context.grid.step, context.inputMatrix.samples()} {
        findStretches(from);
    }

    /// Nothing where records do not follow each other so; what the columns hold then means nothing. Otherwise each
    /// sample of them is written: null where no record hit it.
    std::optional<ReadResult> run() {
        if (stretches_.empty()) return std::nullopt;
        RunState& run = context_.app.run;
        OrderedWork<Outcome> work(run.workers.count, stretches_.size(),
                                  [this](std::size_t piece, Outcome& outcome) { outcome = read(piece); });
        std::int64_t last = 0;
        for (std::size_t piece = 0; const Outcome* outcome = work.next(); ++piece) {
            if (!outcome->straight) return std::nullopt;
            last = outcome->last;
            run.progressFraction = static_cast<float>(static_cast<double>(stretches_[piece].to) /
                                                      static_cast<double>(text_.bytes().size()));
            if (context_.cancelled()) return ReadResult::Cancelled;
            if (!run.commandMode) context_.app.user.pumpEvents();
        }
        const std::int64_t first = stretches_.front().first;
        clear(1, std::min(first, last) - 1);
        clear(std::max(first, last) + 1, grid_.samples);
        return ReadResult::ToTheEnd;
    }

  private:
    struct Stretch {
        std::size_t from, to;  ///< of the text
        std::int32_t first;    ///< grid index of its first record
    };
    struct Outcome {
        bool straight = false;
        std::int64_t last = 0;  ///< grid index of its last record
    };

    /// Cuts the text into stretches; none where the first records of them are no depths that go one way.
    void findStretches(std::size_t from) {
        try {
            for (LineReader lines = text_.lines(from); nextStretch(lines);) {
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

    bool nextStretch(LineReader& lines) {
        std::size_t place = lines.position();
        std::string_view line;
        for (;; place = lines.position()) {
            if (!lines.next(line)) return false;
            if (!isBlankText(line)) break;
        }
        LineFields fields(text_.bytes());
        const std::int32_t first = grid_.of(fields.cut(line).front(), line);
        const std::size_t wanted = place + context_.app.run.workers.pieceBytes;
        if (wanted < text_.bytes().size()) {
            if (lines.position() < wanted) {
                lines.seek(wanted);
                lines.next(line);
            }
        } else {
            lines.seek(text_.bytes().size());
        }
        stretches_.push_back({place, lines.position(), first});
        return true;
    }

    static bool follows(std::int64_t index, std::int64_t before, int direction) {
        return (index - before) * direction > 0;
    }

    Outcome read(std::size_t piece) const {
        const Stretch& stretch = stretches_[piece];
        const bool isLast = piece + 1 == stretches_.size();
        const std::int64_t end = isLast ? 0 : stretches_[piece + 1].first;
        const char* const limit = text_.bytes().data() + text_.bytes().size();
        LineReader lines = text_.lines(stretch.from, stretch.to - stretch.from);
        LineFields fields(text_.bytes());
        int direction = direction_;
        std::int64_t before = 0;
        bool any = false;
        try {
            for (std::string_view line; lines.next(line);) {
                if (isBlankText(line)) continue;
                const std::span<const NumberField> words = fields.cut(line);
                const std::int64_t index = grid_.of(words.front(), line);
                if (any) {
                    if (direction == 0) direction = index < before ? -1 : 1;
                    if (!follows(index, before, direction)) return {};
                    clearBetween(before, index);
                }
                if (!isLast && !follows(end, index, direction)) return {};
                store(words.subspan(1), line.data(), limit, index);
                before = index;
                any = true;
            }
        } catch (const RunTimeFailure&) {
            return {};  // told where the lines are read one by one
        }
        if (!isLast) clearBetween(before, end);
        return {.straight = true, .last = before};
    }

    void store(std::span<const NumberField> words, const char* line, const char* limit, std::int64_t index) const {
        if (!grid_.hold(index)) return;
        const std::size_t given = std::min(words.size(), columns_.size());
        for (std::size_t column = 0; column < given; ++column)
            storeField(words[column], line, limit, columns_[column][index - 1]);
        for (std::size_t column = given; column < columns_.size(); ++column) columns_[column][index - 1] = 0;
    }

    /// Null on the samples between two, either being the first.
    void clearBetween(std::int64_t one, std::int64_t other) const {
        clear(std::min(one, other) + 1, std::max(one, other) - 1);
    }
    void clear(std::int64_t first, std::int64_t last) const {
        first = std::max<std::int64_t>(first, 1);
        last = std::min<std::int64_t>(last, grid_.samples);
        if (first > last) return;
        for (double* const column : columns_)
            std::fill(column + (first - 1), column + last, static_cast<double>(context_.nullValue));
    }

    PassContext& context_;
    const LasText& text_;
    const Columns& columns_;
    GridPlaces grid_;
    std::vector<Stretch> stretches_;
    int direction_ = 0;  ///< of the records over the grid; 0 where only the second one tells
};

void clearColumns(const PassContext& context, const Columns& columns) {
    for (double* const column : columns)
        std::fill_n(column, context.inputMatrix.samples(), static_cast<double>(context.nullValue));
}

/// By several threads; nothing where the records are to be read one by one. Whatever is not read to its end leaves null
/// in the columns.
std::optional<ReadResult> readSideBySide(PassContext& context, const InputSlot& slot, const Columns& columns) {
    std::optional<ReadResult> result;
    const bool lines = context.fixedColumnWidth == 0 && !sameText(slot.wrap, "YES") && slot.dataStart > 0;
    try {
        if (lines) {
            const auto from = static_cast<std::size_t>(slot.dataStart) - 1;
            result = StraightReading(context, slot.file->text(), from, columns).run();
            if (slot.file->damaged()) result.reset();  // told where the lines are read one by one
        }
    } catch (...) {
        clearColumns(context, columns);
        throw;
    }
    if (result != ReadResult::ToTheEnd) clearColumns(context, columns);
    return result;
}

}  // namespace

ReadResult readDataIntoMatrix(PassContext& context, const InputSlot& slot, int firstColumn, int lastColumn) {
    const std::string name = fileNameOf(slot.path);
    PassReport& report = context.report;
    const auto brokenOff = [&report](const std::string& where, const std::string& reason) {
        report.failures.add(where, reason);
        if (report.brokenInput.empty()) report.brokenInput = where + ": " + reason;
        return ReadResult::NotDone;
    };
    Columns columns;
    for (int column = firstColumn; column <= lastColumn; ++column)
        columns.push_back(context.inputMatrix.column(column).data());
    if (!slot.file) {
        clearColumns(context, columns);
        return brokenOff(name, "not opened");
    }
    const LasFile& file = *slot.file;
    file.willReadAll();
    context.app.run.statusText = "Reading " + name + " into array...";
    Reading reading(context, slot, columns);
    ReadResult result = ReadResult::NotDone;
    std::string why;
    try {
        const std::optional<ReadResult> read = readSideBySide(context, slot, columns);
        result = read ? *read : reading.run();
    } catch (const RunTimeFailure& failure) {
        why = failure.what();
    }
    if (file.damaged()) {
        why = "the file was cut while it was read";
        report.inputLost = true;
    }
    if (why.empty()) return result;
    return brokenOff(name + ": line " + std::to_string(file.text().lineNumber(reading.recordPlace())),
                     why + ", reading ended");
}

}  // namespace welvane
