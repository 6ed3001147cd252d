#include "models/section_rules.h"

#include "shared/text.h"

namespace welvane {

std::string sectionList(const Session& session, int column) {
    const std::string& name = session.tables.ord.text(OrdRow::Name, column);
    switch (name.size() > 1 ? upperChar(name[1]) : ' ') {
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

bool includeSection(App& app, Session& session, int column, bool include) {
    Table& table = session.tables.ord;
    const std::string name = table.text(OrdRow::Name, column);
    constexpr std::string_view needed = "VWC";
    if (!include && name.size() > 1 && needed.find(upperChar(name[1])) != npos) {
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
