#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "conform/findings.h"
#include "jobs/workbench.h"

/// Files held against the LAS standard by the program itself.
namespace welvane {

struct ConformRequest {
    std::string file{};
    std::size_t most = 10;  ///< findings kept for each rule; others are counted
    std::string output{};   ///< of a mend: the file to write; "" mends the file itself, and keeps a copy beside it
};

struct ConformReport : JobReport {
    std::optional<StandardVersion> version{};  ///< as VERS tells it
    Findings findings{0};
    std::string remark{};  ///< what was not judged; "" for nothing

    // Of a mend, after which the findings are those that are left.
    std::vector<std::pair<Rule, std::size_t>> mended{};  ///< rules with the findings that are gone
    std::string target{}, kept{};                        ///< the file written, and the copy of the file as it was

    /// True when a finding weighs at least so much.
    bool has(Severity least) const;
};
/// Judges one file; units and mnemonics are those of the library in use. Refusal for one that cannot be read, and when
/// a person stopped it.
ConformReport conformFile(Workbench& bench, const ConformRequest& request);

/// Writes the file with all mended that needs no choice, and judges what was written. Without anything to mend nothing
/// is written in place, and a copy elsewhere. Whatever goes wrong, neither source nor target has changed. Refusal as
/// above, and for an output that cannot be written.
ConformReport mendFile(Workbench& bench, const ConformRequest& request);

}  // namespace welvane
