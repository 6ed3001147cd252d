#include "app/headless.h"

#include <exception>

#include "engine/driver.h"
#include "las/las_file.h"
#include "las/repair.h"
#include "session/filters.h"
#include "session/loading.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct HeadlessRun {
    App& app;
    const CommandLine& line;
    HeadlessReport& report;
    Session session;

    void note(std::string_view path, std::string_view why) {
        report.notes.push_back((path.empty() ? std::string() : resolvePath(path) + ": ").append(why));
    }
    void open(int slot) {
        const std::string path = session.slots[slot].path;
        if (path.empty()) return;
        const SlotLoadResult result = Open4Files(app, session, slot);
        if (result.status == LoadStatus::Unreadable) throw FileFailure(resolvePath(path), result.why);
        if (result.status != LoadStatus::Loaded) note(path, result.why);
    }

    void useFilter();
    bool prepareFilterFile();
    bool act();
    void process();
};

void HeadlessRun::useFilter() {
    session.filterFile = line.filterPath;
    setFilterInUse(session, session.filterFile);
    const FilterReport filter = openFilter(app, session, FigureRules::asLaidDown);
    if (filter.unreadable) throw RunTimeFailure(filter.why);
    if (!filter.applied) note(session.filterFile, filter.why);
    for (const SkippedStep& skipped : filter.skipped.first) note(session.filterFile, skipped.what + ": " + skipped.why);
}

/// The one file that the action "Filter" works on, repaired where it can be; false when the run ends here.
bool HeadlessRun::prepareFilterFile() {
    app.settings.certifyAfter = false;
    app.settings.editAfter = false;
    // Named by "File1=" alone, the file stays in its slot.
    const std::string opened = session.slots[0].path;
    app.run.lasFile = line.runFile.empty() ? line.slotPaths[0] : line.runFile;
    const std::string& path = app.run.lasFile;
    for (InputSlot& slot : session.slots) slot.path.clear();
    session.slots[0].path = path;
    bool changed = !samePath(path, opened);
    LasFilePointer file = fileExists(path) ? openLasFile(path) : nullptr;
    if (file && curveTitleFaultIn(file->bytes())) {
        if (!fixCurveTitle(path, path)) {
            note(path, "its curve title could not be repaired");
            return false;
        }
        changed = true;
        file = openLasFile(path);
    }
    if (file && file->lineEnds() == LineEnds::Unix) {
        if (replaceInFile(path, path, "\n", "\r\n", app.run, app.user) != StepResult::Done) {
            note(path, "its line ends could not be repaired");
            return false;
        }
        changed = true;
    }
    if (changed) open(0);
    return true;
}

/// What "Dowhat=" asks for; anything but the three actions is none. False when the run ends here.
bool HeadlessRun::act() {
    if (sameText(line.dowhat, "splice")) {
        spliceGuess(app, session);
    } else if (sameText(line.dowhat, "merge")) {
        if (!line.filterPath.empty()) useFilter();
    } else if (sameText(line.dowhat, "Filter")) {
        if (!prepareFilterFile()) return false;
        useFilter();
    }
    return true;
}

void HeadlessRun::process() {
    app.run.targetFile = line.outputPath;
    if (app.run.targetFile.empty()) {
        if (line.refusedOutput.empty())
            note("", "no output is named (/Output=)");
        else
            note(line.refusedOutput, "its folder does not exist");
        return;
    }
    const RunOutcome outcome = doProcess(app, session, {});
    report.written = outcome.completed;
    if (!outcome.completed) note(app.run.targetFile, outcome.refusal.empty() ? "not written" : outcome.refusal);
    for (const ItemReport& item : outcome.items) {
        for (const SkippedStep& skipped : item.pass.failures.first)
            note(item.target, skipped.what + ": " + skipped.why);
    }
}

}  // namespace

HeadlessReport runHeadless(App& app, const CommandLine& line) {
    HeadlessReport report;
    try {
        app.run.commandMode = true;
        HeadlessRun run{app, line, report, {}};
        openSession(app, run.session);
        for (std::size_t slot = 0; slot < line.slotPaths.size(); ++slot)
            run.session.slots[slot].path = line.slotPaths[slot];
        if (!line.missingFile.empty()) run.note(line.missingFile, "no such file");
        for (int slot = 0; slot < slotCount; ++slot) run.open(slot);
        if (run.act()) run.process();
    } catch (const std::exception& error) {
        // Every error ends the run, and nothing is shown.
        report.notes.emplace_back(error.what());
    }
    return report;
}

}  // namespace welvane
