#include "models/byte_grid.h"

namespace welvane {

std::optional<std::size_t> ByteGrid::byteAt(std::int64_t row, int column) const {
    if (row < headRows() || column < headColumns() || column >= columns()) return std::nullopt;
    const std::int64_t place = (row - headRows()) * bytesInRow + column - headColumns();
    if (place >= static_cast<std::int64_t>(view_.bytes.size())) return std::nullopt;
    return static_cast<std::size_t>(place);
}

std::string ByteGrid::hint(std::int64_t row, int column) const {
    const auto place = byteAt(row, column);
    if (!place) return {};
    return "Byte " + std::to_string(view_.pageStart + *place) + ": " +
           cellHint(static_cast<unsigned char>(view_.bytes[*place]));
}

std::int64_t ByteGrid::rows() const {
    const auto bytes = static_cast<std::int64_t>(view_.bytes.size());
    return headRows() + (bytes + bytesInRow - 1) / bytesInRow;
}

std::string ByteGrid::text(std::int64_t row, int column) const {
    if (row < headRows()) return column < headColumns() ? std::string() : std::to_string(column - headColumns());
    if (column < headColumns())
        return std::to_string(view_.pageStart + static_cast<std::uint64_t>((row - headRows()) * bytesInRow));
    const auto place = byteAt(row, column);
    if (!place) return {};
    return asd_.text(codes_ ? AsdRow::Code : AsdRow::Text, static_cast<int>(*place));
}

std::uint32_t ByteGrid::backColour(std::int64_t row, int column) const {
    const auto place = byteAt(row, column);
    return place ? asd_.backColour(AsdRow::Code, static_cast<int>(*place)) : 0;
}

}  // namespace welvane
