#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/las_file.h"
#include "las/wrap.h"
#include "shared/notes.h"

namespace welvane {

struct WholeWrap {
    StepResult result = StepResult::Failed;
    std::string why;       ///< of a failure
    bool wrapped = false;  ///< the new file is
    std::vector<Note> notes;
};

/// convertWrap by true figures: every value in its own words and in the record that it stood in. Wrapped records are
/// put together by their number of values, however many lines they take; a last one that is cut is filled up with null,
/// and told. Refused, with the line, is a record of another number of values; refused is what could not be read again
/// from the new file. New wrapped lines have at most 80 characters with their end, unless a single value is longer.
WholeWrap wrapWhole(const LasFile& source, std::string_view target, RunState& run, UserInterface& user,
                    OutputFile::Mode mode = OutputFile::Mode::Beside);

}  // namespace welvane
