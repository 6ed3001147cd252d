#include <algorithm>
#include <array>
#include <cstdlib>

#include "conform/header_judge.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What stands in the place of a title, by mnemonic; the mnemonic itself is one of them only where people say so.
struct PlainTitle {
    std::string_view mnem, title;
};
constexpr std::array<PlainTitle, 49> plainTitles = {{
    {"COMP", "COMPANY"},
    {"COMP", "COMPANY NAME"},
    {"COMP", "OIL COMPANY"},
    {"WELL", "WELL"},
    {"WELL", "WELL NAME"},
    {"FLD", "FIELD"},
    {"FLD", "FIELD NAME"},
    {"LOC", "LOCATION"},
    {"LOC", "WELL LOCATION"},
    {"LOC", "FIELD LOCATION"},
    {"LOC", "LOCATION 1"},
    {"SRVC", "SERVICE COMPANY"},
    {"SRVC", "SERVICE COMPANY NAME"},
    {"SRVC", "SERVICE CO"},
    {"SRVC", "SERVICE CO."},
    {"SRVC", "LOGGING COMPANY"},
    {"SRVC", "CONTRACTOR"},
    {"SRVC", "SERVICE"},
    {"DATE", "DATE"},
    {"DATE", "LOG DATE"},
    {"DATE", "LOGGING DATE"},
    {"DATE", "SERVICE DATE"},
    {"DATE", "DATE LOGGED"},
    {"DATE", "COMPLETION DATE"},
    {"PROV", "PROVINCE"},
    {"PROV", "PROVINCE NAME"},
    {"CNTY", "COUNTY"},
    {"CNTY", "COUNTY NAME"},
    {"STAT", "STATE"},
    {"STAT", "STATE NAME"},
    {"CTRY", "COUNTRY"},
    {"CTRY", "COUNTRY NAME"},
    {"UWI", "UNIQUE WELL ID"},
    {"UWI", "UNIQUE WELL ID."},
    {"UWI", "UNIQUE WELL IDENTIFIER"},
    {"UWI", "UNIQUE WELL IDENTIFICATION"},
    {"UWI", "UNIQUE WELL ID NUMBER"},
    {"UWI", "UNIQUE WELL IDENTIFICATION NUMBER"},
    {"UWI", "WELL ID"},
    {"UWI", "UWI"},
    {"API", "API"},
    {"API", "API NUMBER"},
    {"API", "API CODE"},
    {"API", "API NO"},
    {"API", "API NO."},
    {"API", "API WELL NUMBER"},
    {"LIC", "LICENCE NUMBER"},
    {"LIC", "LICENSE NUMBER"},
    {"LIC", "ERCB LICENCE NUMBER"},
}};

struct RangeLine {
    std::string_view mnem;
    HeaderFields HeaderFacts::*fields;
};
constexpr std::array<RangeLine, 3> rangeLines = {
    {{"STRT", &HeaderFacts::strt}, {"STOP", &HeaderFacts::stop}, {"STEP", &HeaderFacts::step}}};

TextPlace titlePlace(const HeaderFacts& header, char letter) {
    const SeenSection* const seen = header.section(letter);
    return {seen == nullptr ? 1 : seen->line, 1};
}

std::string_view titleText(const HeaderFacts& header, char letter) {
    const SeenSection* const seen = header.section(letter);
    return seen == nullptr ? std::string_view() : seen->title;
}

/// The data of a line: what stands left of its colon, unit and value.
std::string_view leftOf(const HeaderFields& fields) {
    if (fields.unit.empty()) return fields.value;
    const char* const begin = fields.unit.data();
    const std::string_view last = fields.value.empty() ? fields.unit : fields.value;
    return {begin, static_cast<std::size_t>(last.data() + last.size() - begin)};
}

