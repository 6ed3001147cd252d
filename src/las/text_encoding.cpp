#include "las/text_encoding.h"

#include <cstdint>

namespace welvane {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// Of the first character of a LAS file.
constexpr bool beginsHeader(char c) {
    return c == '~' || c == '#';
}

class Utf16Units {
  public:
    Utf16Units(std::string_view bytes, TextEncoding encoding)
        : bytes_(bytes), high_(encoding == TextEncoding::Utf16Big ? 0 : 1) {}

    bool atEnd() const { return place_ + 1 >= bytes_.size(); }
    std::uint32_t peek() const { return unsigned{byteAt(place_ + high_)} << 8U | byteAt(place_ + 1 - high_); }
    std::uint32_t next() {
        const std::uint32_t unit = peek();
        place_ += 2;
        return unit;
    }

  private:
    std::uint8_t byteAt(std::size_t place) const { return static_cast<std::uint8_t>(bytes_[place]); }

    std::string_view bytes_;
    std::size_t high_, place_ = 0;
};

constexpr bool leads(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool trails(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

std::uint32_t nextCharacter(Utf16Units& units) {
    constexpr std::uint32_t unknown = 0xFFFD;
    const std::uint32_t unit = units.next();
    if (trails(unit)) return unknown;
    if (!leads(unit)) return unit;
    if (units.atEnd() || !trails(units.peek())) return unknown;
    return 0x10000U + ((unit - 0xD800U) << 10U) + (units.next() - 0xDC00U);
}

void append(std::string& text, std::uint32_t character) {
    const auto tail = [&](unsigned shift) { text += static_cast<char>(0x80U | (character >> shift & 0x3FU)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0U | character >> 6U);
        tail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0U | character >> 12U);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | character >> 18U);
        tail(12);
        tail(6);
        tail(0);
    }
}

}  // namespace

TextEncoding encodingOf(std::string_view bytes) {
    if (bytes.substr(0, utf8Mark.size()) == utf8Mark) return TextEncoding::MarkedUtf8;
    if (bytes.size() < 2) return TextEncoding::Plain;
    if (bytes.substr(0, 2) == "\xFF\xFE" || (beginsHeader(bytes[0]) && bytes[1] == '\0'))
        return TextEncoding::Utf16Little;
    if (bytes.substr(0, 2) == "\xFE\xFF" || (beginsHeader(bytes[1]) && bytes[0] == '\0')) return TextEncoding::Utf16Big;
    return TextEncoding::Plain;
}

std::string_view withoutMark(std::string_view bytes, TextEncoding encoding) {
    return encoding == TextEncoding::MarkedUtf8 ? bytes.substr(utf8Mark.size()) : bytes;
}

std::string utf8Of(std::string_view bytes, TextEncoding encoding) {
    constexpr std::uint32_t mark = 0xFEFF;
    std::string text;
    text.reserve(bytes.size() / 2 + bytes.size() / 8);
    Utf16Units units(bytes, encoding);
    if (!units.atEnd() && units.peek() == mark) units.next();
    while (!units.atEnd()) append(text, nextCharacter(units));
    return text;
}

}  // namespace welvane
