#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the program knows of the domain: units, curve mnemonics, standard parameters. Look-ups ignore case; the first
/// row that fits wins. Rows count from 0 in file order.
namespace welvane {

struct UnitGroup {
    std::string group, internalUnit;
};
struct Unit {
    std::string group, externalUnit;
    double factor = 0;  ///< divides an external value to give the internal one
    double offset = 0;
};
struct CurveGroup {
    std::string group, uniqueValue, canadianUnit, otherUnit;
};
struct Curve {
    std::string group, mnem, desc;
};
/// All in upper case.
struct Parameter {
    std::string mnem, unit, value, desc, searchText;
};

using UnitGroupTable = std::vector<UnitGroup>;
using UnitTable = std::vector<Unit>;
using CurveGroupTable = std::vector<CurveGroup>;
using CurveTable = std::vector<Curve>;
using ParameterTable = std::vector<Parameter>;

struct ReferenceTables {
    UnitGroupTable unitGroups;
    UnitTable units;
    CurveGroupTable curveGroups;
    CurveTable curves;
    ParameterTable parameters;
};

/// Each resets its tables and reads the file; a missing file leaves them empty. False when the file is missing or too
/// large to be read to its end; FileFailure when it is there and cannot be read.
bool readCurves(ReferenceTables& tables, std::string_view curvesPath);
bool readUnits(ReferenceTables& tables, std::string_view unitsPath);
bool readParameters(ReferenceTables& tables, std::string_view paraPath);

/// Rewrite the file whole (a new file, renamed); false when that failed, the old file then stands and `why` takes the
/// reason.
bool writeUnits(const ReferenceTables& tables, std::string_view unitsPath, std::string* why = nullptr);
bool writeCurves(const ReferenceTables& tables, std::string_view curvesPath, std::string* why = nullptr);

/// Factor of a unit (external value / factor = internal value); 1, with offset 0, for a unit that is not in the table
/// or has factor 0.
double unitFactor(const ReferenceTables& tables, std::string_view unit, double* offset = nullptr);
bool knownUnit(const ReferenceTables& tables, std::string_view unit);

/// Unique value of the mnemonic's group, the code printed as the VALUE of a ~Curve line; "" when not found.
std::string apiCodeForMnem(const ReferenceTables& tables, std::string_view mnem);
/// Description of the mnemonic in front of a "|"; "" when not found.
std::string descriptionForMnem(const ReferenceTables& tables, std::string_view mnem);
/// The unit of the mnemonic's group for the region; "" when not found.
std::string unitForMnem(const ReferenceTables& tables, std::string_view mnem, bool canada);

/// All mnemonics of the group of `name`, in table order, `name` itself among them; empty when it is in no group.
std::vector<std::string> groupMembers(const ReferenceTables& tables, std::string_view name);
/// All units of the group of `unit`, in table order; empty when it is unknown.
std::vector<std::string> unitGroupMembers(const ReferenceTables& tables, std::string_view unit,
                                          std::string* group = nullptr);

/// Units of the given list that the table does not know, each once; only notes, nothing is changed.
std::vector<std::string> checkUnits(const ReferenceTables& tables, const std::vector<std::string>& unitsInUse);

}  // namespace welvane
