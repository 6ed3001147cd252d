#include "shared/line_reader.h"

#include <cstring>

namespace welvane {

bool LineReader::next(std::string_view& line) {
    if (position_ >= bytes_.size()) return false;
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

std::size_t lineNumberAt(std::string_view bytes, std::size_t position) {
    LineReader reader(bytes);
    std::size_t number = 0;
    for (std::string_view line; reader.position() <= position && reader.next(line);) ++number;
    return number == 0 ? 1 : number;
}

}  // namespace welvane
