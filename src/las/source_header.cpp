#include "las/source_header.h"

#include <algorithm>
#include <array>
#include <utility>

#include "las/limits.h"
#include "shared/any_line_reader.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The letter of a section of the standard; 0 for any other.
char letterOf(std::string_view title) {
    constexpr std::array<std::string_view, 5> names = {"VERSION", "WELL", "CURVE", "PARAMETER", "OTHER"};
    std::string_view word = title.substr(std::min<std::size_t>(1, title.size()));
    const auto isLetter = [](char c) { return upperChar(c) >= 'A' && upperChar(c) <= 'Z'; };
    word =
        word.substr(0, static_cast<std::size_t>(std::find_if_not(word.begin(), word.end(), isLetter) - word.begin()));
    if (word.empty()) return 0;
    if (upperChar(word.front()) == 'A') return 'A';
    for (const std::string_view name : names)
        if (beginsWith(word, name) || beginsWith(name, word)) return name.front();
    return 0;
}

/// A file without a ~Curve or ~Well section by its name has one by its letter at least.
void findByLetter(SourceHeader& header, char letter) {
    if (header.find(letter) != nullptr) return;
    for (SourceSection& section : header.sections) {
        if (section.letter != 0 || section.title.text.size() < 2 || upperChar(section.title.text[1]) != letter)
            continue;
        section.letter = letter;
        return;
    }
}

/// A mnemonic that holds a colon is one word and has a colon behind its dot too.
bool colonInMnemonic(std::string_view line, std::size_t dot, std::size_t colon) {
    return colon < dot && line.find(':', dot) != npos && trim(line.substr(0, dot)).find(' ') == npos;
}

}  // namespace

const SourceSection* SourceHeader::find(char letter) const {
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [letter](const SourceSection& section) { return section.letter == letter; });
    return found == sections.end() ? nullptr : &*found;
}

SourceHeader readSourceHeader(std::string_view bytes, std::size_t firstNumber) {
    SourceHeader header;
    AnyLineReader lines(bytes.substr(0, headerLimit));
    std::size_t number = firstNumber;
    for (std::string_view line; lines.next(line); ++number) {
        const SourceLine here = {number, trimBreaks(line)};
        if (here.text.empty()) continue;
        if (here.text.front() == '[') {
            header.sections.push_back({0, here, {}});
            continue;
        }
        if (here.text.front() != '~') {
            (header.sections.empty() ? header.front : header.sections.back().lines).push_back(here);
            continue;
        }
        const char letter = letterOf(here.text);
        if (letter == 'A') {
            header.data = static_cast<std::size_t>(line.data() + line.size() - bytes.data());
            header.dataLine = number;
            break;
        }
        header.sections.push_back({letter, here, {}});
    }
    findByLetter(header, 'C');
    findByLetter(header, 'W');
    return header;
}

std::optional<KeptField> keptField(std::string_view line, bool firstColon) {
    std::string text(trimBreaks(line));
    tabsToBlanks(text);
    std::size_t dot = text.find('.'), colon = text.find(':');
    KeptField kept;
    if (dot == npos || dot == 0) return std::nullopt;
    if (colon != npos && colon < dot) {
        if (!colonInMnemonic(text, dot, colon)) return std::nullopt;
        std::replace(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(dot), ':', '_');
        kept.mended = "a mnemonic cannot hold a colon; it is now " + std::string(trim(text.substr(0, dot)));
        colon = text.find(':');
    }
    const std::string mnem(trim(text.substr(0, dot)));
    if (mnem.empty()) return std::nullopt;
    if (colon == npos) {
        if (mnem.find(' ') != std::string::npos) return std::nullopt;
        kept.mended = "had no colon";
        text += ':';
    }
    const std::size_t end = firstColon ? text.find(':') : text.rfind(':');
    const std::string_view body = std::string_view(text).substr(dot + 1, end - dot - 1);
    const std::size_t unitEnd = std::min(body.find(' '), body.size());
    kept.field = {mnem, std::string(body.substr(0, unitEnd)), std::string(trim(body.substr(unitEnd))),
                  std::string(trim(std::string_view(text).substr(end + 1)))};
    return kept;
}

}  // namespace welvane
