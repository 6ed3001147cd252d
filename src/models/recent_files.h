#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/settings_store.h"

/// The files that were opened last, kept in the setting "recent".
namespace welvane {

inline constexpr std::size_t recentFilesKept = 10;

/// Paths, the latest first, those that are not there any more left out.
std::vector<std::string> recentFiles(const SettingsStore& settings);
/// Puts a file in front. One that stands there already moves, and the eleventh goes.
void noteRecentFile(SettingsStore& settings, std::string_view path);

}  // namespace welvane
