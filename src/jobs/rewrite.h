#pragma once

#include <cstdint>
#include <string>

#include "jobs/workbench.h"
#include "texttools/search_command.h"

/// One file written anew as another: with its data wrapped or unwrapped, or with bytes replaced.
namespace welvane {

struct WrapReport : JobReport {
    bool wrapped = false;  ///< the output is; else it has one line per depth step
};
/// Writes `file` to `output`, wrapped when it is not, and the other way. Refusal for what is no LAS file of a regular
/// shape, and for an output that cannot be written.
WrapReport wrapFile(Workbench& bench, const std::string& file, const std::string& output);

struct ReplaceBytesReport : JobReport {
    std::uint64_t replacements = 0;
};
/// Writes a file of any kind to `output` with every occurrence replaced. Refusal for a field that cannot be read and
/// for an output that cannot be written.
ReplaceBytesReport replaceBytes(Workbench& bench, const SearchRequest& request, const std::string& output);

}  // namespace welvane
