#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "certify/checker_log.h"
#include "session/session.h"

/// One run of the external checker Corvant over one file. The program does not judge conformance by itself.
namespace welvane {

/// cOpt: the option group of the certify window.
enum class CheckKind { Basic, Wrap, Complete };
inline constexpr int checkKindCount = 3;
/// "Do basic fast checks", "Do WRAP Checks", "Do Complete Welvane checks".
std::string_view checkCaption(CheckKind kind);

/// The four option slots of a checker run, and what this program adds to them.
struct CertifyOptions {
    std::string wrapChecks{};     ///< slot 1: " /W" or ""
    std::string attemptRepair{};  ///< slot 2: " /R" or ""
    std::string region{" /U"};    ///< slot 3: " /C" or " /U"
    std::string deleteLog{};      ///< slot 4: deletes the log after reading when not empty
    double timeoutSeconds = 0;    ///< a checker that lives longer is ended; 0 waits for ever
    /// False for a slot value other than these.
    bool legal() const;
};
/// The slots by the state of the window and the region setting. The checker has no switch for the basic and the
/// complete checks.
CertifyOptions certifyOptions(CheckKind kind, bool attemptRepair, bool saveLogs, std::string_view country);

/// The checker's command line from the preferences, cut into arguments: at blanks outside double quotes; the whole text
/// is one program when a file of that name exists or when it is a path that holds no quote and is followed by no option
/// ("C:\Program Files\...\Corvant.exe").
std::vector<std::string> checkerArguments(std::string_view setting);
/// The whole argument vector of a run; an empty `logPath` leaves the log's name to the checker. The paths are arguments
/// of their own, so no blank or quote in them does harm.
std::vector<std::string> certifyArguments(std::string_view setting, std::string_view path, std::string_view logPath,
                                          const CertifyOptions& options);

/// The log that belongs to a file: its path with the extension "log". A file that is itself called so gets ".log"
/// behind its whole name.
std::string certifyLogPath(std::string_view path);

/// What a run of the checker left.
struct CheckerRun {
    std::string log;      ///< the whole text of its log
    ProcessResult ended;  ///< how the program ended
};
/// Runs the checker on `path`, pending events being served. The log is "" when a slot is illegal, when the checker
/// could not be run (after a box), left no log, or did not come to its end (crash, time limit, cancel) without naming a
/// fault. An empty `logPath` stands for certifyLogPath. `firstFile` is the file of row 0 of the table, which the box of
/// a failure names.
CheckerRun certifyFile(App& app, std::string_view path, std::string_view logPath, const CertifyOptions& options,
                       std::string_view firstFile);

}  // namespace welvane
