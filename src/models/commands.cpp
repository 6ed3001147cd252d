#include "models/commands.h"

#include <algorithm>
#include <array>

#include "jobs/after_process.h"
#include "models/command_effects.h"
#include "models/session_files.h"
#include "session/matching.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Where the product is told of.
constexpr std::string_view webPage = "https://welvane.example/";

constexpr std::array<std::string_view, 7> firstOnToolBar = {"ID_MMM",  "ID_Open", "ID_SpliceEM",  "ID_Process",
                                                            "ID_Undo", "ID_Redo", "ID_AddChannel"};

/// Commands that undo takes back as one step. None of them opens or closes the session.
bool changesSession(std::string_view id) {
    constexpr std::array<std::string_view, 6> ids = {"ID_OpenFilter",    "ID_AddChannel", "ID_Channel",
                                                     "ID_DeleteChannel", "ID_SpliceEM",   "ID_Open"};
    return std::any_of(ids.begin(), ids.end(), [&](std::string_view known) { return sameText(known, id); });
}

bool anyLoaded(const Frame& frame) {
    for (int slot = 0; slot < slotCount; ++slot)
        if (frame.session.loaded(slot)) return true;
    return false;
}

bool sessionIdle(const Frame& frame) {
    return frame.isOpen(WorkArea::Session) && !frame.running;
}

/// Steps are those of the session: a window beside it has none, and a key given there must not act on what is behind.
bool mayTakeBack(const Frame& frame) {
    return sessionIdle(frame) && (frame.sessionActive() || frame.browserActive());
}

bool channelsIdle(const Frame& frame) {
    return sessionIdle(frame) && anyLoaded(frame);
}

bool idle(const Frame& frame) {
    return !frame.running;
}

bool canProcess(const Frame& frame) {
    return !frame.running &&
           (frame.isOpen(WorkArea::Session) || frame.isOpen(WorkArea::Certify) || frame.isOpen(WorkArea::Listing));
}

bool canSave(const Frame& frame) {
    return !frame.running && frame.front && (frame.sessionActive() || frame.actionsOf(*frame.front).save);
}

bool canOpen(const Frame& frame) {
    return !frame.running && (frame.browserActive() || frame.sessionActive() || frame.toolsActive());
}

bool canEdit(const Frame& frame) {
    return frame.browser.editEnabled || frame.isOpen(WorkArea::Session);
}

bool hasCurrent(const Frame& frame) {
    return idle(frame) && !frame.app.run.lasFile.empty();
}

bool hasLog(const Frame& frame) {
    return !frame.app.run.lasFile.empty() || frame.session.loaded(0);
}

bool canDeleteChannel(const Frame& frame) {
    return channelsIdle(frame) && frame.currentChannel > 0 &&
           frame.currentChannel < frame.session.tables.outputs().columns();
}

template <auto action>
bool has(const Frame& frame) {
    return frame.front && static_cast<bool>(frame.actionsOf(*frame.front).*action);
}

template <auto action>
void callArea(Frame& frame) {
    (frame.actionsOf(*frame.front).*action)();
}

template <WorkArea area>
void openWindow(Frame& frame) {
    openArea(frame, area);
}

void process(Frame& frame) {
    if (frame.actions.startProcess) frame.actions.startProcess();
}

void openFilterFile(Frame& frame) {
    doOpenFilter(frame.app, frame.session, "Select LAS or FIL File for Filter");
}

template <auto action>
void callFrame(Frame& frame) {
    if (frame.actions.*action) (frame.actions.*action)();
}

constexpr std::string_view fileMenu = "ID_FileMN", editMenu = "ID_Editmn", viewMenu = "ID_Viewmn",
                           computeMenu = "ID_Computemn", toolsMenu = "ID_Toolsmn", windowsMenu = "ID_Windows",
                           helpMenu = "ID_Helpmn";

std::vector<Command> menus() {
    return {{fileMenu, "&File", CommandKind::Menu},   {editMenu, "&Edit", CommandKind::Menu},
            {viewMenu, "V&iew", CommandKind::Menu},   {computeMenu, "C&ompute", CommandKind::Menu},
            {toolsMenu, "&Tools", CommandKind::Menu}, {windowsMenu, "&Windows", CommandKind::Menu},
            {helpMenu, "&Help", CommandKind::Menu}};
}

