#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "reference/reference_tables.h"

/// Edits of the curve and unit tables of the library. Each keeps them in order: every curve and every unit names a
/// group that is there, and a name stands once, as look-ups take the first. All raise RunTimeFailure, with a text for
/// the user and with nothing changed, for what cannot be. Names are compared without regard to case.
namespace welvane {

enum class LibraryPart { Curves, Units };

/// New groups go to the end.
void addCurveGroup(ReferenceTables& tables, CurveGroup group);
void addUnitGroup(ReferenceTables& tables, UnitGroup group);
/// The fields of a group; a new name goes to its members too.
void changeCurveGroup(ReferenceTables& tables, std::string_view name, CurveGroup group);
void changeUnitGroup(ReferenceTables& tables, std::string_view name, UnitGroup group);
/// A group with all its members.
void removeGroup(ReferenceTables& tables, LibraryPart part, std::string_view name);
/// The group goes `steps` places on (back when negative), at most to an end.
void moveGroup(ReferenceTables& tables, LibraryPart part, std::string_view name, int steps);

/// A new row goes behind the last of its group.
void addCurve(ReferenceTables& tables, Curve curve);
void addUnit(ReferenceTables& tables, Unit unit);
/// A row gets other fields; with another group it goes behind the last of that.
void changeCurve(ReferenceTables& tables, std::string_view group, std::string_view mnem, Curve curve);
void changeUnit(ReferenceTables& tables, std::string_view group, std::string_view name, Unit unit);
void removeMember(ReferenceTables& tables, LibraryPart part, std::string_view group, std::string_view name);
/// The row goes `steps` places on within its group, at most to an end.
void moveMember(ReferenceTables& tables, LibraryPart part, std::string_view group, std::string_view name, int steps);

/// A group that a file names twice is one group: without this its members would be written under each.
void dropRepeatedGroups(ReferenceTables& tables, LibraryPart part);

/// Names in table order.
std::vector<std::string> groupNames(const ReferenceTables& tables, LibraryPart part);
/// Rows of the group in the part's table, in table order. RunTimeFailure when there is no such group.
std::vector<std::size_t> membersOfGroup(const ReferenceTables& tables, LibraryPart part, std::string_view group);

}  // namespace welvane
