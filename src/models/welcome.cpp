#include "models/welcome.h"

#include <algorithm>

#include "models/channels_tab.h"
#include "models/shown_text.h"
#include "session/matching.h"
#include "session/session_tables.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view title = "Example Wells", joinedWell = "kestrel";

bool copyExamples(Frame& frame, const std::string& folder, std::vector<std::string>& runs) {
    for (const std::string& path : exampleWells(frame.app.platform)) {
        const std::string copy = folder + fileNameOf(path);
        if (!fileExists(copy) && !copyFile(path, copy)) {
            showWarning(frame.app.user, std::string(title), copy + " could not be written");
            return false;
        }
        if (fileNameOf(path).starts_with(joinedWell)) runs.push_back(copy);
    }
    return true;
}

void goToFolder(Frame& frame, const std::string& folder) {
    frame.browser.folder = frame.browser.inDir = frame.browser.sourceFolderLabel = folder;
    frame.browser.selected.clear();
}

}  // namespace

bool openExamples(Frame& frame) {
    if (exampleWells(frame.app.platform).empty()) {
        showWarning(frame.app.user, std::string(title), "The example wells were not installed with the program.");
        return false;
    }
    const std::string chosen =
        frame.app.user.askFolder("Copy the example wells into this folder", frame.browser.folder);
    if (chosen.empty()) return false;
    const std::string folder = withBackslash(chosen);
    std::vector<std::string> runs;
    if (!copyExamples(frame, folder, runs)) return false;
    goToFolder(frame, folder);
    frame.app.run.lasFile.clear();
    openArea(frame, WorkArea::Session);
    frame.currentSlot = -1;
    for (const std::string& path : runs) openInSession(frame, path);
    const UndoHistory::Step step(frame.history, frame.app, frame.session, "Splice");
    spliceGuess(frame.app, frame.session);
    return true;
}

bool openFromList(Frame& frame, const std::string& path) {
    if (frame.running) return false;
    if (!frame.isOpen(WorkArea::Session)) frame.app.run.lasFile.clear();
    openArea(frame, WorkArea::Session);
    frame.currentSlot = -1;
    return openInSession(frame, path);
}

void dropOnFrame(Frame& frame, const std::vector<std::string>& paths) {
    if (frame.running || paths.empty()) return;
    const auto folder = std::find_if(paths.begin(), paths.end(), [](const auto& path) { return folderExists(path); });
    if (folder != paths.end()) return goToFolder(frame, withBackslash(*folder));
    if (!frame.isOpen(WorkArea::Session)) frame.app.run.lasFile.clear();
    openArea(frame, WorkArea::Session);
    const UndoHistory::Step step(frame.history, frame.app, frame.session, "Drop files");
    dropFiles(frame, paths, 0);
}

}  // namespace welvane
