#include "las/read_channels.h"

#include <algorithm>
#include <utility>

#include "las/data_words.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
/// Numbers of one block: few enough to stay in the processor's cache.
constexpr std::size_t blockValues = 4096;

/// A value that programs write for null, where it is not this file's.
constexpr bool isUsualNull(double value) {
    return value == -999.25 || value == -9999.25 || value == -999 || value == -9999 || value == -99999;
}

constexpr std::string_view lineBreaksAndEnd = " \t\r\n\x1A";

}  // namespace

std::string whyNoData(const LasText& text) {
    if (text.seekSection('A')) return "no data behind its ~A line";
    for (const std::string_view title : text.titles())
        if (sameText(title.substr(0, title.find_first_of(" \t[|")), "~Log_Data"))
            return "its data stand in ~Log_Data, a section of LAS 3.0 that is not read; ~Ascii is";
    if (text.seekSection('C') || text.seekSection('W')) return "no ~A section: nothing but a header";
    return "no LAS file: it has neither ~Curve nor ~A";
}

ChannelReader::ChannelReader(const LasFile& file, const ChannelReading& how)
    : file_(file),
      how_(how),
      shape_(judgeRecords(file.text(), how.decimalComma)),
      names_(nameColumns(file.text(), shape_.columns)),
      null_(readFileNull(file.text())),
      lines_(file.text().lines()),
      fields_(file.bytes()),
      row_(shape_.columns) {
    if (shape_.columns == 0) throw RunTimeFailure(whyNoData(file.text()));
    facts_.channels.resize(shape_.columns);
    // The header's lines too, so that the ends of all are counted.
    const std::size_t data = file.text().seekSection('A').value_or(0);
    for (std::string_view line; lines_.position() < data && lines_.next(line);) ++line_;
    if (how.workers.count > 1 && !shape_.wrapped) readAhead(lines_.position());
}

bool ChannelReader::next(RecordBlock& block) {
    block.records = 0;
    block.columns = shape_.columns;
    block.values.clear();
    block.lines.clear();
    const std::size_t most = std::max<std::size_t>(1, blockValues / shape_.columns);
    if (ahead_) takeAhead(block, most);
    for (std::string_view line; block.records < most && !ended_;) {
        if (!nextDataLine(line)) {
            if (heldLine_ != 0) addWrappedLine(held_, 1, block);
            if (filled_ > 0) cutRecord(block);
            facts_.lineEnds = lines_.ends();
            ended_ = true;
        } else if (shape_.wrapped) {
            takeWrappedLine(line, block);
        } else {
            takePlainLine(line, block);
        }
    }
    return block.records > 0;
}

/// The next line that is no blank line and no comment; false at the end of the data.
bool ChannelReader::nextDataLine(std::string_view& line) {
    while (lines_.next(line)) {
        ++line_;
        const std::size_t first = line.find_first_not_of(" \t\x1A");
        if (first == npos || line[first] == '#') continue;
        if (line[first] != '~') return true;
        facts_.titleLine = line_;
        return false;
    }
    return false;
}

void ChannelReader::beginRecord() {
    filled_ = 0;
    recordLine_ = line_;
    indexFault_ = false;
}

void ChannelReader::takePlainLine(std::string_view line, RecordBlock& block) {
    beginRecord();
    if (how_.loose && takeCellsByPlace(line)) {
        otherLength(line_, filled_);
        finishRecord(block);
        return;
    }
    takeCells(line);
    if (filled_ < shape_.columns && isLastLine()) {
        cutRecord(block);
        return;
    }
    if (filled_ != shape_.columns) {
        otherLength(line_, filled_);
        fillMissing();
    }
    finishRecord(block);
}

void ChannelReader::takeWrappedLine(std::string_view line, RecordBlock& block) {
    const std::size_t words = countDataWords(line);
    if (heldLine_ != 0) takeHeldLine(words == 1, block);
    if (skipping_ && words != 1) return;
    skipping_ = false;
    const bool alone = shape_.indexAlone && !shape_.singles && words == 1;
    if (alone && filled_ > 0) {
        held_ = line;
        heldLine_ = line_;
    } else {
        addWrappedLine(line, words, block);
    }
}

