#include "engine/true_header.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>
#include <vector>

#include "engine/header_sections.h"
#include "engine/well_edits.h"
#include "las/las_text.h"
#include "las/source_header.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr double version12 = 1.2;

/// A line that only repeats what the columns of a header are.
bool isColumnHead(std::string_view comment) {
    return beginsWith(comment, "#MNEM") || comment.find_first_not_of("#-.=_: \t") == npos;
}

/// The header of one output, section by section.
class TrueHeader {
  public:
    explicit TrueHeader(PassContext& context)
        : context_(context),
          source_(readSourceHeader(context.headerSource ? context.headerSource->bytes() : std::string_view())) {
        const auto slot = static_cast<std::size_t>(context.headerSlot);
        inputVersion_ = val(context.session.slots[slot].lasVersion) == version12 ? version12 : 2;
        outputVersion_ = val(context.tables().setting(PrdRow::Vers)) == version12 ? version12 : 2;
    }

    std::string write() {
        for (const SourceLine& line : source_.front) text_.line(asComment(line.text));
        const Table& ord = context_.tables().ord;
        addSectionsThatAreNowhere(ord);
        for (int column = 1; column < ord.columns() - 1; ++column) {
            const std::string &name = ord.text(OrdRow::Name, column), &before = ord.data(OrdRow::Name, column);
            const std::string& source = before.empty() ? name : before;
            named_.insert(source);
            if (ord.checked(OrdRow::Include, column))
                attempt(context_.report.failures, "writing a header section", [&] { writeNamed(name, source); });
            else if (const char letter = letterOf(source); letter != 0)
                written_.insert(letter);
        }
        if (!context_.session.sectionsNamed) writeFurther();
        return text_.take();
    }

  private:
    /// Letter of a section by its title: as the header's file has it, else by its name; 0 for one of another name.
    char letterOf(const std::string& name) const {
        for (const SourceSection& section : source_.sections)
            if (section.title.text == name) return section.letter;
        return isNamedTitle(name) ? upperChar(name[1]) : '\0';
    }

    /// A LAS file has a ~Version and a ~Well, whatever its header was made of.
    void addSectionsThatAreNowhere(const Table& ord) {
        bool version = false, well = false;
        for (int column = 1; column < ord.columns() - 1; ++column) {
            const char letter = letterOf(ord.text(OrdRow::Name, column));
            version = version || letter == 'V';
            well = well || letter == 'W';
        }
        if (!version) writeVersion("~Version Information");
        if (!well) writeWell("~Well Information");
    }

    /// `source` is its title in the header's file, where a person has given it another name.
    void writeNamed(const std::string& name, const std::string& source) {
        const char letter = letterOf(source);
        // A filter names the sections that it has where it likes, and the others stand where they stood.
        if (letter != 0 && !written_.insert(letter).second) return;
        switch (letter) {
            case 'V':
                writeVersion(name);
                break;
            case 'W':
                writeWell(name);
                break;
            case 'C':
                writeCurves(context_, text_, name, comments('C'));
                break;
            case 'P':
                writeParameters(context_, text_, name, comments('P'));
                break;
            case 'O':
                writeOther(name);
                break;
            default:
                for (const SourceSection& section : source_.sections)
                    if (section.title.text == source && section.letter == 0) writeAsItStands(section, name);
        }
    }

    /// Sections that ord has no column for: those beyond its last one, and second ones of a letter.
    void writeFurther() {
        for (const SourceSection& section : source_.sections) {
            const std::string name(section.title.text);
            if (section.letter == 'A' || named_.contains(name)) continue;
            if (section.letter != 0 && source_.find(section.letter) == &section)
                writeNamed(name, name);
            else
                writeAsItStands(section, name);
        }
    }

    void writeAsItStands(const SourceSection& section, const std::string& title) {
        text_.line(title);
        for (const SourceLine& line : section.lines) text_.line(line.text);
    }

