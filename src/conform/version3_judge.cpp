#include "conform/version3_judge.h"

#include <algorithm>
#include <map>
#include <set>

#include "conform/header_judge.h"
#include "conform/line_ends_judge.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::array<std::string_view, 7> mandatory = {"COMP", "WELL", "FLD", "LOC", "SRVC", "CTRY", "DATE"};

enum class Part { Version, Well, Parameter, Definition, Data, Other };

/// What a title says: "~Core_Data[1] | Core_Definition[1]".
struct Title {
    Part part = Part::Other;
    std::string name;        ///< in capitals, without the "~"
    std::string definition;  ///< the name of the section that tells the columns
    bool ascii = false;      ///< the old name, which needs to name no definition
};

std::string_view nameIn(std::string_view text) {
    text = trimBreaks(text);
    return text.substr(0, text.find_first_of(" \t|"));
}

Title titleOf(std::string_view text) {
    Title title;
    title.name = upper(nameIn(text.substr(1)));
    const std::string_view base = std::string_view(title.name).substr(0, title.name.find('['));
    const auto isShort = [&](std::string_view name) { return base == name || base == name.substr(0, 1); };
    const auto ends = [&](std::string_view end) { return base.ends_with(end); };
    if (isShort("VERSION")) title.part = Part::Version;
    if (isShort("WELL")) title.part = Part::Well;
    if (isShort("PARAMETER") || ends("_PARAMETER")) title.part = Part::Parameter;
    if (isShort("CURVE") || ends("_DEFINITION")) title.part = Part::Definition;
    title.ascii = isShort("ASCII");
    if (title.ascii || ends("_DATA")) title.part = Part::Data;
    const std::size_t bar = text.find('|');
    if (bar != npos) title.definition = upper(nameIn(text.substr(bar + 1)));
    if (title.part == Part::Definition && isShort("CURVE")) title.name = "CURVE";
    if (title.ascii && title.definition.empty()) title.definition = "CURVE";
    return title;
}

/// Items of a row: parted by one delimiter each, blanks in any number; double quotes hold an item together.
std::size_t itemsOf(std::string_view line, char delimiter) {
    std::size_t items = 0;
    bool quoted = false, inside = false;
    for (const char c : trimBreaks(line)) {
        if (c == '"') quoted = !quoted;
        const bool parts = !quoted && c == delimiter;
        if (delimiter != ' ' && parts) ++items;
        if (delimiter == ' ' && !parts && !inside) ++items;
        inside = !parts;
    }
    return delimiter == ' ' ? items : items + 1;
}

class Version3 {
  public:
    Version3(const JudgeOptions& options, Judgement& judged)
        : options_(options), judged_(judged), hints_(judged.findings, options.library) {}

    void perform(std::string_view text) {
        LineWalk walk(text);
        while (walk.next()) {
            if (walk.number() % linesPerTurn == 0 && options_.stopped && options_.stopped()) {
                judged_.stopped = true;
                return;
            }
            ends_.take(walk.end(), walk.number());
            take(walk.text(), walk.number());
        }
        finish();
    }

  private:
    void take(std::string_view line, std::size_t number);
    void takeTitle(std::string_view title, std::string_view line, std::size_t number);
    void judgeDataTitle(const Title& title, std::string_view line, std::size_t number);
    void takeFields(const HeaderFields& fields);
    void judgeRow(std::string_view line, std::size_t number);
    void judgeLead(std::initializer_list<std::string_view> names, const std::vector<std::string>& seen, Rule rule,
                   char letter);
    void judgeVersionLines();
    void finish();
    Findings& findings() { return judged_.findings; }

    const JudgeOptions& options_;
    Judgement& judged_;
    LibraryHints hints_;
    EndCounts ends_;
    Title current_;
    std::map<std::string, std::size_t, std::less<>> definitions_;  ///< columns by the name of the section
    std::set<std::string, std::less<>> names_;                     ///< mnemonics of the section in hand
    std::vector<std::string> versionLines_, wellLines_;            ///< mnemonics in their order, the first few
    std::size_t columns_ = 0;                                      ///< of the data in hand
    char delimiter_ = ' ';
    bool dataSeen_ = false, quoteOpen_ = false;
};

