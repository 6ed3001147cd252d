#pragma once

#include <string>
#include <vector>

#include "engine/pass_context.h"
#include "platform/output_file.h"

namespace welvane {

/// Behind settleColumns. Settles WRAP, by true figures the columns too, and gives the title of the ~Ascii section: the
/// section's name, and the mnemonics of the written channels on it or, wrapped, above it. "" for a plain table.
std::string writeDataTitle(PassContext& context);

/// The columns that are written, with their unit scales, and the divisor of the depths. Leaves context.outputColumns
/// and depthDivisor, and, where depths stand in columns, the texts of the first and last one in the report.
void settleColumns(PassContext& context);

/// Prints the samples, one record a grid sample, fixed or delimited. Leaves the counts in the report. False when
/// cancelled between two records.
bool writeData(PassContext& context, OutputFile& file);

/// The records as writeData would print them, as columns: the index first, then the columns that are written, each
/// value rounded to its decimals, NaN for null. By increasing index. False when cancelled.
bool writtenRecords(PassContext& context, std::vector<std::vector<double>>& columns);

}  // namespace welvane
