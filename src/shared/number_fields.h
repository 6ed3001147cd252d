#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// Cutting data lines into words and reading their numbers many bytes at a time, where the processor can.
namespace welvane {

/// One word of a line. It is plain when it is a sign or none, digits with at most one dot among them, 15 at most, and
/// nothing else; `value` is then what parseNumber reads, to the last bit. Any other word is for whoever reads the line.
struct NumberField {
    double value = 0;
    std::uint32_t from = 0, length = 0;  ///< the word in its line
    std::uint8_t decimals = 0;           ///< digits behind the dot
    bool plain = false;
};

namespace detail {

/// A way of cutting `line`, which lies in `around`: no byte outside of that is looked at. Writes a field for each word,
/// of which a line has at most (length + 1) / 2, and returns their number. A line has less than 2^32 bytes.
using FieldRoad = std::size_t (*)(std::string_view line, std::string_view around, NumberField* fields);

/// One byte after the other: what the other road is held against.
std::size_t fieldsByBytes(std::string_view line, std::string_view around, NumberField* fields);
/// By vectors of 32 bytes; nullptr where this processor has no such instructions.
FieldRoad fieldsByVectors();

}  // namespace detail

/// The words of one line after the other, parted by blanks and tabs.
class LineFields {
  public:
    /// All lines lie in `around`.
    explicit LineFields(std::string_view around);

    /// Fields of a line, valid up to the next call. RunTimeFailure for a line of 2^32 bytes or more.
    std::span<const NumberField> cut(std::string_view line);

  private:
    std::string_view around_;
    detail::FieldRoad road_;
    std::vector<NumberField> fields_;
};

}  // namespace welvane
