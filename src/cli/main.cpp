#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_line.h"
#include "app/headless.h"
#include "app/startup.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "platform/process.h"
#include "platform/terminal.h"

namespace welvane {
namespace {

constexpr std::string_view desktopProgram = "welvane-desktop";

bool namesVerbs(std::string_view argument) {
    for (const std::string_view known : {"help", "--help", "-h", "--version", "-V"}) {
        if (argument == known) return true;
    }
    return findVerb(argument) != nullptr;
}

bool tracing() {
    const char* const wanted = std::getenv("WELVANE_TRACE");
    return isTerminal(Stream::Error) || (wanted != nullptr && std::string_view(wanted) == "1");
}

/// The exit status is 0 whatever happened: success is told by the output file alone.
void runHeadlessLine(const std::string& text) {
    SilentInterface silent;
    const std::unique_ptr<Platform> platform = makeSystemPlatform();
    App app(silent, *platform);
    app.run.commandMode = true;
    app.run.workers.count = coreCount();
    cancelOnInterrupt(&app.run.cancelRequested);
    loadProcess(app);
    const HeadlessReport report = runHeadless(app, readCommandLine(text));
    cancelOnInterrupt(nullptr);
    if (!tracing()) return;
    if (!report.written) std::fputs("welvane: nothing was written\n", stderr);
    for (const std::string& note : report.notes) std::fputs(("welvane: " + shownText(note) + "\n").c_str(), stderr);
}

/// True where windows have something to stand on: a screen, or a platform of Qt's that needs none.
bool hasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (const char* const value = std::getenv(name); value != nullptr && *value != 0) return true;
    return false;
}

/// Becomes the desktop program beside this one or on PATH; where there is none, or no display, the help is all that can
/// be given.
ExitCode openDesktop(bool minimised) {
    std::vector<std::string> command{std::string(desktopProgram)};
    if (minimised) command.emplace_back("--minimised");
    if (const std::string folder = executableFolder(); hasDisplay()) {
        std::vector<std::string> beside = command;
        beside.front() = folder + beside.front();
        if (!folder.empty()) becomeProgram(beside);
        becomeProgram(command);
    }
    std::fputs(overviewText().c_str(), stderr);
    return ExitCode::Usage;
}

ExitCode start(const std::vector<std::string>& arguments) {
    if (!arguments.empty() && (namesVerbs(arguments.front()) || isMistypedVerb(arguments))) return runVerb(arguments);
    try {
        const std::string text = commandText(arguments);
        // A line of blanks alone asks for the windows and for nothing in front of what one is at.
        if (text.empty()) return openDesktop(!arguments.empty());
        runHeadlessLine(text);
    } catch (const std::exception& error) {
        if (tracing()) std::fputs(("welvane: " + shownText(error.what()) + "\n").c_str(), stderr);
    }
    return ExitCode::Done;
}

}  // namespace
}  // namespace welvane

int main(int count, char** values) {
    return static_cast<int>(welvane::start(std::vector<std::string>(values + (count > 0 ? 1 : 0), values + count)));
}
