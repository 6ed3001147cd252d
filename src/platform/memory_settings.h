#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/settings_store.h"

namespace welvane {

/// For tests, and for runs that must leave no trace.
class MemorySettings : public SettingsStore {
  public:
    std::string get(std::string_view key, std::string_view defaultText) const override;
    bool put(std::string_view key, std::string_view value) override;

  private:
    std::map<std::string, std::string> values_;  ///< by upper-cased key
};

}  // namespace welvane
