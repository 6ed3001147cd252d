#include "jobs/library_edits.h"

#include <algorithm>
#include <utility>

#include "las/header_line.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The two parts of the library, so that each rule is written once.
struct Curves {
    using Group = CurveGroup;
    using Row = Curve;
    static constexpr std::string_view what = "curve";
    static auto& groups(auto& tables) { return tables.curveGroups; }
    static auto& rows(auto& tables) { return tables.curves; }
    static const std::string& name(const Row& row) { return row.mnem; }
};
struct Units {
    using Group = UnitGroup;
    using Row = Unit;
    static constexpr std::string_view what = "unit";
    static auto& groups(auto& tables) { return tables.unitGroups; }
    static auto& rows(auto& tables) { return tables.units; }
    static const std::string& name(const Row& row) { return row.externalUnit; }
};

/// Calls `body` with the part's type.
template <class Body>
decltype(auto) withPart(LibraryPart part, const Body& body) {
    if (part == LibraryPart::Curves) return body(Curves());
    return body(Units());
}

std::string inQuotes(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

/// What a line of the library's files can hold in one of its fields.
void needField(std::string_view text, std::string_view what, std::string_view forbidden) {
    if (text.find_first_of("\r\n") != npos || text.find_first_of(forbidden) != npos)
        throw RunTimeFailure("a " + std::string(what) + " cannot hold " +
                             (forbidden.empty() ? "a line end" : "one of " + std::string(forbidden)) + ": " +
                             inQuotes(text));
}

void needName(std::string_view text, std::string_view what, std::string_view forbidden) {
    if (text.empty()) throw RunTimeFailure("a " + std::string(what) + " needs a name");
    needField(text, what, forbidden);
}

void needFields(CurveGroup& group) {
    for (std::string* field : {&group.group, &group.uniqueValue, &group.canadianUnit, &group.otherUnit}) {
        *field = trim(*field);
        needField(*field, "curve group", "|");
    }
    needName(group.group, "curve group", "|");
}

void needFields(UnitGroup& group) {
    for (std::string* field : {&group.group, &group.internalUnit}) {
        *field = trim(*field);
        needField(*field, "unit group", "|");
    }
    needName(group.group, "unit group", "|");
}

void needFields(Curve& curve) {
    curve.mnem = trim(curve.mnem);
    curve.desc = trim(curve.desc);
    needName(curve.mnem, "curve", ".:|");
    needField(curve.desc, "description", "");
    // As the file will be read again: a name that begins like a comment or a section would not come back.
    if (curve.mnem.front() == '[' || lineKind(curve.mnem + ". :" + curve.desc) != LineKind::Data)
        throw RunTimeFailure(inQuotes(curve.mnem) + " cannot be the name of a curve");
}

void needFields(Unit& unit) {
    unit.externalUnit = trim(unit.externalUnit);
    needName(unit.externalUnit, "unit", "|");
    if (unit.externalUnit.front() == '[' || unit.externalUnit.front() == '#')
        throw RunTimeFailure(inQuotes(unit.externalUnit) + " cannot be the name of a unit");
    if (unit.factor == 0) throw RunTimeFailure("the factor of a unit cannot be 0");
}

template <class Part>
std::size_t findGroup(const ReferenceTables& tables, std::string_view name) {
    const auto& groups = Part::groups(tables);
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [&](const auto& group) { return sameText(group.group, trim(name)); });
    return static_cast<std::size_t>(found - groups.begin());
}

template <class Part>
std::size_t needGroup(const ReferenceTables& tables, std::string_view name) {
    const std::size_t index = findGroup<Part>(tables, name);
    if (index == Part::groups(tables).size())
        throw RunTimeFailure("there is no " + std::string(Part::what) + " group " + inQuotes(trim(name)));
    return index;
}

