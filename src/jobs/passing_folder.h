#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "jobs/workbench.h"

namespace welvane {

/// A folder for files that nobody keeps, as long as it lives.
class PassingFolder {
  public:
    /// `name` tells it from others of the same work.
    PassingFolder(Workbench& bench, const std::string& name)
        : path_(bench.app().platform.scratchFolder() + name + "/") {
        std::filesystem::create_directory(path_);
    }
    ~PassingFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PassingFolder(const PassingFolder&) = delete;
    PassingFolder& operator=(const PassingFolder&) = delete;
    /// With the separator behind it.
    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace welvane
