#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "las/las_file.h"
#include "las/rebuild_settings.h"
#include "las/wrap.h"
#include "platform/output_file.h"
#include "shared/notes.h"
#include "shared/prompts.h"
#include "shared/run_state.h"

namespace welvane {

struct WholeRebuild {
    StepResult result = StepResult::Failed;
    std::string why;          ///< of a failure
    std::size_t records = 0;  ///< written
    std::vector<Note> notes;  ///< without the file's name
};

/// Writes a clean LAS 2.0, unwrapped, from a file whose header breaks the standard, and loses nothing of it: every
/// section, header line and comment stays with its texts, every value with the characters that it had, the null with
/// them. What cannot stay as it was is told line by line: lines that are no header lines become comments, channels
/// without a usable name get one, depth lines that do not fit the data get the data's, data lines with a number of
/// values that is not that of the channels are left out. The lines of the source may end in any way. The target takes
/// its name only when it is whole. `country` "CANADA" gives the empty lines of ~Well that the source lacks for that
/// country.
WholeRebuild rebuildWhole(const LasFile& source, std::string_view target, RebuildKind kind, std::string_view country,
                          RunState& run, UserInterface& user, OutputFile::Mode mode = OutputFile::Mode::Beside);

}  // namespace welvane
