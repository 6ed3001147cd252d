#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reference/reference_tables.h"
#include "shared/failure.h"
#include "shared/settings.h"

/// The sixteen pre-built channel functions: catalogue, descriptor, coefficients and arithmetic.
namespace welvane {

/// Position in the catalogue, 0 to 15.
enum class FunctionCode : std::int16_t {
    Res2Cond,
    Cond2Res,
    BulkDen2Poro,
    Poro2BulkDen,
    DenMatrix,
    Dt2Poro,
    Poro2Dt,
    NporCp1e,
    NphiCp1c,
    NeutCr2Poro,
    Math,
    MinMax,
    AvePoro,
    Replace,
    Average,
    Scale
};
inline constexpr int functionCount = 16;

/// One argument of a function: a field 2 to 5 of its descriptor.
struct FunctionArgument {
    std::string_view name;  ///< "matrix density"
    std::string_view unit;  ///< "" where it has none
    std::string_view defaultText;
};

struct FunctionEntry {
    FunctionCode code;
    std::string_view description;             ///< list text
    std::string_view suggestedMnem;           ///< of the catalogue; "" when none
    std::string_view key;                     ///< name behind FUN=
    std::vector<FunctionArgument> arguments;  ///< at most four
    std::string_view example;                 ///< a FUN= clause
    int firstField = 2;                       ///< field of the descriptor that holds the first argument

    /// True for the changes of matrix: their arguments are two lithologies, in fields 4 and 5.
    bool takesLithologies() const { return firstField == 4; }
    /// How many arguments the function cannot do without: clip limits may be open, the stale average takes none.
    std::size_t neededArguments() const;
};
const std::array<FunctionEntry, functionCount>& functionCatalogue();
/// By key, case ignored; nullptr when the catalogue does not hold it.
const FunctionEntry* findFunction(std::string_view key);

/// What a descriptor says: the text of eight "|"-joined fields that stands behind a channel with a function.
struct FunctionDescriptor {
    std::string codeText;                   ///< field 1: the code as decimal text
    std::array<std::string, 4> parameters;  ///< fields 2 to 5, by code
    std::string sourcePosition;             ///< field 6: of the source channel among the channels offered, from 1
    std::string resultMnem;                 ///< field 7
    std::string note;                       ///< field 8: "was :" source and what was done, for the description

    std::string text() const;
    /// Fields that the text lacks are empty; what follows an eighth "|" is dropped.
    static FunctionDescriptor parse(std::string_view text);
    /// The function; nothing where field 1 is no whole number of the catalogue.
    std::optional<FunctionCode> code() const;
};

/// a1 to a4; an unset one counts as 0.
struct CoefficientSet {
    std::optional<double> a1, a2, a3, a4;
};
struct ParsedFunction {
    std::optional<FunctionCode> code;  ///< nothing where field 1 is not 0 to 15: such a function changes no sample
    CoefficientSet coefficients;
    std::string note;  ///< conversion note, for a window that tells what a pass did; changes no description
};
/// Coefficients and note of a descriptor. RunTimeFailure when field 1 is no integer; a failure of the arithmetic leaves
/// the coefficients behind it unset.
ParsedFunction parseFunction(std::string_view descriptor, const MatrixTable& matrix);

/// What a value carries from sample to sample and from channel to channel within one pass.
struct FunctionState {
    double y = 0;  ///< Kept: never cleared, so code 12 writes what the function before it left.
    /// What a failing sample becomes; nothing leaves it the y of the sample before.
    std::optional<double> failedSample{};
};

/// One function over one channel. `source` and `target` hold samples 1..n at index 0..n-1 and may be the same memory.
/// Null samples (compared in single precision) are left alone; a failing sample becomes what `state` says and is
/// noted in `failures`.
void evaluateFunction(const ParsedFunction& function, std::string_view outputUnit, std::string_view inputUnit,
                      std::span<const double> source, std::span<double> target, float nullValue,
                      const ReferenceTables& reference, const MatrixTable& matrix, FunctionState& state,
                      FailureList& failures);

/// Density porosity from one matrix to another; code 1 SAND to LIME, 2 SAND to DOLO, 3 LIME to SAND, 4 LIME to DOLO, 5
/// DOLO to SAND, 6 DOLO to LIME.
float convertDensityMatrix(float porosity, int code, const MatrixTable& matrix);
/// Neutron porosity (V/V) between matrices by chart CP-1e; RunTimeFailure for a negative number under a root.
double convertNeutronCP1e(float porosity, int code);
/// Neutron porosity (V/V) between matrices by chart CP-1c.
double convertNeutronCP1c(double porosity, int code);
/// Natural logarithm of the value over that of 10; 0 for a value that is not positive.
double log10Of(double value);
/// 10 to the value within -50 to 50, else 0.
double antiLog10(double value);

}  // namespace welvane
