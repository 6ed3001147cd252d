#include "conform/mend_header.h"

#include <algorithm>

#include "conform/header_judge.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view fieldSections = "VWCP";

/// The line with one of its parts replaced.
std::string withPart(const HeaderFields& fields, std::string_view part, std::string_view text) {
    const auto begin = static_cast<std::size_t>(part.data() - fields.line.data());
    std::string line(fields.line.substr(0, begin));
    // A part that was empty stands right behind another: one blank parts them.
    if (part.empty() && !text.empty() && !line.empty() && line.back() != ' ') line += ' ';
    line += text;
    const std::string_view rest = fields.line.substr(begin + part.size());
    if (part.empty() && !rest.empty() && rest.front() == ':') line += ' ';
    return line.append(rest);
}

/// The line that has this mnemonic first; nullptr for none.
std::string* lineOf(HeaderBlock& block, std::string_view mnem) {
    for (std::string& line : block.lines)
        if (!isCommentLine(line, StandardVersion::V20) && sameText(cutHeaderLine(line, 1).mnem, mnem)) return &line;
    return nullptr;
}

/// Where data stand to the left of the colon: unit and value as one text.
std::string_view leftPart(const HeaderFields& fields) {
    if (fields.unit.empty()) return fields.value;
    const char* const begin = fields.unit.data();
    const std::string_view last = fields.value.empty() ? fields.unit : fields.value;
    return {begin, static_cast<std::size_t>(last.data() + last.size() - begin)};
}

void exchangeSides(std::string& line) {
    const HeaderFields fields = cutHeaderLine(line, 1);
    const std::size_t dot = line.find('.');
    line = line.substr(0, dot + 1) + " " + std::string(fields.desc) + " : " + std::string(leftPart(fields));
}

/// Lines that say the same as one before them, of mnemonics that stand once.
void dropTwins(HeaderBlock& block, const std::vector<std::string_view>& once) {
    std::vector<std::string> kept;
    for (std::string& line : block.lines) {
        const std::string_view mnem = cutHeaderLine(line, 1).mnem;
        const bool single =
            std::any_of(once.begin(), once.end(), [mnem](std::string_view name) { return sameText(name, mnem); });
        const bool twin = single && std::any_of(kept.begin(), kept.end(), [&](const std::string& other) {
                              return trimBreaks(other) == trimBreaks(line);
                          });
        if (!twin) kept.push_back(std::move(line));
    }
    block.lines = std::move(kept);
}

void moveTo(std::vector<HeaderBlock>& blocks, std::size_t from, std::size_t to) {
    const auto begin = blocks.begin();
    const auto source = begin + static_cast<std::ptrdiff_t>(from), target = begin + static_cast<std::ptrdiff_t>(to);
    if (from > to) std::rotate(target, source, source + 1);
}

std::size_t placeOf(const std::vector<HeaderBlock>& blocks, char letter) {
    const auto found = std::find_if(blocks.begin(), blocks.end(),
                                    [letter](const HeaderBlock& block) { return block.letter == letter; });
    return static_cast<std::size_t>(found - blocks.begin());
}

}  // namespace

void plainBytes(std::string& line) {
    for (char& c : line)
        if (static_cast<unsigned char>(c) < 32) c = ' ';
}

HeaderMend::HeaderMend(const Judgement& judged, bool wraps)
    : judged_(judged), wraps_(wraps), found_(judged.findings.sorted()) {}

bool HeaderMend::any(Rule rule) const {
    return std::any_of(found_.begin(), found_.end(),
                       [rule](const Finding& found) { return found.rule == rule && found.mendable; });
}

std::string HeaderMend::newStep() const {
    return judged_.data.constant ? textOf(judged_.data.spacing) : std::string("0");
}

void HeaderMend::mendLine(char letter, std::string& line) const {
    plainBytes(line);
    if (fieldSections.find(letter) == npos || letter == '\0' || isBlankLine(line) ||
        isCommentLine(line, judged_.findings.version()))
        return;
    const HeaderFields fields = cutHeaderLine(line, 1);
    const bool v12 = judged_.findings.version() == StandardVersion::V12;
    if (!fields.dot) return;
    if (!fields.colon) {
        if (!v12 || letter != 'W') line += " :";
        return;
    }
    const std::size_t dot = line.find('.'), colon = line.rfind(':');
    if (!v12 && line.substr(dot, colon - dot).find(' ') == npos) line.insert(colon, 1, ' ');
}

void HeaderMend::mendVersion(HeaderBlock& block) const {
    if (wraps_ || any(Rule::V003) || any(Rule::V004)) {
        const RowLayout layout = judged_.data.layout;
        const bool wrapped =
            wraps_ || (layout == RowLayout::Unknown ? judged_.header.wrapped() : layout == RowLayout::Wrapped);
        const std::string_view word = wrapped ? "YES" : "NO";
        if (std::string* const line = lineOf(block, "WRAP")) {
            const HeaderFields fields = cutHeaderLine(*line, 1);
            *line = withPart(fields, fields.value, word);
        } else {
            block.lines.push_back("WRAP. " + std::string(word) +
                                  (wrapped ? " : SEVERAL LINES PER DEPTH STEP" : " : ONE LINE PER DEPTH STEP"));
        }
    }
    std::string* const delimiter = lineOf(block, "DLM");
    if (delimiter != nullptr && any(Rule::V005)) {
        const HeaderFields fields = cutHeaderLine(*delimiter, 1);
        *delimiter = withPart(fields, fields.value, "SPACE");
    }
    if (any(Rule::W016)) dropTwins(block, {"VERS", "WRAP", "DLM"});
}

