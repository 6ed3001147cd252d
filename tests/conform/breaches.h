#pragma once

#include <vector>

#include "conform/wells.h"

namespace welvane::test {

struct Breach {
    const char* rules;  ///< what is found, and nothing else; "" for a lawful oddity
    const std::string& base;
    Edits edits;
};

/// For each rule a small file that breaks it. A second rule stands in a row where the first cannot be broken alone.
const std::vector<Breach>& breaches();

}  // namespace welvane::test
