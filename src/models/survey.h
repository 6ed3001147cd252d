#pragma once

#include <string_view>

#include "models/clipboard.h"
#include "session/session.h"

/// The survey tab around trd: its buttons, files that a person chooses, blocks of cells.
namespace welvane {

/// What became of a button of the tab, and the cell that the view goes to; row -1: it stays. Cancelled is not done,
/// without a word.
struct SurveyOutcome {
    EditOutcome outcome{};
    int row = -1, column = 0;
};

/// "Compute TVD Column". After a box about incomplete data the view goes to the last such row, at the cell that is
/// empty there.
SurveyOutcome computeSurvey(App& app, Session& session);
/// "Open TVD File": asks for a file, keeps its path as the setting `tvdFile`, and reads it. One that cannot be read
/// leaves the table empty.
SurveyOutcome openTVDFile(App& app, Session& session);
/// "Save Inclinometry Data": asks for a name.
EditOutcome saveInclinometryData(App& app, const Session& session);

/// Asks, then clears the texts of the selected cells (heads and labels stay). Rows and columns count from 0, both ends
/// included.
void clearTrdSelection(Table& trd, int firstRow, int firstColumn, int lastRow, int lastColumn, UserInterface& user);
/// Puts a block into trd from a cell on, which grows for it, each cell by the rules of an edit. One that reaches beyond
/// what the table can hold, or begins in the heads, changes nothing.
PasteReport pasteSurvey(Session& session, int row, int column, std::string_view text);

}  // namespace welvane
