#include "models/frame.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "jobs/after_process.h"
#include "models/certification.h"
#include "models/recent_files.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "session/tvd.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

void openTables(Frame& frame) {
    frame.history.clear();
    frame.problems.clear();
    openSession(frame.app, frame.session);
    frame.tab = SessionTab::Channels;
    frame.currentChannel = 0;
    frame.currentSlot = -1;
    const std::string current = frame.app.run.lasFile;
    if (endsWith(current, ".las")) openInSession(frame, current);
    frame.history.clear();
}

/// What a window that is opened anew works on.
void fillArea(Frame& frame, WorkArea area) {
    switch (area) {
        case WorkArea::Session:
            openTables(frame);
            break;
        case WorkArea::Tools:
            if (!frame.app.run.lasFile.empty()) openByteView(frame.bytes, frame.app.run.lasFile);
            break;
        case WorkArea::Certify:
            fillCr(frame.certification, frame.isOpen(WorkArea::Browser) ? &frame.browser : nullptr,
                   frame.app.run.lasFile);
            break;
        case WorkArea::Listing:
            frame.listing.emplace(frame.app);
            frame.listing->vrd = makeVrd(selectedFiles(frame));
            break;
        default:
            break;
    }
}

void emptyArea(Frame& frame, WorkArea area) {
    frame.actionsOf(area) = {};
    if (area == WorkArea::Session) {
        frame.session = Session();
        frame.session.rules = FigureRules::trueFigures;
        frame.grd = GenericTable();
        frame.headerFile.clear();
        frame.headerText.clear();
        frame.tablePath.clear();
        frame.history.clear();
    }
    if (area == WorkArea::Tools) frame.bytes = ByteViewState();
    if (area == WorkArea::Certify) frame.certification = BatchCertification();
    if (area == WorkArea::Listing) frame.listing.reset();
}

/// The slot of the current cell, else the first free one; slotCount when all four hold a file.
int slotToOpen(const Frame& frame) {
    if (frame.currentSlot >= 0 && frame.currentSlot < slotCount) return frame.currentSlot;
    int slot = 0;
    while (slot < slotCount && frame.session.loaded(slot)) ++slot;
    return slot;
}

BrowserActions browserActions(Frame& frame) {
    return {[&frame](const std::string& path) { frame.app.platform.settings().put("lasfile", path); },
            [&frame](const std::string& path) {
                const UndoHistory::Step step(frame.history, frame.app, frame.session, "Open TVD File");
                frame.session.tvdFile = path;
                readTVDFile(path, frame.session, frame.app.user);
            },
            [&frame](const std::string& path) { openFileWithShell(frame.app, path); },
            [&frame](const std::string& path) {
                if (frame.isOpen(WorkArea::Tools)) openByteView(frame.bytes, path);
            }};
}

void deleteCheckerFiles(const std::string& programFolder) {
    std::error_code ignored;
    std::vector<std::filesystem::path> found;
    for (std::filesystem::directory_iterator entry(programFolder, ignored), end; !ignored && entry != end;
         entry.increment(ignored))
        if (endsWith(entry->path().native(), ".cer")) found.push_back(entry->path());
    for (const std::filesystem::path& file : found) std::filesystem::remove(file, ignored);
}

}  // namespace

Frame::Frame(App& process) : app(process), open{WorkArea::Browser}, front(WorkArea::Browser) {
    session.rules = FigureRules::trueFigures;
    browser.folder = browser.inDir = browser.sourceFolderLabel = app.settings.inDir;
    browser.outDir = app.settings.outDir;
    browser.editAfter = app.settings.editAfter;
}

bool Frame::isOpen(WorkArea area) const {
    return std::find(open.begin(), open.end(), area) != open.end();
}

void openArea(Frame& frame, WorkArea area) {
    if (!frame.isOpen(area)) {
        frame.open.push_back(area);
        fillArea(frame, area);
    }
    frame.front = area;
    if (frame.actions.show) frame.actions.show(area);
}

bool closeArea(Frame& frame, WorkArea area) {
    if (!frame.isOpen(area)) return true;
    if (frame.actionsOf(area).leave && !frame.actionsOf(area).leave()) return false;
    std::erase(frame.open, area);
    emptyArea(frame, area);
    if (frame.front == area)
        frame.front = frame.open.empty() ? std::nullopt : std::optional<WorkArea>(frame.open.back());
    if (frame.actions.close) frame.actions.close(area);
    return true;
}

std::vector<std::string> selectedFiles(const Frame& frame) {
    std::vector<std::string> paths;
    if (frame.isOpen(WorkArea::Browser))
        for (const std::string& name : frame.browser.selected)
            paths.push_back(withBackslash(frame.browser.folder) + name);
    if (paths.empty() && !frame.app.run.lasFile.empty()) paths.push_back(frame.app.run.lasFile);
    std::erase_if(paths, [](const std::string& path) { return !fileSize(path); });
    return paths;
}

void selectionChanged(Frame& frame) {
    const App& app = frame.app;
    const RebuildSettings rebuild{app.settings.format, app.settings.country,
                                  [&app](std::string_view mnem) { return descriptionForMnem(app.reference, mnem); }};
    frame.browser.editAfter = app.settings.editAfter;
    frame.browser.tvdTabOpen = frame.isOpen(WorkArea::Session) && frame.tab == SessionTab::Survey;
    classifySelection(frame.browser, browserActions(frame), rebuild, frame.app.run, frame.app.user);
}

void fileClosed(Frame& frame, const std::string& path) {
    const auto holds = [&](const InputSlot& slot) { return slot.path == path; };
    if (!std::ranges::any_of(frame.session.slots, holds)) frame.problems.closed(path);
}

bool openInSession(Frame& frame, const std::string& path) {
    const int slot = slotToOpen(frame);
    if (slot == slotCount) {
        showWarning(frame.app.user, "No Free File",
                    "All four files are loaded. Go to the row of the file to replace and open again.");
        return false;
    }
    if (!fileExists(path)) {
        showWarning(frame.app.user, "File Not Loaded", path + ": no such file");
        return false;
    }
    const UndoHistory::Step step(frame.history, frame.app, frame.session, "Open " + fileNameOf(path));
    const std::string before = std::exchange(frame.session.slots[slot].path, path);
    const SlotLoadResult loaded = Open4Files(frame.app, frame.session, slot);
    frame.problems.loaded(path, loaded);
    if (loaded.done()) {
        fileClosed(frame, before);
        noteRecentFile(frame.app.platform.settings(), path);
        return true;
    }
    if (loaded.status != LoadStatus::Declined)
        showWarning(frame.app.user, "File Not Loaded",
                    loaded.why.starts_with(path) ? loaded.why : path + ": " + loaded.why);
    return false;
}

void unloadFrame(Frame& frame) {
    if (frame.isOpen(WorkArea::Browser) && !frame.browser.folder.empty() &&
        frame.browser.folder != frame.app.settings.inDir) {
        frame.app.settings.inDir = frame.browser.folder;
        frame.app.platform.settings().put("inDir", frame.browser.folder);
    }
    deleteCheckerFiles(frame.app.platform.programFolder());
    while (!frame.open.empty())
        if (!closeArea(frame, frame.open.back())) return;
    if (frame.actions.exit) frame.actions.exit();
}

}  // namespace welvane