template <class Part>
std::vector<std::size_t> membersOf(const ReferenceTables& tables, std::string_view group) {
    needGroup<Part>(tables, group);
    std::vector<std::size_t> members;
    for (std::size_t row = 0; row < Part::rows(tables).size(); ++row)
        if (sameText(Part::rows(tables)[row].group, trim(group))) members.push_back(row);
    return members;
}

template <class Part>
std::size_t needMember(const ReferenceTables& tables, std::string_view group, std::string_view name) {
    for (const std::size_t row : membersOf<Part>(tables, group))
        if (sameText(Part::name(Part::rows(tables)[row]), trim(name))) return row;
    throw RunTimeFailure(inQuotes(trim(name)) + " is no " + std::string(Part::what) + " of the group " +
                         inQuotes(trim(group)));
}

/// A name that no row but `except` has.
template <class Part>
void needFreeName(const ReferenceTables& tables, std::string_view name, std::size_t except = npos) {
    for (std::size_t row = 0; row < Part::rows(tables).size(); ++row)
        if (row != except && sameText(Part::name(Part::rows(tables)[row]), name))
            throw RunTimeFailure(inQuotes(name) + " stands in the group " + inQuotes(Part::rows(tables)[row].group) +
                                 " already");
}

template <class Part>
void needFreeGroup(const ReferenceTables& tables, std::string_view name, std::size_t except = npos) {
    const std::size_t index = findGroup<Part>(tables, name);
    if (index != Part::groups(tables).size() && index != except)
        throw RunTimeFailure("there is a " + std::string(Part::what) + " group " + inQuotes(name) + " already");
}

template <class Part>
void addGroupTo(ReferenceTables& tables, typename Part::Group group) {
    needFields(group);
    needFreeGroup<Part>(tables, group.group);
    Part::groups(tables).push_back(std::move(group));
}

template <class Part>
void changeGroupOf(ReferenceTables& tables, std::string_view name, typename Part::Group group) {
    const std::size_t index = needGroup<Part>(tables, name);
    needFields(group);
    needFreeGroup<Part>(tables, group.group, index);
    for (const std::size_t row : membersOf<Part>(tables, name)) Part::rows(tables)[row].group = group.group;
    Part::groups(tables)[index] = std::move(group);
}

/// Puts a row behind the last of its group, which is written as the group itself is.
template <class Part>
void insert(ReferenceTables& tables, typename Part::Row row) {
    row.group = Part::groups(tables)[needGroup<Part>(tables, row.group)].group;
    const std::vector<std::size_t> members = membersOf<Part>(tables, row.group);
    auto& rows = Part::rows(tables);
    const std::size_t place = members.empty() ? rows.size() : members.back() + 1;
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(place), std::move(row));
}

template <class Part>
void addRowTo(ReferenceTables& tables, typename Part::Row row) {
    needFields(row);
    needGroup<Part>(tables, row.group);
    needFreeName<Part>(tables, Part::name(row));
    insert<Part>(tables, std::move(row));
}

template <class Part>
void changeRowOf(ReferenceTables& tables, std::string_view group, std::string_view name, typename Part::Row row) {
    const std::size_t index = needMember<Part>(tables, group, name);
    needFields(row);
    needGroup<Part>(tables, row.group);
    needFreeName<Part>(tables, Part::name(row), index);
    auto& rows = Part::rows(tables);
    if (sameText(rows[index].group, row.group)) {
        row.group = rows[index].group;
        rows[index] = std::move(row);
        return;
    }
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(index));
    insert<Part>(tables, std::move(row));
}

std::size_t movedPlace(std::size_t place, int steps, std::size_t count) {
    const auto last = static_cast<std::ptrdiff_t>(count) - 1;
    return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(place) + steps, 0, last));
}

/// The element at `from` goes to `to`; those in between shift by one.
template <class Row>
void moveTo(std::vector<Row>& rows, std::size_t from, std::size_t to) {
    const auto at = [&](std::size_t index) { return rows.begin() + static_cast<std::ptrdiff_t>(index); };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
}

}  // namespace

