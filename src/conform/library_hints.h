#pragma once

#include <set>
#include <string>

#include "conform/findings.h"
#include "conform/header_fields.h"
#include "reference/reference_tables.h"

namespace welvane {

/// Hints at units and curve mnemonics that the library does not know, each told once. Without a library, or with an
/// empty one, there are none.
class LibraryHints {
  public:
    LibraryHints(Findings& findings, const ReferenceTables* library) : findings_(findings), library_(library) {}

    void judgeUnit(const HeaderFields& fields);
    void judgeCurve(const HeaderFields& fields);
    bool knows(std::string_view unit) const;

  private:
    Findings& findings_;
    const ReferenceTables* library_;
    std::set<std::string, std::less<>> unknown_;
};

}  // namespace welvane
