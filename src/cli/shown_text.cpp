#include "cli/shown_text.h"

#include <algorithm>

namespace welvane {

std::string shownText(std::string_view bytes) {
    const std::string text = utf8Text(bytes);
    std::string shown;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const auto byte = static_cast<unsigned char>(text[place]);
        // The second block of control characters, as UTF-8.
        if (byte == 0xC2 && static_cast<unsigned char>(text[place + 1]) < 0xA0) {
            shown += '?';
            ++place;
        } else if (byte == '\t') {
            shown += ' ';
        } else {
            shown += (byte < 0x20 && byte != '\n') || byte == 0x7F ? '?' : text[place];
        }
    }
    return shown;
}

std::string shownName(std::string_view bytes) {
    std::string shown = shownText(bytes);
    std::replace(shown.begin(), shown.end(), '\n', '?');
    return shown;
}

std::string padded(std::string_view text, std::size_t width) {
    const std::size_t length = characterCount(text);
    return std::string(text) + std::string(length < width ? width - length : 0, ' ');
}

std::string paddedLeft(std::string_view text, std::size_t width) {
    const std::size_t length = characterCount(text);
    return std::string(length < width ? width - length : 0, ' ') + std::string(text);
}

}  // namespace welvane
