#pragma once

#include <string>
#include <string_view>

namespace welvane {

/// Texts by key in the section "Startup"; keys are compared without regard to case.
struct SettingsStore {
    virtual ~SettingsStore() = default;
    virtual std::string get(std::string_view key, std::string_view defaultText) const = 0;
    /// Stored at once; a value that did not change writes nothing. False when it could not be kept.
    virtual bool put(std::string_view key, std::string_view value) = 0;
    /// Why the last put could not keep its value: which file, and the system's reason.
    virtual std::string whyNotKept() const { return {}; }
};

}  // namespace welvane
