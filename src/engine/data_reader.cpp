#include "engine/data_reader.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/straight_lines.h"
#include "las/las_file.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/number_fields.h"
#include "shared/numbers.h"
#include "shared/ordered_work.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t wrappedLineLength = 80;

/// One reading of one file, line after line: where it stands and where its samples go.
class Reading {
  public:
    Reading(PassContext& context, const InputSlot& slot, const SampleColumns& columns)
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
    const SampleColumns& columns_;
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

void clearColumns(const PassContext& context, const SampleColumns& columns) {
    for (double* const column : columns)
        std::fill_n(column, context.inputMatrix.samples(), static_cast<double>(context.nullValue));
}

/// By several threads; nothing where the records do not follow each other so, what the columns hold then means nothing.
std::optional<ReadResult> readStraight(PassContext& context, const StraightLines& lines, const SampleColumns& columns) {
    if (lines.stretches() == 0) return std::nullopt;
    RunState& run = context.app.run;
    OrderedWork<StretchVerdict> work(
        run.workers.count, lines.stretches(),
        [&](std::size_t piece, StretchVerdict& verdict) { verdict.straight = lines.read(piece, columns, 1); });
    for (std::size_t piece = 0; const StretchVerdict* const verdict = work.next(); ++piece) {
        if (!verdict->straight) return std::nullopt;
        run.progressFraction = lines.fractionBehind(piece);
        if (context.cancelled()) return ReadResult::Cancelled;
        if (!run.commandMode) context.app.user.pumpEvents();
    }
    return ReadResult::ToTheEnd;
}

/// The same of a slot's file. Whatever is not read to its end leaves null in the columns.
std::optional<ReadResult> readSideBySide(PassContext& context, const InputSlot& slot, const SampleColumns& columns) {
    std::optional<ReadResult> result;
    try {
        if (mayBeStraight(context, slot)) {
            result = readStraight(context, StraightLines(context, slot), columns);
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
    SampleColumns columns;
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
