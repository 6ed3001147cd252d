#include "las/kept_header.h"

#include <algorithm>
#include <array>
#include <utility>

#include "las/header_text.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view lasVersion = "CWLS LOG ASCII STANDARD - VERSION 2.0";

void tell(std::vector<Note>& notes, const SourceLine& line, const std::string& what) {
    constexpr std::size_t longest = 120;
    const std::string shown(line.text.substr(0, longest));
    notes.push_back({.kind = NoteKind::Repair,
                     .line = line.number,
                     .text = shown + (line.text.size() > longest ? "..." : "") + ": " + what});
}

void tell(std::vector<Note>& notes, const std::string& what) {
    notes.push_back({.kind = NoteKind::Repair, .text = what});
}

bool hasName(const std::vector<HeaderField>& fields, std::string_view mnem) {
    return std::any_of(fields.begin(), fields.end(),
                       [mnem](const HeaderField& field) { return sameText(field.mnem, mnem); });
}

/// "CH3"; with more behind it where that name is taken.
std::string freeColumnName(std::size_t column, const std::vector<HeaderField>& taken) {
    std::string name = "CH" + std::to_string(column);
    while (hasName(taken, name)) name += "_";
    return name;
}

/// A ~Curve line without a dot: its first word and what stands behind the colon.
KeptCurve curveWithoutDot(const SourceLine& line) {
    std::string text(line.text);
    tabsToBlanks(text);
    const std::size_t colon = std::min(text.find(':'), text.size());
    const std::string front(trim(std::string_view(text).substr(0, colon)));
    const std::size_t blank = std::min(front.find(' '), front.size());
    KeptCurve curve{.field = {}, .source = line, .mended = "had no dot", .certain = false};
    curve.field.mnem = front.substr(0, blank);
    curve.field.value = std::string(trim(std::string_view(front).substr(blank)));
    if (colon < text.size()) curve.field.desc = std::string(trim(std::string_view(text).substr(colon + 1)));
    return curve;
}

/// A number as a header's value has it, a unit in front of it aside.
std::string_view numberOf(std::string_view value) {
    const std::size_t blank = value.find(' ');
    if (blank == npos) return value;
    const std::string_view behind = trim(value.substr(blank));
    return !isNumeric(value.substr(0, blank)) && isNumeric(behind) ? behind : value;
}

double versionOf(const SourceHeader& source) {
    const SourceSection* const section = source.find('V');
    if (section == nullptr) return 2;
    for (const SourceLine& line : section->lines)
        if (const auto kept = keptField(line.text);
            kept && sameText(kept->field.mnem, "VERS") && !kept->field.value.empty())
            return val(kept->field.value);
    return 2;
}

/// A section's lines in the making: fields to be laid out, and lines that stay as they are.
class SectionText {
  public:
    void field(HeaderField field) { rows_.push_back({std::move(field), {}}); }
    void whole(std::string_view line) { rows_.push_back({{}, std::string(line)}); }
    bool holds(std::string_view mnem) const {
        return std::any_of(rows_.begin(), rows_.end(),
                           [mnem](const Row& row) { return row.line.empty() && sameText(row.field.mnem, mnem); });
    }
    void write(HeaderText& text) const {
        std::size_t mnem = 4, unit = 4, value = 12;
        for (const Row& row : rows_) {
            widen(mnem, row.field.mnem, 12);
            widen(unit, row.field.unit, 12);
            widen(value, row.field.value, 44);
        }
        for (const Row& row : rows_) text.line(row.line.empty() ? laidOut(row.field, mnem, unit, value) : row.line);
    }

  private:
    struct Row {
        HeaderField field;
        std::string line;  ///< of a line that stays as it is
    };
    /// The column grows with its texts up to a width that a screen has room for; a longer text moves what is behind it.
    static void widen(std::size_t& width, const std::string& text, std::size_t most) {
        width = std::max(width, std::min(text.size(), most));
    }
    static void fill(std::string& line, const std::string& text, std::size_t width) {
        line += text;
        if (text.size() < width) line.append(width - text.size(), ' ');
    }
    static std::string laidOut(const HeaderField& field, std::size_t mnem, std::size_t unit, std::size_t value) {
        std::string line(field.mnem.size() < mnem ? mnem - field.mnem.size() + 1 : 1, ' ');
        line += field.mnem + ".";
        fill(line, field.unit, unit);
        line += ' ';
        fill(line, field.value, value);
        return line + " :" + (field.desc.empty() ? "" : " " + field.desc);
    }
    std::vector<Row> rows_;
};

