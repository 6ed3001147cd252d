#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

#include "shared/numbers.h"
#include "shared/numbers_fast.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int largestDecimals = 300;
/// Above it 10^(decimals + 1) is no exact double.
constexpr int largestFastDecimals = 21;

/// "00", "01" to "99".
constexpr std::array<char, 200> twoDigits = [] {
    std::array<char, 200> pairs{};
    for (std::size_t number = 0; number < 100; ++number) {
        pairs[2 * number] = static_cast<char>('0' + number / 10);
        pairs[2 * number + 1] = static_cast<char>('0' + number % 10);
    }
    return pairs;
}();

/// The shortest digits that read back as a value: d.ddd * 10^exponent, no zero at the end.
struct ShortestDigits {
    std::array<char, 24> digits;
    int count = 0;
    int exponent = 0;
};

/// Of a positive finite value.
template <class Real>
ShortestDigits shortestDigits(Real magnitude) {
    std::array<char, 40> text;
    const char* const end =
        std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific).ptr;
    ShortestDigits result;
    const char* place = text.data();
    for (; *place != 'e'; ++place)
        if (*place != '.') result.digits[result.count++] = *place;
    ++place;
    if (*place == '+') ++place;
    std::from_chars(place, end, result.exponent);
    return result;
}

/// Keeps `keep` (0 or more) digits, half up. With none kept the result is either no digit or a 1 one place higher.
void roundDigits(ShortestDigits& number, int keep) {
    if (keep >= number.count) return;
    bool carry = number.digits[keep] >= '5';
    number.count = keep;
    while (carry && number.count > 0) {
        char& last = number.digits[number.count - 1];
        carry = last == '9';
        if (carry) {
            --number.count;
        } else {
            ++last;
        }
    }
    if (!carry) return;
    number.digits[0] = '1';
    number.count = 1;
    ++number.exponent;
}

/// Digits `from` to `to` of the number, 0 being the first of its digits, zeros where it has none.
char* writeDigits(char* target, const ShortestDigits& number, int from, int to) {
    const int zerosBefore = std::clamp(-from, 0, to - from);
    target = std::fill_n(target, zerosBefore, '0');
    const int first = from + zerosBefore;
    const int held = std::clamp(number.count - first, 0, to - first);
    target = std::copy_n(number.digits.data() + first * (held > 0), held, target);
    return std::fill_n(target, to - first - held, '0');
}

/// Fixed notation; `decimals` digits behind the point.
char* writeFixed(char* target, const ShortestDigits& number, int decimals) {
    if (number.exponent < 0) {
        *target++ = '0';
    } else {
        target = writeDigits(target, number, 0, number.exponent + 1);
    }
    if (decimals == 0) return target;
    *target++ = '.';
    return writeDigits(target, number, number.exponent + 1, number.exponent + 1 + decimals);
}

/// `value` in exactly `width` digits.
void writePadded(char* target, std::uint64_t value, int width) {
    for (; width >= 2; width -= 2, value /= 100)
        std::memcpy(target + width - 2, twoDigits.data() + 2 * (value % 100), 2);
    if (width == 1) *target = static_cast<char>('0' + value % 10);
}

/// `scaled` / 10^decimals in fixed notation.
std::size_t writeScaled(char* target, bool negative, std::uint64_t scaled, int decimals) {
    constexpr int width = 24;  // 10^14 has 15 digits, and up to 21 decimals want one 0 before them
    std::array<char, width> digits;
    writePadded(digits.data(), scaled, width);
    int first = 0;
    while (first < width - 1 - decimals && digits[first] == '0') ++first;
    char* place = target;
    if (negative && scaled != 0) *place++ = '-';
    place = std::copy(digits.data() + first, digits.data() + width - decimals, place);
    if (decimals > 0) {
        *place++ = '.';
        place = std::copy_n(digits.data() + width - decimals, decimals, place);
    }
    return static_cast<std::size_t>(place - target);
}

template <class Real>
std::string plainText(Real value) {
    if (!std::isfinite(value) || value == 0) return "0";
    const ShortestDigits number = shortestDigits(std::abs(value));
    std::array<char, 64> text;
    char* place = text.data();
    if (value < 0) *place++ = '-';
    if (number.exponent >= -5 && number.exponent < 15) {
        place = writeFixed(place, number, std::max(0, number.count - 1 - number.exponent));
    } else {
        *place++ = number.digits[0];
        if (number.count > 1) *place++ = '.';
        place = std::copy_n(number.digits.data() + 1, number.count - 1, place);
        *place++ = 'E';
        *place++ = number.exponent < 0 ? '-' : '+';
        place = std::to_chars(place, text.data() + text.size(), std::abs(number.exponent)).ptr;
    }
    return {text.data(), place};
}

}  // namespace

std::size_t detail::formatMaskSlowTo(char* target, double value, int decimals) {
    decimals = std::clamp(decimals, 0, largestDecimals);
    ShortestDigits number;
    if (std::isfinite(value) && value != 0) {
        number = shortestDigits(std::abs(value));
        const int keep = number.exponent + 1 + decimals;
        if (keep < 0) {
            number.count = 0;
        } else {
            roundDigits(number, keep);
        }
    }
    char* place = target;
    if (number.count == 0) {
        number.exponent = 0;
    } else if (value < 0) {
        *place++ = '-';
    }
    return static_cast<std::size_t>(writeFixed(place, number, decimals) - target);
}

std::size_t detail::formatMaskGeneral(char* target, double value, int decimals) {
    std::uint64_t scaled = 0;
    decimals = std::clamp(decimals, 0, largestDecimals);
    if (decimals > largestFastDecimals || !roundScaled(std::abs(value), decimals, scaled))
        return formatMaskSlowTo(target, value, decimals);
    return writeScaled(target, value < 0, scaled, decimals);
}

std::size_t formatMaskTo(char* target, double value, int decimals) {
    return formatMaskFast(target, value, decimals);
}

std::string formatMask(double value, int decimals) {
    std::array<char, formatMaskCapacity(largestDecimals)> text;
    return {text.data(), formatMaskFast(text.data(), value, decimals)};
}

std::string stripZeros(std::string_view text) {
    const std::size_t dot = text.find('.');
    if (dot == npos || !std::all_of(text.begin() + static_cast<std::ptrdiff_t>(dot) + 1, text.end(), isDigit))
        return std::string(text);
    std::string_view kept = text.substr(0, text.find_last_not_of('0') + 1);
    if (kept.back() == '.') kept.remove_suffix(1);
    return std::string(kept);
}

std::string plainNumber(double value) {
    return plainText(value);
}
std::string plainNumber(float value) {
    return plainText(value);
}

std::string strNumber(double value) {
    std::string text = plainNumber(value);
    return text.front() == '-' ? text : " " + text;
}

}  // namespace welvane
