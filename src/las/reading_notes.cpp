#include <algorithm>
#include <map>

#include "las/read_channels.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

/// Collects the notes of one file.
class Notes {
  public:
    explicit Notes(std::string file) : file_(std::move(file)) {}
    void add(NoteKind kind, std::string text, const Occurrence& where = {}, std::string channel = {}) {
        notes_.push_back({.kind = kind,
                          .file = file_,
                          .channel = std::move(channel),
                          .line = where.firstLine,
                          .count = where.count,
                          .text = std::move(text)});
    }
    std::vector<Note> take() { return std::move(notes_); }

  private:
    std::string file_;
    std::vector<Note> notes_;
};

/// "GR, DT and 12 more".
std::string someOf(const std::vector<std::string>& names) {
    constexpr std::size_t shown = 5;
    std::string text;
    for (std::size_t index = 0; index < std::min(shown, names.size()); ++index)
        text.append(index == 0 ? "" : ", ").append(names[index]);
    if (names.size() > shown) text += " and " + std::to_string(names.size() - shown) + " more";
    return text;
}

void noteLineEnds(const LineEndCounts& ends, Notes& notes) {
    if (!ends.mixed()) return;
    notes.add(NoteKind::LineEnds,
              "lines end in a mixture: " + std::to_string(ends.crLf) + " in CR LF, " + std::to_string(ends.lf) +
                  " in LF, " + std::to_string(ends.cr) + " in CR; all are read",
              {ends.lines() - std::max({ends.crLf, ends.lf, ends.cr}), ends.firstOther});
}

void noteColumns(const ChannelReader& reader, Notes& notes) {
    const ColumnNames& names = reader.names();
    std::vector<std::string> missing, surplus, unnamed;
    for (std::size_t column = 0; column < names.channels.size(); ++column) {
        const std::string& mnem = names.channels[column].mnem;
        if (column >= names.columns)
            missing.push_back(mnem);
        else if (column >= names.curveLines)
            surplus.push_back(mnem);
        else if (mnem == columnName(column))
            unnamed.push_back(mnem);
    }
    if (!missing.empty())
        notes.add(NoteKind::Columns, "the data have no column for " + someOf(missing) + "; null", {missing.size(), 0});
    if (!surplus.empty())
        notes.add(NoteKind::Columns, "columns without a line in ~Curve are kept as " + someOf(surplus),
                  {surplus.size(), 0});
    if (!unnamed.empty())
        notes.add(NoteKind::Columns, "lines of ~Curve without a mnemonic name " + someOf(unnamed), {unnamed.size(), 0});
}

void noteChannel(const ChannelReader& reader, std::size_t column, Notes& notes) {
    const ChannelFacts& facts = reader.facts().channels[column];
    const std::string& mnem = reader.names().channels[column].mnem;
    for (std::size_t kind = 0; kind < cellKinds; ++kind) {
        const CellFaults::Fault& fault = facts.faults.kinds[kind];
        if (fault.count > 0)
            notes.add(NoteKind::NoNumber, cellFaultText(static_cast<CellKind>(kind), fault.example),
                      {fault.count, fault.firstLine}, mnem);
    }
    if (facts.usualNulls.count > 0)
        notes.add(NoteKind::Nulls,
                  "a usual null such as -999.25 stands here as a figure: the file's null is " +
                      plainNumber(reader.fileNull().value),
                  facts.usualNulls, mnem);
}

}  // namespace

std::vector<Note> ChannelReader::notes(const std::string& name) const {
    Notes notes(name);
    noteLineEnds(lines_.ends(), notes);
    if (isUtf16(file_.encoding())) notes.add(NoteKind::File, "is UTF-16, read through a copy");
    if (!null_.given) notes.add(NoteKind::Nulls, "no NULL line with a number; -999.25 is null");
    noteColumns(*this, notes);
    for (std::size_t column = 0; column < facts_.channels.size(); ++column) noteChannel(*this, column, notes);
    if (facts_.otherLength.count > 0)
        notes.add(NoteKind::Records, "records of another length are placed loosely", facts_.otherLength);
    if (facts_.withoutIndex.count > 0)
        notes.add(NoteKind::Records, "records whose index is no number are left out", facts_.withoutIndex);
    if (facts_.cutLine > 0)
        notes.add(NoteKind::Records, "the last record is cut short; what is missing is null", {1, facts_.cutLine});
    return notes.take();
}

}  // namespace welvane