/// The header in the making.
class KeptHeader {
  public:
    KeptHeader(const SourceHeader& source, std::string_view country, const DepthFacts& depths, std::vector<Note>& notes)
        : source_(source), country_(country), depths_(depths), notes_(notes), version_(versionOf(source)) {}

    void version();
    void well();
    void curves(const std::vector<HeaderField>& channels, std::vector<KeptCurve>& lines);
    void rest(const SourceHeader& behind);
    std::string take() { return text_.take(); }

  private:
    /// A section's fields and its other lines, each in its place; what is neither field nor comment becomes a comment.
    template <class Take>
    void eachLine(const SourceSection& section, SectionText& target, bool firstColon, Take&& take);
    void comment(const SourceLine& line, SectionText& target);
    void plain(const SourceSection& section);
    void parameters(const SourceSection& section);
    void depthLine(HeaderField& field, const SourceLine* line, const std::string& fromData);
    void addWellLines(SectionText& target);
    std::string elsewhere(std::string_view mnem) const;

    const SourceHeader& source_;
    std::string country_;
    const DepthFacts& depths_;
    std::vector<Note>& notes_;
    double version_;
    HeaderText text_;
};

void KeptHeader::comment(const SourceLine& line, SectionText& target) {
    target.whole("# " + std::string(line.text));
    tell(notes_, line, "no header line; kept as a comment");
}

template <class Take>
void KeptHeader::eachLine(const SourceSection& section, SectionText& target, bool firstColon, Take&& take) {
    for (const SourceLine& line : section.lines) {
        if (line.text.front() == '#') {
            target.whole(line.text);
            continue;
        }
        auto kept = keptField(line.text, firstColon);
        if (!kept) {
            comment(line, target);
            continue;
        }
        if (!kept->mended.empty()) tell(notes_, line, kept->mended);
        take(kept->field, line);
        target.field(std::move(kept->field));
    }
}

void KeptHeader::version() {
    SectionText target;
    for (const SourceLine& line : source_.front) {
        if (line.text.front() == '#')
            target.whole(line.text);
        else
            comment(line, target);
    }
    const SourceSection* const section = source_.find('V');
    text_.line(section != nullptr ? section->title.text : std::string_view("~Version Information"));
    const auto takeLine = [this](HeaderField& field, const SourceLine& line) {
        if (sameText(field.mnem, "VERS") && val(field.value) != 2) {
            tell(notes_, line, "written as LAS 2.0");
            field.value = "2.0";
            field.desc = lasVersion;
        } else if (sameText(field.mnem, "WRAP") && !sameText(field.value, "NO")) {
            tell(notes_, line, "written with one line per depth step");
            field.value = "NO";
            field.desc = "One line per depth step";
        }
    };
    if (section != nullptr) eachLine(*section, target, false, takeLine);
    if (!target.holds("VERS")) {
        target.field({"VERS", "", "2.0", std::string(lasVersion)});
        tell(notes_, "had no VERS line");
    }
    if (!target.holds("WRAP")) target.field({"WRAP", "", "NO", "One line per depth step"});
    target.write(text_);
}

void KeptHeader::depthLine(HeaderField& field, const SourceLine* line, const std::string& fromData) {
    const std::string_view number = numberOf(field.value);
    if (number.size() != field.value.size() && field.unit.empty())
        field.unit = std::string(trim(std::string_view(field.value).substr(0, field.value.find(' '))));
    std::string value(number);
    if (!fromData.empty() && value != fromData) {
        if (line != nullptr) tell(notes_, *line, "does not fit the data; " + fromData + " is written");
        value = fromData;
    }
    field.value = std::move(value);
}

