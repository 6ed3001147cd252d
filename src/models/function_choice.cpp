#include "models/function_choice.h"

namespace welvane {

namespace {

std::vector<std::string> offeredSources(const Session& session) {
    const Table& outputs = session.tables.outputs();
    std::vector<std::string> names;
    for (int column = 1; column < outputs.columns(); ++column) names.push_back(outputs.text(SrdRow::Mnem, column));
    return names;
}

}  // namespace

FunctionChoice::FunctionChoice(App& app, const Session& session, int column, std::string_view oldDescriptor,
                               std::string_view chosen)
    : context{app.reference,
              app.settings,
              app.platform.settings(),
              app.user,
              app.platform.programFolder(),
              countRateStatistics(app, session)},
      dialog(openFunctionDialog(context, offeredSources(session), column - 1, oldDescriptor)) {
    if (!oldDescriptor.empty()) old = FunctionDescriptor::parse(oldDescriptor);
    const FunctionEntry* const entry = findFunction(chosen);
    if (entry != nullptr && dialog.funLst != static_cast<int>(entry->code))
        chooseFunction(dialog, context, static_cast<int>(entry->code));
}

}  // namespace welvane
