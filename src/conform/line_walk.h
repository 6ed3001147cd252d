#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace welvane {

/// The byte order mark of UTF-8, and the byte that old systems put behind a text.
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
inline constexpr char endOfText = 26;

/// How a line ends; Odd is CR CR LF, which some transfers leave.
enum class LineEnd : std::uint8_t { CrLf, Lf, Cr, Odd, None };

/// Walks a text line by line, whatever ends its lines, and knows how each one does. Looks at no byte more than twice.
class LineWalk {
  public:
    explicit LineWalk(std::string_view bytes) : bytes_(bytes) { findLf(), findCr(); }

    /// The next line without its end; false behind the last one. A text that ends in a line end has no empty line
    /// behind it.
    bool next() {
        if (place_ >= bytes_.size()) return false;
        begin_ = place_;
        ++number_;
        if (lf_ <= cr_) {
            text_ = bytes_.substr(begin_, lf_ - begin_);
            end_ = lf_ == bytes_.size() ? LineEnd::None : LineEnd::Lf;
            place_ = lf_ + 1;
        } else {
            text_ = bytes_.substr(begin_, cr_ - begin_);
            endAtCr();
        }
        if (lf_ < place_) findLf();
        if (cr_ < place_) findCr();
        return true;
    }

    std::string_view text() const { return text_; }
    std::size_t number() const { return number_; }  ///< from 1
    std::size_t begin() const { return begin_; }    ///< place of its first byte
    std::size_t behind() const { return place_; }   ///< place of the next line's first byte
    LineEnd end() const { return end_; }

  private:
    void endAtCr() {
        if (lf_ == bytes_.size()) {
            end_ = LineEnd::Cr;
            place_ = cr_ + 1;
        } else if (lf_ == cr_ + 1) {
            end_ = LineEnd::CrLf;
            place_ = lf_ + 1;
        } else if (lf_ == cr_ + 2 && bytes_[cr_ + 1] == '\r') {
            end_ = LineEnd::Odd;
            place_ = lf_ + 1;
        } else {
            end_ = LineEnd::Cr;
            place_ = cr_ + 1;
        }
    }
    std::size_t find(char c) const {
        if (place_ >= bytes_.size()) return bytes_.size();
        const void* const found = std::memchr(bytes_.data() + place_, c, bytes_.size() - place_);
        return found == nullptr ? bytes_.size()
                                : static_cast<std::size_t>(static_cast<const char*>(found) - bytes_.data());
    }
    void findLf() { lf_ = find('\n'); }
    void findCr() { cr_ = find('\r'); }

    std::string_view bytes_, text_;
    std::size_t place_ = 0, begin_ = 0, number_ = 0, lf_ = 0, cr_ = 0;
    LineEnd end_ = LineEnd::None;
};

}  // namespace welvane
