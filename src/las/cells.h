#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What stands in one cell of ~A by FigureRules::trueFigures: a number, or something that is told and counts as null.
namespace welvane {

enum class CellKind : std::uint8_t {
    Number,        ///< the whole word is one number, with an exponent (E or D) or without
    Word,          ///< no number: "NaN", "ERR", "(null)", "-", "12abc", "*****", or a number beyond all doubles
    RunOn,         ///< two numbers that touch: "123-456", "7.020101130.188"
    DecimalComma,  ///< "123,42"; a number for whoever asks for decimal commas
    Time,          ///< a time or a date: "12:30:00", "01-Jan-20", "2020/01/31"
    Missing        ///< nothing: the record ended before, or two delimiters touch
};
inline constexpr std::size_t cellKinds = 6;

/// One cell. `value` is NaN unless it is a number.
struct Cell {
    double value = 0;
    CellKind kind = CellKind::Number;
    std::uint8_t decimals = 0;  ///< digits behind the point that the number needs, 255 at most
};

/// Judges a word without blanks; "" is Missing. With `decimalComma` a comma in a number is its point.
Cell judgeCell(std::string_view word, bool decimalComma);

/// What a channel's cells were that are no numbers, by kind.
struct CellFaults {
    struct Fault {
        std::size_t count = 0;
        std::size_t firstLine = 0;  ///< of the file, from 1
        std::string example;        ///< the first word, cut to 40 characters
    };
    std::array<Fault, cellKinds> kinds;

    Fault& of(CellKind kind) { return kinds[static_cast<std::size_t>(kind)]; }
    const Fault& of(CellKind kind) const { return kinds[static_cast<std::size_t>(kind)]; }
    void add(CellKind kind, std::size_t line, std::string_view word);
    /// Those of lines behind, which were counted from the line behind `before` on.
    void add(const CellFaults& behind, std::size_t before);
};

/// What a note says of such cells, for instance "no number: ERR; read as null".
std::string cellFaultText(CellKind kind, std::string_view example);

}  // namespace welvane
