#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Reading and printing of data values without a call per value: the inline forms of parseNumber and formatMaskTo of
/// numbers.h, for the loops over samples. The results are the same to the last bit; what does not fit the common forms
/// goes to the general roads in numbers_parse.cpp and numbers_format.cpp.
namespace welvane {

namespace detail {

/// The powers of ten that a double holds exactly.
inline constexpr double powersOfTen[23] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                           1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr double inversePowersOfTen[9] = {1e0, 1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8};
inline constexpr std::uint64_t wholePowersOfTen[9] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

/// Writes eight bytes, the lowest first, whatever the machine's byte order.
inline void storeEight(char* to, std::uint64_t word) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(to, &word, sizeof word);
    } else {
        for (int index = 0; index < 8; ++index) to[index] = static_cast<char>(word >> (8 * index) & 0xFF);
    }
}

/// The eight digits of a value below 10^8 as bytes of 0 to 9, the highest digit in the first (lowest) byte: split in
/// fours, pairs, digits.
inline std::uint64_t eightDigitsOf(std::uint64_t value) {
    const std::uint64_t fours = value / 10000 | (value % 10000) << 32;
    const std::uint64_t hundreds = (fours * 10486U >> 20) & 0x0000007F0000007FU;
    const std::uint64_t pairs = hundreds | (fours - 100 * hundreds) << 16;
    const std::uint64_t tens = (pairs * 103U >> 10) & 0x000F000F000F000FU;
    return tens | (pairs - 10 * tens) << 8;
}

inline constexpr std::uint64_t eightZeros = 0x3030303030303030U;

/// 0 to 9 for a digit, above 9 for any other character.
inline unsigned digitOf(char c) {
    return static_cast<unsigned char>(c - '0');
}

/// A sign or none, and digits with at most one dot among them.
struct PlainNumber {
    std::uint64_t mantissa = 0;
    std::ptrdiff_t digits = 0, decimals = 0;
    bool negative = false;

    /// Beyond 15 digits the mantissa may be no exact double, or have run over.
    bool exact() const { return digits > 0 && digits <= 15; }
    /// Of an exact one: both numbers are exact, so the one division is the correctly rounded value (Clinger's fast
    /// case).
    double value() const {
        const double magnitude = static_cast<double>(static_cast<std::int64_t>(mantissa)) / powersOfTen[decimals];
        return negative ? -magnitude : magnitude;
    }
};

/// Takes what of such a number stands at `at`; returns the place behind it.
inline const char* gatherPlain(const char* at, const char* end, PlainNumber& number) {
    // Digit by digit: the columns of a log keep their lengths, so the ends of the loops are well predicted and one
    // number overlaps the next. Finding the end by looks at eight bytes has each number wait for the one before.
    const char* place = at;
    number.negative = place != end && *place == '-';
    if (number.negative || (place != end && *place == '+')) ++place;
    std::uint64_t mantissa = 0;
    const char* const whole = place;
    for (; place != end && digitOf(*place) <= 9; ++place) mantissa = mantissa * 10 + digitOf(*place);
    number.digits = place - whole;
    if (place != end && *place == '.') {
        const char* const fraction = ++place;
        for (; place != end && digitOf(*place) <= 9; ++place) mantissa = mantissa * 10 + digitOf(*place);
        number.decimals = place - fraction;
        number.digits += number.decimals;
    }
    number.mantissa = mantissa;
    return place;
}

/// The general road of parseNumberFast: any length and form.
const char* parseNumberGeneral(const char* at, const char* end, double& value);

