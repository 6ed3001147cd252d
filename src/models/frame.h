#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "certify/batch.h"
#include "convert/generic_table.h"
#include "models/browser.h"
#include "models/listing_window.h"
#include "models/problems.h"
#include "models/undo.h"
#include "session/session.h"
#include "texttools/byte_view.h"

/// The main frame without its face: which windows are open, which is in front, and what they work on.
namespace welvane {

/// A window, or a part of the main one, that commands may go to.
enum class WorkArea { Browser = 0, Session, Tools, Certify, Listing, Library, Preferences, About, Help };
inline constexpr std::size_t workAreaCount = 9;

/// Tabs of a session, by their numbers.
enum class SessionTab { Channels = 0, Visualization, Properties, Header, Survey, MakeLas };

/// What an open window does for the commands that go to whatever is in front. An empty one: nothing to do there.
struct AreaActions {
    std::function<void()> cut{}, copy{}, paste{}, save{};
    std::function<bool()> leave{};             ///< asked before the window closes; false keeps it
    std::function<std::string()> printText{};  ///< what ID_Print sends to the printer
};

/// What only a window can do; each may be empty.
struct FrameActions {
    std::function<void(WorkArea)> show{};   ///< makes the window when there is none, and brings it to the front
    std::function<void(WorkArea)> close{};  ///< takes the window away; what it showed is gone already
    std::function<void()> refresh{};        ///< anything shown may have changed
    std::function<void()> startProcess{};   ///< starts the run that the open windows call for
    std::function<void()> saveSession{};    ///< asks for a name and keeps the session in a file
    std::function<void()> openSession{};    ///< asks for such a file and goes on with it
    std::function<void()> wrapFile{};       ///< asks for a name and writes the current file wrapped or unwrapped
    std::function<void()> find{};           ///< asks for a text to look for in the grid in front
    std::function<void()> findNext{};       ///< goes to the next cell that holds it
    std::function<void()> arrange{};        ///< all parts back to their places
    std::function<void()> exit{};           ///< ends the program; all windows are closed by then
    std::function<void(const std::string& text)> print{};
    /// A font dialog; nothing when cancelled.
    std::function<std::optional<GridFontSetting>(const GridFontSetting&)> chooseFont{};
};

/// Lives as long as the main window. One work area at most is in front.
struct Frame {
    explicit Frame(App& process);
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    bool browserActive() const { return front == WorkArea::Browser; }
    bool sessionActive() const { return front == WorkArea::Session; }
    bool toolsActive() const { return front == WorkArea::Tools; }
    bool isOpen(WorkArea area) const;
    AreaActions& actionsOf(WorkArea area) { return areas[static_cast<std::size_t>(area)]; }
    const AreaActions& actionsOf(WorkArea area) const { return areas[static_cast<std::size_t>(area)]; }

    App& app;
    Session session;
    BrowserState browser;
    ByteViewState bytes;
    BatchCertification certification;
    std::optional<ListingSession> listing;
    UndoHistory history;     ///< what was done to the session
    ProblemList problems;    ///< what is to be known of its files and of the last run
    GenericTable grd;        ///< of the session's tab that makes LAS of a table
    std::string headerFile;  ///< hTxt: where that takes its header from
    std::string headerText;  ///< the header as it was edited; "" for the template
    std::string tablePath;   ///< the file that grd was read from; "" for the clipboard

    std::vector<WorkArea> open;  ///< in the order of their opening
    std::optional<WorkArea> front;
    std::array<AreaActions, workAreaCount> areas;
    FrameActions actions;

    SessionTab tab = SessionTab::Channels;  ///< tabb
    int currentChannel = 0;                 ///< current column of srd(4)
    int currentSlot = -1;                   ///< slot in whose rows the current cell of srd(4) stands; -1 for none
    bool running = false;                   ///< a job is at work
};

/// Opens the window, or brings it to the front. A session starts with its tables at their defaults and the current
/// input in its first slot; the other windows start with what is selected in the browser.
void openArea(Frame& frame, WorkArea area);
/// Closes a window: what it worked on is gone. The one opened last before it comes to the front. False when it stays.
bool closeArea(Frame& frame, WorkArea area);

/// What is selected in the browser, as paths, of files that are there; else the current input alone.
std::vector<std::string> selectedFiles(const Frame& frame);
/// Judges what is selected in the browser, with all that follows from it.
void selectionChanged(Frame& frame);

/// Opens a file in a free slot of the session, or in the one where the current cell stands. A box tells why it was not
/// opened.
bool openInSession(Frame& frame, const std::string& path);
/// A slot let go of a file: nothing is told of it any more when no other one holds it.
void fileClosed(Frame& frame, const std::string& path);
/// The end: keeps the browser's folder, deletes the checker's "*.cer" files in the program's folder (errors ignored),
/// closes all windows, the newest first, and ends the program. A window that stays keeps it open.
void unloadFrame(Frame& frame);

}  // namespace welvane
