#include "las/data_access.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "las/data_words.h"
#include "las/sections.h"
#include "platform/mapped_file.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What is looked at to judge the data, at most; a line that does not end within it counts as the file's last.
constexpr std::size_t lookLimit = std::size_t{256} << 20U;
constexpr std::size_t linesToJudge = 200;

/// Words and length of the lines that are judged.
struct JudgedLines {
    std::array<std::size_t, linesToJudge> words{}, lengths{}, numbers{};
    std::size_t count = 0;
};

/// `file` stands behind the title of ~A; line numbers count from there.
JudgedLines judgeLines(LineReader& file) {
    JudgedLines judged;
    const std::size_t start = file.position();
    LineReader data(file.bytes().substr(start, lookLimit));
    std::size_t number = 0;
    for (std::string_view line; judged.count < linesToJudge && data.next(line);) {
        ++number;
        if (data.atEnd()) break;  // the last line may be cut short
        const std::size_t words = countDataWords(line);
        if (words == 0) continue;
        judged.words[judged.count] = words;
        judged.lengths[judged.count] = line.size();
        judged.numbers[judged.count++] = number;
    }
    return judged;
}

/// The word counts of a row of lines written one after another, as text.
class CountText {
  public:
    CountText(const JudgedLines& lines, std::size_t from, std::size_t count) {
        for (std::size_t index = from; index < from + count; ++index)
            end_ = std::to_chars(end_, text_.data() + text_.size(), lines.words[index]).ptr;
    }
    CountText(const CountText&) = delete;
    CountText& operator=(const CountText&) = delete;
    std::string_view text() const { return {text_.data(), static_cast<std::size_t>(end_ - text_.data())}; }

  private:
    std::array<char, 50 * 20> text_{};
    char* end_ = text_.data();
};

/// Finds the number of lines after which the word counts repeat.
void judgeWrapped(const JudgedLines& lines, DataShape& shape) {
    const std::size_t longest = lines.count == linesToJudge ? 50 : lines.count / 2;
    std::size_t bytes = 0;
    std::size_t words = 0;
    for (std::size_t period = 1; period <= longest; ++period) {
        bytes += lines.lengths[period - 1] + 2;
        words += lines.words[period - 1];
        // Kept: the counts are compared as digits in a row, so "1, 11" equals "11, 1", and a first line of 10 to 19
        // words passes as one that begins with "1". Such data have no regular shape, and the reader of wrapped data
        // copes with them or says so.
        const CountText first(lines, 0, period);
        const CountText second(lines, period, period);
        if (first.text() != second.text()) continue;
        if (first.text().front() != '1') return;
        shape.bytesPerStep = toInt32(static_cast<std::int64_t>(bytes));
        shape.wordsPerStep = toInt32(static_cast<std::int64_t>(words));
        shape.linesPerStep = static_cast<std::int16_t>(period);
        shape.layout = DataLayout::Wrapped;
        return;
    }
}

DataShape judgeShape(std::string_view bytes) {
    DataShape shape;
    LineReader file(bytes);
    const std::size_t start = seekSection(file, 'A');
    if (start == 0) return shape;
    const JudgedLines lines = judgeLines(file);
    if (lines.count == 0) return shape;
    const auto* const wordsEnd = lines.words.begin() + lines.count;
    const auto* const differing =
        std::find_if(lines.words.begin(), wordsEnd, [&lines](std::size_t words) { return words != lines.words[0]; });
    if (differing == wordsEnd) {
        shape.bytesPerStep = toInt32(static_cast<std::int64_t>(lines.lengths[0] + 2));
        shape.wordsPerStep = toInt32(static_cast<std::int64_t>(lines.words[0]));
        shape.linesPerStep = 1;
        shape.layout = DataLayout::OneLine;
        return shape;
    }
    judgeWrapped(lines, shape);
    if (shape.layout == DataLayout::Undecided) {
        const std::size_t titleLine = lineNumberAt(bytes, start - 2);
        shape.firstLineNumber = titleLine + lines.numbers[0];
        shape.differingLineNumber =
            titleLine + lines.numbers[static_cast<std::size_t>(differing - lines.words.begin())];
    }
    return shape;
}

/// The word `count` places from the end (1 is the last); empty when there are not so many. Any blank, tab or line end
/// separates.
std::string_view wordFromEnd(std::string_view text, std::int32_t count) {
    constexpr std::string_view separators = " \t\r\n";
    std::string_view word;
    for (std::int32_t done = 0; done < count; ++done) {
        const std::size_t last = text.find_last_not_of(separators);
        if (last == npos) return {};
        const std::size_t before = text.find_last_of(separators, last);
        const std::size_t first = before == npos ? 0 : before + 1;
        word = text.substr(first, last - first + 1);
        text = text.substr(0, first);
    }
    return word;
}

/// Position (1-based) of the last sample's line among the lines from `from` (0-based) on; 0 when no line begins with
/// that depth. The number is compared, not its text, so that "100.50" is not taken for 100.
std::int64_t findLastLine(std::string_view bytes, std::size_t from, double depth, bool wrapped) {
    std::int64_t last = 0;
    std::int64_t lastButOne = 0;
    LineReader tail(bytes, from);
    for (std::string_view line; !tail.atEnd();) {
        const auto position = static_cast<std::int64_t>(tail.position()) + 1;
        tail.next(line);
        const std::string_view first = firstDataWord(line);
        if (first.empty() || val(first) != depth) continue;
        if (!wrapped) return position;
        if (first.size() != trimDataLine(line).size()) continue;
        lastButOne = last;
        last = position;
    }
    // Kept: with the depth alone on two or more lines of the tail, the last but one of them is taken.
    return lastButOne != 0 ? lastButOne : last;
}

