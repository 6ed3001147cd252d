#pragma once

#include <string>
#include <string_view>

#include "las/las_file.h"
#include "platform/output_file.h"
#include "shared/prompts.h"
#include "shared/run_state.h"

namespace welvane {

/// Characters of the columns on a wrapped line, of which as many as fit stand on one: lines of wrapped data hold at
/// most 80 characters, and two are the line end.
inline constexpr int wrapLineLength = 78;

/// How a long step ended.
enum class StepResult { Done, Failed, Cancelled };

/// Writes a wrapped file unwrapped, or the reverse. `wrap` receives the source's state, "YES" or "NO" by the shape of
/// its data. The target takes its name only when it is whole. Failed with a box
/// when something unexpected happened, which data of no regular shape are.
StepResult convertWrap(const LasFile& source, std::string_view target, std::string& wrap, RunState& run,
                       UserInterface& user, OutputFile::Mode mode = OutputFile::Mode::Beside);

/// Header lines up to ~A with the WRAP line changed, and the data title "~Ascii"; the reader then stands behind the
/// title of ~A.
void copyWrapHeader(LineReader& source, OutputFile& target, bool sourceWrapped);

/// The box of a conversion that went wrong.
void tellConversionFailure(UserInterface& user, std::string_view why);

}  // namespace welvane
