#pragma once

#include <optional>

#include "models/byte_pages.h"
#include "models/table_model.h"

namespace welvane {

/// The bytes of a page as a block: twenty in a row, the offset of its first byte in front. Looked at, never edited.
class ByteGrid : public TableModel {
  public:
    static constexpr int bytesInRow = 20;
    explicit ByteGrid(const ByteViewState& view) : view_(view) { refresh(); }

    /// taOpt: the codes instead of the characters.
    void showCodes(bool codes) { codes_ = codes; }
    /// The view shows another page.
    void refresh() { asd_ = fillAsd(view_); }
    /// The byte of a cell, counted from the begin of the page; nothing beside the page.
    std::optional<std::size_t> byteAt(std::int64_t row, int column) const;
    /// What pointing at a cell tells: its offset, and what the byte is.
    std::string hint(std::int64_t row, int column) const;

    std::int64_t rows() const override;
    int columns() const override { return bytesInRow + 1; }
    std::string text(std::int64_t row, int column) const override;
    std::uint32_t backColour(std::int64_t row, int column) const override;

  private:
    const ByteViewState& view_;
    Table asd_;
    bool codes_ = false;
};

}  // namespace welvane
