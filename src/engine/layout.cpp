#include "engine/layout.h"

#include <algorithm>

#include "las/wrap.h"
#include "shared/field_splitter.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view lineEnd = "\r\n";

}  // namespace

std::string overflowText(int width, int decimals) {
    if (width <= 0) return {};
    std::string text(static_cast<std::size_t>(width), '9');
    text.front() = ' ';
    const int point = width - decimals;
    if (point >= 1 && point <= width) text[point - 1] = '.';
    return text;
}

char delimiterOf(Separator separator) {
    if (separator == Separator::Tab) return '\t';
    return separator == Separator::Comma ? ',' : ' ';
}

std::string wrapTitle(std::string_view title, int width, std::string_view lead) {
    const auto columnWidth = static_cast<std::size_t>(std::max(width, 1));
    std::string laidOut(title);
    if (title.size() % columnWidth != 0) {
        laidOut.clear();
        FieldSplitter words;
        words.setText(title);
        for (std::size_t word = 1; word <= words.count(); ++word)
            laidOut += rightAligned(words.field(word), columnWidth);
    }
    const std::size_t perLine = std::max<std::size_t>(1, wrapLineLength / columnWidth) * columnWidth;
    const auto withLead = [&lead](std::string_view text) {
        std::string line(text);
        if (!lead.empty() && !line.empty()) line.front() = lead.front();
        return line;
    };
    std::string result = withLead(std::string_view(laidOut).substr(0, columnWidth));
    for (std::size_t place = columnWidth; place < laidOut.size(); place += perLine)
        result.append(lineEnd).append(withLead(std::string_view(laidOut).substr(place, perLine)));
    return result;
}

}  // namespace welvane
