#include "las/cells.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Digits behind the point that the text of a number stands for: "1.50E-3" has five.
std::uint8_t decimalsOf(std::string_view text) {
    const std::size_t exponentPlace = text.find_first_of("EeDd");
    const std::string_view mantissa = text.substr(0, exponentPlace);
    const std::size_t dot = mantissa.find('.');
    double decimals = dot == npos ? 0 : static_cast<double>(mantissa.size() - dot - 1);
    if (exponentPlace != npos) decimals -= val(text.substr(exponentPlace + 1));
    return static_cast<std::uint8_t>(std::clamp(decimals, 0.0, 255.0));
}

/// The whole word is one number that a double can hold.
bool isNumber(std::string_view word, Cell& cell) {
    const ParsedNumber number = parseNumber(word);
    if (number.length != word.size() || word.empty()) return false;
    // The largest double stands for everything beyond.
    if (std::abs(number.value) == std::numeric_limits<double>::max()) return false;
    cell = {number.value, CellKind::Number, decimalsOf(word)};
    return true;
}

/// The shape of a word: digits as 9, letters as A, runs as one character.
std::string shapeOf(std::string_view word) {
    std::string shape;
    for (const char c : word) {
        const char sign = isDigit(c) ? '9' : isLetter(c) ? 'A' : c;
        if (shape.empty() || shape.back() != sign || (sign != '9' && sign != 'A')) shape += sign;
    }
    return shape;
}

/// Three numbers with a "-" between them are a date when one of the outer ones is a year, and two numbers that touch
/// otherwise.
bool isNumericDate(std::string_view word) {
    return word.find('-') == 4 || word.size() - word.rfind('-') == 5;
}

bool isTime(std::string_view word) {
    const std::string shape = shapeOf(word);
    for (const std::string_view known : {"9:9", "9:9:9", "9:9:9.9", "9/9/9", "9-A-9", "9/A/9"})
        if (shape == known) return true;
    return (shape == "9-9-9" && isNumericDate(word)) || beginsWith(shape, "9-9-9A9:") || beginsWith(shape, "9/9/9A9:");
}

/// A number with another one right behind it.
bool isRunOn(std::string_view word) {
    if (word.find_first_not_of("0123456789.+-EeDd") != npos) return false;
    const std::size_t first = parseNumber(word).length;
    return first > 0 && first < word.size() && parseNumber(word.substr(first)).length > 0;
}

}  // namespace

Cell judgeCell(std::string_view word, bool decimalComma) {
    Cell cell{noNumber, CellKind::Word, 0};
    if (isNumber(word, cell)) return cell;
    if (word.empty()) {
        cell.kind = CellKind::Missing;
    } else if (const std::size_t comma = word.find(','); comma != npos) {
        std::string pointed(word);
        pointed[comma] = '.';
        if (word.find('.') == npos && isNumber(pointed, cell) && !decimalComma)
            cell = {noNumber, CellKind::DecimalComma, 0};
    } else if (isTime(word)) {
        cell.kind = CellKind::Time;
    } else if (isRunOn(word)) {
        cell.kind = CellKind::RunOn;
    }
    return cell;
}

void CellFaults::add(CellKind kind, std::size_t line, std::string_view word) {
    constexpr std::size_t longest = 40;
    Fault& fault = of(kind);
    if (++fault.count > 1) return;
    fault.firstLine = line;
    fault.example = word.substr(0, longest);
}

void CellFaults::add(const CellFaults& behind, std::size_t before) {
    for (std::size_t kind = 0; kind < cellKinds; ++kind) {
        const Fault& other = behind.kinds[kind];
        if (other.count == 0) continue;
        Fault& fault = kinds[kind];
        if (fault.count == 0) fault = {0, other.firstLine + before, other.example};
        fault.count += other.count;
    }
}

std::string cellFaultText(CellKind kind, std::string_view example) {
    const std::string shown = "\"" + std::string(example) + "\"";
    switch (kind) {
        case CellKind::Word:
            return shown + " is no number, read as null";
        case CellKind::RunOn:
            return shown + " is two numbers run on, read as null";
        case CellKind::Time:
            return shown + " is a time or a date, read as null";
        case CellKind::DecimalComma:
            return shown + " has a decimal comma";
        case CellKind::Missing:
            return "no value in the record, read as null";
        case CellKind::Number:
            break;
    }
    return {};
}

}  // namespace welvane
