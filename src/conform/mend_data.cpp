#include "conform/mend_data.h"

#include <algorithm>
#include <charconv>

#include "conform/mend_header.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t longestLine = 78;
constexpr int mostZeros = 100;

bool mendable(const std::vector<Finding>& found, Rule rule) {
    return std::any_of(found.begin(), found.end(),
                       [rule](const Finding& one) { return one.rule == rule && one.mendable; });
}

}  // namespace

std::string writtenOut(std::string_view number) {
    const std::size_t letter = number.find_first_of("eE");
    if (letter == npos) return std::string(number);
    std::string_view power = number.substr(letter + 1), mantissa = number.substr(0, letter);
    if (!power.empty() && power.front() == '+') power.remove_prefix(1);
    int exponent = 0;
    if (std::from_chars(power.data(), power.data() + power.size(), exponent).ec != std::errc()) return {};
    if (exponent > mostZeros || exponent < -mostZeros) return {};
    const bool signedOne = !mantissa.empty() && (mantissa.front() == '-' || mantissa.front() == '+');
    const std::string sign = signedOne && mantissa.front() == '-' ? "-" : "";
    if (signedOne) mantissa.remove_prefix(1);
    const std::size_t dot = std::min(mantissa.find('.'), mantissa.size());
    std::string digits = withoutChar(mantissa, '.');
    auto point = static_cast<std::ptrdiff_t>(dot) + exponent;
    if (point <= 0) digits.insert(0, static_cast<std::size_t>(1 - point), '0'), point = 1;
    const auto place = static_cast<std::size_t>(point);
    if (place > digits.size()) digits.append(place - digits.size(), '0');
    std::string text = digits.substr(0, place);
    const std::size_t first = std::min(text.find_first_not_of('0'), text.size() - 1);
    text.erase(0, first);
    return sign + text + (place < digits.size() ? "." + digits.substr(place) : "");
}

DataMend::DataMend(const Judgement& judged)
    : judged_(judged),
      columns_(judged.header.curveCount),
      comma_(judged.data.comma && !judged.findings.has(Rule::D002) && !judged.findings.has(Rule::D003)),
      kinds_(byteKinds(comma_)) {
    const std::vector<Finding> found = judged.findings.sorted();
    std::string_view unit;
    if (HeaderFacts::number(judged.header.null)) null_ = numberIn(judged.header.null, unit);
    // Rows that do not fit the columns cannot be laid out by them.
    const bool fits = columns_ > 0 && !judged.findings.has(Rule::D002) && !judged.findings.has(Rule::D003);
    const bool wrapped = judged.data.layout == RowLayout::Wrapped;
    const bool tooLong = mendable(found, Rule::D013);
    wrap_ = fits && (tooLong || (wrapped && (mendable(found, Rule::D011) || mendable(found, Rule::D012) ||
                                             mendable(found, Rule::D014))));
    justify_ = fits && !wrap_ && !wrapped && mendable(found, Rule::D014);
    width_.assign(columns_, 1);
}

void DataMend::mendCell(std::string_view text, std::vector<std::string>& cells) const {
    std::string plain(text);
    plainBytes(plain);
    switch (oddCellOf(plain)) {
        case OddCell::NotANumber:
            cells.push_back(null_.empty() ? plain : null_);
            return;
        case OddCell::Exponent: {
            const std::string digits = writtenOut(plain);
            cells.push_back(digits.empty() ? plain : digits);
            return;
        }
        case OddCell::Run:
            while (!plain.empty()) {
                const std::size_t minus = std::min(plain.find('-', 1), plain.size());
                cells.push_back(plain.substr(0, minus));
                plain.erase(0, minus);
            }
            return;
        case OddCell::Text:
        case OddCell::CommaNumber:
        case OddCell::Dots:
            cells.push_back(plain);
            return;
    }
}

/// The cells of a line behind those in hand. Where parting numbers that run together does not make the row fit, all
/// stay as they are, and false is told.
bool DataMend::cut(std::string_view line) {
    const std::size_t before = cells_.size();
    DataTokens tokens(line, kinds_);
    for (DataToken token; tokens.next(token);) {
        if (token.plainNumber())
            cells_.emplace_back(token.text);
        else
            mendCell(token.text, cells_);
    }
    if (columns_ == 0 || cells_.size() <= columns_) return true;
    cells_.resize(before);
    DataTokens again(line, kinds_);
    for (DataToken token; again.next(token);) cells_.emplace_back(token.text);
    return false;
}

void DataMend::measure(std::string_view line) {
    cells_.clear();
    cut(line);
    const bool wrapped = judged_.data.layout == RowLayout::Wrapped;
    for (const std::string& cell : cells_) {
        if (column_ < width_.size()) width_[column_] = std::max(width_[column_], cell.size());
        ++column_;
    }
    if (!wrapped || column_ >= columns_) column_ = 0;
    cells_.clear();
}

void DataMend::write(std::string_view line, const TextSink& sink) {
    if (!needsMeasure()) return writeSpaced(line, sink);
    cut(line);
    const bool steps = judged_.data.layout == RowLayout::Wrapped;
    if (steps && cells_.size() < columns_) return;
    if (wrap_)
        writeWrapped(sink);
    else
        writeRow(sink);
}

void DataMend::finish(const TextSink& sink) {
    if (!cells_.empty()) writeWrapped(sink);
}

/// The line as it stands, each cell that changes ending where it ended before, as far as there is room.
void DataMend::writeSpaced(std::string_view line, const TextSink& sink) {
    out_.clear();
    cells_.clear();
    const bool mends = cut(line);
    DataTokens tokens(line, kinds_);
    for (DataToken token; tokens.next(token);) {
        cells_.clear();
        if (mends && !token.plainNumber())
            mendCell(token.text, cells_);
        else
            cells_.emplace_back(token.text);
        const std::string text = join(cells_, " ");
        const std::size_t begin = std::max(token.end(), text.size()) - text.size();
        out_.append(std::max<std::size_t>(begin > out_.size() ? begin - out_.size() : 0, out_.empty() ? 0 : 1), ' ');
        out_ += text;
    }
    cells_.clear();
    sink(out_.append("\r\n"));
}

void DataMend::writeRow(const TextSink& sink) {
    out_.clear();
    for (std::size_t column = 0; column < cells_.size(); ++column) {
        const std::size_t width = column < width_.size() ? width_[column] : 0;
        if (column != 0) out_ += ' ';
        out_.append(width > cells_[column].size() ? width - cells_[column].size() : 0, ' ').append(cells_[column]);
    }
    cells_.clear();
    sink(out_.append("\r\n"));
}

/// The index alone, then lines of as many columns as fit.
void DataMend::writeWrapped(const TextSink& sink) {
    out_.clear();
    std::size_t begin = 0;
    for (std::size_t column = 0; column < cells_.size(); ++column) {
        const std::size_t width = std::max(column < width_.size() ? width_[column] : 0, cells_[column].size());
        const bool breaks = column == 1 || out_.size() - begin + 1 + width > longestLine;
        if (column != 0 && breaks) {
            out_ += "\r\n";
            begin = out_.size();
        } else if (column != 0) {
            out_ += ' ';
        }
        out_.append(width - cells_[column].size(), ' ').append(cells_[column]);
    }
    cells_.clear();
    sink(out_.append("\r\n"));
}

}  // namespace welvane
