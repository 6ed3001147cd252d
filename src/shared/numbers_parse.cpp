#include <array>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/numbers_fast.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Eight bytes as a word with the first byte lowest, whatever the machine's byte order.
std::uint64_t loadEight(const char* from) {
    std::uint64_t word = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&word, from, sizeof word);
    } else {
        for (int index = 7; index >= 0; --index) word = word << 8 | static_cast<unsigned char>(from[index]);
    }
    return word;
}

/// How many of the eight characters, from the first, are digits (0 to 8). `digits` is the word xor eight times '0': a
/// digit is a byte of 0 to 9 then, and any other byte either has its high bit set or gets it by adding 0x76. A carry
/// only reaches bytes behind it.
int leadingDigits(std::uint64_t digits) {
    const std::uint64_t others = ((digits + 0x7676767676767676U) | digits) & 0x8080808080808080U;
    return others == 0 ? 8 : std::countr_zero(others) / 8;
}

/// The number that eight bytes of 0 to 9 make, the first (lowest) byte the highest digit: pairs, then fours, then all.
std::uint64_t eightDigitValue(std::uint64_t digits) {
    const std::uint64_t pairs = digits * 10 + (digits >> 8);
    constexpr std::uint64_t mask = 0x000000FF000000FFU;
    return ((pairs & mask) * 0x000F424000000064U + ((pairs >> 16) & mask) * 0x0000271000000001U) >> 32;
}

/// The first `count` (0 to 8) of eight digits as a number.
std::uint64_t firstDigitsValue(std::uint64_t digits, int count) {
    const int half = 4 * (8 - count);  // in two steps, because a shift by 64 has no meaning
    return eightDigitValue(digits << half << half);
}

/// Digits of a number as they are gathered: value = mantissa * 10^exponent, and a bit more where `cut`.
struct Gathered {
    std::uint64_t mantissa = 0;
    int count = 0;  ///< digits in the mantissa, a few leading zeros among them; 19 always fit
    std::int64_t exponent = 0;
    bool cut = false;  ///< a digit other than 0 did not fit; the mantissa is not 0 then
};

/// Takes a run of digits; returns the place behind it.
const char* gatherDigits(const char* place, const char* end, bool behindDot, Gathered& number) {
    const char* const start = place;
    if (number.mantissa == 0) {
        number.count = 0;
        while (end - place >= 8 && loadEight(place) == detail::eightZeros) place += 8;
    }
    while (number.count <= 11 && end - place >= 8) {
        const std::uint64_t digits = loadEight(place) ^ detail::eightZeros;
        const int length = leadingDigits(digits);
        number.mantissa = number.mantissa * detail::wholePowersOfTen[length] + firstDigitsValue(digits, length);
        number.count += length;
        place += length;
        if (length < 8) break;
    }
    for (; number.count < 19 && place < end && isDigit(*place); ++place) {
        number.mantissa = number.mantissa * 10 + static_cast<std::uint64_t>(*place - '0');
        ++number.count;
    }
    if (behindDot) number.exponent -= place - start;
    for (; place < end && isDigit(*place); ++place) {
        number.cut = number.cut || *place != '0';
        if (!behindDot) ++number.exponent;
    }
    return place;
}

/// Takes an exponent where one with digits stands at `place`; returns the place behind it, or `place`.
const char* gatherExponent(const char* place, const char* end, Gathered& number) {
    if (place == end || (upperChar(*place) != 'E' && upperChar(*place) != 'D')) return place;
    const char* at = place + 1;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++at;
    if (at == end || !isDigit(*at)) return place;
    // Far beyond any text that could bring such an exponent back into range.
    constexpr std::int64_t largest = 100'000'000'000'000'000;
    std::int64_t exponent = 0;
    for (; at != end && isDigit(*at); ++at)
        if (exponent < largest) exponent = exponent * 10 + (*at - '0');
    number.exponent += negative ? -exponent : exponent;
    return at;
}

