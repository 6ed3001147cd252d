#pragma once

#include <cstdint>

namespace welvane {

/// What the system says can be taken: the smallest of the machine's available memory, what is left of the control group
/// and of the process's own address space limit. 0 when nothing is known.
std::uint64_t availableMemory();

}  // namespace welvane
