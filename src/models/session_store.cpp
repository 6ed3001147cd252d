#include "models/session_store.h"

#include <filesystem>
#include <utility>

#include "jobs/prepare_session.h"
#include "jobs/session_file.h"
#include "models/recent_files.h"
#include "shared/failure.h"
#include "shared/files.h"

namespace welvane {

namespace {

constexpr const char* sessionFiles = "Sessions (*.wsn)|*.wsn";

PassRequest readingOf(const Session& session) {
    PassRequest request;
    request.rules = session.rules;
    request.loose = session.loose;
    request.decimalComma = session.decimalComma;
    request.indexUnit = session.indexUnit;
    return request;
}

std::vector<Input> openInputsOf(Workbench& bench, const std::vector<std::string>& paths, bool loose) {
    std::vector<Input> inputs;
    for (const std::string& path : paths) inputs.push_back(bench.openLas(path, loose));
    return inputs;
}

/// The files of the slots. A file behind a free slot would come back in another one.
std::vector<std::string> slotPaths(const Session& session) {
    std::vector<std::string> paths;
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!session.loaded(slot)) continue;
        if (static_cast<int>(paths.size()) != slot)
            throw RunTimeFailure("File " + std::to_string(slot + 1) +
                                 " stands behind a free one: a session is kept with its files in a row");
        paths.push_back(session.slots[static_cast<std::size_t>(slot)].path);
    }
    if (paths.empty()) throw RunTimeFailure("no file is open in this session");
    return paths;
}

}  // namespace

std::string askSessionToSave(Frame& frame) {
    return frame.app.user.askFile({"Save Session", sessionFiles, frame.browser.outDir, "session.wsn", true});
}

std::string askSessionToOpen(Frame& frame) {
    return frame.app.user.askFile({"Open Session", sessionFiles, frame.browser.outDir, "", false});
}

void keepSession(App& app, const Session& session, const std::string& path) {
    Workbench bench(app, {.force = true});
    const std::vector<Input> inputs = openInputsOf(bench, slotPaths(session), session.loose);
    bench.checkOutput(path, inputs);
    const StartupSettings settings = app.settings;
    Session fresh;
    std::optional<Session> loaded;
    prepareSession(bench, fresh, inputs, readingOf(session), {[&] { loaded = fresh; }, true});
    app.settings = settings;
    writeSession(bench, path, sessionText(app, session, *loaded, inputs, {}, path));
}

RestoredSession restoreKeptSession(App& app, const std::string& path) {
    Workbench bench(app, {});
    const SavedSession saved = readSavedSession(path);
    PassRequest request;
    takeReading(saved, request);
    std::vector<std::string> paths = findSavedInputs(saved);
    for (std::string& input : paths) input = std::filesystem::path(input).lexically_normal().string();
    const std::vector<Input> inputs = openInputsOf(bench, paths, request.loose);
    RestoredSession restored;
    prepareSession(bench, restored.session, inputs, request,
                   {[&] { restoreSession(bench, restored.session, inputs, saved, false); }, true});
    restored.settings = app.settings;
    return restored;
}

void takeSession(Frame& frame, RestoredSession&& restored, const std::string& path) {
    if (!frame.isOpen(WorkArea::Session)) frame.app.run.lasFile.clear();
    openArea(frame, WorkArea::Session);
    frame.session = std::move(restored.session);
    frame.app.settings = std::move(restored.settings);
    frame.app.run.lasFile = frame.session.slots[0].path;
    frame.history.clear();
    frame.problems.clear();
    frame.currentSlot = -1;
    noteRecentFile(frame.app.platform.settings(), path);
}

}  // namespace welvane