/// Where other lines of a header that breaks the standard hold what a line of ~Well should say.
std::string KeptHeader::elsewhere(std::string_view mnem) const {
    struct Place {
        std::string_view mnem;
        char section;
        std::string_view other;
    };
    constexpr std::array<Place, 8> places = {{{"COMP", 'W', "CN"},
                                              {"COMP", 'P', "COMPANY"},
                                              {"WELL", 'P', "WN"},
                                              {"LOC", 'P', "FL"},
                                              {"FLD", 'W', "FN"},
                                              {"FLD", 'P', "FN"},
                                              {"FLD", 'P', "FLD"},
                                              {"DATE", 'P', "DATE"}}};
    for (const Place& place : places) {
        const SourceSection* const section = source_.find(place.section);
        if (section == nullptr || place.mnem != mnem) continue;
        const bool turned = version_ < 2 && place.section == 'W';
        for (const SourceLine& line : section->lines) {
            const auto kept = keptField(line.text, turned);
            if (!kept || !sameText(kept->field.mnem, place.other)) continue;
            const std::string& value = turned ? kept->field.desc : kept->field.value;
            if (!value.empty()) return value;
        }
    }
    return {};
}

/// The lines that a ~Well section needs and that the source does not have, empty where nothing in it tells them.
void KeptHeader::addWellLines(SectionText& target) {
    const auto add = [&](const char* mnem, const char* desc) {
        if (!target.holds(mnem)) target.field({mnem, "", elsewhere(mnem), desc});
    };
    add("COMP", "COMPANY");
    add("WELL", "WELL");
    add("FLD", "FIELD");
    add("LOC", "LOCATION");
    if (sameText(country_, "CANADA")) {
        add("PROV", "PROVINCE");
        add("UWI", "UNIQUE WELL ID");
    } else {
        add("CNTY", "COUNTY");
        add("STAT", "STATE");
        add("CTRY", "COUNTRY");
        add("API", "API NUMBER");
    }
    add("SRVC", "SERVICE COMPANY");
    add("DATE", "LOG DATE");
}

void KeptHeader::well() {
    const SourceSection* const section = source_.find('W');
    text_.line(section != nullptr ? section->title.text : std::string_view("~Well Information"));
    SectionText target;
    const auto missing = [&](const char* mnem, const std::string& value, const char* desc) {
        if (section != nullptr)
            for (const SourceLine& line : section->lines)
                if (const auto kept = keptField(line.text); kept && sameText(kept->field.mnem, mnem)) return;
        const SourceSection* const curveSection = source_.find('C');
        const auto index = curveSection == nullptr || curveSection->lines.empty()
                               ? std::nullopt
                               : keptField(curveSection->lines.front().text);
        const bool null = sameText(mnem, "NULL");
        target.field({mnem, null || !index ? "" : index->field.unit, value, desc});
        tell(notes_, "had no " + std::string(mnem) + " line; " + value + " is written");
    };
    missing("STRT", depths_.first, "START");
    missing("STOP", depths_.last, "STOP");
    missing("STEP", depths_.step, "STEP");
    const bool turned = version_ < 2;  // in LAS 1.2 the value of a ~Well line stands behind its colon
    const auto takeLine = [&](HeaderField& field, const SourceLine& line) {
        if (sameText(field.mnem, "STRT"))
            depthLine(field, &line, depths_.first);
        else if (sameText(field.mnem, "STOP"))
            depthLine(field, &line, depths_.last);
        else if (sameText(field.mnem, "STEP"))
            depthLine(field, &line, depths_.step);
        else if (!sameText(field.mnem, "NULL") && turned)
            std::swap(field.value, field.desc);
    };
    if (section != nullptr) eachLine(*section, target, turned, takeLine);
    missing("NULL", "-999.25", "NULL VALUE");
    addWellLines(target);
    target.write(text_);
}

void KeptHeader::curves(const std::vector<HeaderField>& channels, std::vector<KeptCurve>& lines) {
    const SourceSection* const section = source_.find('C');
    text_.line(section != nullptr ? section->title.text : std::string_view("~Curve Information"));
    SectionText target;
    std::size_t channel = 0, next = 0;
    if (section != nullptr) {
        for (const SourceLine& line : section->lines) {
            if (next < lines.size() && lines[next].source.number == line.number) {
                target.field(channels[channel++]);
                ++next;
            } else if (line.text.front() == '#') {
                target.whole(line.text);
            } else {
                comment(line, target);
            }
        }
    }
    while (channel < channels.size()) target.field(channels[channel++]);
    target.write(text_);
}

