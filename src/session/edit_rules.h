#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

/// What an edit of a session's table may be, and what follows from it. Windows and verbs call these, so that neither
/// has rules of its own.
namespace welvane {

/// The special pick list that stands for a browse button.
inline constexpr std::string_view browseList = "...";

/// Names of the functions joined by "|", "<none>" last.
std::string functionList();

/// Pick list of a cell, "|"-joined; "" where it offers none, "..." for a browse button.
std::string newChannelList(const App& app, const Session& session, int row, int column);
std::string propertyList(const Session& session, int row, int column);
std::string sectionList(const Session& session, int column);

/// A finished edit: the new text, and the position of the chosen list item (-1 when none was chosen from the list).
struct CellEdit {
    int row = 0, column = 0;
    std::string text;
    int comboIndex = -1;
};

/// Shown with the old descriptor; returns the new one, or "" for none. `chosen` is the function picked in the cell.
using FunctionDialog = std::function<std::string(const std::string& oldDescriptor, const std::string& chosen)>;

/// True for the cells of srd(4) that take an edit.
bool canEditNewChannel(const Session& session, int row, int column);
/// An edit of srd(4) with all that follows: the data cells that keep the first value, the function dialog, links,
/// row 6. RunTimeFailure for a cell outside the table.
void editNewChannel(App& app, Session& session, const CellEdit& edit, const FunctionDialog& functionDialog);
/// Puts a function on a column: the descriptor, and the header cells that follow from it. "" takes the function away.
void setFunction(const App& app, Session& session, int column, const std::string& descriptor);
/// The browse button of a file row: asks for a file and opens it in the slot. False when cancelled or not loaded.
bool browseSlotFile(App& app, Session& session, int slot);

/// What a caller has to do after an edit of prd.
struct PropertyEffect {
    bool sortSurvey = false;  ///< "Apply TVD" was checked: the survey table is to be sorted and taken over
};
/// An edit of prd by text or by a list choice. `edit.text` is the cell's new text. RunTimeFailure ("... is not a
/// number", "overflow") for a format value that is no 16-bit number; the cell then keeps its text.
void editProperty(App& app, Session& session, const CellEdit& edit);
/// A check of prd set or taken off.
PropertyEffect checkProperty(App& app, Session& session, PrdRow row, bool checked);
/// Row 23's browse button: a chosen filter's path. False when cancelled.
bool browseFilter(App& app, Session& session);

/// Includes a section or leaves it out; leaving out ~V, ~W or ~C asks first. Returns the state that holds now.
bool includeSection(App& app, Session& session, int column, bool include);
/// Drags a section; false, with nothing changed, for the label column and for the data section.
bool moveSection(Session& session, int from, int to);

/// Menu of row 6: all channels or none.
void useAllChannels(Session& session, bool use);
/// Menu of rows 4 and 5: every empty cell of the row takes the library's text for its mnemonic, else the text from the
/// file.
void fillEmptyFromLibrary(const App& app, Session& session, SrdRow row);
struct MenuEntry {
    std::string text;
    bool enabled = true;
};
/// Entries of the context menu of a cell of srd(4).
std::vector<MenuEntry> channelMenu(const Session& session, int row, int column);

}  // namespace welvane
