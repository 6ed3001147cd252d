#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

/// One fuzzer: the build names its target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const welvane::fuzz::Target& target = *welvane::fuzz::findTarget(WELVANE_FUZZ_TARGET);
    target.run({reinterpret_cast<const char*>(data), size});
    return 0;
}
