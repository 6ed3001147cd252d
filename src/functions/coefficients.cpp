#include <charconv>
#include <cmath>
#include <string>

#include "functions/functions.h"
#include "shared/numbers.h"
#include "shared/text.h"

/// From the text of a descriptor to the coefficients of the sample loop, and the conversion note.
namespace welvane {

namespace {

constexpr std::array<std::string_view, 3> matrixNames = {"SAND", "LIME", "DOLO"};

struct FunctionParams {
    double p1, p2, p3, p4;
};

/// A result that no double holds is an arithmetic failure.
double checked(double value) {
    if (!std::isfinite(value)) throw RunTimeFailure("division by zero or overflow");
    return value;
}

/// Text of a number with at most 15 significant digits.
std::string generalText(double value) {
    std::array<char, 40> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::general, 15).ptr;
    return plainNumber(val(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()))));
}

/// 0 for equal indices and for pairs that are none of 0, 1, 2.
int matrixChangeCode(double in, double out) {
    static constexpr int codes[3][3] = {{0, 1, 2}, {3, 0, 4}, {5, 6, 0}};
    const auto isIndex = [](double value) { return value == 0 || value == 1 || value == 2; };
    return isIndex(in) && isIndex(out) ? codes[static_cast<int>(in)][static_cast<int>(out)] : 0;
}

void setLine(CoefficientSet& set, double a1, double a2) {
    set.a1 = checked(a1);
    set.a2 = checked(a2);
    set.a3 = 0;
    set.a4 = 1;
}

/// The line through (p1, log p4) and (p2, log p3): log porosity over count rate.
void setCountRates(CoefficientSet& set, const FunctionParams& p) {
    // Kept: "From_Log" in field 2 or 3 reads as 0 here. The word is gone once the field is a number, so no statistics
    // are looked at. Test: fromLogReadsAsZero
    const double slope = checked((log10Of(p.p3) - log10Of(p.p4)) / (p.p2 - p.p1));
    set.a1 = slope;
    // Kept: the intercept takes the slope's text, read back, and so its 15 digits. Test:
    // countRateInterceptTakesTheTextOfTheSlope
    set.a2 = checked(log10Of(p.p4) - p.p1 * val(generalText(slope)));
    set.a3 = 0;
    set.a4 = 1;
}

void setCoefficients(CoefficientSet& set, FunctionCode code, const FunctionParams& p,
                     const FunctionDescriptor& descriptor) {
    using enum FunctionCode;
    switch (code) {
        case Res2Cond:
        case Cond2Res:
            set = {1000, 0, -1, 1};
            return;
        case BulkDen2Poro:
            setLine(set, -1 / (p.p1 - p.p2), p.p1 / (p.p1 - p.p2));
            return;
        case Poro2BulkDen:
            setLine(set, -(p.p1 - p.p2), p.p1);
            return;
        case DenMatrix:
        case NporCp1e:
        case NphiCp1c:
            set = {1, 0, matrixChangeCode(p.p3, p.p4), 1};
            return;
        case Dt2Poro:
            setLine(set, 1 / (p.p2 - p.p1), -p.p1 / (p.p2 - p.p1));
            return;
        case Poro2Dt:
            setLine(set, p.p2 - p.p1, p.p1);
            return;
        case NeutCr2Poro:
            setCountRates(set, p);
            return;
        case MinMax:
            set = {trim(descriptor.parameters[0]).empty() ? lasNull : p.p1,
                   trim(descriptor.parameters[1]).empty() ? lasNull : p.p2, 0, 0};
            return;
        case AvePoro:
            set = {0, 0, 0, 0};
            return;
        case Replace:
        case Average:
            set = {p.p1, p.p2, 0, 0};
            return;
        case Math:
        case Scale:
            set = {p.p1, p.p2, p.p3, p.p4};
            return;
    }
}

std::string matrixText(double index, const MatrixTable& matrix) {
    const std::int32_t row = roundToEven(index);
    if (row < 0 || row > 2) throw RunTimeFailure("subscript out of range");
    const auto place = static_cast<std::size_t>(row);
    return std::string(matrixNames[place]) + "-" + formatMask(matrix[place + 1], 3);
}

std::string matrixNote(FunctionCode code, const FunctionParams& p, const MatrixTable& matrix) {
    const char* const chart = code == FunctionCode::NporCp1e   ? " CP-1e"
                              : code == FunctionCode::NphiCp1c ? " CP-1c"
                                                               : "";
    return "(was . Matrix was=" + matrixText(p.p3, matrix) + " : Matrix is=" + matrixText(p.p4, matrix) + chart + " )";
}

/// Kept: the old mnemonic that was to follow "( was " is empty in every note. Test: notes
std::string conversionNote(FunctionCode code, const FunctionParams& p, const MatrixTable& matrix) {
    using enum FunctionCode;
    const std::string was = "( was ";
    const auto text = [](double value) { return generalText(value); };
    switch (code) {
        case Res2Cond:
            return was + ". Conductivity computed from Resistivity)";
        case Cond2Res:
            return was + ". Resistivity computed from Conductivity)";
        case BulkDen2Poro:
        case Poro2BulkDen:
            return was + " )";
        case DenMatrix:
        case NporCp1e:
        case NphiCp1c:
            return matrixNote(code, p, matrix);
        case Dt2Poro:
            return was + " Matrix=" + text(p.p1) + " Fluid=" + text(p.p2) + ")";
        case Poro2Dt:
            return was + ". Matrix=" + text(p.p1) + " Fluid=" + text(p.p2) + ")";
        case NeutCr2Poro:
            return was + ". Low_Phi=" + text(p.p4) + "Hi_CR=" + text(p.p1) + " Hi_Phi=" + text(p.p3) +
                   " Low_CR=" + text(p.p2) + ")";
        case Math:
            return was + ". A=" + text(p.p1) + "B=" + text(p.p2) + "C=" + text(p.p3) + "n=" + text(p.p4) + ")";
        case MinMax:
            return was + ". Min=" + text(p.p1) + "Max=" + text(p.p2) + ")";
        case AvePoro:
            return was + ". Average Porosity computed from)";
        case Replace:
            return was + ". Replaced " + text(p.p1) + " with =" + text(p.p2) + ")";
        case Average:
            return was + ". Averaged over " + text(p.p1) + " points";
        case Scale:
            return was + ". New Left Scale=" + text(p.p1) + "New Right Scale=" + text(p.p2) +
                   ". Old Left Track=" + text(p.p3) + "Old Right Track=" + text(p.p4);
    }
    return {};
}

}  // namespace

ParsedFunction parseFunction(std::string_view descriptorText, const MatrixTable& matrix) {
    const FunctionDescriptor descriptor = FunctionDescriptor::parse(descriptorText);
    ParsedFunction result;
    const std::int16_t number = strictInt16(descriptor.codeText);
    if (number < 0 || number >= functionCount) return result;
    const auto code = static_cast<FunctionCode>(number);
    result.code = code;
    const auto& [first, second, third, fourth] = descriptor.parameters;
    const FunctionParams params = {val(first), val(second), val(third), val(fourth)};
    try {
        setCoefficients(result.coefficients, code, params, descriptor);
        result.note = conversionNote(code, params, matrix);
    } catch (const RunTimeFailure&) {
        // What was set before the failure stays, the rest counts as 0.
    }
    return result;
}

}  // namespace welvane
