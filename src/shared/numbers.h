#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Numbers in text, in one place: reading (lenient and strict), printing by mask, checked conversions.
/// No locale, no streams, no printf.
namespace welvane {

/// What a lenient reading found.
struct ParsedNumber {
    double value = 0;        ///< 0 when there was no number
    std::size_t length = 0;  ///< characters used, leading blanks included; 0 when there was no number
};

/// Lenient reading: blanks (and tabs) in front, a sign, digits, one dot, an exponent with E or D (either
/// case); reading stops at the first character that cannot continue the number. An exponent letter without digits
/// behind it is not part of the number. Never reads "inf", "nan" or hex. The value is the correctly rounded double; too
/// large gives the largest finite double with its sign, too small gives 0.
ParsedNumber parseNumber(std::string_view text);

/// Lenient value: parseNumber(text).value.
double val(std::string_view text);

/// The whole field must be one number, blanks and tabs at the ends aside; otherwise RunTimeFailure
/// (`"abc" is not a number`).
double strictDouble(std::string_view text);
/// As strictDouble, then rounded (ties to even) and checked to fit 16 bits.
std::int16_t strictInt16(std::string_view text);
/// True where strictDouble would succeed.
bool isNumeric(std::string_view text);

/// Nearest integer, ties to even; RunTimeFailure ("overflow") beyond 32 bits or for no number.
std::int32_t roundToEven(double value);
/// Largest integer not above the value, same limits.
std::int32_t floorToInt32(double value);
/// Nearest integer, ties to even; RunTimeFailure ("overflow") beyond 16 bits.
std::int16_t toInt16(double value);
std::int32_t toInt32(std::int64_t value);
/// Single precision; RunTimeFailure ("overflow") beyond the largest single.
float toSingle(double value);

/// Fixed notation with `decimals` digits behind the point ("0.00" is 2), rounded half away from zero on the
/// decimal digits of the shortest text that reads back as the same double, so 1.005 with 2 gives "1.01".
/// No point when decimals is 0; never a negative zero. Decimals above 300 count as 300.
/// A value that is no number (NaN, infinity) prints as 0.
std::string formatMask(double value, int decimals);
/// The same into a buffer of at least `formatMaskCapacity(decimals)` characters; returns the length written.
std::size_t formatMaskTo(char* target, double value, int decimals);
constexpr std::size_t formatMaskCapacity(int decimals) {
    return 320u + static_cast<std::size_t>(decimals < 0 ? 0 : decimals);
}

/// Trailing zeros behind a decimal point removed, and the point when nothing is left behind it.
std::string stripZeros(std::string_view text);
/// Shortest fixed text that reads back as the same double, "1.5", "-3", "0.25"; very large or small magnitudes use
/// an exponent ("1E+20").
std::string plainNumber(double value);
/// The same for a single.
std::string plainNumber(float value);
/// plainNumber with a blank in front when not negative.
std::string strNumber(double value);

}  // namespace welvane
