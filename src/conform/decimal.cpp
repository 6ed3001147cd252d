#include "conform/decimal.h"

#include <algorithm>

#include "shared/text.h"

namespace welvane {

namespace {

constexpr int mostDigits = 15;
constexpr std::int64_t widest = 100'000'000'000'000'000;  // 10^17: sums of a few stay inside 64 bits

}  // namespace

std::optional<Decimal> decimalOf(std::string_view text) {
    Decimal number;
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
    int digits = 0;
    bool dot = false, any = false;
    for (const char c : text) {
        if (c == '.' && !dot) {
            dot = true;
            continue;
        }
        if (!isDigit(c)) return std::nullopt;
        any = true;
        if (number.units != 0 || c != '0') ++digits;
        if (digits > mostDigits) return std::nullopt;
        number.units = number.units * 10 + (c - '0');
        if (dot && ++number.decimals > mostDigits) return std::nullopt;
    }
    if (!any) return std::nullopt;
    if (negative) number.units = -number.units;
    return number;
}

bool isNumber(std::string_view text, bool exponent) {
    std::size_t place = 0, digits = 0;
    const auto sign = [&] { place += place < text.size() && (text[place] == '-' || text[place] == '+') ? 1U : 0U; };
    const auto run = [&] {
        const std::size_t begin = place;
        while (place < text.size() && isDigit(text[place])) ++place;
        return place - begin;
    };
    sign();
    digits = run();
    if (place < text.size() && text[place] == '.') {
        ++place;
        digits += run();
    }
    if (digits == 0) return false;
    if (exponent && place < text.size() && upperChar(text[place]) == 'E') {
        ++place;
        sign();
        if (run() == 0) return false;
    }
    return place == text.size();
}

std::optional<std::int64_t> unitsAt(const Decimal& number, int decimals) {
    if (decimals < number.decimals) return std::nullopt;
    std::int64_t units = number.units;
    for (int more = number.decimals; more < decimals; ++more) {
        if (units > widest / 10 || units < -widest / 10) return std::nullopt;
        units *= 10;
    }
    return units;
}

bool sameValue(const Decimal& one, const Decimal& other) {
    const int decimals = std::max(one.decimals, other.decimals);
    const auto left = unitsAt(one, decimals), right = unitsAt(other, decimals);
    return left && right && *left == *right;
}

std::string textOf(const Decimal& number) {
    std::string digits = std::to_string(number.units < 0 ? -number.units : number.units);
    const auto decimals = static_cast<std::size_t>(number.decimals);
    if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
    std::string text = (number.units < 0 ? "-" : "") + digits;
    if (decimals == 0) return text;
    text.insert(text.size() - decimals, 1, '.');
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text;
}

}  // namespace welvane
