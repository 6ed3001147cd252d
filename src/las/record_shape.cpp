#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "las/data_words.h"
#include "las/limits.h"
#include "las/read_channels.h"
#include "shared/numbers.h"
#include "shared/settings.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t linesToJudge = 200;
constexpr std::size_t mostColumns = 32767;

/// The lines with data that are looked at.
std::vector<std::string_view> linesToLookAt(const LasText& text, std::size_t start) {
    std::vector<std::string_view> found;
    LineReader data = text.lines(start, lookLimit);
    for (std::string_view line; found.size() < linesToJudge && data.next(line);) {
        const std::size_t first = line.find_first_not_of(" \t\x1A");
        if (first == npos || line[first] == '#') continue;
        if (line[first] == '~' || (data.atEnd() && !found.empty())) break;  // the last line may be cut short
        found.push_back(line);
    }
    return found;
}

std::size_t countCells(std::string_view line, char delimiter) {
    if (delimiter == ' ') return countDataWords(line);
    line = delimiter == '\t' ? withoutIndent(line) : trim(line);
    const auto marks = static_cast<std::size_t>(std::count(line.begin(), line.end(), delimiter));
    return marks + (endsWith(line, std::string_view(&delimiter, 1)) ? 0U : 1U);
}

/// By the DLM line of ~Version where the first line bears it out; a comma also where it alone gives each line of
/// ~Curve its cell.
char delimiterOf(const LasText& text, std::string_view line, std::size_t curveLines, bool decimalComma) {
    const std::string told = getLasValue(text, "DLM", 'V').text;
    if (sameText(told, "TAB") && line.find('\t') != npos) return '\t';
    if (decimalComma || line.find(',') == npos) return ' ';
    const bool fits = curveLines > 2 && countCells(line, ',') == curveLines && countDataWords(line) != curveLines;
    return fits || sameText(told, "COMMA") ? ',' : ' ';
}

/// The record's length in a wrapped file, and whether all lines looked at bear it out.
class WrappedLook {
  public:
    explicit WrappedLook(const std::vector<std::size_t>& words) : words_(words), alone_(words.front() == 1) {}

    bool indexAlone() const { return alone_; }

    bool fits(std::size_t columns) const {
        std::size_t filled = 0;
        bool whole = false;
        for (const std::size_t words : words_) {
            if (filled == 0 && alone_ && words != 1) return false;
            filled += words;
            if (filled > columns) return false;
            if (filled < columns) continue;
            filled = 0;
            whole = true;
        }
        return whole || words_.size() < linesToJudge;
    }
    /// Values of a record: those up to the next index alone on its line, where all lines bear it out; 0 without such. A
    /// record may end in a line of one value too.
    std::size_t recordLength() const {
        std::size_t line = 1;
        while (line + 1 < words_.size() && words_[line + 1] != 1) ++line;
        for (std::size_t last = line; last <= line + 1 && last + 1 < words_.size(); ++last) {
            const std::size_t sum =
                std::accumulate(words_.begin(), words_.begin() + static_cast<std::ptrdiff_t>(last) + 1, std::size_t{0});
            if (alone_ && words_[last + 1] == 1 && fits(sum)) return sum;
        }
        return 0;
    }
    bool hasSingles(std::size_t columns) const {
        std::size_t filled = words_.front();
        for (std::size_t line = 1; line < words_.size() && filled < columns; ++line) {
            filled += words_[line];
            if (words_[line] == 1 && filled < columns) return true;
        }
        return false;
    }

  private:
    const std::vector<std::size_t>& words_;
    bool alone_;
};

/// False where the lines are whole records after all.
bool judgeWrapped(const std::vector<std::size_t>& words, std::size_t curveLines, bool allEqual, RecordShape& shape) {
    const WrappedLook look(words);
    std::size_t columns = curveLines;
    if (!look.fits(columns)) {
        if (allEqual) return false;
        if (const std::size_t length = look.recordLength(); length > 0) columns = length;
    }
    shape.wrapped = true;
    shape.columns = columns;
    shape.indexAlone = look.indexAlone();
    shape.singles = look.hasSingles(columns);
    return true;
}

