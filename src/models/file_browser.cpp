#include "models/file_browser.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

#include "las/las_file.h"
#include "session/loading.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view usualPattern = "*.las";
constexpr std::string_view extensionText = "Enter new file extension. (*.*, *.las)";
constexpr std::string_view extensionError = "Invalid extension. Using only valid file name characters. (";
/// A box names so many files that could not be deleted.
constexpr std::size_t namesInBox = 10;

struct NoCase {
    bool operator()(std::string_view one, std::string_view other) const { return lessText(one, other); }
};

std::string listOf(std::vector<std::string> names) {
    const std::size_t count = names.size();
    if (count > namesInBox) names.resize(namesInBox);
    for (std::string& name : names) name = lineOfName(name);
    return join(names, ", ") + (count > namesInBox ? " and " + std::to_string(count - namesInBox) + " more" : "");
}

/// The folder above, with a separator at its end.
std::string folderAbove(const std::string& folder) {
    const std::filesystem::path path(resolvePath(folder));
    return withBackslash((path.has_filename() ? path : path.parent_path()).parent_path().native());
}

}  // namespace

FileBrowser::FileBrowser(Frame& frame) : frame_(frame) {
    pattern_ = patternOf(frame.app.platform.settings().get("fileExt", "las"));
    if (pattern_.empty()) pattern_ = usualPattern;
    if (!frame.browser.folder.empty()) frame.browser.folder = withBackslash(frame.browser.folder);
    refresh();
}

void FileBrowser::refresh() {
    BrowserState& state = frame_.browser;
    listing_ = listFolder(state.folder, pattern_);
    const std::set<std::string_view, NoCase> wanted(state.selected.begin(), state.selected.end());
    std::vector<std::string> kept;
    for (const std::string& name : listing_.files)
        if (wanted.contains(name)) kept.push_back(name);
    state.selected = std::move(kept);
    if (!listing_.problem.empty()) {
        state.statusText = state.folder + ": " + listing_.problem;
        state.statusRed = true;
    }
    showSize();
}

void FileBrowser::showSize() {
    double bytes = 0;
    for (const std::string& name : selected())
        bytes += static_cast<double>(fileSize(frame_.browser.folder + name).value_or(0));
    sizeText_ = "Total bytes :" + formatMask(bytes, 0);
}

void FileBrowser::select(std::vector<std::string> names) {
    if (!frame_.app.settings.multipleSelection && names.size() > 1) names.erase(names.begin(), names.end() - 1);
    frame_.browser.selected = std::move(names);
    try {
        selectionChanged(frame_);
    } catch (const std::exception& error) {
        frame_.app.run.lasFile.clear();
        frame_.browser.statusText = error.what();
        frame_.browser.statusRed = true;
    }
    showSize();
}

std::vector<std::pair<std::string, std::string>> FileBrowser::details() const {
    std::vector<std::pair<std::string, std::string>> lines;
    const std::string& path = frame_.app.run.lasFile;
    if (selected().size() != 1 || !endsWith(path, ".las")) return lines;
    try {
        InputSlot slot;
        slot.path = path;
        SlotChannels channels;
        SlotLoadResult result;
        const LasFilePointer file = openLasFile(path);
        readHeader(frame_.app, frame_.session, *file, slot, channels, result);
        std::vector<std::string> names;
        for (std::size_t channel = 1; channel < channels.size(); ++channel)
            names.push_back(channels[channel].field.mnem);
        lines = {{"Well", file->value("WELL", 'W').text},
                 {"Depths", plainNumber(slot.start) + " to " + plainNumber(slot.stop) + " " + slot.depthUnit},
                 {"Step", plainNumber(slot.step)},
                 {"Null", slot.nullText},
                 {"Version", slot.lasVersion},
                 {"Wrapped", slot.wrap},
                 {"Channels", join(names, " ")}};
        if (!result.why.empty()) lines.emplace_back("Problem", result.why);
    } catch (const std::exception& error) {
        lines = {{"Problem", error.what()}};
    }
    return lines;
}