void Version3::take(std::string_view line, std::size_t number) {
    const std::string_view title = titleIn(line, StandardVersion::V30);
    if (!title.empty()) return takeTitle(title, line, number);
    if (isBlankLine(line) || isCommentLine(line, StandardVersion::V30)) return;
    judgeHeaderBytes(findings(), line, number);
    if (judged_.header.sections.empty()) return findings().tally(Rule::S009, {number, 1}, line);
    if (current_.part == Part::Data) return judgeRow(line, number);
    if (current_.part != Part::Other) takeFields(cutHeaderLine(line, number));
}

void Version3::takeTitle(std::string_view title, std::string_view line, std::size_t number) {
    judgeHeaderBytes(findings(), line, number);
    std::vector<SeenSection>& sections = judged_.header.sections;
    const TextPlace place{number, 1};
    current_ = titleOf(title);
    names_.clear();
    quoteOpen_ = false;
    if (current_.name.empty()) findings().add(Rule::S008, place, line);
    char letter = '-';
    if (current_.part == Part::Version) {
        letter = 'V';
        if (!sections.empty()) findings().add(Rule::S002, place, line);
    }
    if (current_.part == Part::Well) {
        letter = 'W';
        if (sections.size() != 1) findings().add(Rule::X002, place, line, "~Well is not the second section");
    }
    if (current_.name == "OTHER" || current_.name == "O")
        findings().add(Rule::X003, place, line, "LAS 3.0 has no ~Other");
    if (current_.part == Part::Definition) definitions_[current_.name] = 0;
    if (current_.part == Part::Data) judgeDataTitle(current_, line, number);
    sections.push_back({title, letter, number});
}

void Version3::judgeDataTitle(const Title& title, std::string_view line, std::size_t number) {
    dataSeen_ = true;
    columns_ = 0;
    const TextPlace place{number, 1};
    if (title.definition.empty()) return findings().add(Rule::X003, place, line, "the data name no definition");
    auto found = definitions_.find(title.definition);
    // The log's own definition goes by two names.
    if (found == definitions_.end() && title.definition == "CURVE") found = definitions_.find("LOG_DEFINITION");
    if (found == definitions_.end() && title.definition == "LOG_DEFINITION") found = definitions_.find("CURVE");
    if (found == definitions_.end())
        return findings().add(Rule::X003, place, line, "no section ~" + title.definition + " stands above");
    columns_ = found->second;
    if (columns_ == 0) findings().add(Rule::C001, place, line, "~" + title.definition + " describes no column");
}

