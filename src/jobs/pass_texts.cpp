#include "jobs/pass_texts.h"

#include <algorithm>

#include "jobs/choice_text.h"
#include "jobs/refusal.h"
#include "session/properties.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What a word of a property's option stands for; nothing for an option that was not given.
template <class Choice>
std::optional<Choice> optionalChoice(PrdRow row, const std::string& text, PrdColumn column = PrdColumn::Setting) {
    if (text.empty()) return std::nullopt;
    const Property& property = *findProperty(row, column);
    return decode<Choice>(needWord(property.option, text, property.words));
}

std::optional<bool> optionalYesOrNo(std::string_view option, const std::string& text) {
    if (text.empty()) return std::nullopt;
    return needYesOrNo(option, text);
}

std::optional<DepthLimit> optionalLimit(std::string_view option, const std::string& text) {
    if (text.empty()) return std::nullopt;
    return needLimit(option, text);
}

std::array<std::optional<GivenNumber>, 6> formatNumbers(const std::string& text) {
    std::array<std::optional<GivenNumber>, 6> numbers;
    if (text.empty()) return numbers;
    const std::vector<std::string> pieces =
        needPieces("--format", text, ',', 1, numbers.size(), "DOT,VALUE,COLON,PLUS,WIDTH,DECIMALS");
    for (std::size_t piece = 0; piece < pieces.size(); ++piece)
        numbers[piece] = optionalNumber("--format", trim(pieces[piece]));
    return numbers;
}

ChannelLink readLink(const std::string& text) {
    constexpr std::string_view form = "SLOT:CHANNEL>COLUMN[:FROM:TO]";
    const std::vector<std::string> pieces = needPieces("--link", text, ':', 2, 4, form);
    const std::vector<std::string> ends = needPieces("--link", pieces[1], '>', 2, 2, form);
    if (pieces.size() == 3) throw senselessChoice("link", "'" + text + "' names one depth only");
    ChannelLink link{needSlot("--link", pieces[0]), ends[0], std::string(trim(ends[1]))};
    if (pieces.size() == 4) link.depths = {needNumber("--link", pieces[2]), needNumber("--link", pieces[3])};
    return link;
}

InputDepths readInputDepths(const std::string& text) {
    const std::vector<std::string> pieces = needPieces("--apply-depths", text, ':', 3, 3, "SLOT:FROM:TO");
    return {needSlot("--apply-depths", pieces[0]),
            {needNumber("--apply-depths", pieces[1]), needNumber("--apply-depths", pieces[2])}};
}

ChannelShift readShift(const std::string& text) {
    const std::vector<std::string> pieces = needPieces("--shift", text, ':', 3, 3, "SLOT:CHANNEL:OFFSET");
    return {needSlot("--shift", pieces[0]), pieces[1], needNumber("--shift", pieces[2]).value()};
}

ChannelClip readClip(const std::string& text) {
    const std::vector<std::string> pieces = needPieces("--clip", text, ':', 4, 4, "SLOT:CHANNEL:TOP:BOTTOM");
    return {needSlot("--clip", pieces[0]), pieces[1], needNumber("--clip", pieces[2]), needNumber("--clip", pieces[3])};
}

std::vector<std::string> readSelection(const std::string& text) {
    std::vector<std::string> names;
    if (text.empty()) return names;
    for (const std::string& name : split(text, ','))
        if (!trim(name).empty()) names.emplace_back(trim(name));
    if (names.empty()) throw senselessChoice("select", "it names no channel");
    return names;
}

std::string readSections(const std::string& text) {
    std::string letters;
    if (text.empty()) return letters;
    for (const std::string& piece : split(text, ',')) {
        const std::string name = upper(trim(piece));
        const char letter = name.empty() ? ' ' : name[name.size() > 1 && name[0] == '~' ? 1 : 0];
        if (std::string_view("VWCPOA").find(letter) == npos || letters.find(letter) != std::string::npos)
            throw senselessChoice("sections", "'" + text + "' is not a list of the letters V, W, C, P, O, each once");
        letters += letter;
    }
    // The data section stays at the end, whether it is named or not.
    letters.erase(std::remove(letters.begin(), letters.end(), 'A'), letters.end());
    return letters;
}

}  // namespace

PassRequest passRequest(const PassTexts& choices) {
    PassRequest request = choices.request;
    request.from = optionalLimit("--from", choices.from);
    request.to = optionalLimit("--to", choices.to);
    request.unit = optionalChoice<DepthUnit>(PrdRow::DepthUnits, choices.unit);
    request.offset = optionalNumber("--offset", choices.offset);
    request.direction = optionalChoice<Direction>(PrdRow::Direction, choices.direction);
    request.fill = optionalChoice<NullFill>(PrdRow::NullFill, choices.fill);
    constexpr PropertyWord surveyUnits[] = {{"F", "F"}, {"FT", "F"}, {"M", "M"}};
    if (!choices.tvdUnit.empty())
        request.tvdUnit =
            needWord("--tvd-unit", choices.tvdUnit, surveyUnits) == "M" ? SurveyUnit::Metres : SurveyUnit::Feet;
    if (request.tvdUnit && request.tvd.empty()) throw senselessChoice("tvd-unit", "it goes with tvd");
    request.select = readSelection(choices.select);
    for (const std::string& text : choices.links) request.links.push_back(readLink(text));
    for (const std::string& text : choices.applyDepths) request.applyDepths.push_back(readInputDepths(text));
    for (const std::string& text : choices.shifts) request.shifts.push_back(readShift(text));
    for (const std::string& text : choices.clips) request.clips.push_back(readClip(text));
    request.wrap = optionalChoice<Wrap>(PrdRow::Wrap, choices.wrap);
    request.version = optionalChoice<LasVersion>(PrdRow::Vers, choices.vers);
    request.null = optionalNumber("--null", choices.null);
    request.format = formatNumbers(choices.format);
    request.sections = readSections(choices.sections);
    request.mergeParameters = optionalYesOrNo("--merge-parameters", choices.mergeParameters);
    request.renameDuplicates = optionalYesOrNo("--rename-duplicates", choices.renameDuplicates);
    request.plain = optionalChoice<TitleStyle>(PrdRow::PlainAscii, choices.ascii, PrdColumn::Option);
    request.separator = optionalChoice<Separator>(PrdRow::PlainAscii, choices.separator, PrdColumn::SecondOption);
    if (request.csv && request.plain) throw senselessChoice("csv", "it and ascii are two forms of one output");
    if (request.separator && !request.plain) throw senselessChoice("separator", "it goes with ascii");
    constexpr PropertyWord rules[] = {{"true", "true"}, {"as-laid-down", "laid"}};
    if (!choices.rules.empty() && needWord("--rules", choices.rules, rules) == "laid")
        request.rules = FigureRules::asLaidDown;
    if (request.rules == FigureRules::asLaidDown && (request.decimalComma || !request.indexUnit.empty()))
        throw senselessChoice("rules", "decimal-comma and index-unit go with true figures");
    request.columnWidth = optionalNumber("--column-width", choices.columnWidth);
    return request;
}

}  // namespace welvane
