#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "las/cells.h"
#include "las/channel_names.h"
#include "las/data_refusal.h"
#include "las/las_file.h"
#include "las/run_turn.h"
#include "shared/notes.h"
#include "shared/number_fields.h"
#include "shared/ordered_work.h"

/// The channels of a LAS file as they stand, by FigureRules::trueFigures: no grid, nothing computed, every cell a
/// number or counted. Records are put together by their number of values, wrapped ones too.
namespace welvane {

struct ChannelReading {
    bool loose = false;         ///< places what it can of a record of another length, and counts it
    bool decimalComma = false;  ///< "123,42" is a number
    Workers workers{};
};

/// How many, and the first line (of the file, from 1).
struct Occurrence {
    std::size_t count = 0, firstLine = 0;
    void add(std::size_t line) {
        if (count++ == 0) firstLine = line;
    }
    /// Those of lines behind, which were counted from the line behind `before` on.
    void add(const Occurrence& behind, std::size_t before) {
        if (behind.count > 0 && count == 0) firstLine = behind.firstLine + before;
        count += behind.count;
    }
};

/// What was seen of one channel so far.
struct ChannelFacts {
    CellFaults faults;
    Occurrence usualNulls;      ///< -999.25, -9999 and the like where the file's null is another: figures all the same
    std::uint8_t decimals = 0;  ///< the most that a value has
};

/// What was seen of the data so far.
struct DataFacts {
    std::vector<ChannelFacts> channels;  ///< by column of the data; element 0 the index
    std::size_t records = 0;
    Occurrence otherLength;     ///< records of another length, read loosely
    Occurrence withoutIndex;    ///< records left out loosely since their index is no number
    std::size_t cutLine = 0;    ///< first line of the last record when it was cut short; 0 otherwise
    std::size_t titleLine = 0;  ///< of a section's title behind the data, where the reading ended; 0 without one
    LineEndCounts lineEnds;     ///< of the whole file, known behind the last record
};

/// Some records. `values` holds them one behind the other, `columns` numbers each: the index first, NaN for null.
struct RecordBlock {
    std::size_t records = 0, columns = 0;
    std::vector<double> values;
    std::vector<std::size_t> lines;  ///< number (from 1) of each record's first line
    const double* record(std::size_t number) const { return values.data() + number * columns; }
};

/// The null of a file: its NULL line; -999.25 when it has none or none that is a number.
struct FileNull {
    double value;
    bool given = false;
    /// Values that are the same single as the null.
    double lowest, highest;
    bool holds(double number) const { return number >= lowest && number <= highest; }
};
FileNull readFileNull(const LasText& text);

/// How the records of a file lie in its lines.
struct RecordShape {
    std::size_t columns = 0;  ///< values of a record, the index among them; 0 without data
    bool wrapped = false;     ///< a record has several lines
    bool indexAlone = false;  ///< its first line holds the index and nothing else
    bool singles = false;     ///< a line inside a wrapped record holds a single value
    char delimiter = ' ';     ///< ' ' (blanks and tabs), or ',' or a tab, each of which alone parts two cells
    /// Where in its line each cell ends, when all lines looked at agree; else empty.
    std::vector<std::size_t> ends;
    std::size_t dataLine = 0;  ///< number (from 1) of the first line behind the title of ~A
};
/// Judged by the header and the first 200 lines with data.
RecordShape judgeRecords(const LasText& text, bool decimalComma);

/// Why a text without records has none.
std::string whyNoData(const LasText& text);

/// Reads a file block by block, in memory that does not grow with the file; records that have a line each by as many
/// threads as ChannelReading says, ahead of the block in hand. Blocks, facts and refusals are the same with one thread
/// and with many.
class ChannelReader {
  public:
    /// The file has to outlive the reader. RunTimeFailure without data.
    ChannelReader(const LasFile& file, const ChannelReading& how);
    ChannelReader(const ChannelReader&) = delete;
    ChannelReader& operator=(const ChannelReader&) = delete;

    const ColumnNames& names() const { return names_; }
    const RecordShape& shape() const { return shape_; }
    const FileNull& fileNull() const { return null_; }
    const DataFacts& facts() const { return facts_; }
    /// What the reading so far gives to tell: cells, columns, records, nulls, line ends. `name` is the file's for
    /// people.
    std::vector<Note> notes(const std::string& name) const;
    /// Place (0-based) of the file's text that was reached: for progress.
    std::size_t place() const { return lines_.position(); }

    /// The next records; false behind the last. DataRefusal for a record of another length or without an index (unless
    /// loose) and for a decimal comma (unless asked for).
    bool next(RecordBlock& block);

  private:
    struct Part;
    struct Ahead;
    /// Reads lines between two places, which are counted from 1.
    ChannelReader(const ChannelReader& whole, std::size_t from, std::size_t to);
    static void readPart(const ChannelReader& whole, std::size_t from, std::size_t to, Part& part);
    std::size_t lineBehind(std::size_t begin, std::size_t place) const;
    void readAhead(std::size_t begin);
    bool acceptPart();
    void takeAhead(RecordBlock& block, std::size_t most);
    bool nextDataLine(std::string_view& line);
    void takePlainLine(std::string_view line, RecordBlock& block);
    void takeWrappedLine(std::string_view line, RecordBlock& block);
    void takeHeldLine(bool singleFollows, RecordBlock& block);
    void addWrappedLine(std::string_view line, std::size_t words, RecordBlock& block);
    void takeCells(std::string_view line);
    void takeDelimitedCells(std::string_view line);
    bool takeCellsByPlace(std::string_view line);
    void put(const Cell& cell, std::string_view word);
    void putNumber(double value, std::uint8_t decimals);
    void putFault(const Cell& cell, std::string_view word);
    void otherLength(std::size_t line, std::size_t values);
    bool isLastLine() const;
    void beginRecord();
    void fillMissing();
    void cutRecord(RecordBlock& block);
    void finishRecord(RecordBlock& block);

    const LasFile& file_;
    ChannelReading how_;
    RecordShape shape_;
    ColumnNames names_;
    FileNull null_;
    LineReader lines_;
    LineFields fields_;
    DataFacts facts_;
    std::vector<double> row_;
    std::size_t line_ = 0;  ///< number of the line in hand
    std::size_t recordLine_ = 0;
    std::size_t filled_ = 0;  ///< cells of the record in hand, those beyond its columns too
    bool indexFault_ = false;
    bool skipping_ = false;     ///< loosely: lines are passed over up to the next index
    std::string_view held_{};   ///< a single value inside a wrapped record, until the next line tells what it is
    std::size_t heldLine_ = 0;  ///< its number; 0 for none
    bool ended_ = false;
    std::shared_ptr<Ahead> ahead_;  ///< until lines are read one by one
};

/// All channels in memory.
struct ChannelData {
    ColumnNames names;
    FileNull null;
    std::vector<std::vector<double>> columns;  ///< by column of the data, the index first; NaN for null
    std::vector<std::size_t> lines;            ///< number of each record's first line
    DataFacts facts;
    std::vector<Note> notes;  ///< as ChannelReader::notes tells them of the file's path
};
/// Reads them; nothing when a person stopped it. Refusals as ChannelReader::next.
std::optional<ChannelData> readChannels(const LasFile& file, const ChannelReading& how, RunTurn& turn);

}  // namespace welvane
