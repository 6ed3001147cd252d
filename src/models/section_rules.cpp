#include "models/section_rules.h"

#include "las/las_text.h"
#include "models/cell_texts.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The letter by which a section is known; by true figures ~Core is no ~Curve. ' ' for a section of its own.
char sectionLetter(const Session& session, const std::string& name) {
    if (name.size() < 2 || (session.rules == FigureRules::trueFigures && !isNamedTitle(name))) return ' ';
    return upperChar(name[1]);
}

}  // namespace

std::string sectionList(const Session& session, int column) {
    switch (sectionLetter(session, session.tables.ord.text(OrdRow::Name, column))) {
        case 'V':
            return "~V|~Version|~Version Information";
        case 'W':
            return "~W|~Well|~Well Information";
        case 'C':
            return "~C|~Curve|~Curve Information";
        case 'P':
            return "~P|~Parameter|~Parameter Information";
        case 'O':
            return "~O|~Other|~Other Information";
        case 'A':
            return "~A|~ASCII|";
        default:
            return {};
    }
}

void renameSection(Session& session, int column, const std::string& text) {
    needSectionName(session, column, text);
    SessionCell& cell = session.tables.ord.cell(OrdRow::Name, column);
    // The header's file knows a section of its own by the name that it has there alone.
    if (session.rules == FigureRules::trueFigures && cell.data.empty() && !isNamedTitle(cell.text))
        cell.data = cell.text;
    cell.text = text;
}

bool includeSection(App& app, Session& session, int column, bool include) {
    Table& table = session.tables.ord;
    const std::string name = table.text(OrdRow::Name, column);
    constexpr std::string_view needed = "VWC";
    if (!include && needed.find(sectionLetter(session, name)) != npos) {
        const Prompt question{
            "Warning!",
            "Choosing not to include this section, " + name + ", will produce a LAS Certification error. Proceed?",
            Buttons::YesNo, Icon::Warning, Answer::No};
        if (app.user.ask(question) != Answer::Yes) include = true;
    }
    table.setCheck(OrdRow::Include, column, include ? Check::Checked : Check::Unchecked);
    return include;
}

}  // namespace welvane
