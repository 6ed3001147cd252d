#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>
#include <utility>

#include "platform/file_settings.h"
#include "platform/leftovers.h"
#include "platform/memory.h"
#include "platform/platform.h"
#include "platform/posix/system_error.h"
#include "platform/process.h"
#include "shared/failure.h"
#include "shared/files.h"

namespace welvane {

namespace fs = std::filesystem;

namespace {

/// A folder that holds one of these beside the executable is the program's folder.
constexpr std::array<std::string_view, 7> referenceFiles = {
    "units.ini", "para.ini", "curves.ini", "units_ZQ.ini", "para_ZQ.ini", "curves_ZQ.ini", "crnphi.ini"};

std::string environmentText(const char* name) {
    const char* const text = std::getenv(name);
    return text == nullptr ? std::string() : std::string(text);
}

std::string findProgramFolder(const std::string& own) {
    if (const std::string home = environmentText("WELVANE_HOME"); !home.empty()) return withBackslash(home);
    if (!own.empty()) return withBackslash(own);
    std::string beside = executableFolder();
    if (beside.empty()) return WELVANE_SHARE_FOLDER "/";
    for (const std::string_view name : referenceFiles) {
        if (fileExists(beside + std::string(name))) return beside;
    }
    // An installation that was moved as a whole still finds its own files.
    std::error_code error;
    const fs::path moved = fs::weakly_canonical(beside + "../share/welvane", error);
    return !error && folderExists(moved.string()) ? withBackslash(moved.string()) : WELVANE_SHARE_FOLDER "/";
}

/// "" when there is no home to keep settings in; they then last as long as nothing does.
std::string settingsPath() {
    if (const std::string config = environmentText("XDG_CONFIG_HOME"); !config.empty() && config.front() == '/') {
        return withBackslash(config) + "welvane/settings.ini";
    }
    const std::string home = environmentText("HOME");
    return home.empty() ? std::string() : withBackslash(home) + ".config/welvane/settings.ini";
}

class SystemPlatform : public Platform {
  public:
    explicit SystemPlatform(const std::string& ownFolder)
        : settings_(settingsPath()), programFolder_(findProgramFolder(ownFolder)) {}
    SystemPlatform(const SystemPlatform&) = delete;
    SystemPlatform& operator=(const SystemPlatform&) = delete;
    ~SystemPlatform() override {
        std::error_code ignored;
        if (!scratch_.empty() && owner_ == getpid()) fs::remove_all(scratch_, ignored);
    }

    SettingsStore& settings() override { return settings_; }
    std::string programFolder() const override { return programFolder_; }
    std::string scratchFolder() override {
        if (scratch_.empty()) makeScratch();
        return scratch_;
    }
    void sweepLeftovers() override {
        for (const std::string& base : scratchBases()) sweepScratchFolders(base);
    }
    bool openWithShell(const std::string& path) override { return startDetached({"xdg-open", path}); }
    bool openWith(const std::string& program, const std::string& path) override {
        return program.empty() ? openWithShell(path) : startDetached({resolvePath(program), path});
    }
    ProcessResult runAndWait(const std::vector<std::string>& arguments, double timeoutSeconds,
                             const std::function<bool()>& turn) override {
        return runProgram(arguments, timeoutSeconds, turn);
    }
    std::uint64_t freeMemory() const override { return availableMemory(); }

  private:
    /// Folders that a scratch folder is made in: the first where that can be done.
    static std::vector<std::string> scratchBases() {
        std::vector<std::string> bases;
        if (std::string own = environmentText("TMPDIR"); !own.empty()) bases.push_back(std::move(own));
        bases.emplace_back("/tmp");
        return bases;
    }
    void makeScratch() {
        for (const std::string& base : scratchBases()) {
            scratch_ = makeScratchFolder(base);
            if (scratch_.empty()) continue;
            owner_ = getpid();
            return;
        }
        throw RunTimeFailure("no folder for scratch files in " + scratchBases().front() + ": " + systemReason(errno));
    }

    FileSettings settings_;
    std::string programFolder_, scratch_;
    pid_t owner_ = 0;  ///< a child that ends must not take the folder of its parent along
};

}  // namespace

// The words are the same whatever the language setting is, and every thread may ask for them.
std::string systemReason(int errorNumber) {
    const char* const text = strerrordesc_np(errorNumber);
    return text == nullptr ? "error " + std::to_string(errorNumber) : std::string(text);
}

std::string executableFolder() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string() : withBackslash(self.parent_path().string());
}

std::unique_ptr<Platform> makeSystemPlatform(const std::string& ownFolder) {
    return std::make_unique<SystemPlatform>(ownFolder);
}

}  // namespace welvane
