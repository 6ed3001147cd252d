#include "models/cell_texts.h"

#include <algorithm>
#include <string>
#include <vector>

#include "las/las_text.h"
#include "session/properties.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

/// Words of a list; of the rows that take other texts too, nothing.
std::vector<std::string> wordsOf(PrdRow row, PrdColumn column) {
    if (row == PrdRow::SampleRate || row == PrdRow::Null || row == PrdRow::HeaderFile) return {};
    const Property* const property = findProperty(row, column);
    return property == nullptr || property->list == nullptr ? std::vector<std::string>() : split(property->list(), '|');
}

}  // namespace

void needOneLine(std::string_view text) {
    if (text.find_first_of(std::string_view("\r\n\0", 3)) != npos) throw RunTimeFailure("a field is one line");
}

void needMnem(std::string_view text) {
    needOneLine(text);
    const std::string_view name = trim(text);
    if (name.empty()) return;
    if (name.front() == '~' || name.front() == '#')
        throw RunTimeFailure(quoted(name) + " would begin a section or a comment");
    if (name.find_first_of(".:") != npos) throw RunTimeFailure("a mnemonic holds no dot and no colon: " + quoted(name));
}

void needUnit(std::string_view text) {
    needOneLine(text);
    if (trim(text).find_first_of(" \t") != npos) throw RunTimeFailure("a unit holds no blank: " + quoted(trim(text)));
}

void needNumberOrBlank(std::string_view text) {
    if (!trim(text).empty()) strictDouble(text);
}

void needDepthLimit(std::string_view text) {
    std::string_view number = trim(text);
    while (!number.empty() && std::string_view("<>=").find(number.front()) != npos) number.remove_prefix(1);
    if (!isNumeric(trim(number)) && !trim(text).empty()) throw RunTimeFailure(quoted(trim(text)) + " is no depth");
}

void needSectionName(const Session& session, int column, std::string_view text) {
    needOneLine(text);
    const std::string_view name = trim(text);
    const bool isData = column == session.tables.ord.columns() - 1;
    if (isData && session.rules == FigureRules::trueFigures && (name.size() < 2 || upperChar(name[1]) != 'A'))
        throw RunTimeFailure("the section of the data is called ~A");
    if (!name.empty() && (name.front() != '~' || name.size() < 2))
        throw RunTimeFailure("the name of a section begins with ~ and a letter");
    if (isData || session.rules != FigureRules::trueFigures) return;
    if (name.empty()) throw RunTimeFailure("a section has a name");
    const std::string& before = session.tables.ord.text(OrdRow::Name, column);
    const auto letterOf = [](std::string_view title) { return isNamedTitle(title) ? upperChar(title[1]) : '\0'; };
    if (letterOf(name) == letterOf(before) || before.empty()) return;
    throw RunTimeFailure(quoted(name) + (isNamedTitle(before) ? " is another section than " + before
                                                              : " is the name of a section of the standard"));
}

void needProperty(const Session& session, PrdRow row, PrdColumn column, std::string_view text) {
    if (session.rules != FigureRules::trueFigures) return;
    if (column == PrdColumn::Setting && (row == PrdRow::From || row == PrdRow::To)) return needDepthLimit(text);
    if (column == PrdColumn::Setting && (row == PrdRow::Null || row == PrdRow::DepthOffset))
        return needNumberOrBlank(text);
    if (column == PrdColumn::Option && (row == PrdRow::DivideFile || row == PrdRow::ParsingOptions))
        return needNumberOrBlank(text);
    const std::vector<std::string> words = wordsOf(row, column);
    const auto isText = [&](const std::string& word) { return sameText(word, trim(text)); };
    if (!words.empty() && std::ranges::none_of(words, isText))
        throw RunTimeFailure(quoted(text) + " is none of " + join(words, ", "));
}

}  // namespace welvane
