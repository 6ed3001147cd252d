#include "conform/data_judge.h"

#include <algorithm>

#include "shared/text.h"

namespace welvane {

namespace {

/// Visible bytes of a line; CR LF counts as well in what the standard allows.
constexpr std::size_t longestWrapped = 78, longestPlain = 254;
/// Columns whose layout is compared.
constexpr std::size_t mostColumns = 100'000;
/// Lines that are looked at to tell how rows are laid out.
constexpr std::size_t linesLookedAt = 200;

/// The first lines of the data, without blank ones and comments.
std::vector<std::string_view> firstLines(std::string_view rest, StandardVersion version) {
    std::vector<std::string_view> lines;
    LineWalk walk(rest.substr(0, std::size_t{1} << 20U));
    while (lines.size() < linesLookedAt && walk.next()) {
        if (!titleIn(walk.text(), version).empty()) break;
        if (!isBlankLine(walk.text()) && !isCommentLine(walk.text(), version)) lines.push_back(walk.text());
    }
    return lines;
}

bool holdsNumber(std::string_view line, bool commaParts) {
    DataTokens tokens(line, byteKinds(commaParts));
    for (DataToken token; tokens.next(token);)
        if (token.plainNumber()) return true;
    return false;
}

/// Commas part the columns where the first rows fit that way and no other.
bool commasPart(const std::vector<std::string_view>& lines, std::size_t columns) {
    if (lines.empty() || columns < 2 || lines.front().find(',') == npos) return false;
    const std::string_view line = holdsNumber(lines.front(), true) || lines.size() == 1 ? lines.front() : lines[1];
    // A comma inside a number has digits on both sides.
    const bool apart = line.find(", ") != npos || line.find(" ,") != npos;
    return (apart || countTokens(line, false) != columns) && countTokens(line, true) == columns;
}

RowLayout layoutOf(const std::vector<std::string_view>& lines, std::size_t columns, bool commas) {
    if (columns < 2) return RowLayout::Unknown;
    std::size_t have = 0, steps = 0, plain = 0, looked = 0;
    bool exact = true;
    for (const std::string_view line : lines) {
        if (!holdsNumber(line, commas)) continue;
        const std::size_t count = countTokens(line, commas);
        ++looked;
        plain += count == columns ? 1U : 0U;
        have += count;
        exact = exact && have <= columns;
        if (have < columns) continue;
        ++steps;
        have = 0;
    }
    if (plain * 2 > looked) return RowLayout::Plain;
    return exact && steps > 0 && plain == 0 ? RowLayout::Wrapped : RowLayout::Unknown;
}

}  // namespace

DataJudge::DataJudge(Judgement& judged, std::string_view rest)
    : judged_(judged),
      data_(judged.data),
      columns_(judged.header.curveCount),
      judgeWrapped_([&] {
          const auto lines = firstLines(rest, judged.findings.version());
          data_.comma = commasPart(lines, columns_);
          data_.layout = layoutOf(lines, columns_, data_.comma);
          return data_.layout == RowLayout::Unknown ? judged.header.wrapped() : data_.layout == RowLayout::Wrapped;
      }()),
      kinds_(byteKinds(data_.comma)),
      null_(HeaderFacts::number(judged.header.null)),
      track_(HeaderFacts::number(judged.header.step)),
      againstCurves_(judged.findings.most()),
      againstFirst_(judged.findings.most()) {
    std::string_view unit;
    if (judged.header.step.present()) stepText_ = numberIn(judged.header.step, unit);
    againstCurves_.judgeBy(findings().version());
    againstFirst_.judgeBy(findings().version());
}

bool DataJudge::isNamesLine(std::string_view line) const {
    DataTokens tokens(line, kinds_);
    std::size_t count = 0, known = 0;
    for (DataToken token; tokens.next(token); ++count) {
        if (token.plainNumber()) return false;
        const std::string_view name = token.text.substr(0, token.text.find('.'));
        known += count < judged_.header.curves.size() && sameText(judged_.header.curves[count].mnem, name) ? 1U : 0U;
    }
    return known * 2 > count;
}

void DataJudge::line(std::string_view line, std::size_t number) {
    const std::size_t lead = line.find_first_not_of(" \t");
    if (lead == npos) {
        if (blanks_++ == 0) blankLine_ = number;
        return;
    }
    if (isCommentLine(line, findings().version()))
        return findings().add(Rule::S011, {number, lead + 1}, line, {}, true);
    if (lines_ != 0)
        for (; blanks_ > 0; --blanks_) findings().tally(Rule::S012, {blankLine_, 1}, "", {}, true);
    blanks_ = 0;
    if (lines_ == 0 && isNamesLine(line)) {
        const bool bare = judged_.header.sections.back().title.find_first_of(" \t") == npos;
        return findings().add(Rule::D004, {number, lead + 1}, line, "names of columns on a line of their own", bare);
    }
    ++lines_;
    judgeLength(line, number);
    if (judgeWrapped_ && (have_ == 0 || beginsStep(line))) {
        if (have_ != 0)
            findings().add(Rule::D003, {stepLine_, 1}, stepText0_,
                           findings().keeps(Rule::D003)
                               ? "a step of " + counted(static_cast<std::int64_t>(have_), "value") + ", ~Curve has " +
                                     std::to_string(columns_) + " lines"
                               : "");
        have_ = 0;
        lineOfStep_ = 0;
        current_.clear();
        stepLine_ = number;
        stepText0_ = line;
    }
    const Cut made = cut(line, number);
    if (judgeWrapped_)
        endWrappedLine(made, line, number);
    else
        endPlainRow(made, line, number);
}

/// In the midst of a step: a value alone on its line is the next index where the lines of the first step say that this
/// one is over, or where it follows the index before.
bool DataJudge::beginsStep(std::string_view line) const {
    if (pattern_.empty() || pattern_.front() != 1 || countTokens(line, data_.comma) != 1) return false;
    if (lineOfStep_ >= pattern_.size()) return true;
    const auto value = decimalOf(trimBreaks(line));
    return pattern_[lineOfStep_] != 1 && value && track_.expects(*value);
}

void DataJudge::judgeLength(std::string_view line, std::size_t number) {
    if (judgeWrapped_ && line.size() > longestWrapped)
        findings().add(Rule::D012, {number, longestWrapped + 1}, line, {}, true);
    if (!judgeWrapped_ && line.size() > longestPlain)
        findings().tally(Rule::D013, {number, longestPlain + 1}, line, {},
                         findings().version() == StandardVersion::V12);
}

DataJudge::Cut DataJudge::cut(std::string_view line, std::size_t number) {
    Cut made;
    DataTokens tokens(line, kinds_);
    DataToken token;
    while (tokens.next(token)) {
        const std::size_t column = have_ + made.count++;
        if (column == 0) judgeIndex(token, line, number);
        const bool plain = token.plainNumber();
        if (!plain) judgeOdd(token, line, number, made);
        if (!decimalsVary_) judgeLayout(token, plain, column + made.pieces, line, number);
    }
    if ((tokens.gaps() & cell::tab) != 0) findings().tally(Rule::D007, {number, line.find('\t') + 1}, line, {}, true);
    if (data_.comma) judgeEmptyCells(line, number);
    return made;
}

void DataJudge::judgeOdd(const DataToken& token, std::string_view line, std::size_t number, Cut& cut) {
    const TextPlace place{number, token.begin + 1};
    if ((token.mask & cell::bad) != 0) {
        const bool beyond = std::any_of(token.text.begin(), token.text.end(),
                                        [](char c) { return static_cast<unsigned char>(c) > 126; });
        findings().add(beyond ? Rule::F002 : Rule::F004, place, token.text, {}, !beyond);
        if (!beyond) return;
    }
    switch (oddCellOf(token.text)) {
        case OddCell::Text:
            return findings().add(Rule::D004, place, token.text);
        case OddCell::NotANumber:
            return findings().add(Rule::D004, place, token.text, {}, null_.has_value());
        case OddCell::Exponent:
            return findings().add(Rule::D005, place, token.text, {}, true);
        case OddCell::CommaNumber:
            return findings().tally(Rule::D006, place, line, "a comma inside a number");
        case OddCell::Run:
            cut.pieces += piecesOfRun(token.text) - 1;
            return findings().add(Rule::D008, place, token.text, {}, true);
        case OddCell::Dots:
            return findings().add(Rule::D008, place, token.text);
    }
}

void DataJudge::judgeEmptyCells(std::string_view line, std::size_t number) {
    findings().tally(Rule::D006, {number, line.find(',') + 1}, line, "commas between columns", true);
    bool empty = true;
    for (std::size_t place = 0; place < line.size(); ++place) {
        if (line[place] == ',') {
            if (empty) return findings().add(Rule::D004, {number, place + 1}, line, "nothing between two commas");
            empty = true;
        } else if (line[place] != ' ' && line[place] != '\t') {
            empty = false;
        }
    }
}

void DataJudge::judgeLayout(const DataToken& token, bool plain, std::size_t column, std::string_view line,
                            std::size_t number) {
    // A column without a number in the first row has no layout.
    const Column seen = plain ? Column{token.end(), token.decimals()} : Column{};
    if (data_.rows == 0) {
        if (column >= mostColumns) return;
        layout_.resize(std::max(layout_.size(), column + 1));
        layout_[column] = seen;
        return;
    }
    if (!plain || column >= layout_.size() || layout_[column].end == 0) return;
    const Column& first = layout_[column];
    if (seen.decimals != first.decimals && null_) {
        const auto value = decimalOf(token.text);
        if (value && sameValue(*value, *null_)) return;
    }
    if (seen.end == first.end && seen.decimals == first.decimals) return;
    decimalsVary_ = decimalsVary_ || seen.decimals != first.decimals;
    if (!layoutTold_) layoutPlace_ = {number, token.begin + 1}, layoutText_ = line;
    layoutTold_ = true;
}

void DataJudge::judgeIndex(const DataToken& token, std::string_view line, std::size_t number) {
    if (data_.firstLine == 0) {
        data_.firstIndex = token.text;
        data_.firstLine = number;
        firstLine_ = line;
    }
    data_.lastIndex = token.text;
    data_.lastLine = number;
    const auto value = token.plainNumber() ? decimalOf(token.text) : std::nullopt;
    if (!value) return track_.interrupt();
    if (null_ && value->units != 0 && sameValue(*value, *null_)) {
        track_.interrupt();
        return findings().add(Rule::D010, {number, token.begin + 1}, token.text, "the index is NULL");
    }
    judgeSpacing(track_.take(*value), token, line, number);
}

void DataJudge::judgeSpacing(IndexTrack::Kind kind, const DataToken& token, std::string_view line, std::size_t number) {
    const TextPlace place{number, token.begin + 1};
    const auto first = [&](Rule rule) { return !findings().has(rule); };
    switch (kind) {
        case IndexTrack::Kind::Same:
            return findings().add(Rule::D010, place, token.text, "the index is that of the row before");
        case IndexTrack::Kind::Back:
            return findings().add(Rule::D009, place, token.text);
        case IndexTrack::Kind::Other:
            return findings().tally(Rule::W009, place, line,
                                    first(Rule::W009) ? "STEP is " + std::string(stepText_) + ", the spacing here is " +
                                                            textOf(track_.lastSpacing())
                                                      : std::string(),
                                    true);
        case IndexTrack::Kind::Rounded:
            if (rounded_++ == 0) {
                roundedLine_ = number;
                roundedText_ = line;
            }
            return;
        case IndexTrack::Kind::First:
        case IndexTrack::Kind::Regular:
        case IndexTrack::Kind::Unknown:
            return;
    }
}

void DataJudge::endRow(std::size_t number) {
    ++data_.rows;
    data_.lastLine = number;
}

void DataJudge::endPlainRow(const Cut& cut, std::string_view line, std::size_t number) {
    const bool fits = cut.count == columns_ || (cut.pieces != 0 && cut.count + cut.pieces == columns_);
    if (data_.rows == 0) firstCount_ = cut.count;
    fitting_ += fits ? 1U : 0U;
    const auto what = [&](const Findings& findings, std::size_t other, const char* whose) {
        return findings.keeps(Rule::D003) ? counted(static_cast<std::int64_t>(cut.count), "column") + ", " + whose +
                                                " has " + std::to_string(other)
                                          : std::string();
    };
    if (columns_ != 0 && !fits)
        againstCurves_.add(Rule::D003, {number, 1}, line, what(againstCurves_, columns_, "~Curve"));
    if (cut.count != firstCount_)
        againstFirst_.add(Rule::D003, {number, 1}, line, what(againstFirst_, firstCount_, "the first row"));
    endRow(number);
}

void DataJudge::endWrappedLine(const Cut& cut, std::string_view line, std::size_t number) {
    if (have_ == 0 && cut.count > 1) findings().add(Rule::D011, {number, 1}, line, {}, true);
    have_ += cut.count + (have_ + cut.count < columns_ ? cut.pieces : 0);
    ++lineOfStep_;
    if (pattern_.empty()) current_.push_back(cut.count);
    if (columns_ == 0 || have_ < columns_) return;
    if (have_ > columns_)
        findings().add(Rule::D003, {number, 1}, line,
                       "a step of " + counted(static_cast<std::int64_t>(have_), "value") + ", ~Curve has " +
                           std::to_string(columns_) + " lines");
    else if (pattern_.empty())
        pattern_ = current_;
    fitting_ += have_ == columns_ ? 1U : 0U;
    have_ = 0;
    endRow(number);
}

void DataJudge::finish() {
    if (have_ != 0 && columns_ != 0) {
        findings().add(Rule::D003, {stepLine_, 1}, stepText0_,
                       "a step of " + counted(static_cast<std::int64_t>(have_), "value") + ", ~Curve has " +
                           std::to_string(columns_) + " lines");
        endRow(data_.lastLine);
    }
    const bool none = data_.rows == 0;
    if (none) {
        const SeenSection* const data = judged_.header.section('A');
        findings().add(Rule::D001, {data == nullptr ? 1 : data->line, 1}, data == nullptr ? "" : data->title);
    } else if (!judgeWrapped_ && columns_ != 0 && fitting_ == 0) {
        findings().add(Rule::D002, {data_.firstLine, 1}, firstLine_,
                       "rows have " + counted(static_cast<std::int64_t>(firstCount_), "column") + ", ~Curve has " +
                           std::to_string(columns_));
        findings().append(againstFirst_);
    } else {
        findings().append(columns_ == 0 ? againstFirst_ : againstCurves_);
    }
    const bool fits = !findings().has(Rule::D002) && !findings().has(Rule::D003);
    const bool weak = findings().version() == StandardVersion::V12 && !judgeWrapped_;
    if (layoutTold_)
        findings().add(Rule::D014, layoutPlace_, layoutText_, {}, columns_ != 0 && fits && !decimalsVary_,
                       weak ? Severity::Hint : Severity::None);
    if (rounded_ != 0 && !findings().has(Rule::W009))
        findings().add(Rule::W010, {roundedLine_, 1}, roundedText_,
                       "STEP is " + std::string(stepText_) + " only within the last digit of the depths (" +
                           std::to_string(rounded_) + ")");
    data_.direction = track_.direction();
    data_.constant = track_.constant();
    data_.spacingKnown = track_.hasSpacing();
    data_.spacing = track_.spacing();
}

}  // namespace welvane