    std::vector<std::string> comments(char letter) const {
        std::vector<std::string> found;
        const SourceSection* const section = source_.find(letter);
        if (section == nullptr) return found;
        for (const SourceLine& line : section->lines)
            if (line.text.front() == '#' && !isColumnHead(line.text)) found.emplace_back(line.text);
        return found;
    }

    static std::string asComment(std::string_view line) { return (line.front() == '#' ? "" : "#") + std::string(line); }

    /// Each line of a section laid out anew; what is no header line becomes a comment. `write` writes what stands in
    /// the place of a line.
    template <class Write>
    void writeLines(char letter, Write write) {
        const SourceSection* const section = source_.find(letter);
        if (section == nullptr) return;
        for (const SourceLine& line : section->lines) {
            const bool isComment = line.text.front() == '#';
            const bool firstColon = letter == 'W' && inputVersion_ == version12;
            if (auto kept = isComment ? std::nullopt : keptField(line.text, firstColon))
                write(kept->field);
            else if (!isComment || (!isColumnHead(line.text) && isNotTitleLine(line.text, context_.headerCurveNames)))
                text_.line(asComment(line.text));
        }
    }

    /// Lines that the section has to have and that were not among its own; their values are brought to what is written
    /// by correctHeader.
    void addMissing(const std::set<std::string>& there, std::initializer_list<HeaderField> needed, int extraColon) {
        for (const HeaderField& field : needed)
            if (!there.contains(field.mnem)) text_.line(laidOut(context_, field, extraColon));
    }

    void writeVersion(const std::string& title) {
        text_.line(title);
        std::set<std::string> there;
        writeLines('V', [&](const HeaderField& field) {
            there.insert(upper(field.mnem));
            text_.line(laidOut(context_, field));
        });
        addMissing(there,
                   {{"VERS", "", "2.0", "CWLS LOG ASCII STANDARD - VERSION 2.0"},
                    {"WRAP", "", "NO", "One line per depth step"}},
                   0);
    }

    void writeWell(const std::string& title) {
        const int extraColon = context_.format().wellExtraColon;
        std::set<std::string> there;
        if (context_.tables().filterInUse() && context_.tables().wrd.rows() > 1) {
            writeWellOfFilter(context_, text_, title);
            const Table& wrd = context_.tables().wrd;
            for (int row = 1; row < wrd.rows(); ++row) there.insert(upper(wrd.text(row, FieldColumn::Mnem)));
        } else {
            text_.line(title);
            WellEdits edits(context_.session, outputVersion_);
            const auto writeAll = [&](const std::vector<HeaderField>& fields) {
                for (const HeaderField& field : fields) {
                    there.insert(upper(field.mnem));
                    text_.line(laidOut(context_, field, extraColon));
                }
            };
            writeAll(edits.front());
            writeLines('W', [&](HeaderField& field) {
                swapForVersions(field, inputVersion_, outputVersion_);
                writeAll(edits.inPlaceOf(field));
            });
            writeAll(edits.rest());
        }
        const std::string unit = context_.tables().setting(PrdRow::DepthUnits);
        addMissing(there,
                   {{"STRT", unit, "0", "First depth"},
                    {"STOP", unit, "0", "Last depth"},
                    {"STEP", unit, "0", "Step"},
                    {"NULL", "", "0", "Null value"}},
                   extraColon);
    }

    void writeOther(const std::string& title) {
        const std::string_view own = trimBreaks(context_.tables().otherText);
        if (own.empty()) return;
        text_.line(title);
        std::string lines(own);
        std::ranges::replace(lines, '\n', '\r');
        for (const std::string& line : split(lines, '\r'))
            if (!trim(line).empty()) text_.line(line);
    }

    PassContext& context_;
    SourceHeader source_;
    double inputVersion_ = 2, outputVersion_ = 2;
    std::set<std::string> named_;  ///< titles that ord has
    std::set<char> written_;       ///< letters of sections
    HeaderText text_;
};

}  // namespace

std::string writeTrueHeader(PassContext& context) {
    std::string text = TrueHeader(context).write();
    if (context.headerSource) context.headerSource->needWhole();
    return text;
}

}  // namespace welvane