void judgeMissing(Judgement& judged) {
    const HeaderFacts& header = judged.header;
    Findings& findings = judged.findings;
    const TextPlace place = titlePlace(header, 'W');
    const std::string_view title = titleText(header, 'W');
    const auto missing = [&](Rule rule, std::string_view what, bool mendable) {
        findings.add(rule, place, title, "there is no " + std::string(what), mendable);
    };
    for (const RangeLine& line : rangeLines)
        if (!(header.*line.fields).present())
            missing(Rule::W001, line.mnem, judged.data.rows > (line.mnem == "STEP" ? 1U : 0U));
    if (!header.null.present()) missing(Rule::W002, "NULL", false);
    for (std::size_t text = 0; text < mandatoryTexts; ++text)
        if (!header.texts[text].present()) missing(Rule::W003, wellTexts[text], true);
    const auto has = [&](std::string_view mnem) {
        const auto found = std::find(wellTexts.begin(), wellTexts.end(), mnem);
        return header.texts[static_cast<std::size_t>(found - wellTexts.begin())].present();
    };
    if (!has("PROV") && !has("CNTY") && !has("STAT") && !has("CTRY"))
        missing(Rule::W004, "PROV, CNTY, STAT or CTRY", false);
    if (!has("UWI") && !has("API")) missing(Rule::W005, "UWI or API", false);
}

void judgeNumbers(Judgement& judged) {
    const HeaderFacts& header = judged.header;
    const auto judge = [&](std::string_view mnem, const HeaderFields& fields, bool mendable) {
        std::string_view unit;
        const std::string_view text = numberIn(fields, unit);
        if (!fields.present() || isNumber(text, true)) return;
        judged.findings.add(Rule::W006, fields.at(fields.value), fields.line,
                            std::string(mnem) + (text.empty() ? " is empty" : " is no number"), mendable);
    };
    for (const RangeLine& line : rangeLines)
        judge(line.mnem, header.*line.fields, judged.data.rows > (line.mnem == "STEP" ? 1U : 0U));
    judge("NULL", header.null, false);
}

bool isSeparator(char c) {
    return c == '-' || c == '/' || c == ' ';
}

void judgeDatum(Judgement& judged, std::string_view mnem, const HeaderFields& fields, std::string_view datum) {
    Findings& findings = judged.findings;
    if (mnem == "DATE" && !datum.empty()) {
        const bool year = datum.size() >= 4 && std::all_of(datum.begin(), datum.begin() + 4, isDigit);
        if (!year) findings.add(Rule::W019, fields.at(datum), datum, "DATE is not year, month, day");
    }
    if (mnem == "UWI") {
        const auto separators = std::count_if(datum.begin(), datum.end(), isSeparator);
        if (separators > 0 && datum.size() - static_cast<std::size_t>(separators) == 16)
            findings.add(Rule::W019, fields.at(datum), datum, "a UWI of 16 characters is written without separators");
    }
}

void judgeTexts(Judgement& judged) {
    const bool right = judged.findings.version() == StandardVersion::V12;
    for (std::size_t text = 0; text < wellTexts.size(); ++text) {
        const HeaderFields& fields = judged.header.texts[text];
        const std::string_view mnem = wellTexts[text];
        if (!fields.present() || !fields.dot || !fields.colon) continue;
        const std::string_view left = leftOf(fields);
        const std::string_view own = right ? fields.desc : left, other = right ? left : fields.desc;
        const bool exchanged = judged.version && isPlainTitle(mnem, own) && !other.empty() &&
                               !isPlainTitle(mnem, other) && !sameText(own, other);
        if (exchanged)
            judged.findings.add(
                Rule::W015, fields.at(own), fields.line,
                std::string(mnem) + " has its title where " + (right ? "1.2" : "2.0") + " has the datum", true);
        const std::string_view datum = exchanged ? other : own;
        if (datum.empty() && text < mandatoryTexts)
            judged.findings.add(Rule::W018, fields.at(fields.mnem), fields.line);
        judgeDatum(judged, mnem, fields, datum);
    }
}