void HeaderMend::setRange(HeaderBlock& block, std::string_view mnem, const std::string& value) const {
    if (std::string* const line = lineOf(block, mnem)) {
        const HeaderFields fields = cutHeaderLine(*line, 1);
        std::string_view unit;
        *line = withPart(fields, numberIn(fields, unit), value);
        return;
    }
    const std::string unit = judged_.header.curves.empty() ? "" : std::string(judged_.header.curves.front().unit);
    block.lines.insert(block.lines.begin(), std::string(mnem) + "." + unit + " " + value + " : " + std::string(mnem));
}

void HeaderMend::mendWell(HeaderBlock& block) const {
    const auto told = [this](Rule rule, std::string_view mnem) {
        return std::any_of(found_.begin(), found_.end(), [&](const Finding& found) {
            return found.rule == rule && found.mendable && found.what.find(mnem) != std::string::npos;
        });
    };
    // The first line of ~Well is set last, as a missing one is put in front.
    if (told(Rule::W001, "STEP") || told(Rule::W006, "STEP") || any(Rule::W009)) {
        setRange(block, "STEP", newStep());
    } else if (any(Rule::W011)) {
        const auto step = HeaderFacts::number(judged_.header.step);
        if (step) setRange(block, "STEP", textOf({-step->units, step->decimals}));
    }
    if (told(Rule::W001, "STOP") || told(Rule::W006, "STOP") || any(Rule::W008))
        setRange(block, "STOP", std::string(judged_.data.lastIndex));
    if (told(Rule::W001, "STRT") || told(Rule::W006, "STRT") || any(Rule::W007))
        setRange(block, "STRT", std::string(judged_.data.firstIndex));
    const bool v12 = judged_.findings.version() == StandardVersion::V12;
    if (any(Rule::W015))
        for (const std::string_view mnem : wellTexts) {
            std::string* const line = lineOf(block, mnem);
            if (line == nullptr) continue;
            const HeaderFields fields = cutHeaderLine(*line, 1);
            const std::string_view own = v12 ? fields.desc : leftPart(fields),
                                   other = v12 ? leftPart(fields) : fields.desc;
            if (isPlainTitle(mnem, own) && !other.empty() && !isPlainTitle(mnem, other) && !sameText(own, other))
                exchangeSides(*line);
        }
    if (any(Rule::W016)) {
        std::vector<std::string_view> once(wellTexts.begin(), wellTexts.end());
        once.insert(once.end(), {"STRT", "STOP", "STEP", "NULL"});
        dropTwins(block, once);
    }
    for (std::size_t text = 0; text < mandatoryTexts; ++text)
        if (!judged_.header.texts[text].present()) {
            const std::string_view mnem = wellTexts[text];
            block.lines.push_back(std::string(mnem) + (v12 ? ". " + std::string(plainTitleOf(mnem)) + " :"
                                                           : ".  : " + std::string(plainTitleOf(mnem))));
        }
}

/// FEET and METRE become FT and M; STRT, STOP and STEP take the spelling of the index.
void HeaderMend::mendUnits(HeaderBlock& block) const {
    if (judged_.header.curves.empty() || (!any(Rule::W013) && !any(Rule::W014))) return;
    const std::string_view index = judged_.header.curves.front().unit;
    const std::string_view unit = any(Rule::W014) ? plainDepthUnit(index) : index;
    for (const std::string_view mnem : {"STRT", "STOP", "STEP"}) {
        std::string* const line = block.letter == 'W' ? lineOf(block, mnem) : nullptr;
        if (line == nullptr) continue;
        const HeaderFields fields = cutHeaderLine(*line, 1);
        std::string_view own;
        (void)numberIn(fields, own);
        if (own != unit && sameUnit(own, unit)) *line = withPart(fields, own, unit);
    }
    if (block.letter != 'C') return;
    for (std::string& line : block.lines) {
        if (isBlankLine(line) || isCommentLine(line, judged_.findings.version())) continue;
        const HeaderFields fields = cutHeaderLine(line, 1);
        if (fields.unit == index && fields.unit != unit) line = withPart(fields, fields.unit, unit);
        return;
    }
}

void HeaderMend::mend(std::vector<HeaderBlock>& blocks, const std::vector<std::string>& fromData) const {
    for (HeaderBlock& block : blocks) {
        plainBytes(block.title);
        const std::size_t tilde = block.title.find('~');
        if (tilde != npos && tilde + 1 < block.title.size()) block.title[tilde + 1] = upperChar(block.title[tilde + 1]);
        for (std::string& line : block.lines) mendLine(block.letter, line);
        if (block.letter != '\0' && fieldSections.find(block.letter) != npos)
            std::erase_if(block.lines, [](const std::string& line) { return isBlankLine(line); });
    }
    for (const char letter : std::string_view("VWC")) {
        const std::size_t place = placeOf(blocks, letter);
        if (place == blocks.size()) continue;
        if (letter == 'V') mendVersion(blocks[place]);
        mendUnits(blocks[place]);
        if (letter == 'W') mendWell(blocks[place]);
    }
    // Behind the lines that stand in front of the first title.
    const std::size_t first = !blocks.empty() && blocks.front().letter == '\0' && blocks.front().title.empty() ? 1 : 0;
    const std::size_t version = placeOf(blocks, 'V');
    if (version != blocks.size()) moveTo(blocks, version, first);
    const std::size_t well = placeOf(blocks, 'W');
    const bool second = any(Rule::S005) || (any(Rule::S002) && judged_.findings.holds(Rule::S005));
    if (second && well != blocks.size()) moveTo(blocks, well, first + 1);
    if (blocks.empty()) blocks.emplace_back();
    blocks.back().lines.insert(blocks.back().lines.end(), fromData.begin(), fromData.end());
}

}  // namespace welvane