void Version3::takeFields(const HeaderFields& fields) {
    HeaderFacts& header = judged_.header;
    const auto once = [](HeaderFields& place, const HeaderFields& found) {
        if (!place.present()) place = found;
    };
    constexpr std::size_t lead = 3;
    if (current_.part == Part::Version) {
        if (versionLines_.size() < lead) versionLines_.push_back(upper(fields.mnem));
        if (sameText(fields.mnem, "VERS")) once(header.vers, fields);
        if (sameText(fields.mnem, "WRAP")) once(header.wrap, fields);
        if (!sameText(fields.mnem, "DLM")) return;
        once(header.dlm, fields);
        delimiter_ = sameText(fields.value, "COMMA") ? ',' : sameText(fields.value, "TAB") ? '\t' : ' ';
        return;
    }
    if (current_.part == Part::Well) {
        if (wellLines_.size() < lead) wellLines_.push_back(upper(fields.mnem));
        if (sameText(fields.mnem, "STRT")) once(header.strt, fields);
        if (sameText(fields.mnem, "STOP")) once(header.stop, fields);
        if (sameText(fields.mnem, "STEP")) once(header.step, fields);
        if (sameText(fields.mnem, "NULL")) once(header.null, fields);
        for (std::size_t text = 0; text < wellTexts.size(); ++text)
            if (sameText(fields.mnem, wellTexts[text])) once(header.texts[text], fields);
        return;
    }
    const bool told = fields.mnem.find('[') != npos || fields.desc.find('|') != npos;
    if (!fields.mnem.empty() && names_.size() < 100'000 && !names_.insert(upper(fields.mnem)).second && !told)
        findings().add(Rule::X005, fields.at(fields.mnem), fields.line);
    if (current_.part != Part::Definition) return;
    ++definitions_[current_.name];
    hints_.judgeUnit(fields);
    if (current_.name == "CURVE" || current_.name.starts_with("LOG_")) hints_.judgeCurve(fields);
}

void Version3::judgeRow(std::string_view line, std::size_t number) {
    // A text in quotes that goes on over the end of its line is one item.
    const bool quote = std::count(line.begin(), line.end(), '"') % 2 != 0;
    const bool whole = !quote && !quoteOpen_;
    quoteOpen_ = quoteOpen_ != quote;
    ++judged_.data.rows;
    if (columns_ == 0 || !whole) return;
    const std::size_t items = itemsOf(line, delimiter_);
    if (items == columns_) return;
    findings().add(Rule::X004, {number, 1}, line,
                   findings().keeps(Rule::X004) ? counted(static_cast<std::int64_t>(items), "item") + ", " +
                                                      std::to_string(columns_) + " are defined"
                                                : std::string());
}

/// The first lines of a section in their order.
void Version3::judgeLead(std::initializer_list<std::string_view> names, const std::vector<std::string>& seen, Rule rule,
                         char letter) {
    const SeenSection* const section = judged_.header.section(letter);
    if (section == nullptr || std::equal(names.begin(), names.end(), seen.begin(), seen.end())) return;
    std::string what;
    for (const std::string_view name : names) what += (what.empty() ? "" : ", ") + std::string(name);
    findings().add(rule, {section->line, 1}, section->title, what + " are not its first lines");
}

void Version3::judgeVersionLines() {
    const HeaderFacts& header = judged_.header;
    judgeLead({"VERS", "WRAP", "DLM"}, versionLines_, Rule::X001, 'V');
    if (header.wrapped())
        findings().add(Rule::X001, header.wrap.at(header.wrap.value), header.wrap.line, "WRAP is not NO");
    const std::string_view word = header.dlm.value;
    const bool known = word.empty() || sameText(word, "SPACE") || sameText(word, "COMMA") || sameText(word, "TAB");
    if (!known) findings().add(Rule::X001, header.dlm.at(word), header.dlm.line, "DLM is none of SPACE, COMMA and TAB");
}

void Version3::finish() {
    const HeaderFacts& header = judged_.header;
    ends_.judge(findings());
    const auto missing = [&](std::string_view what) {
        findings().add(Rule::S001, {1, 1}, "", "there is no " + std::string(what));
    };
    if (header.section('V') == nullptr) missing("~Version");
    if (header.section('W') == nullptr) missing("~Well");
    if (!dataSeen_) missing("data set");
    judgeVersionLines();
    judgeVersion(judged_);
    judgeLead({"STRT", "STOP", "STEP"}, wellLines_, Rule::X002, 'W');
    judgeWell(judged_);
    if (const SeenSection* const well = header.section('W'))
        for (std::size_t text = 0; text < wellTexts.size(); ++text)
            if (!header.texts[text].present() &&
                std::find(mandatory.begin(), mandatory.end(), wellTexts[text]) != mandatory.end())
                findings().add(Rule::X002, {well->line, 1}, well->title, "there is no " + std::string(wellTexts[text]));
    judged_.remark = "LAS 3.0: the values of its data sets were not judged";
}

}  // namespace

void judgeVersion3(std::string_view text, const JudgeOptions& options, Judgement& judged) {
    Version3(options, judged).perform(text);
}

}  // namespace welvane
