#include "jobs/library.h"

#include <algorithm>
#include <array>
#include <memory>

#include "cli/json_document.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "jobs/choice_text.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct LibraryChoices {
    std::string part, action, group;
    std::vector<std::string> words, map;
};

using Words = std::vector<std::string>;

bool isCurves(const LibraryChoices& choices) {
    return choices.part == "curves";
}

LibraryPart partOf(const LibraryChoices& choices) {
    return isCurves(choices) ? LibraryPart::Curves : LibraryPart::Units;
}

/// A listing in its two forms: columns of cells, and an object per row.
struct Listing {
    TextTable table;
    Json rows = Json::array();
    std::string path, name;
};

/// Adds a row; a member without a name is only counted for the eye.
void addRow(Listing& listing, const std::vector<Json::Member>& members, Words cells) {
    Json row = Json::object();
    for (const Json::Member& member : members) row.add(member.first, member.second);
    listing.rows.push(row);
    for (std::string& cell : cells) cell = shownText(cell);
    listing.table.add(std::move(cells));
}

void show(Console& console, const Listing& listing) {
    if (console.options().json)
        console.print(ownDocument({{"file", utf8Text(listing.path)}, {listing.name, listing.rows}}).dump(2) + "\n");
    else
        console.print(listing.table.text(""));
}

ExitCode listParameters(Console& console) {
    Listing listing{TextTable("llll"), Json::array(), console.app().settings.paraPath, "parameters"};
    for (const Parameter& row : console.app().reference.parameters)
        addRow(listing,
               {{"mnem", utf8Text(row.mnem)},
                {"unit", utf8Text(row.unit)},
                {"value", utf8Text(row.value)},
                {"description", utf8Text(row.desc)},
                {"search", utf8Text(row.searchText)}},
               {row.mnem, row.unit, row.value, row.desc});
    show(console, listing);
    return ExitCode::Done;
}

void addCurveRow(Listing& listing, const Curve& row) {
    addRow(listing, {{"group", utf8Text(row.group)}, {"mnem", utf8Text(row.mnem)}, {"description", utf8Text(row.desc)}},
           {row.group, row.mnem, row.desc});
}

void addUnitRow(Listing& listing, const Unit& row) {
    addRow(listing,
           {{"group", utf8Text(row.group)},
            {"unit", utf8Text(row.externalUnit)},
            {"factor", row.factor},
            {"offset", row.offset}},
           {row.group, row.externalUnit, plainNumber(row.factor), plainNumber(row.offset)});
}

/// The rows of one group, or of all groups in their order.
ExitCode listMembers(Console& console, const LibraryChoices& choices) {
    const ReferenceTables& tables = console.app().reference;
    const Words groups = choices.words.empty() ? groupNames(tables, partOf(choices)) : choices.words;
    Listing listing{TextTable(isCurves(choices) ? "lll" : "llrr"), Json::array(),
                    libraryPath(console.app(), partOf(choices)), choices.part};
    for (const std::string& group : groups) {
        try {
            for (const std::size_t row : membersOfGroup(tables, partOf(choices), group))
                if (isCurves(choices))
                    addCurveRow(listing, tables.curves[row]);
                else
                    addUnitRow(listing, tables.units[row]);
        } catch (const RunTimeFailure& failure) {
            throw Refusal("", failure.what());
        }
    }
    show(console, listing);
    return ExitCode::Done;
}

ExitCode listGroups(Console& console, const LibraryChoices& choices) {
    const ReferenceTables& tables = console.app().reference;
    const LibraryPart part = partOf(choices);
    Listing listing{TextTable(isCurves(choices) ? "llllr" : "llr"), Json::array(), libraryPath(console.app(), part),
                    "groups"};
    const auto members = [&](const std::string& group) { return membersOfGroup(tables, part, group).size(); };
    if (isCurves(choices))
        for (const CurveGroup& row : tables.curveGroups)
            addRow(listing,
                   {{"group", utf8Text(row.group)},
                    {"code", utf8Text(row.uniqueValue)},
                    {"canadianUnit", utf8Text(row.canadianUnit)},
                    {"otherUnit", utf8Text(row.otherUnit)},
                    {"members", members(row.group)}},
                   {row.group, row.uniqueValue, row.canadianUnit, row.otherUnit, std::to_string(members(row.group))});
    else
        for (const UnitGroup& row : tables.unitGroups)
            addRow(listing,
                   {{"group", utf8Text(row.group)},
                    {"internalUnit", utf8Text(row.internalUnit)},
                    {"members", members(row.group)}},
                   {row.group, row.internalUnit, std::to_string(members(row.group))});
    show(console, listing);
    return ExitCode::Done;
}

/// How an edit reads its words.
struct EditForm {
    std::string_view action;
    LibraryRequest::Edit edit;
    std::size_t least, mostCurves, mostUnits;
    std::string_view curvesUsage, unitsUsage;
};
constexpr std::array<EditForm, 5> editForms = {
    {{"add", LibraryRequest::Edit::Add, 2, 3, 4, "GROUP MNEM [DESC]", "GROUP UNIT FACTOR [OFFSET]"},
     {"remove", LibraryRequest::Edit::Remove, 2, 2, 2, "GROUP MNEM", "GROUP UNIT"},
     {"rename", LibraryRequest::Edit::Rename, 3, 3, 3, "GROUP OLD NEW", "GROUP OLD NEW"},
     {"add-group", LibraryRequest::Edit::AddGroup, 1, 4, 2, "GROUP [CODE [CANADIAN-UNIT [OTHER-UNIT]]]",
      "GROUP [INTERNAL-UNIT]"},
     {"remove-group", LibraryRequest::Edit::RemoveGroup, 1, 1, 1, "GROUP", "GROUP"}}};

