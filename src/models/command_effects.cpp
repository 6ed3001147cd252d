#include "models/command_effects.h"

#include <algorithm>

#include "app/startup.h"
#include "jobs/after_process.h"
#include "models/recent_files.h"
#include "models/survey.h"
#include "session/session_setup.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view widthTitle = "Enter Column Width";
constexpr std::string_view widthText =
    "Supply a Column width for the grids. 200 or greater is suggested. Enter 'Fit' to autosize all columns to fits "
    "their contents.";
constexpr std::string_view manyFilesTitle = "Just Wondering...";
constexpr std::string_view manyFilesText = "You have selected nore than 10 files for editing. Are you sure?";
constexpr std::size_t filesWithoutQuestion = 10;
constexpr std::int32_t fitsContents = -1;
constexpr double widestColumn = 32767;

void toggle(Frame& frame, bool& value, std::string_view key) {
    value = !value;
    frame.app.platform.settings().put(key, value ? "1" : "0");
}

/// A typed width: "Fit", or a number above 0; anything else is the usual width.
std::int32_t readWidth(std::string_view answer) {
    constexpr std::int32_t usualWidth = 600;
    if (sameText(trim(answer), "Fit")) return fitsContents;
    const double width = val(answer);
    return width > 0 && width <= widestColumn ? std::max(roundToEven(width), 1) : usualWidth;
}

void saveSurvey(Frame& frame) {
    const EditOutcome saved = saveInclinometryData(frame.app, frame.session);
    if (!saved.done && !saved.why.empty()) frame.app.user.ask({"Save", saved.why, Buttons::Ok, Icon::Stop});
}

}  // namespace

void toggleMultiple(Frame& frame) {
    if (frame.sessionActive())
        frame.session.multipleConnections = !frame.session.multipleConnections;
    else
        toggle(frame, frame.app.settings.multipleSelection, "multButState");
}

void toggleCertifyAfter(Frame& frame) {
    toggle(frame, frame.app.settings.certifyAfter, "certafter");
}

void toggleEditAfter(Frame& frame) {
    toggle(frame, frame.app.settings.editAfter, "editafter");
}

void takeBack(Frame& frame) {
    UndoHistory& history = frame.history;
    const std::string last = history.undoText();
    if (history.undo(frame.app, frame.session) || last.empty()) return;
    const bool more = history.canUndo() && !history.lastStays();
    frame.app.user.ask({"Can't Undo",
                        last + "." + (more ? " The next Undo takes back: " + history.undoText() + "." : ""),
                        Buttons::Ok, Icon::Information});
}

void chooseColumnWidth(Frame& frame) {
    SettingsStore& store = frame.app.platform.settings();
    std::int32_t& width = frame.app.settings.gridFont.columnWidth;
    const double stored = val(store.get("gridFontWidth", std::to_string(width)));
    const std::string shown = stored == fitsContents ? "Fit" : formatMask(stored, 0);
    const std::string answer = frame.app.user.askText({std::string(widthTitle), std::string(widthText), shown});
    if (answer.empty()) return;
    width = readWidth(answer);
    store.put("gridFontWidth", std::to_string(width));
    if (frame.sessionActive()) setGridColWid(frame.app, width == fitsContents ? fitsContents : 1);
}

std::optional<std::int32_t> chosenColumnWidth(const App& app) {
    const double stored = val(app.platform.settings().get("gridFontWidth", ""));
    if (stored < 1 || stored > widestColumn) return std::nullopt;
    return roundToEven(stored);
}

void chooseGridFont(Frame& frame) {
    GridFontSetting& font = frame.app.settings.gridFont;
    if (!frame.actions.chooseFont) return;
    const std::optional<GridFontSetting> chosen = frame.actions.chooseFont(font);
    if (!chosen) return;
    font = parseGridSize(gridSizeText(*chosen));
    frame.app.platform.settings().put("gridSize", gridSizeText(font));
}

void openFile(Frame& frame) {
    const std::string path =
        frame.app.user.askFile({"Select LAS File", "las", dirOf(frame.app.run.lasFile), "", false});
    if (path.empty()) return;
    if (frame.sessionActive()) {
        openInSession(frame, path);
    } else if (frame.toolsActive()) {
        if (!openByteView(frame.bytes, path)) frame.app.user.ask({"Can't Open File", path + " could not be read"});
    } else {
        noteRecentFile(frame.app.platform.settings(), path);
        frame.browser.folder = dirOf(path);
        frame.browser.selected = {fileNameOf(path)};
        selectionChanged(frame);
    }
}

void saveActive(Frame& frame) {
    const AreaActions* const area = frame.front ? &frame.actionsOf(*frame.front) : nullptr;
    if (frame.sessionActive() && frame.tab == SessionTab::Survey)
        saveSurvey(frame);
    else if (area != nullptr && area->save)
        area->save();
    else if (frame.actions.startProcess)
        frame.actions.startProcess();
}

void printActive(Frame& frame) {
    if (!frame.front || !frame.actionsOf(*frame.front).printText) return;
    const std::string text = frame.actionsOf(*frame.front).printText();
    if (!text.empty() && frame.actions.print) frame.actions.print(text);
}

void editFiles(Frame& frame) {
    const std::vector<std::string> files = selectedFiles(frame);
    if (files.size() > filesWithoutQuestion &&
        frame.app.user.ask({std::string(manyFilesTitle), std::string(manyFilesText), Buttons::YesNo, Icon::Question,
                            Answer::No}) != Answer::Yes)
        return;
    // One that does not start tells of all: nobody wants a box for each of a hundred files.
    for (const std::string& file : files)
        if (!openFileWithShell(frame.app, file)) return;
}

void viewLog(Frame& frame) {
    const std::string& current = frame.app.run.lasFile;
    viewAsLog(frame.app, current.empty() ? frame.session.slots[0].path : current);
}

void addChannel(Frame& frame) {
    // Undo and other files take columns away under the current one.
    const int last = frame.session.tables.outputs().columns() - 1;
    frame.currentChannel = AddChannel(frame.session, std::min(frame.currentChannel, last));
}

void deleteChannel(Frame& frame) {
    DeleteChannel(frame.session, frame.currentChannel);
    frame.currentChannel = std::min(frame.currentChannel, frame.session.tables.outputs().columns() - 1);
}

}  // namespace welvane
