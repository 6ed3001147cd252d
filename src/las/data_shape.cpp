#include "las/data_shape.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "las/data_words.h"
#include "las/limits.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t linesToJudge = 200;

/// Words and length of the lines that are judged.
struct JudgedLines {
    std::array<std::size_t, linesToJudge> words{}, lengths{}, numbers{};
    std::size_t count = 0;
};

/// Line numbers count from the title of ~A, behind which `start` is.
JudgedLines judgeLines(const LasText& text, std::size_t start) {
    JudgedLines judged;
    LineReader data = text.lines(start, lookLimit);
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

DataShape judgeShape(const LasText& text) {
    DataShape shape;
    const auto start = text.seekSection('A');
    if (!start) return shape;
    const JudgedLines lines = judgeLines(text, *start);
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
        const std::size_t titleLine = text.lineNumber(*start - 1);
        shape.firstLineNumber = titleLine + lines.numbers[0];
        shape.differingLineNumber = titleLine + lines.numbers[differing - lines.words.begin()];
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
std::int64_t findLastLine(const LasText& text, std::size_t from, double depth, bool wrapped) {
    std::int64_t last = 0;
    std::int64_t lastButOne = 0;
    LineReader tail = text.lines(from);
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

}  // namespace

DataShape detectDataLayout(const LasText& text) {
    try {
        return judgeShape(text);
    } catch (const RunTimeFailure&) {
        return {};  // a step of more bytes or words than 32 bits count
    }
}

DataEnds locateDataEnds(const LasText& text, const DataShape& shape) {
    DataEnds ends;
    const auto start = text.seekSection('A');
    if (!start) return ends;
    ends.found = true;
    ends.firstPosition = static_cast<std::int64_t>(*start) + 1;

    LineReader data = text.lines(*start, lookLimit);
    for (std::string_view line; data.next(line);) {
        const std::string_view first = firstDataWord(line);
        if (first.empty()) continue;
        ends.firstDepth = val(formatMask(val(first), 4));
        break;
    }

    if (shape.wordsPerStep < 1) return ends;
    const std::size_t size = text.bytes().size();
    const std::size_t tailLength = shape.bytesPerStep > 0 ? 3 * static_cast<std::size_t>(shape.bytesPerStep) : 0;
    const std::size_t tail = size - *start > tailLength ? size - tailLength : *start;
    const std::string_view last = wordFromEnd(text.bytes().substr(tail), shape.wordsPerStep);
    if (last.empty()) return ends;
    ends.hasLastDepth = true;
    ends.lastDepth = val(last);
    ends.lastPosition = findLastLine(text, tail, ends.lastDepth, shape.layout == DataLayout::Wrapped);
    return ends;
}

std::string shapeProblem(const DataShape& shape) {
    if (shape.differingLineNumber == 0) return "There are no data lines whose shape could be judged.";
    return "Lines " + std::to_string(shape.firstLineNumber) + " and " + std::to_string(shape.differingLineNumber) +
           " differ in their number of values.";
}

}  // namespace welvane
