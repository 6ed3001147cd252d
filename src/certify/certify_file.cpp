#include "certify/certify_file.h"

#include <array>

#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view notLocatedTitle = "Unable to Run Corvant";
constexpr std::string_view notLocatedText =
    "Unable to locate Corvant.exe. Path to Corvant Not Set, or path is incorrect. Please check Preferences and try "
    "again";
constexpr std::string_view notPossibleTitle = "Certify Not Possible";
constexpr std::string_view notPossibleText = "Error while running, or unable to run Corvant. No results for ";
constexpr std::string_view notPossibleEnd = "  are available.";

void cutArguments(std::string_view text, std::vector<std::string>& arguments) {
    std::string current;
    bool quoted = false, begun = false;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
            begun = true;
        } else if (c == ' ' && !quoted) {
            if (begun) arguments.push_back(std::move(current));
            current.clear();
            begun = false;
        } else {
            current += c;
            begun = true;
        }
    }
    if (begun) arguments.push_back(std::move(current));
}

bool holdsSeparator(std::string_view path) {
    return path.find_first_of("/\\") != npos;
}

/// How a run ended, in the terms of the two boxes.
enum class RunEnd { Ended, Unfinished, NotFound, NotRun };

RunEnd runChecker(App& app, const std::vector<std::string>& arguments, double timeoutSeconds, ProcessResult& result) {
    if (arguments.empty() || arguments.front().empty()) return RunEnd::NotFound;
    if (holdsSeparator(arguments.front()) && !fileExists(arguments.front())) return RunEnd::NotFound;
    result = app.platform.runAndWait(arguments, timeoutSeconds, [&app] {
        if (!app.run.commandMode) app.user.pumpEvents();
        return !app.run.cancelRequested.load();
    });
    // A bare name is looked for along the search path, so one that did not start was not found.
    if (!result.started) return holdsSeparator(arguments.front()) ? RunEnd::NotRun : RunEnd::NotFound;
    return result.timedOut || result.signal != 0 || app.run.cancelRequested ? RunEnd::Unfinished : RunEnd::Ended;
}

void tell(App& app, std::string_view title, std::string text) {
    app.user.ask({.title = std::string(title), .text = std::move(text), .icon = Icon::Stop});
}

}  // namespace

std::string_view checkCaption(CheckKind kind) {
    constexpr std::array<std::string_view, checkKindCount> captions = {"Do basic fast checks", "Do WRAP Checks",
                                                                       "Do Complete Welvane checks"};
    return captions[static_cast<std::size_t>(kind)];
}

bool CertifyOptions::legal() const {
    return (wrapChecks.empty() || sameText(wrapChecks, " /W")) &&
           (attemptRepair.empty() || sameText(attemptRepair, " /R")) &&
           (sameText(region, " /C") || sameText(region, " /U"));
}

CertifyOptions certifyOptions(CheckKind kind, bool attemptRepair, bool saveLogs, std::string_view country) {
    CertifyOptions options;
    if (kind == CheckKind::Wrap) options.wrapChecks = " /W";
    if (attemptRepair) options.attemptRepair = " /R";
    options.region = sameText(country, "Canada") ? " /C" : " /U";
    if (!saveLogs) options.deleteLog = "1";
    return options;
}

std::vector<std::string> checkerArguments(std::string_view setting) {
    const std::string_view text = trim(setting);
    std::vector<std::string> arguments;
    const bool quoted = text.find('"') != npos;
    if (!quoted && (fileExists(text) || endsWith(text, ".exe"))) {
        arguments.emplace_back(text);
    } else {
        cutArguments(text, arguments);
    }
    if (!arguments.empty()) arguments.front() = resolvePath(arguments.front());
    return arguments;
}

std::vector<std::string> certifyArguments(std::string_view setting, std::string_view path, std::string_view logPath,
                                          const CertifyOptions& options) {
    std::vector<std::string> arguments = checkerArguments(setting);
    if (arguments.empty()) return arguments;
    arguments.push_back(resolvePath(path));
    if (!logPath.empty()) arguments.push_back(resolvePath(logPath));
    cutArguments(options.wrapChecks + options.attemptRepair + options.region, arguments);
    return arguments;
}

std::string certifyLogPath(std::string_view path) {
    std::string log = changeExtension(path, "log");
    if (sameText(log, path) || samePath(log, path)) log = std::string(path) + ".log";
    return log;
}

CheckerRun certifyFile(App& app, std::string_view path, std::string_view logPath, const CertifyOptions& options,
                       std::string_view firstFile) {
    CheckerRun run;
    if (!options.legal()) return run;
    const std::string log = logPath.empty() ? certifyLogPath(path) : std::string(logPath);
    const auto arguments = certifyArguments(app.settings.certProgram, path, logPath, options);
    const RunEnd end = runChecker(app, arguments, options.timeoutSeconds, run.ended);
    if (end == RunEnd::NotFound) {
        tell(app, notLocatedTitle, std::string(notLocatedText));
        return run;
    }
    if (end == RunEnd::NotRun) {
        tell(app, notPossibleTitle, std::string(notPossibleText).append(firstFile).append(notPossibleEnd));
        return run;
    }
    run.log = readWholeFile(log);
    if (!options.deleteLog.empty()) removeFile(log);
    // What an unfinished checker has not found yet is no pass; what it did find stands.
    if (end == RunEnd::Unfinished && !holdsFailure(run.log)) run.log.clear();
    return run;
}

}  // namespace welvane
