#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/memory_settings.h"
#include "platform/platform.h"
#include "support/temp_folder.h"

namespace welvane::test {

/// Settings in memory, its own program and scratch folders, and no programs started but those a test hangs in.
class MemoryPlatform : public Platform {
  public:
    SettingsStore& settings() override { return settings_; }
    std::string programFolder() const override { return program_.path() + "/"; }
    std::string scratchFolder() override { return scratch_.path() + "/"; }
    bool openWithShell(const std::string& path) override {
        if (startsPrograms) opened.push_back(path);
        return startsPrograms;
    }
    bool openWith(const std::string& program, const std::string& path) override {
        return openWithShell(program.empty() ? path : program + " " + path);
    }
    ProcessResult runAndWait(const std::vector<std::string>& arguments, double, const std::function<bool()>&) override {
        started.push_back(arguments);
        return onRun ? onRun(arguments) : ProcessResult{};
    }
    std::uint64_t freeMemory() const override { return memory; }

    bool startsPrograms = true;       ///< false: none that opens a file can be started
    std::vector<std::string> opened;  ///< files, the named program in front
    std::vector<std::vector<std::string>> started;
    std::function<ProcessResult(const std::vector<std::string>&)> onRun;
    std::uint64_t memory = 4ULL << 30;
    const TempFolder& program() const { return program_; }

  private:
    MemorySettings settings_;
    TempFolder program_, scratch_;
};

}  // namespace welvane::test
