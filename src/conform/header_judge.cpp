#include "conform/header_judge.h"

#include "conform/line_ends_judge.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view knownLetters = "VWCPOA";
constexpr std::string_view onceLetters = "VWCPO";
/// Sections whose lines have a mnemonic, a dot and a colon.
constexpr std::string_view fieldLetters = "VWCP";
/// More names than this are damage, and their doubles are not worth the memory.
constexpr std::size_t mostNames = 200'000;

std::string_view firstWord(std::string_view text) {
    return text.substr(0, text.find_first_of(" \t"));
}

/// A blank on both sides and a letter behind: it may be the one that parts value and description.
std::size_t partingColon(std::string_view text) {
    for (std::size_t colon = text.find(':'); colon != npos; colon = text.find(':', colon + 1)) {
        const bool apart = colon > 0 && text[colon - 1] == ' ' && colon + 1 < text.size() && text[colon + 1] == ' ';
        const std::string_view behind = trimBreaks(text.substr(colon + 1));
        const char first = behind.empty() ? '\0' : upperChar(behind.front());
        if (apart && first >= 'A' && first <= 'Z') return colon;
    }
    return npos;
}

}  // namespace

void HeaderJudge::title(std::string_view title, std::string_view line, std::size_t number) {
    judgeHeaderBytes(findings(), line, number);
    const SeenSection seen{title, sectionLetter(title), number};
    const auto column = static_cast<std::size_t>(title.data() - line.data()) + 1;
    if (seen.letter == '\0') {
        findings().add(Rule::S008, {number, column}, line);
    } else {
        if (title[1] != seen.letter) findings().add(Rule::S007, {number, column + 1}, line, {}, true);
        if (knownLetters.find(seen.letter) == npos) findings().add(Rule::S006, {number, column}, line);
        judgeTwice(seen, line);
        judgeOrder(seen, line);
    }
    judged_.header.sections.push_back(seen);
    current_ = seen;
    dataSeen_ = dataSeen_ || seen.letter == 'A';
}

void HeaderJudge::judgeTwice(const SeenSection& seen, std::string_view line) {
    const SeenSection* const twin = judged_.header.section(seen.letter);
    repeated_ = twin != nullptr && onceLetters.find(seen.letter) != npos;
    if (repeated_)
        findings().add(
            Rule::S004, {seen.line, 1}, line,
            "a section ~" + std::string(1, seen.letter) + " stands on line " + std::to_string(twin->line) + " already");
    if (!dataSeen_) return;
    const bool another = seen.letter == 'A';
    findings().add(Rule::S003, {seen.line, 1}, line, another ? "another ~A section" : "a section behind ~A",
                   !another && twin == nullptr);
}

void HeaderJudge::judgeOrder(const SeenSection& seen, std::string_view line) {
    const std::vector<SeenSection>& before = judged_.header.sections;
    if (repeated_ || before.empty()) return;
    if (seen.letter == 'V') findings().add(Rule::S002, {seen.line, 1}, line, {}, true);
    if (seen.letter == 'W' && before.front().letter == 'V' && before.size() != 1 && !dataSeen_)
        findings().add(Rule::S005, {seen.line, 1}, line, {}, true);
}

void HeaderJudge::line(std::string_view line, std::size_t number) {
    judgeHeaderBytes(findings(), line, number);
    const bool fields = current_.letter != '\0' && fieldLetters.find(current_.letter) != npos;
    if (isBlankLine(line)) {
        if (fields) findings().tally(Rule::S010, {number, 1}, line, {}, true);
        return;
    }
    if (isCommentLine(line, findings().version())) return;
    if (judged_.header.sections.empty()) findings().tally(Rule::S009, {number, 1}, line);
    if (!fields) return;
    const HeaderFields cut = cutHeaderLine(line, number);
    judgeFields(cut);
    if (repeated_) return;
    if (current_.letter == 'V') takeVersion(cut);
    if (current_.letter == 'W') takeWell(cut);
    if (current_.letter == 'C') takeCurve(cut);
}

void HeaderJudge::judgeFields(const HeaderFields& fields) {
    const TextPlace begin = fields.at(trimBreaks(fields.line));
    if (!fields.dot) return findings().add(Rule::H001, begin, fields.line);
    if (!fields.colon) {
        const bool choice = is12() && current_.letter == 'W';
        return findings().add(Rule::H002, begin, fields.line, {}, !choice);
    }
    const std::size_t dot = fields.line.find('.'), colon = fields.line.rfind(':');
    if (fields.line.substr(dot, colon - dot).find_first_of(" \t") == npos)
        findings().add(Rule::H003, {fields.number, dot + 1}, fields.line, {}, true);
    if (fields.mnem.empty())
        findings().add(Rule::H005, {fields.number, dot + 1}, fields.line);
    else if (fields.mnem.find_first_of(" \t:") != npos)
        findings().add(Rule::H004, fields.at(fields.mnem), fields.mnem);
    judgeColons(fields);
    judgeUnit(fields);
    const bool defines = current_.letter == 'C' || current_.letter == 'P';
    if (defines && fields.desc.empty()) findings().add(Rule::H010, {fields.number, colon + 1}, fields.line);
}

