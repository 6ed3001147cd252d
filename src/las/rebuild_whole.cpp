#include "las/rebuild_whole.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <exception>
#include <map>

#include "las/data_words.h"
#include "las/depth_spacing.h"
#include "las/kept_header.h"
#include "las/run_turn.h"
#include "platform/output_file.h"
#include "shared/any_line_reader.h"
#include "shared/failure.h"
#include "shared/number_fields.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t linesTold = 100;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The data lines of a file, up to its end or the title of a section behind them.
class DataLines {
  public:
    DataLines(std::string_view bytes, const SourceHeader& header)
        : bytes_(bytes), reader_(bytes.substr(*header.data)), number_(header.dataLine - 1) {}

    /// The next line that holds anything.
    bool next(std::string_view& line) {
        while (reader_.next(line)) {
            ++number_;
            line = trimBreaks(line);
            if (line.empty()) continue;
            if (line.front() != '~') return true;
            behind_ = static_cast<std::size_t>(line.data() - bytes_.data());
            return false;
        }
        return false;
    }
    std::size_t number() const { return number_; }
    std::size_t place(std::string_view line) const { return static_cast<std::size_t>(line.data() - bytes_.data()); }
    /// Place of the title behind the data; npos without one.
    std::size_t behind() const { return behind_; }

  private:
    std::string_view bytes_;
    AnyLineReader reader_;
    std::size_t number_;
    std::size_t behind_ = npos;
};

/// Puts records together: a line each, or, in wrapped data, as many lines as it takes for the number of values.
class Records {
  public:
    /// All lines lie in `bytes`.
    Records(DataLines lines, std::string_view bytes, std::size_t columns, bool wrapped)
        : lines_(lines), fields_(bytes), columns_(columns), wrapped_(wrapped) {}

    /// The next line, its words added to those in hand. False at the end.
    bool take() {
        if (done_) {
            words_.clear();
            plain_.clear();
        }
        done_ = false;
        std::string_view line;
        if (!lines_.next(line)) return false;
        if (words_.empty()) number_ = lines_.number();
        line_ = line;
        isComment_ = line.front() == '#';
        if (!isComment_) addWords(line);
        return true;
    }
    bool whole() const { return !isComment_ && words_.size() == columns_; }
    /// A line, or the lines in hand, that make no record.
    bool bad() const { return isComment_ || (wrapped_ ? words_.size() > columns_ : words_.size() != columns_); }
    void drop() { done_ = true; }
    const std::vector<std::string_view>& words() const { return words_; }
    /// The word is digits with a sign and a dot at most: a number for sure.
    bool plain(std::size_t word) const { return plain_[word] != 0; }
    std::size_t number() const { return isComment_ ? lines_.number() : number_; }
    std::string_view line() const { return line_; }
    bool left() const { return !done_ && !words_.empty(); }
    const DataLines& lines() const { return lines_; }

  private:
    void addWords(std::string_view line) {
        for (const NumberField& field : fields_.cut(line)) {
            words_.push_back(line.substr(field.from, field.length));
            plain_.push_back(field.plain ? 1 : 0);
        }
    }
    DataLines lines_;
    LineFields fields_;
    std::size_t columns_;
    bool wrapped_;
    std::vector<std::string_view> words_;
    std::vector<char> plain_;  ///< by word
    std::string_view line_;
    std::size_t number_ = 0;
    bool done_ = false, isComment_ = false;
};

/// What of a column is worth a note.
struct ColumnFacts {
    std::size_t width = 0;
    std::size_t texts = 0, firstText = 0;  ///< words that are no numbers, and the line of the first
    std::size_t nulls = 0;                 ///< words that hold the platform's null, a thousand times too large
};

class WholeRebuilder {
  public:
    WholeRebuilder(const LasFile& file, RebuildKind kind, std::string_view country, RunState& run, UserInterface& user,
                   WholeRebuild& result)
        : file_(file),
          country_(country),
          run_(run),
          user_(user),
          result_(result),
          platform_(kind != RebuildKind::Other) {
        bytes_ = file.bytes();
        if (bytes_.starts_with(byteOrderMark)) bytes_.remove_prefix(byteOrderMark.size());
    }

    void perform(std::string_view target, OutputFile::Mode mode);

