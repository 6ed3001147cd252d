#include "shared/line_reader.h"

#include <algorithm>
#include <cstring>

namespace welvane {

namespace {

/// What is searched at a time for either end, so that a file without one of them is not searched whole for each line.
constexpr std::size_t searchedAtOnce = 4096;

/// Place of the first `wanted` in [from, to), or `to`.
std::size_t findByte(std::string_view bytes, char wanted, std::size_t from, std::size_t to) {
    if (from >= to) return to;
    const void* const found = std::memchr(bytes.data() + from, wanted, to - from);
    return found == nullptr ? to : static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data());
}

}  // namespace

bool LineReader::next(std::string_view& line) {
    if (position_ >= bytes_.size()) return false;
    if (rule_ == LineRule::Any) return nextOfAny(line);
    const char* const start = bytes_.data() + position_;
    const std::size_t left = bytes_.size() - position_;
    const auto* const end = static_cast<const char*>(std::memchr(start, '\r', left));
    if (end == nullptr) {
        line = {start, left};
        position_ = bytes_.size();
        return true;
    }
    const std::size_t length = static_cast<std::size_t>(end - start);
    line = {start, length};
    position_ += length + (length + 1 < left && end[1] == '\n' ? 2 : 1);
    return true;
}

bool LineReader::nextOfAny(std::string_view& line) {
    const std::size_t end = findAnyEnd();
    line = bytes_.substr(position_, end - position_);
    position_ = end;
    if (end == bytes_.size()) return true;
    const bool returns = bytes_[end] == '\r';
    const bool both = returns && end + 1 < bytes_.size() && bytes_[end + 1] == '\n';
    countEnd(both ? ends_.crLf : returns ? ends_.cr : ends_.lf);
    position_ += both ? 2 : 1;
    return true;
}

/// Place of the next LF or CR, or the end of the text. A byte is looked at once for LF and once for CR, but for the
/// rest of a block that holds CR alone.
std::size_t LineReader::findAnyEnd() {
    noFeedBefore_ = std::max(noFeedBefore_, position_);
    for (std::size_t from = position_; from < bytes_.size();) {
        const std::size_t block = std::min(bytes_.size(), from + searchedAtOnce);
        if (noFeedBefore_ < block && bytes_[noFeedBefore_] != '\n')
            noFeedBefore_ = findByte(bytes_, '\n', noFeedBefore_, block);
        const std::size_t feed = std::min(noFeedBefore_, block);
        const std::size_t found = findByte(bytes_, '\r', from, feed);
        if (found < block) return found;
        from = block;
    }
    return bytes_.size();
}

void LineReader::countEnd(std::size_t& count) {
    if (++count == 1 && ends_.lines() > 1 && ends_.firstOther == 0) ends_.firstOther = ends_.lines();
}

bool LineReader::goOnBehind(const LineReader& other) {
    const LineEndCounts& more = other.ends_;
    if (!ends_.mixed() && more.lines() > 0) {
        if (more.mixed()) return false;
        const bool same =
            (ends_.crLf == 0 || more.crLf > 0) && (ends_.lf == 0 || more.lf > 0) && (ends_.cr == 0 || more.cr > 0);
        if (!same) return false;
    }
    ends_.crLf += more.crLf;
    ends_.lf += more.lf;
    ends_.cr += more.cr;
    seek(other.position_);
    return true;
}

std::size_t lineNumberAt(std::string_view bytes, std::size_t position, LineRule rule) {
    LineReader reader(bytes, 0, rule);
    std::size_t number = 0;
    for (std::string_view line; reader.position() <= position && reader.next(line);) ++number;
    return number == 0 ? 1 : number;
}

}  // namespace welvane
