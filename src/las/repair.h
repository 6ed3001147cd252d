#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "las/wrap.h"
#include "shared/prompts.h"
#include "shared/run_state.h"

/// Repairs of a file's text. Every target is written beside its name and renamed when whole; source and target may be
/// the same file.
namespace welvane {

/// The last two ~Well lines and the curve title stand on one line.
bool hasCurveTitleFault(std::string_view path);
/// The same in the first bytes of a file.
bool curveTitleFaultIn(std::string_view bytes);
/// Writes "~Curve" in place of each such line of the header; what else stood on it is dropped. False when there is none
/// or the file cannot be written: then `why` tells the reason.
bool fixCurveTitle(std::string_view path, std::string_view target, OutputFile::Mode mode = OutputFile::Mode::Beside,
                   std::string* why = nullptr);
/// Asks, then repairs the file itself; true when it was repaired. Nobody to ask: not repaired.
bool repairCurveTitle(std::string_view path, UserInterface& user);

/// Where the copy of a file goes before the file itself is changed: its name with ".MARK.las" in place of its
/// extension, with a number where that name is taken ("a.unixterm.las", "a.unixterm-2.las").
std::string safetyCopyName(std::string_view path, std::string_view mark);

/// What a search and replace tells beside its result.
struct ReplaceReport {
    std::uint64_t replacements = 0;  ///< occurrences found
    std::string why;                 ///< the reason of a failure
};
/// Every occurrence of `find` (case ignored, from the start, none overlapping) replaced, all other bytes kept. Works on
/// a file of any size, and behaves as one read of it though it holds a block only. The target, which may be the source,
/// appears whole or not at all.
StepResult replaceInFile(std::string_view source, std::string_view target, std::string_view find,
                         std::string_view replacement, RunState& run, UserInterface& user,
                         ReplaceReport* report = nullptr, OutputFile::Mode mode = OutputFile::Mode::Beside);

/// Each LF without a CR before it becomes CR LF; CR LF stays. `why` tells the reason of a failure.
StepResult repairLineEnds(std::string_view source, std::string_view target, RunState& run, UserInterface& user,
                          OutputFile::Mode mode = OutputFile::Mode::Beside, std::string* why = nullptr);

}  // namespace welvane