  private:
    bool countWords(RunTurn& turn);
    std::size_t columnsOf(const std::vector<KeptCurve>& curves) const;
    bool lookAtData(RunTurn& turn);
    void takeRecord(const Records& record);
    void dropLine(std::size_t number, std::string_view line);
    DepthFacts depthFacts() const;
    std::string stepFor(const std::string& given) const;
    bool onGrid(double step) const;
    double rounding() const { return depthRounding(depthDecimals_); }
    void tellColumns();
    bool writeData(OutputFile& output, RunTurn& turn);
    void writeRecord(OutputFile& output, const Records& record, std::size_t length) const;
    void widenForNames();
    std::string dataTitle() const;
    Records records() const { return {DataLines(bytes_, header_), bytes_, wordsPerRecord_, wrapped_}; }
    bool isPlatformNull(std::string_view word) const { return platform_ && word.find("-999250.") != npos; }

    const LasFile& file_;
    std::string country_;
    RunState& run_;
    UserInterface& user_;
    WholeRebuild& result_;
    bool platform_;
    std::string_view bytes_;
    SourceHeader header_;
    std::map<std::size_t, std::size_t> counts_;  ///< lines by their number of words
    bool wrapped_ = false;
    std::size_t wordsPerRecord_ = 0;
    std::size_t behind_ = npos, behindLine_ = 0;  ///< of the title behind the data
    std::vector<HeaderField> channels_;
    std::vector<ColumnFacts> columns_;
    std::vector<double> depths_;
    std::string first_, last_;
    std::size_t depthDecimals_ = 0;
    std::size_t dropped_ = 0;
    std::string null_ = "-999.25";
};

bool WholeRebuilder::countWords(RunTurn& turn) {
    DataLines lines(bytes_, header_);
    for (std::string_view line; lines.next(line);) {
        if (!turn.goesOn(lines.place(line) / 3)) return false;
        if (line.front() != '#') ++counts_[countDataWords(line)];
    }
    behind_ = lines.behind();
    behindLine_ = lines.number();
    return true;
}

/// Values of a record: as many as the lines of ~Curve, with or without those that have no dot, or, where all lines
/// agree on another number, or most of them on a larger one, that one. 0 when nothing fits.
std::size_t WholeRebuilder::columnsOf(const std::vector<KeptCurve>& curves) const {
    const auto certain = static_cast<std::size_t>(
        std::count_if(curves.begin(), curves.end(), [](const KeptCurve& one) { return one.certain; }));
    if (counts_.empty() || certain == 0) return 0;
    const auto less = [](const auto& one, const auto& other) { return one.second < other.second; };
    const std::size_t most = std::max_element(counts_.begin(), counts_.end(), less)->first;
    if (most > curves.size() && !wrapped_) return most;
    for (const std::size_t columns : {certain, curves.size()})
        if (wrapped_ || counts_.contains(columns)) return columns;
    return counts_.size() == 1 && most > 1 ? most : 0;
}

void WholeRebuilder::dropLine(std::size_t number, std::string_view line) {
    if (++dropped_ > linesTold) return;
    constexpr std::size_t longest = 120;
    result_.notes.push_back(
        {.kind = NoteKind::Dropped,
         .line = number,
         .text = "dropped data line: " + std::string(line.substr(0, longest)) + (line.size() > longest ? "..." : "")});
}

void WholeRebuilder::takeRecord(const Records& record) {
    const std::vector<std::string_view>& words = record.words();
    for (std::size_t column = 0; column < words.size(); ++column) {
        ColumnFacts& facts = columns_[column];
        const bool null = column > 0 && isPlatformNull(words[column]);
        facts.width = std::max(facts.width, null ? null_.size() : words[column].size());
        if (null) ++facts.nulls;
        if (null || record.plain(column) || parseNumber(words[column]).length == words[column].size()) continue;
        if (facts.texts++ == 0) facts.firstText = record.number();
    }
    const std::string_view depth = words.front();
    if (depths_.empty()) first_ = depth;
    last_ = depth;
    depthDecimals_ = std::max(depthDecimals_, decimalsOf(depth));
    depths_.push_back(val(depth));
}

