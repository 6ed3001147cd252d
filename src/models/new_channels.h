#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "functions/functions.h"
#include "models/table_model.h"
#include "session/session.h"

/// srd(4) as a window edits it: what a cell offers, what an edit may be and what follows from it, and the menus.
namespace welvane {

/// Names of the functions joined by "|", "<none>" last.
std::string functionList();
/// Pick list of a cell, "|"-joined; "" where it offers none, "..." for a browse button.
std::string newChannelList(const App& app, const Session& session, TableIndex row, TableIndex column);

/// Shown with the old descriptor's text ("" for none); returns the new one, or nothing. `column` is that of the cell,
/// `chosen` the function picked in it.
using FunctionChooser = std::function<std::optional<FunctionDescriptor>(int column, std::string_view oldDescriptor,
                                                                        std::string_view chosen)>;

/// The slot whose file stands in this row of srd(4), or feeds channels by it; -1 for the rows above.
int slotOfChannelRow(TableIndex row);
/// True for the cells of srd(4) that take an edit.
bool canEditNewChannel(const Session& session, TableIndex row, TableIndex column);
/// An edit of srd(4) with all that follows: the data cells that keep the first value, the function dialog, links,
/// row 6. RunTimeFailure for a cell outside the table.
void editNewChannel(App& app, Session& session, const CellEdit& edit, const FunctionChooser& chooseFunction);
/// Puts a function on a column: the descriptor, and the header cells that follow from it. None takes the function away.
void setFunction(const App& app, Session& session, int column, const std::optional<FunctionDescriptor>& descriptor);

/// Menu of row 6: all channels or none.
void useAllChannels(Session& session, bool use);
/// Menu of rows 4 and 5: every empty cell of the row takes the library's text for its mnemonic, else the text from the
/// file.
void fillEmptyFromLibrary(const App& app, Session& session, SrdRow row);
/// What an entry of the menu does; models/channels_tab.h carries it out.
enum class ChannelCommand { UseAll, UseNone, FillValue, FillDescription, Add, Delete, DeleteFile, ViewLog, Adjust };
struct MenuEntry {
    ChannelCommand command;
    std::string text;
    bool enabled = true;
};
/// Entries of the context menu of a cell of srd(4).
std::vector<MenuEntry> channelMenu(const Session& session, TableIndex row, TableIndex column);

}  // namespace welvane
