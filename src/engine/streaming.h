#pragma once

#include <memory>
#include <string>

#include "engine/pass_context.h"
#include "platform/output_file.h"

/// Passes that never hold their samples: each stretch of the input's lines becomes records of the output by itself, and
/// memory is a few stretches, whatever the file's size.
namespace welvane {

/// Why a pass holds all samples; "" where each record of the output comes of the input's records beside it, so that it
/// can be streamed. Asks the plan, behind the grid's derivation, and reads nothing.
std::string whyInMemory(const PassContext& context);

/// Opens the stream of such a pass into context.stream, and leaves an output matrix without samples. False, with
/// nothing changed, where the input's records do not follow each other over the grid.
bool openStream(PassContext& context);

/// As writeData, of a pass with a stream. RunTimeFailure where the input was changed or cut meanwhile.
bool writeStream(PassContext& context, OutputFile& file);

}  // namespace welvane
