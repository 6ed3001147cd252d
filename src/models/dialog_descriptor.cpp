#include "models/function_dialog.h"
#include "shared/numbers.h"
#include "shared/text.h"

/// Between the fields of the function dialog and the descriptor.
namespace welvane {

namespace {

using Fields = std::array<std::string, 4>;  ///< fields 2 to 5 of a descriptor

/// Shown value = stored value x factor, for the functions whose two parameters carry a unit.
double parameterFactor(FunctionCode code, const CountryUnits& units) {
    using enum FunctionCode;
    if (code == BulkDen2Poro || code == Poro2BulkDen) return units.densityFactor;
    if (code == Dt2Poro || code == Poro2Dt) return units.sonicFactor;
    return 1;
}

Fields parameterFields(const FunctionDialog& dialog, FunctionCode code, const CountryUnits& units) {
    using enum FunctionCode;
    const std::string in = std::to_string(dialog.matrIndex[0]), out = std::to_string(dialog.matrIndex[1]);
    switch (code) {
        case Res2Cond:
        case Cond2Res:
            return {};
        case BulkDen2Poro:
        case Poro2BulkDen:
        case Dt2Poro:
        case Poro2Dt: {
            const double factor = parameterFactor(code, units);
            return {formatMask(val(dialog.parT[0]) / factor, 2), formatMask(val(dialog.parT[1]) / factor, 2), in, out};
        }
        case DenMatrix:
        case NporCp1e:
        case NphiCp1c:
            return {dialog.parT[0], dialog.parT[1], in, out};
        case NeutCr2Poro:
            return dialog.ncr;
        case Math:
            return dialog.fT;
        case MinMax:
        case AvePoro:
        case Replace:
            return {dialog.parT[0], dialog.parT[1], "", ""};
        case Average:
            return {dialog.funOpt == 1 ? "1" : "2", dialog.aveT, "", ""};
        case Scale:
            return {dialog.linlogT[0], dialog.linlogT[1], dialog.linlogT[2],
                    (dialog.llChk ? "-" : "") + dialog.linlogT[3]};
    }
    return {};
}

std::string matrixRow(const FunctionDialog& dialog, std::size_t list) {
    const int row = dialog.matrIndex[list];
    const auto& rows = dialog.matr[list];
    return row >= 0 && static_cast<std::size_t>(row) < rows.size() ? rows[row] : std::string();
}

std::string minMaxLabel(const std::string& low, const std::string& high) {
    if (!low.empty() && !high.empty()) return "Min =" + low + ". Max = " + high;
    if (!low.empty()) return "Min =" + low;
    return high.empty() ? std::string() : "Max =" + high;
}

std::string label(const FunctionDialog& dialog, FunctionCode code) {
    using enum FunctionCode;
    const auto& [first, second] = dialog.parT;
    const auto name = [&](std::size_t list) {
        const std::string row = matrixRow(dialog, list);
        return row.substr(0, row.find(':'));
    };
    switch (code) {
        case Res2Cond:
        case Cond2Res:
            return {};
        case BulkDen2Poro:
        case Poro2BulkDen:
        case Dt2Poro:
        case Poro2Dt:
            return "Matrix=" + first + " Fluid=" + second;
        case DenMatrix:
            return "Matrix In=" + matrixRow(dialog, 0) + " Matrix Out=" + matrixRow(dialog, 1);
        case NporCp1e:
        case NphiCp1c:
            return "Matrix In=" + name(0) + " Matrix Out=" + name(1);
        case NeutCr2Poro:
            return "Low Count=" + dialog.ncr[1] + " Hi Count=" + dialog.ncr[0] + " Low Poro=" + dialog.ncr[3] +
                   " Hi poro=" + dialog.ncr[2];
        case Math:
            return "A=" + dialog.fT[0] + " B=" + dialog.fT[1] + " C=" + dialog.fT[2] + " n=" + dialog.fT[3];
        case MinMax:
            return minMaxLabel(first, second);
        case AvePoro:
            return "Compute PHIT from " + first + " and " + second;
        case Replace:
            return "Replace " + first + " with " + second;
        // Kept: the number of points does not appear. Test: descriptors
        case Average:
            return dialog.funOpt == 1 ? "Averaged 1 * point , 0.5 * point before,  0.5 * point after"
                                      : "Averaged over Point";
        case Scale:
            return "New Left Scale=" + dialog.linlogT[0] + "New Right Scale=" + dialog.linlogT[1] +
                   " Old Left Track =" + dialog.linlogT[2] + "Old Right Track =" + dialog.linlogT[3];
    }
    return {};
}

/// The checks of the count-rate page, each with its message.
bool countRatesHold(const FunctionDialog& dialog, UserInterface& user) {
    const double high = val(dialog.ncr[0]), low = val(dialog.ncr[1]);
    const bool fromLog = sameText(dialog.ncr[0], fromLogText) || sameText(dialog.ncr[1], fromLogText);
    if ((!fromLog && low == high) || low > high) {
        user.ask({"Invalid Court Rate Values", "Count rates must not be equal and High must be greater than Low",
                  Buttons::Ok, Icon::Stop, Answer::Ok});
        return false;
    }
    const double highPorosity = val(dialog.ncr[2]), lowPorosity = val(dialog.ncr[3]);
    // Kept: the text promises a check of the sign, there is none. Test: countRatesAreChecked
    if (lowPorosity == highPorosity || lowPorosity > highPorosity) {
        user.ask({"Invalid Porosity Values",
                  "Porosities must not be equal and High must be greater than Low, and neither can be less than 0. ",
                  Buttons::Ok, Icon::Stop, Answer::Ok});
        return false;
    }
    return true;
}

/// Fields 2 to 5 of a descriptor back into the fields of the dialog.
void takeParameters(FunctionDialog& dialog, FunctionDialogContext& context, FunctionCode code, const Fields& fields) {
    using enum FunctionCode;
    const auto listIndex = [](const std::string& text) {
        const double value = val(text);
        return value >= 0 && value <= 2 && !text.empty() ? static_cast<int>(value) : -1;
    };
    switch (code) {
        case BulkDen2Poro:
        case Poro2BulkDen:
        case Dt2Poro:
        case Poro2Dt: {
            // In the shown unit again, so that adding the unchanged dialog gives the same descriptor.
            const double factor = parameterFactor(code, context.settings.units);
            for (std::size_t place = 0; place < 2; ++place)
                dialog.parT[place] = formatMask(val(fields[place]) * factor, 2);
            dialog.matrIndex = {listIndex(fields[2]), listIndex(fields[3])};
            return;
        }
        case DenMatrix:
        case NporCp1e:
        case NphiCp1c:
            dialog.matrIndex = {listIndex(fields[2]), listIndex(fields[3])};
            [[fallthrough]];
        case MinMax:
        case AvePoro:
        case Replace:
            dialog.parT = {fields[0], fields[1]};
            return;
        case NeutCr2Poro:
            for (std::size_t box = 0; box < fields.size(); ++box) setCountRate(dialog, context, box, fields[box]);
            return;
        case Math:
            dialog.fT = fields;
            return;
        case Average:
            dialog.funOpt = fields[0] == "1" ? 1 : 2;
            dialog.aveT = fields[1];
            return;
        case Scale:
            dialog.linlogT = fields;
            dialog.llChk = beginsWith(fields[3], "-");
            if (dialog.llChk) dialog.linlogT[3].erase(0, 1);
            return;
        case Res2Cond:
        case Cond2Res:
            return;
    }
}

}  // namespace

std::optional<FunctionDescriptor> AddFunToList(const FunctionDialog& dialog, FunctionDialogContext& context) {
    const bool hasSource = dialog.source >= 0 && static_cast<std::size_t>(dialog.source) < dialog.fNamT.size();
    if (dialog.funLst < 0 || dialog.funLst >= functionCount || !hasSource) return std::nullopt;
    const auto code = static_cast<FunctionCode>(dialog.funLst);
    if (code == FunctionCode::NeutCr2Poro && !countRatesHold(dialog, context.user)) return std::nullopt;
    const std::string& source = dialog.fNamT[dialog.source];
    FunctionDescriptor descriptor{std::to_string(dialog.funLst), parameterFields(dialog, code, context.settings.units),
                                  std::to_string(dialog.source + 1), dialog.conTL.empty() ? source : dialog.conTL,
                                  "was :" + source + " " + label(dialog, code)};
    // A "|" that was typed would shift the fields behind it.
    for (std::string& parameter : descriptor.parameters) parameter = withoutChar(parameter, '|');
    descriptor.resultMnem = withoutChar(descriptor.resultMnem, '|');
    descriptor.note = withoutChar(descriptor.note, '|');
    return descriptor;
}

bool fillPreFunctions(FunctionDialog& dialog, FunctionDialogContext& context, std::string_view descriptorText) {
    const FunctionDescriptor descriptor = FunctionDescriptor::parse(descriptorText);
    const auto code = descriptor.code();
    if (!code) return false;
    dialog.funLst = static_cast<int>(*code);
    fillFunStuff(dialog, context);
    const double position = val(descriptor.sourcePosition);
    if (position >= 1 && position <= static_cast<double>(dialog.fNamT.size()))
        dialog.source = static_cast<int>(position) - 1;
    takeParameters(dialog, context, *code, descriptor.parameters);
    dialog.conTL = descriptor.resultMnem;
    updateMFLab(dialog);
    return true;
}

}  // namespace welvane
