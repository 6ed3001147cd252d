#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/pass_context.h"
#include "las/header_text.h"

namespace welvane {

/// Opens the file whose header goes out, as prd names it; without a name it is slot 0's, with noInputRun there is none.
/// Leaves context.headerSource and headerCurveNames. FileFailure where it cannot be opened.
void openHeaderSource(PassContext& context);

/// All that stands in front of the data: the sections in the order of ord, copied from the header source and laid out
/// anew, or the heads of a plain ASCII file. Leaves context.curveTable and titleLine. FileFailure when the header
/// source could not be read.
std::string writeHeader(PassContext& context);

/// The heads of a plain ASCII file by style: "MNEM", "MNEM.UNIT", "One line each"; "No Header" or "" writes nothing,
/// any other style one empty line.
void writePlainHeader(const PassContext& context, HeaderText& text, std::string_view style);

/// Brings STRT, STOP, STEP, NULL, VERS, WRAP and the depth units to what is really written. Returns the lines that were
/// too short for it, one for each edit.
std::vector<std::string> correctHeader(PassContext& context, std::string& header);

}  // namespace welvane