/// Nothing changes where the folder cannot be read.
bool FileBrowser::goTo(const std::string& folder) {
    const std::string problem = listFolder(folder, pattern_).problem;
    if (!problem.empty()) {
        showWarning(frame_.app.user, "Can't Open Folder", folder + ": " + problem);
        return false;
    }
    frame_.browser.folder = withBackslash(folder);
    frame_.browser.statusText.clear();
    frame_.browser.statusRed = false;
    refresh();
    select({});
    return true;
}

bool FileBrowser::chooseSource() {
    const std::string chosen = frame_.app.user.askFolder("Select Source Folder", frame_.browser.folder);
    if (chosen.empty() || !goTo(chosen)) return false;
    frame_.app.settings.inDir = frame_.browser.folder;
    frame_.app.platform.settings().put("inDir", frame_.browser.folder);
    return true;
}

bool FileBrowser::chooseDestination() {
    const std::string chosen = frame_.app.user.askFolder("Select Destination Folder", frame_.browser.outDir);
    if (chosen.empty()) return false;
    if (!folderExists(chosen)) {
        showWarning(frame_.app.user, "Can't Open Folder", chosen + ": it is not there");
        return false;
    }
    frame_.browser.outDir = frame_.app.settings.outDir = withBackslash(chosen);
    frame_.app.platform.settings().put("outDir", frame_.browser.outDir);
    return true;
}

bool FileBrowser::enterFolder(std::string_view name) {
    return goTo(name == ".." ? folderAbove(frame_.browser.folder) : frame_.browser.folder + std::string(name));
}

bool FileBrowser::chooseExtension() {
    SettingsStore& store = frame_.app.platform.settings();
    const std::string typed =
        frame_.app.user.askText({"File Extension", std::string(extensionText), store.get("fileExt", "las")});
    if (typed.empty()) return false;
    const std::string pattern = patternOf(typed);
    if (pattern.empty()) {
        showWarning(frame_.app.user, "Extension Error", std::string(extensionError) + lineOfName(typed) + ")");
        return false;
    }
    pattern_ = pattern;
    store.put("fileExt", typed);
    refresh();
    return true;
}

void FileBrowser::deleteSelected() {
    const std::vector<std::string> names = selected();
    if (names.empty() || frame_.app.run.commandMode) return;
    const std::string text = names.size() == 1 ? "Please confirm your wish to delete " + lineOfName(names.front())
                                               : "Please confirm your wish to delete these" +
                                                     strNumber(static_cast<double>(names.size())) + " file(s).";
    if (frame_.app.user.ask({"Delete File??", text, Buttons::YesNo, Icon::Question, Answer::No}) != Answer::Yes) return;
    std::vector<std::string> failed;
    for (const std::string& name : names) {
        const std::string path = frame_.browser.folder + name;
        std::error_code unknown;
        // One that is gone already is what was wanted.
        if (!removeFile(path) && std::filesystem::exists(std::filesystem::symlink_status(path, unknown)))
            failed.push_back(name);
    }
    refresh();
    select(selected());
    const std::size_t gone = names.size() - failed.size();
    if (gone > 0)
        frame_.history.cannotUndo(
            "Deleted files do not come back: " +
            (names.size() == 1 ? lineOfName(names.front()) : counted(static_cast<std::int64_t>(gone), "file")));
    if (!failed.empty())
        showWarning(frame_.app.user, "Can't Delete File!", "Unable to delete " + listOf(std::move(failed)));
}

bool FileBrowser::makeFolder() {
    const std::string answer =
        frame_.app.user.askText({"Create New Folder", "Enter new folder name for \n" + frame_.browser.folder, "data"});
    const std::string name = withoutChar(answer, '"');
    if (name.empty()) return false;
    std::string why = "the name is not legal";
    if (legalFolderName(name)) {
        std::error_code failed;
        const bool made = std::filesystem::create_directory(resolvePath(frame_.browser.folder + name), failed);
        why = made ? "" : failed ? failed.message() : "it is there already";
    }
    if (why.empty()) return enterFolder(name);
    showWarning(frame_.app.user, "Unable to Create Folder",
                "Illegal folder name or unable to create the folder \"" + lineOfName(name) +
                    "\". Try again. Error was :" + why);
    return false;
}

}  // namespace welvane