void KeptHeader::plain(const SourceSection& section) {
    text_.line(section.title.text);
    for (const SourceLine& line : section.lines) text_.line(line.text);
}

void KeptHeader::parameters(const SourceSection& section) {
    text_.line(section.title.text);
    SectionText target;
    eachLine(section, target, false, [](HeaderField&, const SourceLine&) {});
    target.write(text_);
}

void KeptHeader::rest(const SourceHeader& behind) {
    for (const SourceSection& section : source_.sections) {
        const bool done = (section.letter == 'V' || section.letter == 'W' || section.letter == 'C') &&
                          source_.find(section.letter) == &section;
        if (done) continue;
        if (section.letter == 'P')
            parameters(section);
        else
            plain(section);
    }
    for (const SourceSection& section : behind.sections) {
        tell(notes_, section.title, "stood behind the data, and stands in front of them now");
        plain(section);
    }
}

}  // namespace

bool headerSaysWrapped(const SourceHeader& source) {
    const SourceSection* const section = source.find('V');
    if (section == nullptr) return false;
    return std::any_of(section->lines.begin(), section->lines.end(), [](const SourceLine& line) {
        const auto kept = keptField(line.text);
        return kept && sameText(kept->field.mnem, "WRAP") && sameText(kept->field.value, "YES");
    });
}

std::string wellNumber(const SourceHeader& source, std::string_view mnem) {
    const SourceSection* const section = source.find('W');
    if (section == nullptr) return {};
    for (const SourceLine& line : section->lines)
        if (const auto kept = keptField(line.text); kept && sameText(kept->field.mnem, mnem))
            return std::string(numberOf(kept->field.value));
    return {};
}

std::vector<KeptCurve> keptCurves(const SourceHeader& source) {
    std::vector<KeptCurve> curves;
    const SourceSection* const section = source.find('C');
    if (section == nullptr) return curves;
    for (const SourceLine& line : section->lines) {
        if (line.text.front() == '#') continue;
        if (line.text.front() == '.') {
            const std::string name = "CH" + std::to_string(curves.size() + 1);
            if (const auto kept = keptField(name + std::string(line.text)))
                curves.push_back({kept->field, line, "had no mnemonic; it is now " + name});
            continue;
        }
        if (auto kept = keptField(line.text))
            curves.push_back({std::move(kept->field), line, std::move(kept->mended)});
        else
            curves.push_back(curveWithoutDot(line));
    }
    return curves;
}

std::vector<HeaderField> settleCurves(std::vector<KeptCurve>& curves, std::size_t columns, std::vector<Note>& notes) {
    const auto certain = std::count_if(curves.begin(), curves.end(), [](const KeptCurve& one) { return one.certain; });
    if (static_cast<std::size_t>(certain) == columns || curves.size() != columns)
        std::erase_if(curves, [](const KeptCurve& one) { return !one.certain; });
    std::vector<HeaderField> channels;
    for (const KeptCurve& curve : curves) {
        if (!curve.mended.empty()) tell(notes, curve.source, curve.mended);
        channels.push_back(curve.field);
    }
    while (channels.size() < columns) {
        channels.push_back({freeColumnName(channels.size() + 1, channels), "", "", ""});
        tell(notes,
             "column " + std::to_string(channels.size()) + " has no ~Curve line; it is now " + channels.back().mnem);
    }
    return channels;
}

std::string keptHeader(const SourceHeader& source, const SourceHeader& behind, std::vector<KeptCurve>& curves,
                       const std::vector<HeaderField>& channels, const DepthFacts& depths, std::string_view country,
                       std::vector<Note>& notes) {
    KeptHeader header(source, country, depths, notes);
    header.version();
    header.well();
    header.curves(channels, curves);
    header.rest(behind);
    return header.take();
}

}  // namespace welvane
