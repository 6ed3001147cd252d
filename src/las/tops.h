#pragma once

#include <string>
#include <vector>

#include "las/las_file.h"

namespace welvane {

/// One line of the [TOPS] block: a depth, as text in no told unit, and the formation's name.
struct Top {
    std::string depth, name;
};

/// The [TOPS] block of the header, in file order; empty when there is none in front of ~A. Fields are trimmed.
std::vector<Top> readTops(const LasFile& file);

}  // namespace welvane
