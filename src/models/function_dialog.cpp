#include "models/function_dialog.h"

#include <algorithm>

#include "functions/crnphi.h"
#include "las/statistics.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr const char* countRateKey = "CRPORO";
constexpr const char* functionKey = "funLstIndex";
constexpr std::array<const char*, 3> rowNames = {"Sand: ", "Lime: ", "Dolo: "};
/// First index of the matrix lists' densities in the matrix table: porosity computed with, converted to.
constexpr std::array<std::size_t, 2> listStart = {4, 7};
constexpr double stockMatrixDensity = 2.65, stockFluidDensity = 1, stockFluidTime = 189;

bool isFunction(int code) {
    return code >= 0 && code < functionCount;
}
FunctionCode codeOf(const FunctionDialog& dialog) {
    return static_cast<FunctionCode>(dialog.funLst);
}

std::string sourceName(const FunctionDialog& dialog) {
    const auto place = static_cast<std::size_t>(dialog.source);
    return dialog.source >= 0 && place < dialog.fNamT.size() ? dialog.fNamT[place] : std::string();
}

bool isDensity(FunctionCode code) {
    return code == FunctionCode::BulkDen2Poro || code == FunctionCode::Poro2BulkDen;
}
bool isSonic(FunctionCode code) {
    return code == FunctionCode::Dt2Poro || code == FunctionCode::Poro2Dt;
}
/// Functions that offer their source as the result.
bool rewritesSource(FunctionCode code) {
    return code == FunctionCode::Math || code == FunctionCode::Average;
}

void fillMatrixRows(FunctionDialog& dialog, const MatrixTable& matrix) {
    for (std::size_t list = 0; list < 2; ++list) {
        dialog.matr[list].clear();
        for (std::size_t row = 0; row < rowNames.size(); ++row)
            dialog.matr[list].push_back(rowNames[row] + formatMask(matrix[listStart[list] + row], 3));
    }
}

void fillResultList(FunctionDialog& dialog, const ReferenceTables& reference, std::string_view group) {
    dialog.resultList.clear();
    if (group.empty()) return;
    for (const Curve& curve : reference.curves)
        if (sameText(curve.group, group)) dialog.resultList.push_back(curve.mnem);
}

/// Text of a count-rate box for a number that was kept; 0 is what "From_Log" is kept as.
std::string countRateText(std::size_t box, float value) {
    return box < 2 && value == 0 ? std::string(fromLogText) : formatMask(value, 4);
}

void recallCountRates(FunctionDialog& dialog, const SettingsStore& store) {
    const std::vector<std::string> kept = split(store.get(countRateKey, ""), '|');
    for (std::size_t index = 0; index < countRateSize; ++index) {
        const double value = index < kept.size() ? val(kept[index]) : 0;
        dialog.countRates[index] = value > -3e38 && value < 3e38 ? static_cast<float>(value) : 0;
    }
    for (std::size_t box = 0; box < dialog.ncr.size(); ++box)
        dialog.ncr[box] = countRateText(box, dialog.countRates[box]);
}

void keepCountRates(const FunctionDialog& dialog, SettingsStore& store) {
    std::vector<std::string> texts;
    for (const float value : dialog.countRates) texts.push_back(formatMask(value, 4));
    store.put(countRateKey, join(texts, "|"));
}

void setDensityDefaults(FunctionDialog& dialog, const CountryUnits& units) {
    // Kept: the figures are multiplied here and divided when they are stored, so that outside Canada both boxes show
    // "0.00" and the user types the values. Test: densityDefaultsOutsideCanadaAreZero
    dialog.parT = {formatMask(stockMatrixDensity * units.densityFactor, 2),
                   formatMask(stockFluidDensity * units.densityFactor, 2)};
}