/// More digits than a double can tell apart (767) with room to spare; what comes behind only counts as "a bit more".
constexpr std::size_t decisiveDigits = 800;
using CleanText = std::array<char, decisiveDigits + 40>;

/// Writes the significant digits of [at, end), the first `decisiveDigits` of them, and a 1 for whatever does not fit.
/// Returns their number.
std::size_t copySignificant(const char* at, const char* end, CleanText& clean) {
    std::size_t count = 0;
    for (; at != end && (isDigit(*at) || *at == '.'); ++at) {
        if (*at == '.' || (count == 0 && *at == '0')) continue;
        if (count == decisiveDigits) {
            clean[count++] = '1';
            break;
        }
        clean[count++] = *at;
    }
    return count;
}

/// The correctly rounded magnitude where no single operation gives it. `digits` begins with the first digit or the dot.
double roundedValue(const Gathered& number, const char* digits, const char* end) {
    CleanText clean;
    char* const last = clean.data() + clean.size();
    char* place = std::to_chars(clean.data(), last, number.mantissa).ptr;
    const std::int64_t magnitude = number.exponent + (place - clean.data());  // value = 0.ddd * 10^magnitude
    const double beyond = magnitude > 0 ? std::numeric_limits<double>::max() : 0;
    if (magnitude > 310 || magnitude < -330) return beyond;
    if (number.cut) place = clean.data() + copySignificant(digits, end, clean);
    const std::int64_t exponent = magnitude - (place - clean.data());
    *place++ = 'E';
    place = std::to_chars(place, last, exponent).ptr;
    double value = 0;
    const std::from_chars_result read = std::from_chars(clean.data(), place, value);
    return read.ec != std::errc() || value > std::numeric_limits<double>::max() ? beyond : value;
}

}  // namespace

const char* detail::parseNumberGeneral(const char* at, const char* end, double& value) {
    value = 0;
    const char* digits = at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++digits;
    Gathered number;
    const char* place = gatherDigits(digits, end, false, number);
    std::ptrdiff_t found = place - digits;
    if (place != end && *place == '.') {
        const char* const behindDot = place + 1;
        place = gatherDigits(behindDot, end, true, number);
        found += place - behindDot;
    }
    if (found == 0) return at;
    const char* const endOfDigits = place;
    place = gatherExponent(place, end, number);
    double magnitude = 0;
    if (number.mantissa != 0) {
        const bool exact =
            !number.cut && number.mantissa <= 1ULL << 53 && number.exponent >= -22 && number.exponent <= 22;
        const auto mantissa = static_cast<double>(number.mantissa);
        if (!exact) {
            magnitude = roundedValue(number, digits, endOfDigits);
        } else {
            magnitude = number.exponent < 0 ? mantissa / powersOfTen[-number.exponent]
                                            : mantissa * powersOfTen[number.exponent];
        }
    }
    value = negative ? -magnitude : magnitude;
    return place;
}

ParsedNumber parseNumber(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* at = text.data();
    while (at != end && (*at == ' ' || *at == '\t')) ++at;
    ParsedNumber result;
    const char* const behind = parseNumberFast(at, end, result.value);
    if (behind != at) result.length = static_cast<std::size_t>(behind - text.data());
    return result;
}

double val(std::string_view text) {
    return parseNumber(text).value;
}

namespace {
/// True when `text` is one number, blanks and tabs at the ends aside.
bool readWhole(std::string_view text, double& value) {
    const ParsedNumber number = parseNumber(text);
    value = number.value;
    return number.length > 0 && text.find_first_not_of(" \t", number.length) == npos;
}
}  // namespace

double strictDouble(std::string_view text) {
    double value = 0;
    if (!readWhole(text, value)) throw RunTimeFailure("\"" + std::string(text) + "\" is not a number");
    return value;
}

std::int16_t strictInt16(std::string_view text) {
    return toInt16(strictDouble(text));
}

bool isNumeric(std::string_view text) {
    double value = 0;
    return readWhole(text, value);
}

}  // namespace welvane