void judgeUnitOf(Judgement& judged, std::string_view mnem, const HeaderFields& fields, std::string_view index) {
    std::string_view unit;
    (void)numberIn(fields, unit);
    if (unit == index) return;
    const bool like = sameUnit(unit, index), oneEmpty = unit.empty() || index.empty();
    judged.findings.add(Rule::W013, fields.at(unit), fields.line,
                        std::string(mnem) + " is in " + (unit.empty() ? "no unit" : std::string(unit)) +
                            ", the index in " + (index.empty() ? "none" : std::string(index)),
                        like, like || oneEmpty ? Severity::Warning : Severity::None);
}

void judgeUnits(Judgement& judged) {
    const HeaderFacts& header = judged.header;
    if (header.curves.empty()) return;
    const CurveLine& index = header.curves.front();
    // A unit that stands apart from its dot is told by a rule of its own.
    const bool told = judged.findings.has(Rule::H007);
    if (!told)
        for (const RangeLine& line : rangeLines)
            if ((header.*line.fields).present() && (header.*line.fields).dot)
                judgeUnitOf(judged, line.mnem, header.*line.fields, index.unit);
    if (!sameText(index.mnem, "DEPT") && !sameText(index.mnem, "DEPTH")) return;
    if (index.unit == "M" || index.unit == "F" || index.unit == "FT" || (told && index.unit.empty())) return;
    const bool onlyCase = sameText(index.unit, "M") || sameText(index.unit, "F") || sameText(index.unit, "FT");
    judged.findings.add(Rule::W014, {index.line, 1}, index.unit.empty() ? index.mnem : index.unit, {},
                        !onlyCase && !plainDepthUnit(index.unit).empty(),
                        onlyCase             ? Severity::Hint
                        : index.unit.empty() ? Severity::Warning
                                             : Severity::None);
}

/// True where the index shows the number of the header with fewer digits: taking it over would lose these.
bool isRoundingOf(const Decimal& index, const Decimal& told) {
    const auto shown = unitsAt(index, told.decimals);
    if (!shown || index.decimals >= told.decimals) return false;
    std::int64_t unit = 1;
    for (int decimals = index.decimals; decimals < told.decimals; ++decimals) unit *= 10;
    return std::abs(told.units - *shown) * 2 <= unit;
}

/// STRT and STOP against the first and the last index.
void judgeEnds(Judgement& judged) {
    const RowFacts& data = judged.data;
    const HeaderFacts& header = judged.header;
    const auto first = decimalOf(data.firstIndex), last = decimalOf(data.lastIndex);
    const auto start = HeaderFacts::number(header.strt), stop = HeaderFacts::number(header.stop);
    const auto step = HeaderFacts::number(header.step);
    std::string_view unit;
    if (first && start && !sameValue(*first, *start)) {
        const std::string_view text = numberIn(header.strt, unit);
        judged.findings.add(Rule::W007, header.strt.at(text), header.strt.line,
                            "STRT is " + std::string(text) + ", the first index " + std::string(data.firstIndex),
                            !isRoundingOf(*first, *start));
    }
    if (!last || !stop || sameValue(*last, *stop)) return;
    const int decimals = std::max({last->decimals, stop->decimals, step ? step->decimals : 0});
    const auto end = unitsAt(*last, decimals), told = unitsAt(*stop, decimals);
    const std::int64_t spacing = step ? unitsAt(*step, decimals).value_or(0) : 0;
    const int direction = data.direction != 0 ? data.direction : 1;
    const bool beyond = !end || !told || (*told - *end) * direction > 0;
    const bool within = end && told && std::abs(*told - *end) < std::abs(spacing);
    const std::string_view text = numberIn(header.stop, unit);
    judged.findings.add(Rule::W008, header.stop.at(text), header.stop.line,
                        "STOP is " + std::string(text) + ", the last index " + std::string(data.lastIndex),
                        (!beyond || within) && !isRoundingOf(*last, *stop));
}

void judgeMultiples(Judgement& judged, const Decimal& step) {
    for (const RangeLine& line : rangeLines) {
        if (line.mnem == "STEP") continue;
        const HeaderFields& fields = judged.header.*line.fields;
        const auto value = HeaderFacts::number(fields);
        if (!value) continue;
        const int decimals = std::max(value->decimals, step.decimals);
        const auto units = unitsAt(*value, decimals), spacing = unitsAt(step, decimals);
        if (!units || !spacing || *units % *spacing == 0) continue;
        judged.findings.add(Rule::W012, fields.at(fields.value), fields.line,
                            std::string(line.mnem) + " is no whole multiple of STEP " + textOf(step));
    }
}