/// A single value inside a record is the next index where values follow it, so that the record is too short.
void ChannelReader::takeHeldLine(bool singleFollows, RecordBlock& block) {
    const std::size_t current = std::exchange(line_, std::exchange(heldLine_, 0));
    if (!singleFollows) {
        otherLength(recordLine_, filled_);
        fillMissing();
        finishRecord(block);
    }
    addWrappedLine(held_, 1, block);
    line_ = current;
}

void ChannelReader::addWrappedLine(std::string_view line, std::size_t words, RecordBlock& block) {
    if (filled_ == 0) {
        beginRecord();
        if (shape_.indexAlone && words != 1) {
            otherLength(line_, words);
            skipping_ = true;
            return;
        }
    }
    if (filled_ + words > shape_.columns) {
        otherLength(recordLine_, filled_ + words);
        skipping_ = shape_.indexAlone;
    }
    takeCells(line);
    if (filled_ >= shape_.columns) finishRecord(block);
}

inline void ChannelReader::putNumber(double value, std::uint8_t decimals) {
    const std::size_t column = filled_++;
    if (column >= row_.size()) return;
    row_[column] = value;
    ChannelFacts& channel = facts_.channels[column];
    if (column > 0 && null_.holds(value)) {
        row_[column] = noValue;
        return;
    }
    if (value <= -999 && column > 0 && isUsualNull(value)) channel.usualNulls.add(line_);
    if (decimals > channel.decimals) channel.decimals = decimals;
}

void ChannelReader::put(const Cell& cell, std::string_view word) {
    if (cell.kind == CellKind::Number || filled_ >= row_.size()) {
        putNumber(cell.value, cell.decimals);
        return;
    }
    row_[filled_] = cell.value;
    putFault(cell, word);
    ++filled_;
}

void ChannelReader::takeCells(std::string_view line) {
    if (shape_.delimiter != ' ') {
        takeDelimitedCells(line);
        return;
    }
    for (const NumberField& field : fields_.cut(line)) {
        if (field.plain) {
            putNumber(field.value, field.decimals);
        } else {
            const std::string_view word = line.substr(field.from, field.length);
            put(judgeCell(word, how_.decimalComma), word);
        }
    }
}

void ChannelReader::takeDelimitedCells(std::string_view line) {
    if (shape_.delimiter == '\t') line = withoutIndent(line);
    for (bool more = true; more;) {
        const std::size_t end = line.find(shape_.delimiter);
        const std::string_view word = trimDataLine(line.substr(0, end));
        more = end != npos;
        if (more) line.remove_prefix(end + 1);
        if (!more && word.empty() && filled_ == shape_.columns) return;  // a delimiter behind the last cell
        put(judgeCell(word, how_.decimalComma), word);
    }
}

/// Loosely: cells that touch or are empty, in columns whose ends are known.
bool ChannelReader::takeCellsByPlace(std::string_view line) {
    if (shape_.ends.empty() || countDataWords(line) == shape_.columns) return false;
    if (line.size() < shape_.ends[shape_.ends.size() - 2]) return false;
    std::size_t from = 0;
    for (const std::size_t end : shape_.ends) {
        if (trimDataLine(line.substr(from, end - from)).find_first_of(" \t") != npos) return false;
        from = end;
    }
    if (!trimDataLine(line.substr(std::min(line.size(), from))).empty()) return false;
    from = 0;
    for (const std::size_t end : shape_.ends) {
        const std::string_view word = trimDataLine(line.substr(from, end - from));
        put(judgeCell(word, how_.decimalComma), word);
        from = end;
    }
    return true;
}