LibraryRequest requestOf(const LibraryChoices& choices, const EditForm& form) {
    const Words& words = choices.words;
    const bool unitToAdd = !isCurves(choices) && form.edit == LibraryRequest::Edit::Add;
    const std::size_t least = form.least + (unitToAdd ? 1 : 0);
    if (words.size() < least || words.size() > (isCurves(choices) ? form.mostCurves : form.mostUnits))
        throw UsageFault(choices.part + " " + choices.action + " takes " +
                         std::string(isCurves(choices) ? form.curvesUsage : form.unitsUsage));
    const auto word = [&](std::size_t index) { return index < words.size() ? words[index] : std::string(); };
    LibraryRequest request{.part = partOf(choices),
                           .edit = form.edit,
                           .group = word(0),
                           .name = word(1),
                           .newName = word(2),
                           .description = word(2)};
    if (unitToAdd) {
        request.factor = needNumber("FACTOR", word(2)).value();
        if (words.size() > 3) request.offset = needNumber("OFFSET", word(3)).value();
    }
    if (form.edit == LibraryRequest::Edit::AddGroup) request.fields.assign(words.begin() + 1, words.end());
    return request;
}

LibraryImport importOf(const LibraryChoices& choices) {
    if (choices.words.size() != 1) throw UsageFault("curves import takes one FILE");
    LibraryImport request{choices.words.front(), choices.group, {}};
    for (const std::string& mapping : choices.map) {
        const std::size_t sign = mapping.find('=');
        if (sign == npos || sign == 0 || sign + 1 == mapping.size())
            throw UsageFault("--map takes MNEM=GROUP, not '" + mapping + "'");
        request.map.push_back({mapping.substr(0, sign), mapping.substr(sign + 1)});
    }
    return request;
}

ExitCode import(Console& console, const LibraryChoices& choices) {
    const LibraryAdditions result = importCurves(console.bench(), importOf(choices));
    Json added = Json::array(), leftOut = Json::array();
    TextTable table("lll");
    for (const Curve& curve : result.added) {
        added.push(Json::object(
            {{"mnem", utf8Text(curve.mnem)}, {"description", utf8Text(curve.desc)}, {"group", utf8Text(curve.group)}}));
        table.add({"added", shownText(curve.mnem), shownText(curve.group)});
    }
    for (const LibraryAdditions::LeftOut& line : result.leftOut) {
        leftOut.push(Json::object({{"mnem", utf8Text(line.mnem)}, {"why", utf8Text(line.why)}}));
        table.add({"left out", shownText(line.mnem), shownText(line.why)});
    }
    console.print(console.options().json
                      ? ownDocument({{"file", utf8Text(libraryPath(console.app(), LibraryPart::Curves))},
                                     {"added", added},
                                     {"leftOut", leftOut}})
                                .dump(2) +
                            "\n"
                      : table.text(""));
    return ExitCode::Done;
}

ExitCode performCurvesOrUnits(Console& console, const LibraryChoices& choices) {
    if (choices.action == "list") {
        if (choices.words.size() > 1) throw UsageFault("list takes one group");
        return listMembers(console, choices);
    }
    if (choices.action == "groups") {
        if (!choices.words.empty()) throw UsageFault("groups takes no name");
        return listGroups(console, choices);
    }
    if (choices.action == "import") {
        if (!isCurves(choices)) throw UsageFault("only curves are imported");
        return import(console, choices);
    }
    const EditForm& form = *std::find_if(editForms.begin(), editForms.end(),
                                         [&](const EditForm& one) { return one.action == choices.action; });
    return editLibrary(console.bench(), requestOf(choices, form)) ? ExitCode::Done : ExitCode::Negative;
}

ExitCode performLibrary(Console& console, const LibraryChoices& choices) {
    if (choices.action != "import" && (!choices.group.empty() || !choices.map.empty()))
        throw UsageFault("--group and --map belong to curves import");
    if (choices.part != "parameters") return performCurvesOrUnits(console, choices);
    if (choices.action != "list") throw UsageFault("parameters are only listed: para.ini is not written");
    if (!choices.words.empty()) throw UsageFault("parameters have no groups");
    return listParameters(console);
}

}  // namespace

VerbSyntax declareLibrary() {
    const auto choices = std::make_shared<LibraryChoices>();
    return {
        {{"PART",
          &choices->part,
          "",
          "units, curves or parameters",
          {.required = true, .words = {"units", "curves", "parameters"}}},
         {"ACTION",
          &choices->action,
          "",
          "list, groups, add, remove, rename, add-group, remove-group or import",
          {.required = true,
           .words = {"list", "groups", "add", "remove", "rename", "add-group", "remove-group", "import"}}},
         {"NAME", &choices->words, "",
          "list [GROUP]; add GROUP MNEM [DESC] or GROUP UNIT FACTOR [OFFSET]; remove GROUP NAME; rename GROUP OLD NEW; "
          "add-group GROUP [CODE [CANADIAN-UNIT [OTHER-UNIT]]] or GROUP [INTERNAL-UNIT]; remove-group GROUP; import "
          "FILE"},
         {"--group", &choices->group, "GROUP", "import: where channels go that --map does not name"},
         {"--map",
          &choices->map,
          "MNEM=GROUP",
          "import: where this channel goes; may come again",
          {.several = Several::Repeated}}},
        [choices](Console& console) { return performLibrary(console, *choices); },
        "An edit is saved at once, the file is written whole and without comments."};
}

}  // namespace welvane
