#include "models/property_rules.h"

#include <vector>

#include "models/cell_texts.h"
#include "session/properties.h"
#include "session/property_edits.h"
#include "session/step_text.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::vector<std::string> loadedPaths(const Session& session) {
    std::vector<std::string> paths;
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot)) paths.push_back(session.slots[slot].path);
    return paths;
}

std::string formatSources(const Session& session) {
    std::string list = "User";
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot)) list += "|File" + std::to_string(slot + 1);
    return list;
}

}  // namespace

std::string propertyList(const Session& session, TableIndex row, TableIndex column) {
    const PrdRow name = static_cast<PrdRow>(row);
    const PrdColumn cell = static_cast<PrdColumn>(column);
    if (name == PrdRow::HeaderFile && cell == PrdColumn::Setting) return join(loadedPaths(session), "|");
    if (isFormatRow(name) && cell == PrdColumn::Option) return formatSources(session);
    if (name == PrdRow::PlainAscii && !session.tables.checked(name)) return {};
    const Property* const property = findProperty(name, cell);
    return property != nullptr && property->list != nullptr ? property->list() : std::string();
}

void editProperty(App& app, Session& session, const CellEdit& edit) {
    needProperty(session, static_cast<PrdRow>(edit.row), static_cast<PrdColumn>(edit.column), edit.text);
    if (!setProperty(app, session, static_cast<PrdRow>(edit.row), static_cast<PrdColumn>(edit.column), edit.text,
                     edit.comboIndex))
        app.user.ask(zeroStepPrompt());
}

}  // namespace welvane
