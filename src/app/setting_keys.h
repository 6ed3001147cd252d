#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The keys of the settings store as people may see and change them.
namespace welvane {

/// One key: its default text, what it is, and what becomes of a new value.
struct SettingKey {
    std::string_view name, defaultText, help;
    /// The value as the next start would take it; RunTimeFailure for one that it could not take.
    std::string (*corrected)(std::string_view value);
};
/// All keys that are kept from run to run. A default of "<program>" is the program's folder.
const std::vector<SettingKey>& settingKeys();
/// By name, case ignored; nullptr when there is no such key.
const SettingKey* findSettingKey(std::string_view name);

}  // namespace welvane