bool WholeRebuilder::lookAtData(RunTurn& turn) {
    Records records = this->records();
    while (records.take()) {
        if (!turn.goesOn((bytes_.size() + records.lines().place(records.line())) / 3)) return false;
        if (records.whole()) takeRecord(records);
        if (records.bad()) dropLine(records.number(), records.line());
        if (records.whole() || (records.bad() && records.line().front() != '#')) records.drop();
    }
    if (records.left()) dropLine(records.number(), "the last record, which is cut");
    return true;
}

/// True when every depth stands on the grid that the first one and the step make, each further along it; records may be
/// missing.
bool WholeRebuilder::onGrid(double step) const {
    if (step == 0 || !std::isfinite(step)) return false;
    if (followStep(depths_, step, rounding())) return true;
    const double tolerance = std::min(std::abs(step) / 4, rounding());
    double before = -1;
    for (const double depth : depths_) {
        const double place = std::round((depth - depths_.front()) / step);
        if (place <= before || std::abs(depth - depths_.front() - place * step) > tolerance) return false;
        before = place;
    }
    return true;
}

/// What the STEP line should say: "" for what it says, where all depths follow it or some are only missing; their own
/// step; 0 where they have none.
std::string WholeRebuilder::stepFor(const std::string& given) const {
    const bool told = isNumeric(given) && (val(given) == 0 || onGrid(val(given)));
    if (told && val(given) != 0 && followStep(depths_, val(given), rounding())) return {};
    std::string own = regularStep(depths_, depthDecimals_);
    if (!own.empty()) return own;
    return told || (depths_.size() < 2 && isNumeric(given)) ? "" : "0";
}

DepthFacts WholeRebuilder::depthFacts() const {
    DepthFacts facts;
    if (columns_.front().texts > 0) return {first_, last_, wellNumber(header_, "STEP").empty() ? "0" : ""};
    const auto fits = [this](const char* mnem, double depth) {
        const std::string given = wellNumber(header_, mnem);
        return isNumeric(given) && std::abs(val(given) - depth) <= rounding() / 2;
    };
    if (!fits("STRT", depths_.front())) facts.first = first_;
    if (!fits("STOP", depths_.back())) facts.last = last_;
    facts.step = stepFor(wellNumber(header_, "STEP"));
    return facts;
}

void WholeRebuilder::tellColumns() {
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        const ColumnFacts& facts = columns_[column];
        if (facts.texts > 0)
            result_.notes.push_back({.kind = NoteKind::NoNumber,
                                     .channel = channels_[column].mnem,
                                     .line = facts.firstText,
                                     .count = facts.texts,
                                     .text = "words that are no numbers stay as they are"});
        if (facts.nulls > 0)
            result_.notes.push_back({.kind = NoteKind::Repair,
                                     .channel = channels_[column].mnem,
                                     .count = facts.nulls,
                                     .text = "-999250 is written as the null " + null_});
    }
    if (channels_.size() > columns_.size())
        result_.notes.push_back({.kind = NoteKind::Dropped,
                                 .channel = channels_[columns_.size()].mnem,
                                 .count = channels_.size() - columns_.size(),
                                 .text = "the data have no column for it and what is behind it; null is written"});
    if (dropped_ > linesTold)
        result_.notes.push_back({.kind = NoteKind::Dropped, .count = dropped_, .text = "dropped data lines in all"});
}

/// Short names stand over their columns.
void WholeRebuilder::widenForNames() {
    constexpr std::size_t widest = 12;
    for (std::size_t column = 1; column < columns_.size(); ++column)
        if (channels_[column].mnem.size() <= widest)
            columns_[column].width = std::max(columns_[column].width, channels_[column].mnem.size());
}

std::string WholeRebuilder::dataTitle() const {
    std::string title = "~Ascii";
    for (std::size_t column = 0; column < channels_.size(); ++column) {
        const std::size_t width = column < columns_.size() ? columns_[column].width : null_.size();
        const std::size_t room = column == 0 ? (width + 2 > title.size() ? width + 2 - title.size() : 0) : width + 2;
        const std::string& name = channels_[column].mnem;
        title += room > name.size() ? rightAligned(name, room) : " " + name;
    }
    return title;
}

/// Bytes behind a column that putWord may write over.
constexpr std::size_t wordSpill = 16;