void addCurveGroup(ReferenceTables& tables, CurveGroup group) {
    addGroupTo<Curves>(tables, std::move(group));
}
void addUnitGroup(ReferenceTables& tables, UnitGroup group) {
    addGroupTo<Units>(tables, std::move(group));
}
void changeCurveGroup(ReferenceTables& tables, std::string_view name, CurveGroup group) {
    changeGroupOf<Curves>(tables, name, std::move(group));
}
void changeUnitGroup(ReferenceTables& tables, std::string_view name, UnitGroup group) {
    changeGroupOf<Units>(tables, name, std::move(group));
}

void removeGroup(ReferenceTables& tables, LibraryPart part, std::string_view name) {
    withPart(part, [&](auto type) {
        using Part = decltype(type);
        const std::size_t index = needGroup<Part>(tables, name);
        const std::string group = Part::groups(tables)[index].group;
        std::erase_if(Part::rows(tables), [&](const auto& row) { return sameText(row.group, group); });
        Part::groups(tables).erase(Part::groups(tables).begin() + static_cast<std::ptrdiff_t>(index));
    });
}

void moveGroup(ReferenceTables& tables, LibraryPart part, std::string_view name, int steps) {
    withPart(part, [&](auto type) {
        using Part = decltype(type);
        const std::size_t index = needGroup<Part>(tables, name);
        moveTo(Part::groups(tables), index, movedPlace(index, steps, Part::groups(tables).size()));
    });
}

void addCurve(ReferenceTables& tables, Curve curve) {
    addRowTo<Curves>(tables, std::move(curve));
}
void addUnit(ReferenceTables& tables, Unit unit) {
    addRowTo<Units>(tables, std::move(unit));
}
void changeCurve(ReferenceTables& tables, std::string_view group, std::string_view mnem, Curve curve) {
    changeRowOf<Curves>(tables, group, mnem, std::move(curve));
}
void changeUnit(ReferenceTables& tables, std::string_view group, std::string_view name, Unit unit) {
    changeRowOf<Units>(tables, group, name, std::move(unit));
}

void removeMember(ReferenceTables& tables, LibraryPart part, std::string_view group, std::string_view name) {
    withPart(part, [&](auto type) {
        using Part = decltype(type);
        const std::size_t row = needMember<Part>(tables, group, name);
        Part::rows(tables).erase(Part::rows(tables).begin() + static_cast<std::ptrdiff_t>(row));
    });
}

void moveMember(ReferenceTables& tables, LibraryPart part, std::string_view group, std::string_view name, int steps) {
    withPart(part, [&](auto type) {
        using Part = decltype(type);
        const std::size_t row = needMember<Part>(tables, group, name);
        const std::vector<std::size_t> members = membersOf<Part>(tables, group);
        const auto place = static_cast<std::size_t>(std::find(members.begin(), members.end(), row) - members.begin());
        moveTo(Part::rows(tables), row, members[movedPlace(place, steps, members.size())]);
    });
}

std::vector<std::string> groupNames(const ReferenceTables& tables, LibraryPart part) {
    std::vector<std::string> names;
    if (part == LibraryPart::Curves)
        for (const CurveGroup& group : tables.curveGroups) names.push_back(group.group);
    else
        for (const UnitGroup& group : tables.unitGroups) names.push_back(group.group);
    return names;
}

void dropRepeatedGroups(ReferenceTables& tables, LibraryPart part) {
    withPart(part, [&](auto type) {
        auto& groups = decltype(type)::groups(tables);
        for (std::size_t index = groups.size(); index-- > 0;)
            if (findGroup<decltype(type)>(tables, groups[index].group) != index)
                groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(index));
    });
}

std::vector<std::size_t> membersOfGroup(const ReferenceTables& tables, LibraryPart part, std::string_view group) {
    return withPart(part, [&](auto type) { return membersOf<decltype(type)>(tables, group); });
}

}  // namespace welvane
