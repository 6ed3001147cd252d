#include "convert/table_text.h"

#include <algorithm>
#include <cstring>

#include "shared/text.h"

namespace welvane {

namespace {

/// Bytes, and line ends in them, looked at to tell how lines end.
constexpr std::size_t lineEndSample = std::size_t{1} << 20;
constexpr int lineEndsCounted = 16;

bool isSpace(char c) {
    return (c == ' ') | (c == '\t');
}

/// A lone CR where most of the first lines end in one: a stray LF behind them does not make one line of them all.
char lineEndOf(std::string_view bytes) {
    const std::string_view sample = bytes.substr(0, lineEndSample);
    int lone = 0, feeds = 0;
    std::size_t place = 0;
    while (lone + feeds < lineEndsCounted && (place = sample.find_first_of("\r\n", place)) != npos) {
        const bool pair = sample[place] == '\r' && sample.substr(place + 1, 1) == "\n";
        ++(pair || sample[place] == '\n' ? feeds : lone);
        place += pair ? 2 : 1;
    }
    return lone > feeds ? '\r' : '\n';
}

/// Where lines end in CR, an LF at an edge of one belongs to its end.
std::string_view withoutFeed(std::string_view line, char end) {
    if (end != '\r') return line;
    if (line.starts_with('\n')) line.remove_prefix(1);
    if (line.ends_with('\n')) line.remove_suffix(1);
    return line;
}

}  // namespace

std::string_view trimSpace(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

bool isText(std::string_view bytes) {
    constexpr std::size_t sample = 4096;
    return bytes.substr(0, sample).find('\0') == npos;
}

TableLines::TableLines(std::string_view bytes, std::size_t position)
    : bytes_(bytes), position_(position), end_(lineEndOf(bytes)) {}

std::string_view TableLines::lineAt(std::size_t position) const {
    const char* const start = bytes_.data() + position;
    const std::size_t left = bytes_.size() - position;
    const void* const end = left == 0 ? nullptr : std::memchr(start, end_, left);
    std::size_t length = end == nullptr ? left : static_cast<std::size_t>(static_cast<const char*>(end) - start);
    if (length > 0 && end_ == '\n' && start[length - 1] == '\r') --length;
    return withoutFeed({start, length}, end_);
}

bool TableLines::next(std::string_view& line) {
    if (position_ >= bytes_.size()) return false;
    const std::size_t end = bytes_.find(end_, position_);
    const std::size_t stop = end == npos ? bytes_.size() : end;
    line = bytes_.substr(position_, stop - position_);
    if (!line.empty() && end_ == '\n' && line.back() == '\r') line.remove_suffix(1);
    line = withoutFeed(line, end_);
    position_ = end == npos ? bytes_.size() : end + 1;
    return true;
}

std::size_t TableLines::numberAt(std::size_t position) const {
    return static_cast<std::size_t>(
               std::count(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(position), end_)) +
           1;
}

FieldCursor::FieldCursor(std::string_view line, Delimiter delimiter)
    : place_(line.data()),
      end_(line.data() + line.size()),
      delimiter_(static_cast<char>(delimiter)),
      more_(!trimSpace(line).empty()) {}

bool FieldCursor::nextWord(std::string_view& field) {
    while (place_ < end_ && isSpace(*place_)) ++place_;
    const char* const start = place_;
    while (place_ < end_ && !isSpace(*place_)) ++place_;
    field = {start, static_cast<std::size_t>(place_ - start)};
    return !field.empty();
}

bool FieldCursor::next(std::string_view& field) {
    if (!more_) return false;
    if (delimiter_ == static_cast<char>(Delimiter::Blanks)) return nextWord(field);
    while (place_ < end_ && isSpace(*place_) && *place_ != delimiter_) ++place_;
    const char* start = place_;
    const char* stop = nullptr;
    if (start < end_ && *start == '"') {
        // A doubled quote stands for a quote inside the field.
        for (++start; place_ < end_;) {
            const void* const quote = std::memchr(place_ + 1, '"', static_cast<std::size_t>(end_ - place_ - 1));
            if (quote == nullptr) break;
            place_ = static_cast<const char*>(quote);
            if (place_ + 1 == end_ || place_[1] != '"') {
                stop = place_;
                break;
            }
            ++place_;
        }
        if (stop == nullptr) place_ = --start;  // never closed: a field like any other
    }
    const void* const found =
        place_ == end_ ? nullptr : std::memchr(place_, delimiter_, static_cast<std::size_t>(end_ - place_));
    const char* const close = found == nullptr ? end_ : static_cast<const char*>(found);
    field = trimSpace({start, static_cast<std::size_t>((stop == nullptr ? close : stop) - start)});
    more_ = found != nullptr;
    place_ = more_ ? close + 1 : end_;
    return true;
}

std::size_t countFields(std::string_view line, Delimiter delimiter) {
    FieldCursor cursor(line, delimiter);
    std::size_t count = 0;
    for (std::string_view field; cursor.next(field);) ++count;
    return count;
}

void splitFields(std::string_view line, Delimiter delimiter, std::vector<std::string_view>& fields) {
    fields.clear();
    FieldCursor cursor(line, delimiter);
    for (std::string_view field; cursor.next(field);) fields.push_back(field);
}

bool isDecimalComma(std::string_view cell) {
    if (!cell.empty() && (cell.front() == '-' || cell.front() == '+')) cell.remove_prefix(1);
    const std::size_t comma = cell.find(',');
    if (comma == npos || comma == 0 || comma + 1 == cell.size()) return false;
    return cell.find_first_not_of("0123456789", 0) == comma && isDigit(cell[comma + 1]) &&
           cell.find_first_not_of("0123456789eE+-", comma + 1) == npos;
}

std::string withDecimalPoints(std::string_view text) {
    std::string points(text);
    for (std::size_t place = 1; place + 1 < points.size(); ++place)
        if (points[place] == ',' && isDigit(points[place - 1]) && isDigit(points[place + 1])) points[place] = '.';
    return points;
}

bool isNoNumberText(std::string_view cell) {
    if (!cell.empty() && (cell.front() == '-' || cell.front() == '+')) cell.remove_prefix(1);
    return cell.size() == 3 && (sameText(cell, "inf") || sameText(cell, "NaN"));
}

}  // namespace welvane