std::vector<Command> fileCommands() {
    using enum CommandKind;
    return {{"ID_OpenMany", "&Browse Files", Action, fileMenu, "Ctrl+B", false, "Shows the list of files.", nullptr,
             nullptr, openWindow<WorkArea::Browser>},
            {"ID_Open", "&Open...", Action, fileMenu, "Ctrl+O", true, "Opens a LAS file in the part in front.", canOpen,
             nullptr, openFile},
            {"ID_OpenFilter", "Open &Filter...", Action, fileMenu, "", true, "Chooses the filter of this session.",
             sessionIdle, nullptr, openFilterFile},
            {"ID_Save", "&Save", Action, fileMenu, "Ctrl+S", true,
             "Saves what is in front; in a session, makes the new file.", canSave, nullptr, saveActive},
            {"ID_OpenSession", "Open Sess&ion...", Action, fileMenu, "", false,
             "Goes on with a session kept in a file.", idle, nullptr, callFrame<&FrameActions::openSession>},
            {"ID_SaveSession", "Save Session &As...", Action, fileMenu, "Ctrl+Shift+S", false,
             "Keeps the session in a file: its inputs and all that was done.", channelsIdle, nullptr,
             callFrame<&FrameActions::saveSession>},
            {"ID_Print", "&Print...", Action, fileMenu, "Ctrl+P", false, "Prints what is in front.",
             has<&AreaActions::printText>, nullptr, printActive},
            {"ID_Preferences", "P&references...", Action, fileMenu, "", false, "Country, formats, densities, programs.",
             idle, nullptr, openWindow<WorkArea::Preferences>},
            {"ID_Exit", "E&xit", Action, fileMenu, "Ctrl+Q", false, "Ends the program.", idle, nullptr, unloadFrame}};
}

std::vector<Command> editCommands() {
    using enum CommandKind;
    return {{"ID_Undo", "&Undo", Action, editMenu, "Ctrl+Z", true, "Takes the last change of the session back.",
             [](const Frame& frame) { return mayTakeBack(frame) && frame.history.canUndo(); }, nullptr, takeBack},
            {"ID_Redo", "&Redo", Action, editMenu, "Ctrl+Y", true, "Makes a change again that was taken back.",
             [](const Frame& frame) { return mayTakeBack(frame) && frame.history.canRedo(); }, nullptr,
             [](Frame& frame) { frame.history.redo(frame.app, frame.session); }},
            {"ID_Cut", "Cu&t", Action, editMenu, "Ctrl+X", false, "Moves the marked cells to the clipboard.",
             has<&AreaActions::cut>, nullptr, callArea<&AreaActions::cut>},
            {"ID_Copy", "&Copy", Action, editMenu, "Ctrl+C", false, "Copies the marked cells to the clipboard.",
             has<&AreaActions::copy>, nullptr, callArea<&AreaActions::copy>},
            {"ID_Paste", "&Paste", Action, editMenu, "Ctrl+V", false, "Puts the clipboard into the cells.",
             has<&AreaActions::paste>, nullptr, callArea<&AreaActions::paste>},
            {"ID_Find", "&Find...", Action, editMenu, "Ctrl+F", false, "Looks for a text in the grid in front.",
             nullptr, nullptr, callFrame<&FrameActions::find>},
            {"ID_FindNext", "Find &Next", Action, editMenu, "Ctrl+G", false, "Goes to the next cell that holds it.",
             nullptr, nullptr, callFrame<&FrameActions::findNext>},
            {"ID_AddChannel", "&Add Channel", Action, editMenu, "Ctrl+Ins", true,
             "Adds an output channel behind the current one.", channelsIdle, nullptr, addChannel},
            {"ID_Channel", "&Add Channel", Alias, "", "", false, "", channelsIdle, nullptr, addChannel},
            {"ID_DeleteChannel", "&Delete Channel", Action, editMenu, "Ctrl+Del", true,
             "Takes the current output channel away.", canDeleteChannel, nullptr, deleteChannel},
            {"ID_Multiple", "Select &Multiple Files", Toggle, editMenu, "", false,
             "Several files of the list at once; in a session, several links of one channel.", nullptr,
             [](const Frame& frame) {
                 return frame.sessionActive() ? frame.session.multipleConnections
                                              : frame.app.settings.multipleSelection;
             },
             toggleMultiple},
            {"ID_editLAS", "&Edit LAS", Action, editMenu, "Ctrl+E", true, "Opens the selected files in their program.",
             canEdit, nullptr, editFiles}};
}

