#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/las_file.h"

namespace welvane {

/// Data lines of one section of a filter, their letters as they stand. A section ends at a line that begins with "~",
/// so that a reference such as "LAS(~W:UWI)" can stand in it. `found` tells a missing section from an empty one.
struct FilterSection {
    bool found = false;
    std::vector<HeaderField> lines;
    /// The first line with this mnemonic; nullptr when there is none.
    const HeaderField* find(std::string_view mnem) const;
    /// Its trimmed VALUE; "" when there is none.
    std::string value(std::string_view mnem) const;
};

/// A filter's four sections, read at once.
struct FilterSource {
    explicit FilterSource(const LasFile& file);
    FilterSection version, well, curve, parameter;
    bool anySection() const { return version.found || well.found || curve.found || parameter.found; }
};

}  // namespace welvane
