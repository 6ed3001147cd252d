#pragma once

#include "engine/pass.h"
#include "platform/output_file.h"

namespace welvane {

/// Settles WRAP and writes the title of the ~Ascii section: the section's name, and the mnemonics of the written
/// channels on it or, wrapped, above it.
void writeDataTitle(PassContext& context, OutputFile& file);

/// Prints the samples, one record a grid sample, fixed or delimited. Leaves the depth texts and counts in the report.
/// False when cancelled between two records.
bool writeData(PassContext& context, OutputFile& file);

}  // namespace welvane
