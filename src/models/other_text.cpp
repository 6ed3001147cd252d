#include "models/other_text.h"

namespace welvane {

std::string shownOtherText(const Session& session) {
    std::string text;
    const std::string& kept = session.tables.otherText;
    for (std::size_t place = 0; place < kept.size(); ++place) {
        if (kept[place] == '\r' && place + 1 < kept.size() && kept[place + 1] == '\n') continue;
        text += kept[place] == '\r' ? '\n' : kept[place];
    }
    return text;
}

void setOtherText(Session& session, std::string_view text) {
    if (text == shownOtherText(session)) return;
    std::string kept;
    for (const char letter : text) {
        if (letter == '\n') kept += '\r';
        kept += letter;
    }
    session.tables.otherText = std::move(kept);
}

void typeOtherText(UndoHistory& history, App& app, Session& session, std::string_view text) {
    if (text == shownOtherText(session)) return;
    const UndoHistory::Step step(history, app, session, "Edit ~Other", UndoHistory::Kind::Typing);
    setOtherText(session, text);
}

}  // namespace welvane