/// magnitude * 10^decimals as a whole number, rounded as formatMask rounds. False where only the digits can tell:
/// magnitudes with more than 14 digits to print, no numbers. `decimals` is 0 to 21.
inline bool roundScaled(double magnitude, int decimals, std::uint64_t& whole) {
    const double scaled = magnitude * powersOfTen[decimals];
    if (!(scaled < 1e14)) return false;
    const auto below = static_cast<std::int64_t>(scaled);
    const double fromHalf = scaled - static_cast<double>(below) - 0.5;
    whole = static_cast<std::uint64_t>(below);
    // The product and the shortest text are each within half a unit in the last place of the true value: 2^-52 of it
    // together.
    const double doubt = scaled * 0x1p-50;
    if (std::abs(fromHalf) > doubt) {  // one comparison: which side it is cannot be predicted
        whole += fromHalf > 0 ? 1 : 0;
        return true;
    }
    // Close to a tie: the tie itself has at most 15 digits, so it is the shortest text of the double that it reads as,
    // and reading keeps the order. Dividing two exact numbers reads it.
    const double tie = static_cast<double>(10 * below + 5) / powersOfTen[decimals + 1];
    whole += magnitude >= tie ? 1 : 0;
    return true;
}

/// The general road of formatMaskFast: any value, any decimals.
std::size_t formatMaskGeneral(char* target, double value, int decimals);
/// formatMaskTo by the shortest digits and rounding on text alone: what the fast roads are held against.
std::size_t formatMaskSlowTo(char* target, double value, int decimals);

}  // namespace detail

/// parseNumber for a place known to be no blank: reads the number that begins at `at`, never looks at or behind `end`.
/// Returns the place behind the number, or `at` (and value 0) when there is none.
inline const char* parseNumberFast(const char* at, const char* end, double& value) {
    detail::PlainNumber number;
    const char* const place = detail::gatherPlain(at, end, number);
    const char next = place == end ? ' ' : static_cast<char>(*place | 0x20);
    if (!number.exact() || next == 'e' || next == 'd') return detail::parseNumberGeneral(at, end, value);
    value = number.value();
    return place;
}

namespace detail {

/// The text of a scaled number of at most eight digits before the point and eight behind it, not yet written.
struct FixedText {
    std::uint64_t front = 0;     ///< eight digits before the point, as bytes of 0 to 9
    std::uint64_t fraction = 0;  ///< scaled by 10^decimals
    int unused = 0;              ///< leading zeros in front
    int sign = 0;                ///< 1 with a minus sign

    int length(int decimals) const { return sign + 8 - unused + decimals + (decimals > 0 ? 1 : 0); }
};

/// False where the value or the decimals want the general road.
inline bool splitFixed(double value, int decimals, FixedText& text) {
    const bool negative = value < 0;
    std::uint64_t scaled = 0;
    if (decimals < 0 || decimals > 8 || !roundScaled(std::abs(value), decimals, scaled)) return false;
    // With the half added the quotient stands at least 0.5 / 10^decimals off a whole number, more than the product's
    // error.
    const auto whole = static_cast<std::uint64_t>(static_cast<std::int64_t>(
        (static_cast<double>(static_cast<std::int64_t>(scaled)) + 0.5) * inversePowersOfTen[decimals]));
    if (whole >= 100000000) return false;
    text.fraction = scaled - whole * wholePowersOfTen[decimals];
    text.front = eightDigitsOf(whole);
    text.unused = std::countr_zero(text.front | 1ULL << 56) / 8;
    text.sign = negative && scaled != 0 ? 1 : 0;
    return true;
}

/// Writes the text; up to eight bytes behind its end are written over.
inline void writeFixed(char* place, const FixedText& text, int decimals) {
    *place = '-';
    place += text.sign;
    storeEight(place, (text.front | eightZeros) >> (8 * text.unused));
    if (decimals == 0) return;
    place += 8 - text.unused;
    *place = '.';
    storeEight(place + 1, (eightDigitsOf(text.fraction) | eightZeros) >> (8 * (8 - decimals)));
}

}  // namespace detail

/// formatMaskTo; the target has room for formatMaskCapacity(decimals) characters, some of which behind the end may be
/// written over.
inline std::size_t formatMaskFast(char* target, double value, int decimals) {
    detail::FixedText text;
    if (!detail::splitFixed(value, decimals, text)) return detail::formatMaskGeneral(target, value, decimals);
    detail::writeFixed(target, text, decimals);
    return static_cast<std::size_t>(text.length(decimals));
}

}  // namespace welvane
