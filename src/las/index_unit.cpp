#include "las/index_unit.h"

#include <array>
#include <optional>
#include <utility>

#include "las/channel_names.h"
#include "las/data_refusal.h"
#include "las/sections.h"
#include "las/source_header.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct KnownUnit {
    std::string_view text;
    IndexUnitKind kind;
    double metres;
};

constexpr double inchMetres = 0.0254;  // by definition
constexpr KnownUnit metre(std::string_view text) {
    return {text, IndexUnitKind::Metre, 1};
}
constexpr KnownUnit foot(std::string_view text) {
    return {text, IndexUnitKind::Foot, metresInFoot};
}
constexpr KnownUnit length(std::string_view text, double metres) {
    return {text, IndexUnitKind::OtherLength, metres};
}
constexpr KnownUnit timeUnit(std::string_view text) {
    return {text, IndexUnitKind::Time, 0};
}

// clang-format off
constexpr std::array knownUnits = {
    metre("M"), metre("METER"), metre("METERS"), metre("METRE"), metre("METRES"), metre("MTR"), metre("MTRS"),
    metre("MT"), metre("MTS"),
    // Cyrillic in UTF-8 (m, M, metr, meter) and in code page 1251 (m, M, metr).
    metre("\xD0\xBC"), metre("\xD0\x9C"), metre("\xD0\xBC\xD0\xB5\xD1\x82\xD1\x80"),
    metre("\xD0\xBC\xD0\xB5\xD1\x82\xD0\xB5\xD1\x80"), metre("\xEC"), metre("\xCC"), metre("\xEC\xE5\xF2\xF0"),
    foot("F"), foot("FT"), foot("FEET"), foot("FOOT"), foot("FTS"), foot("F."), foot("FT."), foot("'"),
    length("IN", inchMetres), length("INCH", inchMetres), length("INCHES", inchMetres), length("IN.", inchMetres),
    length(".1IN", inchMetres / 10), length("0.1IN", inchMetres / 10),
    length("CM", 0.01), length("MM", 0.001), length("DM", 0.1), length("KM", 1000),
    timeUnit("S"), timeUnit("SEC"), timeUnit("SECS"), timeUnit("SECOND"), timeUnit("SECONDS"), timeUnit("MS"),
    timeUnit("MSEC"), timeUnit("US"), timeUnit("USEC"), timeUnit("MIN"), timeUnit("MINS"), timeUnit("MINUTE"),
    timeUnit("MINUTES"), timeUnit("H"), timeUnit("HR"), timeUnit("HRS"), timeUnit("HOUR"), timeUnit("HOURS"),
    timeUnit("D"), timeUnit("DAY"), timeUnit("DAYS"), timeUnit("DATE"), timeUnit("TIME"), timeUnit("HHMMSS"),
    timeUnit("HH:MM"), timeUnit("HH:MM:SS")};
// clang-format on

std::string_view withoutBrackets(std::string_view text) {
    text = trim(text);
    if (text.size() < 2) return text;
    for (const std::string_view pair : {"[]", "()", "{}"})
        if (text.front() == pair[0] && text.back() == pair[1]) return trim(text.substr(1, text.size() - 2));
    return text;
}

/// A line's unit under the name that a message calls it.
using NamedUnit = std::pair<std::string, IndexUnit>;

void takeUnit(const NamedUnit& next, NamedUnit& chosen, std::string& contradiction) {
    if (next.second.kind == IndexUnitKind::Unknown) {
        if (chosen.second.text.empty()) chosen = next;
    } else if (chosen.second.kind == IndexUnitKind::Unknown) {
        chosen = next;
    } else if (contradiction.empty() && !sameIndexUnit(chosen.second, next.second)) {
        contradiction = chosen.first + " is in " + chosen.second.text + ", " + next.first + " in " + next.second.text;
    }
}

/// The unit of a line with all its characters: one such as "hh:mm" holds a colon, at which a header line is cut as a
/// rule.
std::string wholeUnit(const LasText& text, char section, std::string_view mnem, const std::string& unit) {
    const auto begin = unit.empty() ? std::nullopt : text.seekSection(section);
    if (!begin) return unit;
    LineReader lines = text.headerLines(*begin);
    for (std::string_view line; lines.next(line) && !trim(line).starts_with('~');)
        if (const auto kept = keptField(trimBreaks(line)); kept && sameText(kept->field.mnem, mnem))
            return kept->field.unit;
    return unit;
}

}  // namespace

IndexUnit readIndexUnit(std::string_view text) {
    const std::string_view bare = withoutBrackets(text);
    for (const KnownUnit& known : knownUnits)
        if (sameText(bare, known.text)) return {known.kind, std::string(trim(text)), known.metres};
    return {IndexUnitKind::Unknown, std::string(trim(text)), 0};
}

std::string shownUnit(const IndexUnit& unit) {
    return unit.text.size() == 1 ? upper(unit.text) : unit.text;
}

bool sameIndexUnit(const IndexUnit& one, const IndexUnit& other) {
    if (one.kind != other.kind || one.kind == IndexUnitKind::Unknown) return false;
    return one.metres == other.metres;
}

IndexUnitFound findIndexUnit(const LasText& text) {
    const DepthHeader header = getDepthHeader(text);
    NamedUnit chosen;
    std::string contradiction;
    const auto take = [&](char section, const std::string& mnem, const std::string& unit) {
        takeUnit({mnem, readIndexUnit(wholeUnit(text, section, mnem, unit))}, chosen, contradiction);
    };
    take('W', "STRT", header.strt().unit);
    take('W', "STOP", header.stop().unit);
    take('W', "STEP", header.step().unit);
    if (const ColumnNames names = nameColumns(text, 1); !names.channels.empty()) {
        const HeaderField& index = names.channels.front();
        take('C', index.mnem, index.unit);
    }
    return {std::move(chosen.second), std::move(contradiction)};
}

std::vector<Note> indexNotes(const IndexUnit& unit, const std::string& name) {
    if (unit.kind != IndexUnitKind::Unknown) return {};
    const std::string what = unit.text.empty()
                                 ? "the index has no unit"
                                 : "the index has the unit \"" + unit.text + "\", which is none of length or time";
    return {{.kind = NoteKind::Unit, .file = name, .text = what + "; nothing is converted"}};
}

IndexUnit chooseIndexUnit(const LasText& text, std::string_view given) {
    if (!given.empty()) return readIndexUnit(given);
    IndexUnitFound found = findIndexUnit(text);
    if (!found.contradiction.empty())
        throw DataRefusal(0, "units of the index contradict each other: " + found.contradiction,
                          DataRefusal::Help::IndexUnit);
    return std::move(found.unit);
}

}  // namespace welvane