std::vector<Command> viewCommands() {
    using enum CommandKind;
    return {
        {"ID_ViewLog", "View As &Log (Tracewick)", Action, viewMenu, "Ctrl+L", true,
         "Opens the current file in the log viewer of the preferences.", hasLog, nullptr, viewLog},
        {"ID_Size", "Column &Width...", Action, viewMenu, "", false, "Width of the columns of the grids.", nullptr,
         nullptr, chooseColumnWidth},
        {"ID_Font", "&Font...", Action, viewMenu, "", false, "Font of the grids.", nullptr, nullptr, chooseGridFont},
        {"ID_EditAfter", "&Edit After Processing", Toggle, viewMenu, "", true, "Opens each new file in its program.",
         nullptr, [](const Frame& frame) { return frame.app.settings.editAfter; }, toggleEditAfter},
        {"ID_certAfter", "&Certify After Processing", Toggle, viewMenu, "", true, "Runs the checker on each new file.",
         nullptr, [](const Frame& frame) { return frame.app.settings.certifyAfter; }, toggleCertifyAfter},
        {"ID_ViewAfter", "&View After Processing", Toggle, viewMenu, "", true, "Opens each new file in the log viewer.",
         nullptr, [](const Frame& frame) { return frame.app.settings.viewAfter; },
         [](Frame& frame) { frame.app.settings.viewAfter = !frame.app.settings.viewAfter; }}};
}

std::vector<Command> computeCommands() {
    using enum CommandKind;
    return {{"ID_Process", "&Process", Action, computeMenu, "F5", true, "Starts the run of the open windows.",
             canProcess, nullptr, process},
            {"ID_SpliceEM", "&Splice", Action, computeMenu, "Ctrl+J", true,
             "Joins channels of one name or one curve group.", sessionIdle, nullptr,
             [](Frame& frame) { spliceGuess(frame.app, frame.session); }}};
}

std::vector<Command> toolCommands() {
    using enum CommandKind;
    return {{"ID_MMM", "&Session", Action, toolsMenu, "Ctrl+M", true, "Combines up to four files into a new one.", idle,
             nullptr, openWindow<WorkArea::Session>},
            {"ID_prop", "Property &Listing", Action, toolsMenu, "", false, "Lists the selected files, with a price.",
             idle, nullptr, openWindow<WorkArea::Listing>},
            {"ID_Certify", "&Certify", Action, toolsMenu, "", false, "Runs the checker on the selected files.", idle,
             nullptr, openWindow<WorkArea::Certify>},
            {"ID_Toolbox", "&Bytes", Action, toolsMenu, "", false, "Shows the current file byte by byte.", idle,
             nullptr, openWindow<WorkArea::Tools>},
            {"ID_Wrap", "&Wrap or Unwrap...", Action, toolsMenu, "", false,
             "Writes the current file anew, wrapped when it is not and the other way.", hasCurrent, nullptr,
             callFrame<&FrameActions::wrapFile>},
            {"ID_CurveLibrary", "Curve Lib&rary", Action, toolsMenu, "", false, "Groups of curves and of units.", idle,
             nullptr, openWindow<WorkArea::Library>}};
}

std::vector<Command> helpCommands() {
    using enum CommandKind;
    return {
        {"ID_ArrangeAll", "&Arrange All", Action, windowsMenu, "", false, "All parts back to their places.", nullptr,
         nullptr, callFrame<&FrameActions::arrange>},
        {"ID_Help", "&Help", Action, helpMenu, "F1", false, "The guide.", nullptr, nullptr, openWindow<WorkArea::Help>},
        {"ID_Welvanewww", "Welvane on the &Web", Action, helpMenu, "", false, "Opens the web page.", nullptr, nullptr,
         [](Frame& frame) { openFileWithShell(frame.app, std::string(webPage)); }},
        {"ID_About", "&About", Action, helpMenu, "", false, "The version.", nullptr, nullptr,
         openWindow<WorkArea::About>}};
}

/// Ids that somebody may still send.
std::vector<Command> reservedCommands() {
    std::vector<Command> commands;
    for (const std::string_view id : {"ID_Refresh", "ID_option", "ID_Test", "ID_info", "ID_Wizard", "ID_MakeLAS",
                                      "ID_LAStoASCII", "ID_Zip", "ID_Un-Zip"})
        commands.push_back({id, "", CommandKind::Reserved});
    commands.push_back({.id = "ID_SaveAsFilter", .text = "", .kind = CommandKind::Reserved, .enabled = sessionIdle});
    return commands;
}

