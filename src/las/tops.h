#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace welvane {

/// One line of the [TOPS] block: a depth, as text in no told unit, and the formation's name.
struct Top {
    std::string depth, name;
};

/// The [TOPS] block of the header, in file order; empty when there is none in front of ~A, or no file. Fields are
/// trimmed.
std::vector<Top> readTops(std::string_view path);

}  // namespace welvane