/// A word right-aligned behind two blanks; returns the place behind it. A short one with `behind` bytes of its text
/// that can be read takes two moves of one size.
char* putWord(char* room, std::string_view word, std::size_t width, std::size_t behind) {
    const std::size_t blanks = width + 2 - word.size();
    if (blanks <= wordSpill && word.size() <= wordSpill && behind >= wordSpill) {
        std::memset(room, ' ', wordSpill);
        std::memcpy(room + blanks, word.data(), wordSpill);
    } else {
        std::memset(room, ' ', blanks);
        std::copy(word.begin(), word.end(), room + blanks);
    }
    return room + width + 2;
}

void WholeRebuilder::writeRecord(OutputFile& output, const Records& record, std::size_t length) const {
    char* const room = output.reserve(length + 2 + wordSpill);
    char* place = room;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        const std::string_view word = record.words()[column];
        const bool null = column > 0 && isPlatformNull(word);
        const auto behind = static_cast<std::size_t>(bytes_.data() + bytes_.size() - word.data());
        place = putWord(place, null ? null_ : word, columns_[column].width, null ? 0 : behind);
    }
    for (std::size_t column = columns_.size(); column < channels_.size(); ++column)
        place = putWord(place, null_, null_.size(), 0);
    *place++ = '\r';
    *place++ = '\n';
    output.advance(length + 2);
}

bool WholeRebuilder::writeData(OutputFile& output, RunTurn& turn) {
    std::size_t length = 0;
    for (std::size_t column = 0; column < std::max(columns_.size(), channels_.size()); ++column)
        length += (column < columns_.size() ? columns_[column].width : null_.size()) + 2;
    Records records = this->records();
    while (records.take()) {
        if (!turn.goesOn((2 * bytes_.size() + records.lines().place(records.line())) / 3)) return false;
        if (records.whole()) writeRecord(output, records, length);
        if (records.whole() || (records.bad() && records.line().front() != '#')) records.drop();
    }
    return true;
}

void WholeRebuilder::perform(std::string_view target, OutputFile::Mode mode) {
    header_ = readSourceHeader(bytes_);
    std::vector<KeptCurve> curves = keptCurves(header_);
    if (curves.empty() || !header_.data) throw RunTimeFailure("it needs a ~Curve section with lines and a ~A section");
    file_.willReadAll();
    RunTurn turn(run_, user_, bytes_.size());
    result_.result = StepResult::Cancelled;
    if (!countWords(turn)) return;
    const SourceHeader behind =
        behind_ == npos ? SourceHeader{} : readSourceHeader(bytes_.substr(behind_), behindLine_);
    if (behind.data) throw RunTimeFailure("it has two ~A sections");
    if (const std::string null = wellNumber(header_, "NULL"); !null.empty()) null_ = null;
    wrapped_ = headerSaysWrapped(header_) && !counts_.contains(curves.size());
    wordsPerRecord_ = columnsOf(curves);
    if (wordsPerRecord_ == 0) throw RunTimeFailure("none of its data lines has as many values as it has curves");
    columns_.resize(wordsPerRecord_);
    if (!lookAtData(turn)) return;
    if (depths_.empty()) throw RunTimeFailure("none of its data lines has as many values as it has curves");
    std::vector<Note> told = std::move(result_.notes);  // the lines of the header come first
    result_.notes.clear();
    channels_ = settleCurves(curves, wordsPerRecord_, result_.notes);
    widenForNames();
    std::string header = keptHeader(header_, behind, curves, channels_, depthFacts(), country_, result_.notes);
    result_.notes.insert(result_.notes.end(), told.begin(), told.end());
    tellColumns();
    OutputFile output(target, mode);
    output.write(header);
    output.writeLine(dataTitle());
    if (!writeData(output, turn)) return;
    file_.needWhole();
    output.commit();
    result_.records = depths_.size();
    result_.result = StepResult::Done;
}

}  // namespace

WholeRebuild rebuildWhole(const LasFile& source, std::string_view target, RebuildKind kind, std::string_view country,
                          RunState& run, UserInterface& user, OutputFile::Mode mode) {
    WholeRebuild result;
    try {
        WholeRebuilder(source, kind, country, run, user, result).perform(target, mode);
    } catch (const FileFailure&) {
        throw;
    } catch (const std::exception& failed) {
        result.result = StepResult::Failed;
        result.why = failed.what();
    }
    return result;
}

}  // namespace welvane
