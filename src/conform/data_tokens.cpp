#include "conform/data_tokens.h"

#include <algorithm>

#include "conform/decimal.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::array<std::uint8_t, 256> kindsOf(bool commaParts) {
    std::array<std::uint8_t, 256> kinds{};
    for (std::size_t byte = 0; byte < kinds.size(); ++byte)
        kinds[byte] = byte < 32 || byte > 126 ? cell::bad : cell::other;
    for (char c = '0'; c <= '9'; ++c) kinds[static_cast<unsigned char>(c)] = cell::digit;
    kinds['.'] = cell::dot;
    kinds['-'] = kinds['+'] = cell::sign;
    kinds[' '] = cell::blank;
    kinds['\t'] = cell::tab;
    kinds[','] = commaParts ? cell::blank : cell::comma;
    return kinds;
}

constexpr std::array<std::uint8_t, 256> plainKinds = kindsOf(false), commaKinds = kindsOf(true);

constexpr std::array<std::string_view, 12> notNumbers = {
    "NAN", "-NAN", "+NAN", "1.#QNAN", "-1.#QNAN", "1.#IND", "-1.#IND", "1.#SNAN", "-1.#SNAN", "N/A", "#N/A", "NULL"};

/// Three groups of digits parted by two minus signs are a date.
bool looksLikeDate(std::string_view text) {
    return std::count(text.begin(), text.end(), '-') == 2 && text.find('.') == npos && text.front() != '-' &&
           text.size() <= 10;
}

}  // namespace

const std::array<std::uint8_t, 256>& byteKinds(bool commaParts) {
    return commaParts ? commaKinds : plainKinds;
}

std::size_t countTokens(std::string_view line, bool commaParts) {
    DataTokens tokens(line, byteKinds(commaParts));
    std::size_t count = 0;
    for (DataToken token; tokens.next(token);) ++count;
    return count;
}

std::size_t piecesOfRun(std::string_view text) {
    std::size_t pieces = 0;
    while (!text.empty()) {
        const std::size_t minus = std::min(text.find('-', 1), text.size());
        if (!isNumber(text.substr(0, minus), false)) return 0;
        text.remove_prefix(minus);
        ++pieces;
    }
    return pieces;
}

OddCell oddCellOf(std::string_view text) {
    if (isNumber(text, true)) return OddCell::Exponent;
    for (const std::string_view name : notNumbers)
        if (sameText(text, name)) return OddCell::NotANumber;
    if (std::count(text.begin(), text.end(), ',') == 1) {
        std::string dotted(text);
        dotted[dotted.find(',')] = '.';
        if (isNumber(dotted, false)) return OddCell::CommaNumber;
    }
    if (text.find_first_not_of("0123456789.-") != npos || looksLikeDate(text)) return OddCell::Text;
    if (piecesOfRun(text) > 1) return OddCell::Run;
    const bool digits = text.find_first_of("0123456789") != npos;
    return digits && std::count(text.begin(), text.end(), '.') > 1 && text.find_last_of('-') == npos ? OddCell::Dots
                                                                                                     : OddCell::Text;
}

}  // namespace welvane
