#pragma once

#include <cstddef>
#include <string_view>

/// The one place that cuts file text into lines: CR LF or a lone CR ends a line, a lone LF does not.
namespace welvane {

/// Hands out the lines of `bytes` as views; copies nothing.
class LineReader {
  public:
    explicit LineReader(std::string_view bytes, std::size_t position = 0) : bytes_(bytes), position_(position) {}

    /// The next line without its end; false at the end of the text. A line end at the very end makes no further line.
    bool next(std::string_view& line);

    /// 0-based place of the first byte of the line that next() would return.
    std::size_t position() const { return position_; }
    void seek(std::size_t position) { position_ = position; }
    bool atEnd() const { return position_ >= bytes_.size(); }
    std::string_view bytes() const { return bytes_; }

  private:
    std::string_view bytes_;
    std::size_t position_;
};

/// 1-based number of the line that holds the byte at `position` (0-based). Reads all before it: for messages only.
std::size_t lineNumberAt(std::string_view bytes, std::size_t position);

}  // namespace welvane
