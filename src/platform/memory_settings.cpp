#include "platform/memory_settings.h"

#include "shared/text.h"

namespace welvane {

std::string MemorySettings::get(std::string_view key, std::string_view defaultText) const {
    const auto found = values_.find(upper(key));
    return found == values_.end() ? std::string(defaultText) : found->second;
}

bool MemorySettings::put(std::string_view key, std::string_view value) {
    values_[upper(key)] = value;
    return true;
}

}  // namespace welvane