void setDefaults(FunctionDialog& dialog, const FunctionDialogContext& context) {
    using enum FunctionCode;
    const CountryUnits& units = context.settings.units;
    switch (codeOf(dialog)) {
        case Cond2Res:
            dialog.conTL = "RILD";
            return;
        case BulkDen2Poro:
            setDensityDefaults(dialog, units);
            return;
        case Poro2BulkDen:
            if (dialog.parT[0].empty() && dialog.parT[1].empty()) setDensityDefaults(dialog, units);
            dialog.matrIndex[0] = 0;
            return;
        case DenMatrix:
        case NporCp1e:
        case NphiCp1c:
            for (int& index : dialog.matrIndex) index = std::max(index, 0);
            return;
        case Dt2Poro:
        case Poro2Dt:
            dialog.parT = {formatMask(context.settings.matrix[10] * units.sonicFactor, 2),
                           formatMask(stockFluidTime * units.sonicFactor, 2)};
            return;
        case NeutCr2Poro:
            dialog.toolListsVisible = readCrnphi(dialog.ttLst[0], CrnphiMode::Tools, "", context.programFolder);
            dialog.ttLst[1].clear();
            recallCountRates(dialog, context.store);
            return;
        case Math:
            dialog.fT = {"1", "0", "0", "1"};
            return;
        case MinMax:
            dialog.parT = {"0", "100"};
            return;
        case Replace:
            dialog.parT = {"", "-999.25"};
            return;
        case Average:
            dialog.funOpt = 1;
            dialog.aveT = "1";
            return;
        case Scale:
            dialog.linlogT = {"0.2", "2000", "3.25", "5.75"};
            return;
        case Res2Cond:
        case AvePoro:
            return;
    }
}

void setTags(FunctionDialog& dialog, const CountryUnits& units) {
    const FunctionCode code = codeOf(dialog);
    dialog.parTags = {};
    if (isDensity(code)) dialog.parTags = {"Matrix Value " + units.densityUnit, "Fluid Value" + units.densityUnit};
    if (isSonic(code)) dialog.parTags = {"Matrix Value  " + units.sonicUnit, "Fluid Value  " + units.sonicUnit};
    if (code == FunctionCode::MinMax) dialog.parTags = {"Min Value", "Max Value"};
    if (code == FunctionCode::Replace) dialog.parTags = {"Old Value", "New Value"};
    dialog.linlogTags = {"Left Scale", "Right Scale", "Left Track (in)", "Right Track (in)"};
}

}  // namespace

std::optional<FunctionPage> pageOf(FunctionCode code) {
    using enum FunctionPage;
    // By code: what each function takes.
    static constexpr std::array<std::optional<FunctionPage>, functionCount> pages = {
        std::nullopt,    std::nullopt, PorosityDensity, PorosityDensity, Matrix,  PorosityDensity,
        PorosityDensity, Matrix,       Matrix,          Neutron,         General, General,
        General,         General,      Average,         LinLog};
    return pages[static_cast<std::size_t>(code)];
}

CountRateStatistics countRateStatistics(App& app, const Session& session) {
    return [&app, &session](std::string_view channel) -> std::optional<CountRateEnds> {
        if (!session.loaded(0) || !session.slots[0].file) return std::nullopt;
        LasStatistics found;
        try {
            if (readLasStatistics(*session.slots[0].file, "", found, app.run, app.user) != StepResult::Done)
                return std::nullopt;
        } catch (const RunTimeFailure&) {
            return std::nullopt;
        }
        for (std::size_t place = 1; place < found.channels.size(); ++place) {
            const ChannelStatistics& one = found.channels[place];
            if (sameText(trim(one.field.mnem), trim(channel)) && one.count > 0)
                return CountRateEnds{one.maximum, one.minimum};
        }
        return std::nullopt;
    };
}

void fillFunStuff(FunctionDialog& dialog, FunctionDialogContext& context) {
    fillMatrixRows(dialog, context.settings.matrix);
    if (!isFunction(dialog.funLst)) return;
    const FunctionEntry& entry = functionCatalogue()[dialog.funLst];
    fillResultList(dialog, context.reference, entry.suggestedMnem);
    dialog.conTL = rewritesSource(entry.code) ? sourceName(dialog) : std::string(entry.suggestedMnem);
    setTags(dialog, context.settings.units);
    setDefaults(dialog, context);
    updateMFLab(dialog);
}

