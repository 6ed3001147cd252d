#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as they are printed, compared and subtracted without a binary fraction: 1670 is 1670.000, and 0.1524 is no
/// rounding of anything.
namespace welvane {

/// units / 10^decimals.
struct Decimal {
    std::int64_t units = 0;
    int decimals = 0;
    bool isZero() const { return units == 0; }
};

/// Sign, digits and at most one dot, nothing else; nothing for another text and for more digits than the steps of a log
/// need (15).
std::optional<Decimal> decimalOf(std::string_view text);
/// Sign, digits, at most one dot, at least one digit, with or without an exponent.
bool isNumber(std::string_view text, bool exponent);

/// The units of a number at so many decimals; nothing when they do not fit into 17 digits, or `decimals` are fewer than
/// it has.
std::optional<std::int64_t> unitsAt(const Decimal& number, int decimals);
/// By value; false where they cannot be told.
bool sameValue(const Decimal& one, const Decimal& other);
/// Without zeros behind the last digit that counts.
std::string textOf(const Decimal& number);

}  // namespace welvane
