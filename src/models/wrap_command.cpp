#include "models/wrap_command.h"

#include "jobs/rewrite.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

std::string fileToWrap(const Frame& frame) {
    const std::vector<std::string> files = selectedFiles(frame);
    return files.empty() ? std::string() : files.front();
}

std::string askWrapOutput(Frame& frame, const std::string& file) {
    return frame.app.user.askFile(
        {"Save Wrapped or Unwrapped LAS", "las", frame.browser.outDir, "wrapped-" + fileNameOf(file), true});
}

EditOutcome wrapInto(App& app, const std::string& file, const std::string& output) {
    try {
        // The dialog has asked before it gave the name of a file that is there.
        Workbench bench(app, {.force = true});
        const WrapReport report = wrapFile(bench, file, output);
        std::string told = "Written: " + output + (report.wrapped ? ", wrapped" : ", one line per depth step");
        for (const Note& note : report.notes) told += "; " + note.text;
        return {true, told};
    } catch (const std::exception& failure) {
        return {false, failure.what()};
    }
}

}  // namespace welvane
