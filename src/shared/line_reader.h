#pragma once

#include <cstddef>
#include <string_view>

/// The one place that cuts file text into lines.
namespace welvane {

/// What ends a line of a file's text.
enum class LineRule {
    CarriageReturn,  ///< CR LF or a lone CR; a lone LF does not
    Any              ///< CR LF, LF or CR, in any mixture
};

/// How many lines ended in which way. Only LineRule::Any counts; a last line without an end counts as none.
struct LineEndCounts {
    std::size_t crLf = 0, lf = 0, cr = 0;
    std::size_t firstOther = 0;  ///< number (from 1) of the first line that ended otherwise than the first; 0 none
    std::size_t lines() const { return crLf + lf + cr; }
    bool mixed() const { return firstOther != 0; }
};

/// Hands out the lines of `bytes` as views; copies nothing.
class LineReader {
  public:
    explicit LineReader(std::string_view bytes, std::size_t position = 0, LineRule rule = LineRule::CarriageReturn)
        : bytes_(bytes), position_(position), noFeedBefore_(position), rule_(rule) {}

    /// The next line without its end; false at the end of the text. A line end at the very end makes no further line.
    bool next(std::string_view& line);

    /// 0-based place of the first byte of the line that next() would return.
    std::size_t position() const { return position_; }
    void seek(std::size_t position) { position_ = noFeedBefore_ = position; }
    /// Goes on where another reader of the same bytes came to, whose lines count as if they were handed out here.
    /// False, with nothing changed, where the lines alone tell which of them is the first that ends otherwise.
    bool goOnBehind(const LineReader& other);
    bool atEnd() const { return position_ >= bytes_.size(); }
    std::string_view bytes() const { return bytes_; }
    /// Of the lines handed out so far.
    const LineEndCounts& ends() const { return ends_; }

  private:
    bool nextOfAny(std::string_view& line);
    std::size_t findAnyEnd();
    void countEnd(std::size_t& count);

    std::string_view bytes_;
    std::size_t position_;
    std::size_t noFeedBefore_;  ///< no LF stands between the position and here
    LineRule rule_;
    LineEndCounts ends_;
};

/// 1-based number of the line that holds the byte at `position` (0-based). Reads all before it: for messages only.
std::size_t lineNumberAt(std::string_view bytes, std::size_t position, LineRule rule = LineRule::CarriageReturn);

}  // namespace welvane