DataEnds findEnds(std::string_view bytes, std::int32_t wordsPerStep, std::int32_t bytesPerStep, bool wrapped) {
    DataEnds ends;
    LineReader file(bytes);
    const std::size_t start = seekSection(file, 'A');
    if (start == 0) return ends;
    ends.found = true;
    ends.firstPosition = static_cast<std::int64_t>(start);

    LineReader data(bytes.substr(0, std::min(bytes.size() - (start - 1), lookLimit) + start - 1), start - 1);
    for (std::string_view line; data.next(line);) {
        const std::string_view first = firstDataWord(line);
        if (first.empty()) continue;
        ends.firstDepth = val(formatMask(val(first), 4));
        break;
    }

    const std::size_t tailLength = bytesPerStep > 0 ? 3 * static_cast<std::size_t>(bytesPerStep) : 0;
    const std::size_t tail = bytes.size() - (start - 1) > tailLength ? bytes.size() - tailLength : start - 1;
    if (wordsPerStep < 1) return ends;
    const std::string_view last = wordFromEnd(bytes.substr(tail), wordsPerStep);
    if (last.empty()) return ends;
    ends.hasLastDepth = true;
    ends.lastDepth = val(last);
    ends.lastPosition = findLastLine(bytes, tail, ends.lastDepth, wrapped);
    return ends;
}

/// Width and decimals of the first data column by the first non-blank line of ~A; false without one.
bool readFirstColumn(std::string_view bytes, InputSlot& slot) {
    LineReader file(bytes);
    const std::size_t start = seekSection(file, 'A');
    if (start == 0 || slot.linesPerStep < 1) return false;
    LineReader data(bytes.substr(start - 1, lookLimit));
    for (std::string_view line; data.next(line);) {
        const std::string_view first = firstDataWord(line);
        if (first.empty()) continue;
        const std::size_t dot = first.find('.');
        slot.firstColumnWidth =
            toInt16(static_cast<double>(first.data() - line.data()) + static_cast<double>(first.size()));
        slot.firstColumnDecimals = dot == npos ? std::int16_t{0} : toInt16(static_cast<double>(first.size() - dot - 1));
        return true;
    }
    return false;
}

void fillFromHeader(std::string_view path, InputSlot& slot) {
    const DepthHeader header = getDepthHeader(path);
    const auto columnOr = [](std::int16_t found, std::int16_t otherwise) { return found == 0 ? otherwise : found; };
    slot.dotColumn = columnOr(header.layout.dot, 7);
    slot.valueColumn = columnOr(header.layout.value, 15);
    slot.colonColumn = columnOr(header.layout.colon, 50);
    slot.path = path;
    slot.indexName = header.indexName;
    slot.start = val(header.strt().value);
    slot.stop = val(header.stop().value);
    slot.step = val(header.step().value);
    slot.topDepth = std::min(slot.start, slot.stop);
    slot.bottomDepth = std::max(slot.start, slot.stop);
    slot.nullText = header.null().value;
    // Of the STOP line on purpose: STRT is the one that other programs rewrite without its unit.
    slot.depthUnit = header.stop().unit;
}

}  // namespace

DataShape detectDataLayout(std::string_view path) {
    try {
        const auto mapped = MappedFile::open(path);
        return mapped ? judgeShape(mapped->bytes()) : DataShape{};
    } catch (const RunTimeFailure&) {
        return {};  // a step of more bytes or words than 32 bits count
    }
}

DataEnds locateDataEnds(std::string_view path, std::int32_t wordsPerStep, std::int32_t bytesPerStep, bool wrapped) {
    const auto mapped = MappedFile::open(path);
    return mapped ? findEnds(mapped->bytes(), wordsPerStep, bytesPerStep, wrapped) : DataEnds{};
}

std::size_t splitValues(std::string_view text, char delimiter, std::vector<std::string>& words) {
    words.clear();
    const std::string_view separators = delimiter == ' ' ? std::string_view(" \t") : std::string_view(&delimiter, 1);
    for (std::size_t start = text.find_first_not_of(separators); start != npos;
         start = text.find_first_not_of(separators, start)) {
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        words.push_back(plainNumber(val(text.substr(start, end - start))));
        start = end;
    }
    return words.size();
}

bool fillInputSlot(std::string_view path, InputSlot& slot) {
    try {
        const auto mapped = MappedFile::open(path);
        if (!mapped) return false;
        fillFromHeader(path, slot);

        const DataShape shape = detectDataLayout(path);
        if (shape.layout == DataLayout::OneLine) slot.wrap = "NO";
        if (shape.layout == DataLayout::Wrapped) slot.wrap = "YES";
        slot.linesPerStep = shape.linesPerStep;
        slot.bytesPerStep = shape.bytesPerStep;
        slot.wordsPerStep = shape.wordsPerStep;
        if (!readFirstColumn(mapped->bytes(), slot)) return false;

        const DataEnds ends =
            findEnds(mapped->bytes(), slot.wordsPerStep, slot.bytesPerStep, shape.layout == DataLayout::Wrapped);
        slot.dataStart = ends.firstPosition;
        slot.lastLine = ends.lastPosition;
        slot.firstDepth = ends.firstDepth;
        slot.lastDepth = ends.lastDepth;
        slot.lasVersion = getFileValue(path, "VERS");
        return true;
    } catch (const RunTimeFailure&) {
        return false;
    }
}

SlotChannels readSlotChannels(std::string_view path) {
    SlotChannels channels;
    for (HeaderField& field : readSectionLines(path, 'C')) channels.emplace_back().field = std::move(field);
    return channels;
}

}  // namespace welvane