void HeaderJudge::judgeColons(const HeaderFields& fields) {
    if (fields.unit.find(':') != npos) findings().add(Rule::H006, fields.at(fields.unit), fields.unit);
    if (fields.value.find(':') == npos && (fields.value.empty() || fields.unit.find(':') == npos)) return;
    const std::size_t colon = partingColon(fields.value);
    if (colon != npos) findings().add(Rule::H009, fields.at(fields.value.substr(colon)), fields.line);
}

void HeaderJudge::judgeUnit(const HeaderFields& fields) {
    if (!fields.unit.empty() &&
        (fields.unit.front() == '.' || fields.unit.front() == '[' || fields.unit.front() == '('))
        findings().add(Rule::H008, fields.at(fields.unit), fields.unit);
    const bool range = current_.letter == 'W' && (sameText(fields.mnem, "STRT") || sameText(fields.mnem, "STOP") ||
                                                  sameText(fields.mnem, "STEP"));
    if (current_.letter != 'C' && !range) {
        if (current_.letter == 'P') hints_.judgeUnit(fields);
        return;
    }
    hints_.judgeUnit(fields);
    const std::string_view word = firstWord(fields.value);
    if (!fields.unit.empty() || word.empty() || isNumber(word, true)) return;
    if (hints_.knows(word)) findings().add(Rule::H007, fields.at(word), fields.line);
}

void HeaderJudge::takeOnce(HeaderFields& place, const HeaderFields& fields) {
    if (!place.present()) {
        place = fields;
        return;
    }
    const bool equal = trimBreaks(place.line) == trimBreaks(fields.line);
    findings().add(Rule::W016, fields.at(fields.mnem), fields.line,
                   upper(fields.mnem) + " stands on line " + std::to_string(place.number) +
                       (equal ? " already, the same" : " already, with another text"),
                   equal);
}

void HeaderJudge::takeVersion(const HeaderFields& fields) {
    HeaderFacts& header = judged_.header;
    if (sameText(fields.mnem, "VERS")) takeOnce(header.vers, fields);
    if (sameText(fields.mnem, "WRAP")) takeOnce(header.wrap, fields);
    if (sameText(fields.mnem, "DLM")) takeOnce(header.dlm, fields);
}

void HeaderJudge::takeWell(const HeaderFields& fields) {
    HeaderFacts& header = judged_.header;
    if (sameText(fields.mnem, "STRT")) return takeOnce(header.strt, fields);
    if (sameText(fields.mnem, "STOP")) return takeOnce(header.stop, fields);
    if (sameText(fields.mnem, "STEP")) return takeOnce(header.step, fields);
    if (sameText(fields.mnem, "NULL")) return takeOnce(header.null, fields);
    for (std::size_t text = 0; text < wellTexts.size(); ++text)
        if (sameText(fields.mnem, wellTexts[text])) return takeOnce(header.texts[text], fields);
}

void HeaderJudge::takeCurve(const HeaderFields& fields) {
    HeaderFacts& header = judged_.header;
    ++header.curveCount;
    if (header.curves.size() >= mostNames) return;
    header.curves.push_back({fields.mnem, fields.unit, fields.number});
    if (fields.mnem.empty()) return;
    if (!curveNames_.insert(upper(fields.mnem)).second) findings().add(Rule::C003, fields.at(fields.mnem), fields.mnem);
    hints_.judgeCurve(fields);
}

void HeaderJudge::finish() {
    HeaderFacts& header = judged_.header;
    for (const char letter : std::string_view("VWCA")) {
        if (header.section(letter) != nullptr) continue;
        findings().add(Rule::S001, {1, 1}, "", "there is no section ~" + std::string(1, letter));
    }
    const SeenSection* const curves = header.section('C');
    if (curves == nullptr) return;
    if (header.curveCount == 0) return findings().add(Rule::C001, {curves->line, 1}, curves->title);
    const CurveLine& index = header.curves.front();
    for (const std::string_view name : {"DEPT", "DEPTH", "TIME", "INDEX"})
        if (sameText(index.mnem, name)) return;
    findings().add(Rule::C002, {index.line, 1}, index.mnem);
}

}  // namespace welvane
