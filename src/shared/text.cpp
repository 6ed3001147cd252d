#include "shared/text.h"

#include <algorithm>

namespace welvane {

bool sameText(std::string_view one, std::string_view other) {
    return one.size() == other.size() && std::equal(one.begin(), one.end(), other.begin(),
                                                    [](char a, char b) { return upperChar(a) == upperChar(b); });
}

bool lessText(std::string_view one, std::string_view other) {
    return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end(), [](char a, char b) {
        return static_cast<unsigned char>(upperChar(a)) < static_cast<unsigned char>(upperChar(b));
    });
}

std::size_t findText(std::string_view text, std::string_view part, std::size_t from) {
    if (part.empty()) return from <= text.size() ? from : npos;
    if (part.size() > text.size()) return npos;
    const char first = upperChar(part.front());
    const std::size_t last = text.size() - part.size();
    for (std::size_t place = from; place <= last; ++place)
        if (upperChar(text[place]) == first && sameText(text.substr(place, part.size()), part)) return place;
    return npos;
}

bool holdsText(std::string_view text, std::string_view part) {
    return findText(text, part) != npos;
}

bool beginsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && sameText(text.substr(0, start.size()), start);
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && sameText(text.substr(text.size() - end.size()), end);
}

std::string_view trimLeft(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == npos ? std::string_view() : text.substr(first);
}

std::string_view trimRight(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return last == npos ? std::string_view() : text.substr(0, last + 1);
}

std::string_view trim(std::string_view text) {
    return trimLeft(trimRight(text));
}

std::string_view trimBreaks(std::string_view text) {
    constexpr std::string_view breaks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(breaks);
    if (first == npos) return {};
    return text.substr(first, text.find_last_not_of(breaks) - first + 1);
}

std::string upper(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), upperChar);
    return result;
}

std::string replaceAll(std::string_view text, std::string_view find, std::string_view replacement) {
    std::string result;
    if (find.empty()) return std::string(text);
    std::size_t done = 0;
    for (std::size_t place = findText(text, find); place != npos; place = findText(text, find, done)) {
        result.append(text.substr(done, place - done)).append(replacement);
        done = place + find.size();
    }
    return result.append(text.substr(done));
}

void tabsToBlanks(std::string& text) {
    std::replace(text.begin(), text.end(), '\t', ' ');
}

std::string withoutChar(std::string_view text, char unwanted) {
    std::string result;
    result.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(result), [unwanted](char c) { return c != unwanted; });
    return result;
}

std::string rightAligned(std::string_view text, std::size_t width) {
    if (text.size() >= width) return std::string(text.substr(text.size() - width));
    return std::string(width - text.size(), ' ').append(text);
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    std::size_t done = 0;
    for (std::size_t place = text.find(separator); place != npos; place = text.find(separator, done)) {
        pieces.emplace_back(text.substr(done, place - done));
        done = place + 1;
    }
    pieces.emplace_back(text.substr(done));
    return pieces;
}

std::string join(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string result;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        if (index > 0) result.append(separator);
        result.append(pieces[index]);
    }
    return result;
}

std::string counted(std::int64_t number, std::string_view thing) {
    return std::to_string(number).append(" ").append(thing).append(number == 1 ? "" : "s");
}

}  // namespace welvane
