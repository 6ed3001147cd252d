#include "reference/reference_tables.h"

#include <algorithm>
#include <set>

#include "shared/text.h"

namespace welvane {

namespace {

/// The row of a table whose text in `field` is the trimmed `wanted`; nullptr when there is none. Most rows differ in
/// length, so a scan of some hundred rows costs less than keeping an index true to tables that an editor changes.
template <class Row>
const Row* findRow(const std::vector<Row>& rows, std::string Row::*field, std::string_view wanted) {
    const std::string_view key = trim(wanted);
    if (key.empty()) return nullptr;
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& one) { return sameText(one.*field, key); });
    return row == rows.end() ? nullptr : &*row;
}

const Unit* findUnit(const ReferenceTables& tables, std::string_view unit) {
    return findRow(tables.units, &Unit::externalUnit, unit);
}

const Curve* findCurve(const ReferenceTables& tables, std::string_view mnem) {
    return findRow(tables.curves, &Curve::mnem, mnem);
}

const CurveGroup* groupOfMnem(const ReferenceTables& tables, std::string_view mnem) {
    const Curve* const curve = findCurve(tables, mnem);
    return curve == nullptr ? nullptr : findRow(tables.curveGroups, &CurveGroup::group, curve->group);
}

/// The texts in `field` of all rows of one group, in table order.
template <class Row>
std::vector<std::string> membersOf(const std::vector<Row>& rows, std::string Row::*field, std::string_view group) {
    std::vector<std::string> members;
    for (const Row& row : rows)
        if (sameText(row.group, group)) members.push_back(row.*field);
    return members;
}

}  // namespace

double unitFactor(const ReferenceTables& tables, std::string_view unit, double* offset) {
    const Unit* const row = findUnit(tables, unit);
    if (offset != nullptr) *offset = row == nullptr ? 0 : row->offset;
    return row == nullptr || row->factor == 0 ? 1 : row->factor;
}

bool knownUnit(const ReferenceTables& tables, std::string_view unit) {
    return findUnit(tables, unit) != nullptr;
}

std::string apiCodeForMnem(const ReferenceTables& tables, std::string_view mnem) {
    const CurveGroup* const group = groupOfMnem(tables, mnem);
    return group == nullptr ? std::string() : group->uniqueValue;
}

std::string descriptionForMnem(const ReferenceTables& tables, std::string_view mnem) {
    const Curve* const curve = findCurve(tables, mnem);
    if (curve == nullptr) return {};
    return std::string(trim(std::string_view(curve->desc).substr(0, curve->desc.find('|'))));
}

std::string unitForMnem(const ReferenceTables& tables, std::string_view mnem, bool canada) {
    const CurveGroup* const group = groupOfMnem(tables, mnem);
    if (group == nullptr) return {};
    return canada ? group->canadianUnit : group->otherUnit;
}

std::vector<std::string> groupMembers(const ReferenceTables& tables, std::string_view name) {
    const Curve* const curve = findCurve(tables, name);
    if (curve == nullptr) return {};
    return membersOf(tables.curves, &Curve::mnem, curve->group);
}

std::vector<std::string> unitGroupMembers(const ReferenceTables& tables, std::string_view unit, std::string* group) {
    const Unit* const row = findUnit(tables, unit);
    if (group != nullptr) *group = row == nullptr ? std::string() : row->group;
    if (row == nullptr) return {};
    return membersOf(tables.units, &Unit::externalUnit, row->group);
}

std::vector<std::string> checkUnits(const ReferenceTables& tables, const std::vector<std::string>& unitsInUse) {
    // A file of thousands of channels uses a handful of units, so each is looked up once.
    struct Less {
        bool operator()(std::string_view one, std::string_view other) const { return lessText(one, other); }
    };
    std::set<std::string_view, Less> seen;
    std::vector<std::string> unknown;
    for (const std::string& unit : unitsInUse) {
        const std::string_view name = trim(unit);
        if (!name.empty() && seen.insert(name).second && !knownUnit(tables, name)) unknown.emplace_back(name);
    }
    return unknown;
}

}  // namespace welvane
