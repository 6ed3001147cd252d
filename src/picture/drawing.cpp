#include "picture/drawing.h"

#include <algorithm>

#include "shared/utf8.h"

namespace welvane {

namespace {

/// Width of a character of a common sans serif font as a part of its size.
double characterWidth(char c) {
    static constexpr std::string_view narrow = "iljtfI.,:;'|!()[]/ -", wide = "mwMW@%";
    if (narrow.find(c) != std::string_view::npos) return 0.33;
    if (wide.find(c) != std::string_view::npos) return 0.88;
    return c >= 'A' && c <= 'Z' ? 0.69 : 0.56;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

double textWidth(std::string_view text, double size, bool bold) {
    double width = 0;
    for (const char c : text) width += isContinuation(c) ? 0 : characterWidth(c);
    return width * size * (bold ? 1.06 : 1);
}

std::string fittedText(std::string_view text, double width, double size, bool bold) {
    static constexpr std::string_view dots = "...";
    std::string fitted = utf8Text(text);
    if (textWidth(fitted, size, bold) <= width) return fitted;
    while (!fitted.empty() && textWidth(fitted + std::string(dots), size, bold) > width) {
        while (fitted.size() > 1 && isContinuation(fitted.back())) fitted.pop_back();
        fitted.pop_back();
    }
    return fitted.empty() ? fitted : fitted + std::string(dots);
}

}  // namespace welvane
