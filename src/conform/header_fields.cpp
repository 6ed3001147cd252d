#include "conform/header_fields.h"

#include <algorithm>
#include <array>

#include "shared/text.h"

namespace welvane {

namespace {

bool isGap(char c) {
    return c == ' ' || c == '\t';
}

std::string_view behindGap(std::string_view line) {
    const auto begin = std::find_if_not(line.begin(), line.end(), isGap);
    return line.substr(static_cast<std::size_t>(begin - line.begin()));
}

/// The text where titles and comments are told by their first character.
std::string_view leadOf(std::string_view line, StandardVersion version) {
    std::string_view lead = behindGap(line);
    if (version == StandardVersion::V12 && !lead.empty() && lead.front() == '"') lead.remove_prefix(1);
    return lead;
}

}  // namespace

HeaderFields cutHeaderLine(std::string_view line, std::size_t number) {
    HeaderFields fields{.line = line, .number = number};
    const std::size_t colon = line.rfind(':');
    fields.colon = colon != npos;
    const std::string_view front = line.substr(0, colon);
    if (fields.colon) fields.desc = trimBreaks(line.substr(colon + 1));
    const std::size_t dot = front.find('.');
    fields.dot = dot != npos;
    fields.mnem = trimBreaks(front.substr(0, dot));
    if (!fields.dot) return fields;
    const std::string_view rest = front.substr(dot + 1);
    const std::size_t gap = std::min(rest.find_first_of(" \t"), rest.size());
    fields.unit = rest.substr(0, gap);
    fields.value = trimBreaks(rest.substr(gap));
    return fields;
}

std::string_view numberIn(const HeaderFields& fields, std::string_view& unit) {
    unit = fields.unit;
    if (!fields.unit.empty() || isNumber(fields.value, true)) return fields.value;
    const std::size_t gap = fields.value.find_first_of(" \t");
    if (gap == npos) return fields.value;
    const std::string_view rest = trimBreaks(fields.value.substr(gap));
    if (!isNumber(rest, true)) return fields.value;
    unit = fields.value.substr(0, gap);
    return rest;
}

bool isBlankLine(std::string_view line) {
    return behindGap(line).empty();
}

bool isCommentLine(std::string_view line, StandardVersion version) {
    const std::string_view lead = leadOf(line, version);
    return !lead.empty() && lead.front() == '#';
}

std::string_view titleIn(std::string_view line, StandardVersion version) {
    const std::string_view lead = leadOf(line, version);
    return !lead.empty() && lead.front() == '~' ? lead : std::string_view();
}

char sectionLetter(std::string_view title) {
    return title.size() > 1 && !isGap(title[1]) ? upperChar(title[1]) : '\0';
}

std::string_view plainDepthUnit(std::string_view unit) {
    static constexpr std::array<std::string_view, 4> feet = {"F", "FT", "FEET", "FOOT"};
    static constexpr std::array<std::string_view, 5> metres = {"M", "METER", "METERS", "METRE", "METRES"};
    const auto isOne = [unit](std::string_view name) { return sameText(unit, name); };
    if (std::any_of(feet.begin(), feet.end(), isOne)) return "FT";
    return std::any_of(metres.begin(), metres.end(), isOne) ? "M" : "";
}

bool sameUnit(std::string_view one, std::string_view other) {
    if (sameText(one, other)) return true;
    const std::string_view plain = plainDepthUnit(one);
    return !plain.empty() && plain == plainDepthUnit(other);
}

}  // namespace welvane
