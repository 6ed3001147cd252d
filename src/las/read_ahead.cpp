// ChannelReader by several threads: each reads a part of the lines with a reader of its own, as if it were a file. What
// it saw is added in the order of the parts. A part in which something stands that only the whole tells (a refusal, a
// title, a record that may be the cut last one, another line end) is dropped, and from its first line on the lines are
// read one by one.
#include <algorithm>
#include <exception>

#include "las/read_channels.h"

namespace welvane {

/// Some lines, read by themselves.
struct ChannelReader::Part {
    bool straight = false;  ///< what was read is what the whole would have given
    RecordBlock block;
    DataFacts facts;
    LineReader lines{std::string_view()};  ///< behind the last of them
    std::size_t count = 0;                 ///< lines
};

struct ChannelReader::Ahead {
    template <class Make>
    Ahead(std::size_t workers, std::size_t parts, Make make) : work(workers, parts, make) {}

    OrderedWork<Part> work;
    const Part* part = nullptr;  ///< the one in hand
    std::size_t given = 0;       ///< records of it
};

ChannelReader::ChannelReader(const ChannelReader& whole, std::size_t from, std::size_t to)
    : file_(whole.file_),
      how_(whole.how_),
      shape_(whole.shape_),
      names_(whole.names_),
      null_(whole.null_),
      lines_(whole.file_.text().lines(from, to - from)),
      fields_(whole.file_.bytes()),
      row_(whole.shape_.columns) {
    facts_.channels.resize(shape_.columns);
}

/// Place behind the line that holds a place behind `begin`; `begin` itself for that.
std::size_t ChannelReader::lineBehind(std::size_t begin, std::size_t place) const {
    if (place == begin) return begin;
    LineReader lines = file_.text().lines(place);
    std::string_view line;
    lines.next(line);
    return lines.position();
}

void ChannelReader::readAhead(std::size_t begin) {
    const std::size_t size = file_.bytes().size(), bytes = how_.workers.pieceBytes;
    const std::size_t parts = (size - std::min(begin, size) + bytes - 1) / bytes;
    if (parts < 2) return;
    const auto make = [this, begin, bytes](std::size_t piece, Part& part) {
        readPart(*this, lineBehind(begin, begin + piece * bytes), lineBehind(begin, begin + (piece + 1) * bytes), part);
    };
    ahead_ = std::make_shared<Ahead>(how_.workers.count, parts, make);
}

void ChannelReader::readPart(const ChannelReader& whole, std::size_t from, std::size_t to, Part& part) {
    part.block.records = 0;
    part.block.columns = whole.shape_.columns;
    part.block.values.clear();
    part.block.lines.clear();
    ChannelReader reader(whole, from, to);
    try {
        for (std::string_view line; reader.nextDataLine(line);) reader.takePlainLine(line, part.block);
        part.straight = reader.facts_.titleLine == 0 && reader.facts_.cutLine == 0;
    } catch (const std::exception&) {
        part.straight = false;
    }
    part.facts = std::move(reader.facts_);
    part.lines = reader.lines_;
    part.count = reader.line_;
}

/// Adds what was seen of the next part; false where there is none that counts.
bool ChannelReader::acceptPart() {
    const Part* const part = ahead_->work.next();
    if (part == nullptr || !part->straight || !lines_.goOnBehind(part->lines)) return false;
    for (std::size_t column = 0; column < facts_.channels.size(); ++column) {
        ChannelFacts& facts = facts_.channels[column];
        const ChannelFacts& more = part->facts.channels[column];
        facts.faults.add(more.faults, line_);
        facts.usualNulls.add(more.usualNulls, line_);
        facts.decimals = std::max(facts.decimals, more.decimals);
    }
    facts_.records += part->facts.records;
    facts_.otherLength.add(part->facts.otherLength, line_);
    facts_.withoutIndex.add(part->facts.withoutIndex, line_);
    ahead_->part = part;
    ahead_->given = 0;
    return true;
}

/// Moves records that are read already into the block, up to `most`.
void ChannelReader::takeAhead(RecordBlock& block, std::size_t most) {
    while (block.records < most) {
        if (ahead_->part != nullptr && ahead_->given == ahead_->part->block.records) {
            line_ += ahead_->part->count;
            ahead_->part = nullptr;
        }
        if (ahead_->part == nullptr && !acceptPart()) {
            ahead_.reset();
            return;
        }
        const RecordBlock& read = ahead_->part->block;
        const std::size_t count = std::min(most - block.records, read.records - ahead_->given);
        const double* const first = read.values.data() + ahead_->given * read.columns;
        block.values.insert(block.values.end(), first, first + count * read.columns);
        for (std::size_t record = 0; record < count; ++record)
            block.lines.push_back(read.lines[ahead_->given + record] + line_);
        block.records += count;
        ahead_->given += count;
    }
}

}  // namespace welvane
