#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/las_text.h"
#include "shared/notes.h"

/// The unit of a file's index by FigureRules::trueFigures.
namespace welvane {

enum class IndexUnitKind {
    Unknown,  ///< blank, or a text that names no unit of length or time: scales nothing
    Metre,
    Foot,
    OtherLength,  ///< inches, centimetres and the like: never converted unless a person asks for it
    Time          ///< seconds, hours, dates: never converted
};

/// Metres in an international foot, by definition.
inline constexpr double metresInFoot = 0.3048;

/// A unit of an index. Brackets around it do not count, letter case does not, "IN" is the inch, "NA" no unit.
struct IndexUnit {
    IndexUnitKind kind = IndexUnitKind::Unknown;
    std::string text{};  ///< as it stands in the file
    double metres = 0;   ///< metres in one of it, exact by its definition (a foot is 0.3048 m); 0 where it is no length

    bool isLength() const { return metres > 0; }
};
IndexUnit readIndexUnit(std::string_view text);
/// The unit as tables show it: a single letter as a capital.
std::string shownUnit(const IndexUnit& unit);
/// True where both are known and mean the same ("M" and "METRES"); two times always do, since none is converted.
bool sameIndexUnit(const IndexUnit& one, const IndexUnit& other);

/// The unit of the file's index, and why it cannot be told.
struct IndexUnitFound {
    IndexUnit unit;
    /// "" or two known units that contradict each other, both named: "STRT is in M, STOP in F".
    std::string contradiction{};
};
/// The first known unit of STRT, STOP, STEP and the index's line of ~Curve; where none is known, the first that is not
/// blank. Contradicted where two of the known ones differ.
IndexUnitFound findIndexUnit(const LasText& text);
/// What is to be told of the unit: that there is none, or none that is known. `name` is the file's for people.
std::vector<Note> indexNotes(const IndexUnit& unit, const std::string& name);
/// The unit that a person gave, where it is not ""; else the file's. DataRefusal for a contradiction.
IndexUnit chooseIndexUnit(const LasText& text, std::string_view given);

}  // namespace welvane