void chooseFunction(FunctionDialog& dialog, FunctionDialogContext& context, int code) {
    if (!isFunction(code)) return;
    dialog.funLst = code;
    context.store.put(functionKey, std::to_string(code));
    fillFunStuff(dialog, context);
}

void chooseSource(FunctionDialog& dialog, int source) {
    dialog.source = source;
    if (isFunction(dialog.funLst) && rewritesSource(codeOf(dialog))) dialog.conTL = sourceName(dialog);
    updateMFLab(dialog);
}

void updateMFLab(FunctionDialog& dialog) {
    const std::string name = sourceName(dialog).substr(0, 4);
    dialog.formula = "New Channel =  (A x " + name + " + (B x " + name + ") + C";
}

FunctionDialog openFunctionDialog(FunctionDialogContext& context, std::vector<std::string> sources, int source,
                                  std::string_view oldDescriptor) {
    FunctionDialog dialog;
    dialog.fNamT = std::move(sources);
    dialog.source = source;
    const double last = val(context.store.get(functionKey, "0"));
    dialog.funLst = last >= 0 && last < functionCount ? static_cast<int>(last) : 0;
    fillFunStuff(dialog, context);
    if (!oldDescriptor.empty()) fillPreFunctions(dialog, context, oldDescriptor);
    return dialog;
}

void chooseMatrix(FunctionDialog& dialog, FunctionDialogContext& context, int list, int row, std::string_view text) {
    if (list < 0 || list > 1 || row < 0 || row > 2) return;
    const auto place = static_cast<std::size_t>(list);
    dialog.matrIndex[place] = row;
    const std::size_t colon = text.find(':');
    if (colon == npos) return;
    const double value = val(trim(text.substr(colon + 1)));
    if (value < -3e38 || value > 3e38) return;
    context.settings.matrix[listStart[place] + static_cast<std::size_t>(row)] = static_cast<float>(value);
    fillMatrixRows(dialog, context.settings.matrix);
}

void setCountRate(FunctionDialog& dialog, FunctionDialogContext& context, std::size_t box, std::string_view text) {
    if (box >= dialog.ncr.size()) return;
    dialog.ncr[box] = box < 2 && trim(text).empty() ? fromLogText : text;
    const double value = sameText(dialog.ncr[box], fromLogText) ? 0 : val(dialog.ncr[box]);
    dialog.countRates[box] = value > -3e38 && value < 3e38 ? static_cast<float>(value) : 0;
    keepCountRates(dialog, context.store);
}

void chooseTool(FunctionDialog& dialog, FunctionDialogContext& context, std::size_t row) {
    if (row < dialog.ttLst[0].size())
        readCrnphi(dialog.ttLst[1], CrnphiMode::Diameters, dialog.ttLst[0][row], context.programFolder);
}

void chooseDiameter(FunctionDialog& dialog, FunctionDialogContext& context, std::size_t row) {
    CrnphiRow figures;
    if (row == 0 || row >= dialog.ttLst[1].size() || !splitCrnphiRow(dialog.ttLst[1][row], figures)) return;
    setCountRate(dialog, context, 0, figures.highCountRate);
    setCountRate(dialog, context, 1, figures.lowCountRate);
    setCountRate(dialog, context, 2, figures.highPorosity);
    setCountRate(dialog, context, 3, figures.lowPorosity);
}

void fillCountRatesFromLog(FunctionDialog& dialog, FunctionDialogContext& context) {
    const std::optional<CountRateEnds> ends =
        context.statistics ? context.statistics(sourceName(dialog)) : std::nullopt;
    if (!ends) {
        context.user.ask({"Error", "Error doing Statistics listing", Buttons::Ok, Icon::None, Answer::Ok});
        return;
    }
    setCountRate(dialog, context, 0, formatMask(ends->maximum, 4));
    setCountRate(dialog, context, 1, formatMask(ends->minimum, 4));
}

}  // namespace welvane
