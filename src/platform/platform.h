#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/settings_store.h"

/// What the operating system gives, behind plain interfaces; its headers stand in this room's posix/ alone.
namespace welvane {

/// How an outside program ended.
struct ProcessResult {
    bool started = false;
    bool timedOut = false;
    int exitCode = -1;  ///< -1 when ended by a signal
    int signal = 0;
    std::string why;  ///< the system's reason when it did not start
};

/// The system as the program sees it.
struct Platform {
    virtual ~Platform() = default;
    virtual SettingsStore& settings() = 0;
    /// Folder of the reference files, with a separator at its end.
    virtual std::string programFolder() const = 0;
    /// Private folder of this process for scratch files, with a separator at its end; made at the first call.
    virtual std::string scratchFolder() = 0;
    /// Removes scratch folders of processes that were killed.
    virtual void sweepLeftovers() {}
    /// Opens a file in its associated program; false when that could not be started.
    virtual bool openWithShell(const std::string& path) = 0;
    /// Starts the named program on a file and does not wait for it; without a name as openWithShell.
    virtual bool openWith(const std::string& program, const std::string& path) {
        static_cast<void>(program);
        return openWithShell(path);
    }
    /// Starts a program with its arguments (no shell), waits for its end and gives `turn` a call about twenty times a
    /// second; a turn that returns false ends the child. `timeoutSeconds` 0 waits for ever.
    virtual ProcessResult runAndWait(const std::vector<std::string>& arguments, double timeoutSeconds,
                                     const std::function<bool()>& turn) = 0;
    /// Bytes of memory that can still be taken without hurting others; 0 when unknown.
    virtual std::uint64_t freeMemory() const = 0;
};

/// Folder of the running executable, with a separator at its end; "" when the system does not tell.
std::string executableFolder();

/// The real one: settings in $XDG_CONFIG_HOME/welvane/settings.ini, the program's folder by WELVANE_HOME, the
/// executable's folder or the installed share folder. `ownFolder`, unless it is "", stands for the latter two: where a
/// library inside another program has brought its reference files.
std::unique_ptr<Platform> makeSystemPlatform(const std::string& ownFolder = {});

}  // namespace welvane
