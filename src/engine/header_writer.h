#pragma once

#include "engine/pass.h"
#include "platform/output_file.h"

namespace welvane {

/// Writes all that stands in front of the data: the sections in the order of ord, copied from the header source and
/// laid out anew, or the heads of a plain ASCII file. Leaves context.curveTable, titleLine and headerCurveNames.
void writeHeader(PassContext& context, OutputFile& file);

/// The heads of a plain ASCII file by style: "MNEM", "MNEM.UNIT", "One line each"; "No Header" or "" writes nothing,
/// any other style one empty line.
void writePlainHeader(const PassContext& context, OutputFile& file, std::string_view style);

/// Brings STRT, STOP, STEP, NULL, VERS, WRAP and the depth units of the written file to what was really written.
void correctHeader(PassContext& context, const std::string& path);

}  // namespace welvane
