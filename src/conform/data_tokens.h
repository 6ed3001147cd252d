#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// Data lines cut at blanks and tabs, with what each cell is made of.
namespace welvane {

/// Kinds of bytes, as bits: a cell's mask tells all that it holds.
namespace cell {
inline constexpr std::uint8_t digit = 1, dot = 2, sign = 4, blank = 8, tab = 16, comma = 32, other = 64, bad = 128;
}

/// The kind of each byte; with `commaParts` a comma parts cells as a blank does.
const std::array<std::uint8_t, 256>& byteKinds(bool commaParts);

struct DataToken {
    std::string_view text;
    std::size_t begin = 0;  ///< its place in the line
    std::uint8_t mask = 0;
    std::uint32_t dots = 0;
    std::size_t lastDot = 0;

    std::size_t end() const { return begin + text.size(); }
    std::size_t decimals() const { return dots == 0 ? 0 : end() - lastDot - 1; }
    /// Sign, digits and at most one dot.
    bool plainNumber() const {
        return (mask & ~(cell::digit | cell::dot | cell::sign)) == 0 && (mask & cell::digit) != 0 && dots < 2 &&
               ((mask & cell::sign) == 0 || text.find_last_of("+-") == 0);
    }
};

/// Walks the cells of one line.
class DataTokens {
  public:
    DataTokens(std::string_view line, const std::array<std::uint8_t, 256>& kinds) : line_(line), kinds_(kinds) {}

    bool next(DataToken& token) {
        constexpr std::uint8_t gap = cell::blank | cell::tab;
        std::uint8_t kind = 0;
        while (place_ < line_.size() && ((kind = kindAt(place_)) & gap) != 0) {
            gaps_ |= kind;
            ++place_;
        }
        if (place_ == line_.size()) return false;
        token.begin = place_;
        token.dots = 0;
        std::uint8_t mask = 0;
        do {
            mask |= kind;
            if (kind == cell::dot) {
                ++token.dots;
                token.lastDot = place_;
            }
            if (++place_ == line_.size()) break;
            kind = kindAt(place_);
        } while ((kind & gap) == 0);
        token.mask = mask;
        token.text = line_.substr(token.begin, place_ - token.begin);
        return true;
    }
    /// Kinds of the gaps so far.
    std::uint8_t gaps() const { return gaps_; }

  private:
    std::uint8_t kindAt(std::size_t place) const { return kinds_[static_cast<unsigned char>(line_[place])]; }

    std::string_view line_;
    const std::array<std::uint8_t, 256>& kinds_;
    std::size_t place_ = 0;
    std::uint8_t gaps_ = 0;
};

/// Cells of a line.
std::size_t countTokens(std::string_view line, bool commaParts);

/// What a cell that is no plain number is.
enum class OddCell {
    Text,         ///< a word, a date, a time
    NotANumber,   ///< a spelling that programs print for one ("NaN", "-1.#IND", "#N/A")
    Exponent,     ///< a number with an exponent
    CommaNumber,  ///< a number, were its comma a dot
    Run,          ///< numbers that run together, to be parted in front of each minus
    Dots          ///< a number with several dots
};
OddCell oddCellOf(std::string_view text);
/// Pieces of a run, parted in front of each inner minus.
std::size_t piecesOfRun(std::string_view text);

}  // namespace welvane
