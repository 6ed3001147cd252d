#include "engine/function_stage.h"

#include <algorithm>
#include <vector>

#include "session/filters.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Channel of the output matrix that a function reads: its own where a line of a filter made it, since the links of its
/// input were copied into it; otherwise field 6 of the descriptor counts output channels from 1.
int sourceChannel(const PassContext& context, int column) {
    const Table& outputs = context.session.tables.outputs();
    const int own = column - 1;
    if (readsOwnColumn(outputs, column)) return own;
    const double position = val(FunctionDescriptor::parse(outputs.data(SrdRow::Function, column)).sourcePosition);
    return position >= 1 && position <= context.outputMatrix.columns() ? static_cast<int>(position) - 1 : own;
}

/// Puts the function of `column` over the samples of channel `source` into channel `target`.
void evaluateColumn(PassContext& context, int column, int source, int target) {
    const SessionTables& tables = context.tables();
    const SessionCell& cell = tables.outputs().cell(SrdRow::Function, column);
    const ParsedFunction function = parseFunction(cell.data, context.app.settings.matrix);
    // The input unit stands in the data of the wanted unit's cell; where that is empty the input channel came with row
    // 2's.
    const SessionCell& unit = tables.outputs().cell(SrdRow::Unit, column);
    const std::string& inputUnit = unit.data.empty() ? tables.output(SrdRow::InputUnit, column) : unit.data;
    const bool isTrue = context.options.rules == FigureRules::trueFigures;
    if (isTrue) context.functionState.failedSample = context.nullValue;
    FailureList failures;
    evaluateFunction(function, unit.text, inputUnit, std::as_const(context.outputMatrix).column(source),
                     context.outputMatrix.column(target), context.nullValue, context.app.reference,
                     context.app.settings.matrix, context.functionState, failures);
    if (failures.count > 0)
        context.report.failures.add(tables.output(SrdRow::Mnem, column) + " (" + cell.text + ")",
                                    std::to_string(failures.count) + " samples could not be computed and " +
                                        (isTrue ? "are null" : "keep the value before them") +
                                        ", the first: " + failures.first.front().why);
}

void applyFunction(PassContext& context, int column) {
    const int own = column - 1;
    std::vector<int> inFront;
    for (int front = column; (front = functionInFront(context.tables().outputs(), front)) != 0;)
        inFront.push_back(front);
    for (auto front = inFront.rbegin(); front != inFront.rend(); ++front) evaluateColumn(context, *front, own, own);
    evaluateColumn(context, column, sourceChannel(context, column), own);
}

}  // namespace

void applyFunctions(PassContext& context) {
    const Table& outputs = context.tables().outputs();
    for (int column = 1; column < outputs.columns(); ++column) {
        const SessionCell& function = outputs.cell(SrdRow::Function, column);
        if (!outputs.checked(SrdRow::Use, column) || function.data.empty() || sameText(function.text, noneText))
            continue;
        attempt(context.report.failures, "channel function", [&] { applyFunction(context, column); });
    }
}

void applyDovranFilter(PassContext& context) {
    if (!context.tables().checked(PrdRow::DovranFilter)) return;
    const double null = context.nullValue;
    for (int channel = 0; channel < context.outputMatrix.columns(); ++channel) {
        const std::span<double> samples = context.outputMatrix.column(channel);
        // Kept: the sample above is already filtered, so the smoothing runs forward through its own results.
        for (std::size_t i = 1; i + 1 < samples.size(); ++i)
            if (samples[i - 1] != null && samples[i] != null && samples[i + 1] != null)
                samples[i] = (samples[i - 1] / 2 + samples[i] + samples[i + 1] / 2) / 2;
    }
}

}  // namespace welvane
