#include "jobs/after_process.h"

#include <utility>

#include "certify/certify_after.h"
#include "shared/text.h"

namespace welvane {

bool openFileWithShell(App& app, const std::string& path, const std::string& program) {
    const bool started = program.empty() ? app.platform.openWithShell(path) : app.platform.openWith(program, path);
    if (!started)
        showWarning(
            app.user, "Can't Open File",
            (program.empty() ? "No program could be started for " : program + " could not be started for ") + path);
    return started;
}

bool viewAsLog(App& app, const std::string& path) {
    if (app.settings.logProgram.empty()) {
        showWarning(app.user, "No Log Viewer", "The preferences name no LAS viewer. Give the path of one there.");
        return false;
    }
    return openFileWithShell(app, path, app.settings.logProgram);
}

void afterProcess(App& app, const std::string& path) {
    const bool windows = !app.run.commandMode;
    if (app.settings.editAfter && windows) openFileWithShell(app, path);
    if (app.settings.certifyAfter) {
        // Kept: a wish to check a file that cannot be checked takes the viewer with it.
        // Test: whatFollowsAFile
        if (!endsWith(path, ".las")) return;
        certifyAfter(app, path);
    }
    if (app.settings.viewAfter && windows) viewAsLog(app, path);
}

}  // namespace welvane
