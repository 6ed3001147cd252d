#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jobs/library_edits.h"
#include "jobs/workbench.h"

/// The library of curves and units as a person works on it: saved whole, and filled from LAS files.
namespace welvane {

/// The file that a part of the library is read from and saved to; one in the program's folder where there is none yet.
std::string libraryPath(const App& app, LibraryPart part);
/// Writes a part of the library whole. "" when done, else why not; the old file then stands.
std::string saveLibrary(App& app, LibraryPart part);

/// A line of ~Curve that may become a row of the library.
struct LibraryCandidate {
    HeaderField line;
    std::string group;  ///< where it is to go; "" nowhere
};
/// What became of the lines that were offered.
struct LibraryAdditions {
    struct LeftOut {
        std::string mnem, why;
    };
    std::vector<Curve> added;
    std::vector<LeftOut> leftOut;  ///< in their order; those that stand in their group already are in neither list
};
/// Adds each candidate to its group.
LibraryAdditions addToLibrary(ReferenceTables& tables, const std::vector<LibraryCandidate>& candidates);

/// Asks before a group is removed that has members: these go with it.
bool mayRemoveGroup(App& app, LibraryPart part, std::string_view group);

/// One edit of the library, saved at once. What a field means depends on `edit`.
struct LibraryRequest {
    enum class Edit { Add, Remove, Rename, AddGroup, RemoveGroup };
    LibraryPart part = LibraryPart::Curves;
    Edit edit = Edit::Add;
    std::string group;
    std::string name, newName;          ///< of a row
    std::string description;            ///< of a curve
    double factor = 1, offset = 0;      ///< of a unit
    std::vector<std::string> fields{};  ///< of a new group, behind its name
};
/// Refusal when it cannot be, or cannot be saved. A group that has members is removed with them only after a question;
/// false when that was answered No.
bool editLibrary(Workbench& bench, const LibraryRequest& request);

/// The channels of a LAS file into groups, saved when there is one to add.
struct LibraryImport {
    struct Mapping {
        std::string mnem, group;
    };
    std::string file;
    std::string group;  ///< for all channels but the index that `map` does not name; "" for none
    std::vector<Mapping> map;
};
LibraryAdditions importCurves(Workbench& bench, const LibraryImport& request);

}  // namespace welvane
