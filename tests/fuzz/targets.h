#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The roads over which foreign bytes come into the program, each as one routine that takes them. What they return does
/// not matter: they must return, soon, with nothing broken. The fuzzers call them with made-up bytes, a test with the
/// kept seeds.
namespace welvane::fuzz {

struct Target {
    std::string_view name;  ///< also that of its folder of seeds
    void (*run)(std::string_view bytes);
};
const std::vector<Target>& targets();
/// nullptr when there is none of this name.
const Target* findTarget(std::string_view name);

}  // namespace welvane::fuzz
