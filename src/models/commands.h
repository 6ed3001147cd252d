#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "models/frame.h"

/// All commands in one table, and the routine that turns a command's id into a call. Menus, tool bar and the list of
/// shortcuts are made from the table.
namespace welvane {

enum class CommandKind {
    Action,
    Toggle,    ///< has a state that its entry shows
    Alias,     ///< another name of an action; in no menu
    Menu,      ///< a menu of the menu bar
    Reserved,  ///< an id that is known and does nothing; in no menu
};

/// One command.
struct Command {
    std::string_view id;    ///< "ID_Open"; its case does not matter
    std::string_view text;  ///< "&" stands before the mnemonic
    CommandKind kind = CommandKind::Action;
    std::string_view menu{};      ///< id of the menu that holds it; "" for none
    std::string_view shortcut{};  ///< "Ctrl+O"; "" for none
    bool onToolBar = false;
    std::string_view tip{};  ///< what it does, in a sentence
    /// Whether it can be given now; always where this is empty.
    bool (*enabled)(const Frame& frame) = nullptr;
    /// State of a toggle.
    bool (*checked)(const Frame& frame) = nullptr;
    void (*effect)(Frame& frame) = nullptr;
};

/// In the order of the menus and of their entries.
const std::vector<Command>& commandTable();
/// nullptr when there is no such id.
const Command* findCommand(std::string_view id);

/// Text of a command's entry as things are now: ID_Multiple is about files, and in a session about channels.
std::string commandText(const Frame& frame, const Command& command);
/// Its sentence; of ID_Undo and ID_Redo the step that they are about.
std::string commandTip(const Frame& frame, const Command& command);
bool commandEnabled(const Frame& frame, const Command& command);
bool commandChecked(const Frame& frame, const Command& command);

/// One entry of a menu that is opened, or of the tool bar.
struct CommandEntry {
    std::string_view id;
    std::string text;
    std::string_view shortcut;
    std::string tip;
    bool toggle = false, checked = false, enabled = true;
};
/// Entries of a menu by its id, their states as things are now; empty for any other id.
std::vector<CommandEntry> openMenu(const Frame& frame, std::string_view menuId);
std::vector<CommandEntry> toolBar(const Frame& frame);

/// A line of the list of shortcuts: what the command is called, and its keys.
struct Shortcut {
    std::string text, keys;
};
std::vector<Shortcut> shortcutList();

enum class CommandOutcome {
    Done,
    NotNow,   ///< the command is grey as things are
    Nothing,  ///< a menu or a reserved id
    Unknown,
    Failed,  ///< a box told why
};
/// What a click on an entry does. A failure is told in a box, and never goes further.
CommandOutcome perform(Frame& frame, std::string_view id);

}  // namespace welvane