std::vector<std::size_t> cellEnds(std::string_view line) {
    std::vector<std::size_t> ends;
    const char* const begin = line.data();
    for (std::string_view word = nextDataWord(line); !word.empty(); word = nextDataWord(line))
        ends.push_back(static_cast<std::size_t>(word.data() - begin) + word.size());
    return ends;
}

/// Ends of the cells where all whole records have the same.
std::vector<std::size_t> commonEnds(const std::vector<std::string_view>& lines, std::size_t columns) {
    std::vector<std::size_t> common;
    for (const std::string_view line : lines) {
        std::vector<std::size_t> ends = cellEnds(line);
        if (ends.size() != columns) continue;
        if (common.empty())
            common = std::move(ends);
        else if (common != ends)
            return {};
    }
    return common.size() < 2 ? std::vector<std::size_t>() : common;
}

std::size_t mostFrequent(std::vector<std::size_t> words) {
    std::sort(words.begin(), words.end());
    std::size_t best = words.front(), most = 0;
    for (auto from = words.begin(); from != words.end();) {
        const auto to = std::upper_bound(from, words.end(), *from);
        if (static_cast<std::size_t>(to - from) > most) {
            most = static_cast<std::size_t>(to - from);
            best = *from;
        }
        from = to;
    }
    return best;
}

}  // namespace

FileNull readFileNull(const LasText& text) {
    const std::string given = getDepthHeader(text).null().value;
    FileNull found{lasNull, isNumeric(given), 0, 0};
    if (found.given) found.value = strictDouble(given);
    found.lowest = found.highest = found.value;
    if (std::abs(found.value) >= static_cast<double>(std::numeric_limits<float>::max())) return found;
    // Half way to the singles beside it.
    const float single = static_cast<float>(found.value);
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const auto middle = [single](float neighbour) {
        return (static_cast<double>(single) + static_cast<double>(neighbour)) / 2;
    };
    found.lowest = std::min(found.value, middle(std::nextafter(single, -infinity)));
    found.highest = std::max(found.value, middle(std::nextafter(single, infinity)));
    return found;
}

RecordShape judgeRecords(const LasText& text, bool decimalComma) {
    RecordShape shape;
    const auto start = text.seekSection('A');
    if (!start) return shape;
    shape.dataLine = text.lineNumber(*start - 1) + 1;
    const std::vector<std::string_view> lines = linesToLookAt(text, *start);
    if (lines.empty()) return shape;
    const CurveLineCounts counts = countCurveLines(text);
    std::size_t curveLines = counts.proper > 0 ? counts.proper : counts.all;
    shape.delimiter = delimiterOf(text, lines.front(), curveLines, decimalComma);
    std::vector<std::size_t> words;
    for (const std::string_view line : lines) words.push_back(countCells(line, shape.delimiter));
    const auto occurs = [&words](std::size_t count) {
        return std::find(words.begin(), words.end(), count) != words.end();
    };
    // A stray line of as many values as there are proper lines does not outweigh all the others.
    if ((!occurs(curveLines) && occurs(counts.all)) || mostFrequent(words) == counts.all) curveLines = counts.all;
    const bool allEqual =
        std::count(words.begin(), words.end(), words.front()) == static_cast<std::ptrdiff_t>(words.size());
    const bool told = sameText(getLasValue(text, "WRAP", 'V').text, "YES");
    const bool mayWrap =
        shape.delimiter == ' ' && words.front() < curveLines && (told || (words.front() == 1 && !allEqual));
    if (mayWrap && judgeWrapped(words, curveLines, allEqual, shape)) return shape;
    shape.columns = std::min(allEqual ? words.front() : curveLines > 0 ? curveLines : mostFrequent(words), mostColumns);
    if (shape.delimiter == ' ') shape.ends = commonEnds(lines, shape.columns);
    return shape;
}

}  // namespace welvane
