#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_identity.h"
#include "platform/settings_store.h"

namespace welvane {

/// One text file with a "[Startup]" section of key=value lines; written whole to a new file and renamed, under a lock,
/// so that many processes can run at once. A file that is not there counts as empty, and so does a
/// folder; FileFailure for one that cannot be read.
class FileSettings : public SettingsStore {
  public:
    explicit FileSettings(std::string path);
    std::string get(std::string_view key, std::string_view defaultText) const override;
    bool put(std::string_view key, std::string_view value) override;
    std::string whyNotKept() const override { return why_; }

  private:
    bool putLine(std::string_view key, std::string_view value);

    std::string path_, why_;
    // The lines as they were last read; read again once the file is another one.
    mutable std::mutex guard_;
    mutable std::optional<FileIdentity> known_;
    mutable std::vector<std::string> lines_;
};

}  // namespace welvane
