#pragma once

#include <array>
#include <cstddef>

#include "conform/findings.h"
#include "conform/line_walk.h"

namespace welvane {

/// How the lines of a file end, by kind, with the first line of each.
class EndCounts {
  public:
    void take(LineEnd end, std::size_t line) {
        if (end == LineEnd::None) return;
        const auto kind = static_cast<std::size_t>(end);
        if (counts_[kind]++ == 0) first_[kind] = line;
    }
    void judge(Findings& findings) const;

  private:
    std::size_t firstOther() const;

    std::array<std::size_t, 5> counts_{}, first_{};
};

/// The bytes of a header line: control characters, tabs, bytes above 126.
void judgeHeaderBytes(Findings& findings, std::string_view line, std::size_t number);

}  // namespace welvane