void judgeStep(Judgement& judged) {
    const HeaderFields& fields = judged.header.step;
    const auto step = HeaderFacts::number(fields);
    if (!step) return;
    const RowFacts& data = judged.data;
    if (step->isZero()) {
        if (data.constant)
            judged.findings.add(Rule::W017, fields.at(fields.value), fields.line,
                                "STEP is 0, the spacing is " + textOf(data.spacing));
        return;
    }
    judgeMultiples(judged, *step);
    if (data.direction != 0 && (step->units > 0) != (data.direction > 0))
        judged.findings.add(Rule::W011, fields.at(fields.value), fields.line, {}, true);
}

}  // namespace

bool isPlainTitle(std::string_view mnem, std::string_view text) {
    return std::any_of(plainTitles.begin(), plainTitles.end(),
                       [&](const PlainTitle& known) { return known.mnem == mnem && sameText(known.title, text); });
}

std::string_view plainTitleOf(std::string_view mnem) {
    const auto found = std::find_if(plainTitles.begin(), plainTitles.end(),
                                    [mnem](const PlainTitle& known) { return known.mnem == mnem; });
    return found == plainTitles.end() ? mnem : found->title;
}

bool HeaderFacts::wrapped() const {
    return sameText(wrap.value, "YES");
}

std::optional<Decimal> HeaderFacts::number(const HeaderFields& fields) {
    std::string_view unit;
    return fields.present() ? decimalOf(numberIn(fields, unit)) : std::nullopt;
}

void judgeVersion(Judgement& judged) {
    const HeaderFacts& header = judged.header;
    Findings& findings = judged.findings;
    if (header.section('V') == nullptr) return;
    const TextPlace place = titlePlace(header, 'V');
    const std::string_view title = titleText(header, 'V');
    if (!header.vers.present())
        findings.add(Rule::V001, place, title);
    else if (!judged.version)
        findings.add(Rule::V002, header.vers.at(header.vers.value), header.vers.line);
    const bool told = judged.data.layout != RowLayout::Unknown;
    const std::string_view wrap = header.wrap.value;
    if (!header.wrap.present())
        findings.add(Rule::V003, place, title, "WRAP is missing", told);
    else if (!sameText(wrap, "YES") && !sameText(wrap, "NO"))
        findings.add(Rule::V003, header.wrap.at(wrap), header.wrap.line, "WRAP is neither YES nor NO", told);
    else if (wrap != "YES" && wrap != "NO")
        findings.add(Rule::V003, header.wrap.at(wrap), header.wrap.line, "WRAP in small letters", true, Severity::Hint);
    const bool yesOrNo = sameText(wrap, "YES") || sameText(wrap, "NO");
    if (yesOrNo && told && header.wrapped() != (judged.data.layout == RowLayout::Wrapped))
        findings.add(Rule::V004, header.wrap.at(wrap), header.wrap.line,
                     header.wrapped() ? "WRAP is YES, the data are not wrapped" : "WRAP is NO, the data are wrapped",
                     true);
    const bool fits = !findings.has(Rule::D002) && !findings.has(Rule::D003);
    if (header.dlm.present() && !header.dlm.value.empty() && !sameText(header.dlm.value, "SPACE"))
        findings.add(Rule::V005, header.dlm.at(header.dlm.value), header.dlm.line, {},
                     fits && (judged.data.comma || findings.has(Rule::D007)));
}

void judgeWell(Judgement& judged) {
    if (judged.header.section('W') == nullptr) return;
    judgeMissing(judged);
    judgeNumbers(judged);
    judgeTexts(judged);
    judgeUnits(judged);
}

void judgeAgainstData(Judgement& judged) {
    judgeStep(judged);
    if (judged.data.rows == 0) return;
    judgeEnds(judged);
}

}  // namespace welvane
