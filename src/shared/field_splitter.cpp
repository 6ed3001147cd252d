#include "shared/field_splitter.h"

namespace welvane {

void FieldSplitter::setText(std::string_view text) {
    fields_.clear();
    if (text.empty()) return;
    const bool runsCountAsOne = separators_.find(' ') != std::string::npos;
    std::size_t done = 0;
    while (true) {
        const std::size_t place = text.find_first_of(separators_, done);
        const std::string_view piece = text.substr(done, place == std::string_view::npos ? place : place - done);
        if (!runsCountAsOne || !piece.empty()) fields_.push_back(piece);
        if (place == std::string_view::npos) return;
        done = place + 1;
    }
}

std::string_view FieldSplitter::field(std::size_t number) const {
    return number >= 1 && number <= fields_.size() ? fields_[number - 1] : std::string_view();
}

}  // namespace welvane