/// A cell of column filled_ that is no number.
void ChannelReader::putFault(const Cell& cell, std::string_view word) {
    const std::string shown = "\"" + std::string(word.substr(0, 40)) + "\"";
    if (cell.kind == CellKind::DecimalComma)
        throw DataRefusal(line_, shown + " has a decimal comma", DataRefusal::Help::DecimalComma);
    if (cell.kind == CellKind::RunOn && names_.missing() > 0 && !how_.loose)
        throw DataRefusal(line_,
                          shown + " is two numbers run on, and the record has fewer values than ~Curve has lines",
                          DataRefusal::Help::Loose);
    if (filled_ > 0) {
        facts_.channels[filled_].faults.add(cell.kind, line_, word);
        return;
    }
    if (!how_.loose)
        throw DataRefusal(
            line_, "the index " + shown + (cell.kind == CellKind::Time ? " is a time or a date" : " is no number"),
            DataRefusal::Help::Loose);
    indexFault_ = true;
}

/// A record with another number of values than it should have.
void ChannelReader::otherLength(std::size_t line, std::size_t values) {
    if (!how_.loose)
        throw DataRefusal(
            line,
            "a record of " + counted(values, "value") + ", where " + std::to_string(shape_.columns) + " are expected",
            DataRefusal::Help::Loose);
    facts_.otherLength.add(line);
}

/// True when nothing but blank lines follows.
bool ChannelReader::isLastLine() const {
    return lines_.bytes().find_first_not_of(lineBreaksAndEnd, lines_.position()) == npos;
}

void ChannelReader::fillMissing() {
    for (; filled_ < shape_.columns; ++filled_) {
        row_[filled_] = noValue;
        facts_.channels[filled_].faults.add(CellKind::Missing, line_, {});
    }
}

/// The last record, cut short. Without a line end behind it its last word may be cut too, and is no figure.
void ChannelReader::cutRecord(RecordBlock& block) {
    facts_.cutLine = recordLine_;
    const std::string_view bytes = lines_.bytes();
    const bool doubtful = bytes.back() != '\n' && bytes.back() != '\r';
    if (doubtful && filled_ == 1) {
        filled_ = 0;
        return;
    }
    if (doubtful) --filled_;
    fillMissing();
    finishRecord(block);
}

void ChannelReader::finishRecord(RecordBlock& block) {
    filled_ = 0;
    if (indexFault_) {
        facts_.withoutIndex.add(recordLine_);
        return;
    }
    block.values.insert(block.values.end(), row_.begin(), row_.end());
    block.lines.push_back(recordLine_);
    ++block.records;
    ++facts_.records;
}

std::optional<ChannelData> readChannels(const LasFile& file, const ChannelReading& how, RunTurn& turn) {
    ChannelReader reader(file, how);
    file.willReadAll();
    ChannelData data{reader.names(), reader.fileNull(), {}, {}, {}, {}};
    data.columns.resize(reader.shape().columns);
    for (RecordBlock block; reader.next(block);) {
        if (!turn.goesOn(reader.place())) return std::nullopt;
        if (data.lines.empty()) {
            // Records are much of one length, so the first ones tell how many there will be.
            const std::size_t begin = file.text().seekSection('A').value_or(0);
            const std::size_t perRecord = std::max<std::size_t>(1, (reader.place() - begin) / block.records);
            const std::size_t expected = (file.bytes().size() - begin) / perRecord + block.records;
            for (std::vector<double>& column : data.columns) column.reserve(expected);
            data.lines.reserve(expected);
        }
        for (std::size_t column = 0; column < block.columns; ++column) {
            std::vector<double>& target = data.columns[column];
            const std::size_t before = target.size();
            target.resize(before + block.records);
            for (std::size_t record = 0; record < block.records; ++record)
                target[before + record] = block.record(record)[column];
        }
        data.lines.insert(data.lines.end(), block.lines.begin(), block.lines.end());
    }
    file.needWhole();
    data.facts = reader.facts();
    data.notes = reader.notes(file.path());
    return data;
}

}  // namespace welvane
