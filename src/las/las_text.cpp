#include "las/las_text.h"

#include <algorithm>

#include "las/limits.h"
#include "shared/text.h"

namespace welvane {

namespace {
std::size_t indexOf(char letter) {
    return static_cast<unsigned char>(upperChar(letter));
}
}  // namespace

bool isTitle(std::string_view line, char letter) {
    return line.size() >= 2 && line[0] == '~' && upperChar(line[1]) == upperChar(letter);
}

std::size_t findTitle(std::string_view text, char letter, std::size_t from) {
    for (std::size_t place = text.find('~', from); place != npos; place = text.find('~', place + 1))
        if (place + 1 < text.size() && upperChar(text[place + 1]) == upperChar(letter)) return place;
    return npos;
}

bool isNamedTitle(std::string_view line) {
    constexpr std::size_t looked = 3;
    std::string name;
    for (const char c : line.substr(std::min<std::size_t>(1, line.size()), looked)) {
        if (upperChar(c) < 'A' || upperChar(c) > 'Z') break;
        name += upperChar(c);
    }
    if (name.empty()) return false;
    for (const std::string_view standard : {"VERSION", "WELL", "CURVE", "PARAMETER", "OTHER", "ASCII"})
        if (beginsWith(standard, name)) return true;
    return false;
}

LasText::LasText(std::string_view bytes, LineRule rule) : bytes_(bytes), rule_(rule) {
    if (rule == LineRule::Any)
        indexByNames();
    else
        index();
}

void LasText::indexByNames() {
    LineReader header = headerLines();
    std::array<std::size_t, 256> otherNames{};
    std::size_t titlesToData = 0;
    for (std::string_view line; header.next(line);) {
        line = trim(line);
        if (!beginsWith(line, "~")) continue;
        if (titles_.size() < rowLimit) titles_.push_back(line);
        if (line.size() < 2) continue;
        const bool named = isNamedTitle(line);
        std::size_t& place = (named ? behindTitle_ : otherNames)[indexOf(line[1])];
        if (place == 0) place = header.position();
        if (!isTitle(line, 'A')) continue;
        if (titlesToData == 0 || named) titlesToData = titles_.size();
        if (named) break;
    }
    for (std::size_t letter = 0; letter < otherNames.size(); ++letter)
        if (behindTitle_[letter] == 0) behindTitle_[letter] = otherNames[letter];
    if (titlesToData != 0) titles_.resize(titlesToData);
}

void LasText::index() {
    LineReader header = headerLines();
    bool hidden = false;
    for (std::string_view line; header.next(line);) {
        line = trim(line);
        const bool data = isTitle(line, 'A');
        hidden = hidden || findTitle(line, 'A') != npos;
        if (!beginsWith(line, "~")) continue;
        if (titles_.size() < rowLimit) titles_.push_back(line);
        if (line.size() > 1 && (data || !hidden))
            if (std::size_t& place = behindTitle_[indexOf(line[1])]; place == 0) place = header.position();
        if (data) break;
    }
}

LineReader LasText::lines(std::size_t from, std::size_t most) const {
    from = std::min(from, bytes_.size());
    return LineReader(bytes_.substr(0, from + std::min(most, bytes_.size() - from)), from, rule_);
}

LineReader LasText::headerLines(std::size_t from) const {
    return LineReader(bytes_.substr(0, headerLimit), from, rule_);
}

std::optional<std::size_t> LasText::seekSection(char letter) const {
    const std::size_t place = behindTitle_[indexOf(letter)];
    return place == 0 ? std::nullopt : std::optional(place);
}

}  // namespace welvane