CommandEntry entryOf(const Frame& frame, const Command& command) {
    return {command.id,
            commandText(frame, command),
            command.shortcut,
            commandTip(frame, command),
            command.kind == CommandKind::Toggle,
            commandChecked(frame, command),
            commandEnabled(frame, command)};
}

template <class Wanted>
std::vector<CommandEntry> entries(const Frame& frame, const Wanted& wanted) {
    std::vector<CommandEntry> result;
    for (const Command& command : commandTable())
        if (wanted(command)) result.push_back(entryOf(frame, command));
    return result;
}

}  // namespace

const std::vector<Command>& commandTable() {
    static const std::vector<Command> table = [] {
        std::vector<Command> all;
        for (const auto& part : {menus(), fileCommands(), editCommands(), viewCommands(), computeCommands(),
                                 toolCommands(), helpCommands(), reservedCommands()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return table;
}

const Command* findCommand(std::string_view id) {
    const std::vector<Command>& table = commandTable();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const Command& command) { return sameText(command.id, id); });
    return found == table.end() ? nullptr : &*found;
}

std::string commandText(const Frame& frame, const Command& command) {
    if (command.id == "ID_Multiple" && frame.sessionActive()) return "Allow &Multiple Channel Connections";
    return std::string(command.text);
}

std::string commandTip(const Frame& frame, const Command& command) {
    const UndoHistory& history = frame.history;
    const bool undo = command.id == "ID_Undo";
    if (!commandEnabled(frame, command) || (!undo && command.id != "ID_Redo")) return std::string(command.tip);
    if (undo && history.lastStays()) return history.undoText();
    return std::string(undo ? "Takes back: " : "Makes again: ") + (undo ? history.undoText() : history.redoText());
}

bool commandEnabled(const Frame& frame, const Command& command) {
    return command.enabled == nullptr || command.enabled(frame);
}

bool commandChecked(const Frame& frame, const Command& command) {
    return command.checked != nullptr && command.checked(frame);
}

std::vector<CommandEntry> openMenu(const Frame& frame, std::string_view menuId) {
    return entries(frame,
                   [&](const Command& command) { return !command.menu.empty() && sameText(command.menu, menuId); });
}

std::vector<CommandEntry> toolBar(const Frame& frame) {
    std::vector<CommandEntry> bar = entries(frame, [](const Command& command) { return command.onToolBar; });
    // What a person gives most stands in front: a narrow window cuts the bar at its end.
    const auto rank = [](const CommandEntry& entry) {
        const auto found = std::find(firstOnToolBar.begin(), firstOnToolBar.end(), entry.id);
        return entry.toggle ? firstOnToolBar.size() + 1 : static_cast<std::size_t>(found - firstOnToolBar.begin());
    };
    std::stable_sort(bar.begin(), bar.end(),
                     [&](const CommandEntry& one, const CommandEntry& other) { return rank(one) < rank(other); });
    return bar;
}

std::vector<Shortcut> shortcutList() {
    std::vector<Shortcut> list;
    for (const Command& command : commandTable())
        if (!command.shortcut.empty()) list.push_back({withoutChar(command.text, '&'), std::string(command.shortcut)});
    return list;
}

CommandOutcome perform(Frame& frame, std::string_view id) {
    const Command* const command = findCommand(id);
    if (command == nullptr) return CommandOutcome::Unknown;
    if (command->effect == nullptr) return CommandOutcome::Nothing;
    if (!commandEnabled(frame, *command)) return CommandOutcome::NotNow;
    CommandOutcome outcome = CommandOutcome::Done;
    try {
        std::optional<UndoHistory::Step> step;
        if (changesSession(id) && frame.isOpen(WorkArea::Session))
            step.emplace(frame.history, frame.app, frame.session, withoutChar(commandText(frame, *command), '&'));
        command->effect(frame);
    } catch (const std::exception& error) {
        frame.app.user.ask({withoutChar(commandText(frame, *command), '&'), error.what(), Buttons::Ok, Icon::Stop});
        outcome = CommandOutcome::Failed;
    }
    if (frame.actions.refresh && !frame.open.empty()) frame.actions.refresh();
    return outcome;
}

}  // namespace welvane
