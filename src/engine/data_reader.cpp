#include "engine/data_reader.h"

#include <algorithm>
#include <cmath>
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

/// One reading of one file: where it stands and where its samples go.
class Reading {
  public:
    Reading(PassContext& context, const InputSlot& slot, int firstColumn, int lastColumn)
        : context_(context),
          slot_(slot),
          lines_(slot.file->text().lines(slot.dataStart > 0 ? static_cast<std::size_t>(slot.dataStart) - 1 : npos)),
          fields_(lines_.bytes()),
          start_(context.grid.start),
          step_(context.grid.step),
          samples_(context.inputMatrix.samples()),
          fixedWidth_(static_cast<std::size_t>(context.fixedColumnWidth)),
          blankBuffer_(context.options.rules == FigureRules::asLaidDown) {
        for (int column = firstColumn; column <= lastColumn; ++column)
            columns_.push_back(context.inputMatrix.column(column).data());
    }

    ReadResult run() { return sameText(slot_.wrap, "YES") ? readWrapped() : readLines(); }

  private:
    PassContext& context_;
    const InputSlot& slot_;
    LineReader lines_;
    LineFields fields_;
    double start_, step_;
    std::int32_t samples_;
    std::size_t fixedWidth_;
    bool blankBuffer_;  ///< a wrapped record is as long as its buffer, so that a field beyond its text reads as 0
    std::vector<double*> columns_;  ///< sample i of a column at index i - 1
    std::size_t recordPlace_ = 0;   ///< byte at which the record in hand begins

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

    /// Grid index of a depth, 0 when it falls outside. RunTimeFailure when it leaves 32 bits.
    std::int32_t indexOf(double depth) const {
        const double place = (depth - start_) / step_ + 1;
        if (!(std::abs(place) < 2147483647.0))
            throw RunTimeFailure("depth " + plainNumber(depth) + " is beyond the grid's 32 bits");
        const auto index = static_cast<std::int32_t>(std::lrint(place));
        return index <= 0 || index > samples_ ? 0 : index;
    }

    std::int32_t indexOfField(std::string_view field) const {
        const ParsedNumber number = parseNumber(field);
        if (number.length != field.size() || field.empty())
            throw RunTimeFailure("depth \"" + std::string(field.substr(0, 40)) + "\" is not a number");
        return indexOf(number.value);
    }

    /// Stores the values of a text that begins at field_ of the record. A word that is no plain number is read on up to
    /// `limit`: what stands behind the text begins with a line end, which continues no number. False when the record
    /// falls outside the grid.
    bool storeFields(std::string_view text, const char* limit) {
        std::span<const NumberField> fields = fields_.cut(text);
        if (fields.empty()) return true;
        if (field_ == 0) {
            const NumberField& depth = fields.front();
            index_ = depth.plain ? indexOf(depth.value) : indexOfField(text.substr(depth.from, depth.length));
            if (index_ == 0) return false;
            fields = fields.subspan(1);
            field_ = 1;
        }
        fields = fields.first(std::min(fields.size(), columns_.size() + 1 - std::min(field_, columns_.size() + 1)));
        for (const NumberField& field : fields) {
            double& cell = columns_[field_++ - 1][index_ - 1];
            if (field.plain)
                cell = field.value;
            else
                parseNumberFast(text.data() + field.from, limit, cell);
        }
        return true;
    }

    void fillMissingFields() {
        if (index_ == 0) return;
        for (std::size_t field = field_ == 0 ? 1 : field_; field <= columns_.size(); ++field)
            columns_[field - 1][index_ - 1] = 0;
    }

    void storeFixedWidth(std::string_view record) {
        const std::int32_t index = indexOf(val(record.substr(0, fixedWidth_)));
        if (index == 0) return;
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

}  // namespace

ReadResult readDataIntoMatrix(PassContext& context, const InputSlot& slot, int firstColumn, int lastColumn) {
    const std::string name = fileNameOf(slot.path);
    PassReport& report = context.report;
    const auto brokenOff = [&report](const std::string& where, const std::string& reason) {
        report.failures.add(where, reason);
        if (report.brokenInput.empty()) report.brokenInput = where + ": " + reason;
        return ReadResult::NotDone;
    };
    if (!slot.file) return brokenOff(name, "not opened");
    const LasFile& file = *slot.file;
    file.willReadAll();
    context.app.run.statusText = "Reading " + name + " into array...";
    Reading reading(context, slot, firstColumn, lastColumn);
    ReadResult result = ReadResult::NotDone;
    std::string why;
    try {
        result = reading.run();
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
