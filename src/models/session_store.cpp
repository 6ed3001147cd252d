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

std::vector<int> slotsInUse(const Session& session) {
    std::vector<int> slots;
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot)) slots.push_back(slot);
    if (slots.empty()) throw RunTimeFailure("no file is open in this session");
    return slots;
}

std::string firstPath(const Session& session) {
    return session.slots[slotsInUse(session).front()].path;
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
    const std::vector<int> slots = slotsInUse(session);
    std::vector<std::string> paths;
    for (const int slot : slots) paths.push_back(session.slots[slot].path);
    const std::vector<Input> inputs = openInputsOf(bench, paths, session.loose);
    bench.checkOutput(path, inputs);
    const StartupSettings settings = app.settings;
    Session fresh;
    std::optional<Session> loaded;
    prepareSession(bench, fresh, inputs, readingOf(session), {[&] { loaded = fresh; }, true, slots});
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
                   {[&] { restoreSession(bench, restored.session, inputs, saved, false); }, true, slotsOf(saved)});
    restored.settings = app.settings;
    return restored;
}

void takeSession(Frame& frame, RestoredSession&& restored, const std::string& path) {
    if (!frame.isOpen(WorkArea::Session)) frame.app.run.lasFile.clear();
    openArea(frame, WorkArea::Session);
    {
        const UndoHistory::Step step(frame.history, frame.app, frame.session, "Open session " + fileNameOf(path));
        frame.session = std::move(restored.session);
        frame.app.settings = std::move(restored.settings);
        frame.app.run.lasFile = firstPath(frame.session);
    }
    frame.problems.clear();
    frame.currentSlot = -1;
    noteRecentFile(frame.app.platform.settings(), path);
}

}  // namespace welvane
