#pragma once

#include <string>

namespace welvane {

/// The system's own words for an error number, the same in every language setting.
std::string systemReason(int errorNumber);

}  // namespace welvane
